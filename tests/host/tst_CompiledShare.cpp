#include "tests/support/Test.h"

#include <QDirIterator>
#include <QLibrary>
#include <QSet>
#include <QtQml/private/qqmlmetatype_p.h>
#include <QtQml/private/qv4compileddata_p.h>

#include <algorithm>

namespace
{

/// The share of the bindings and functions of all pages that must run as C++, in percent: a little below the actual
/// share.
constexpr int floorPercent = 80;

/// The bindings and functions of one file.
struct Share {
    int compiled = 0;
    int all = 0;
    QStringList interpretedLines;
};

const QQmlPrivate::CachedQmlUnit *compiledUnit(const QString &resource)
{
    auto status = QQmlMetaType::CachedUnitLookupError::NoError;
    return QQmlMetaType::findCachedCompilationUnit(QUrl(QStringLiteral("qrc") + resource), &status);
}

/// Indices of the bindings and functions of a unit. Functions inside a binding have indices of their own, which are
/// left out: a binding with a function inside is never compiled.
QSet<int> bindingsAndFunctions(const QV4::CompiledData::Unit *unit)
{
    QSet<int> indices;
    const auto *qml = unit->qmlUnit();
    for (int i = 0; i < static_cast<int>(qml->nObjects); ++i) {
        const auto *object = qml->objectAt(i);
        for (const auto *function = object->functionOffsetTable();
             function != object->functionOffsetTable() + object->nFunctions; ++function)
            indices << static_cast<int>(*function);
        for (const auto *binding = object->bindingTable(); binding != object->bindingTable() + object->nBindings;
             ++binding)
            if (binding->type() == QV4::CompiledData::Binding::Type_Script)
                indices << static_cast<int>(binding->value.compiledScriptIndex);
    }
    return indices;
}

Share shareOf(const QQmlPrivate::CachedQmlUnit &unit)
{
    QSet<int> compiled;
    for (const auto *function = unit.aotCompiledFunctions; function && function->functionPtr; ++function)
        compiled << static_cast<int>(function->extraData);
    Share share;
    QList<int> indices = bindingsAndFunctions(unit.qmlData).values();
    std::sort(indices.begin(), indices.end());
    for (const int index : std::as_const(indices)) {
        ++share.all;
        if (compiled.contains(index))
            ++share.compiled;
        else
            share.interpretedLines << QString::number(unit.qmlData->functionAt(index)->location.line());
    }
    return share;
}

} // namespace

/// Checks how many bindings and functions of the pages run as C++ and not in the interpreter.
class tst_CompiledShare : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void everyFileIsCompiledAheadOfTime();
    void mostBindingsAndFunctionsRunAsCode();

private:
    QLibrary m_library{QStringLiteral(ZVT_BINARY_DIR "/bin/libhlxcamuiZVT.so")};
    QStringList m_files;
};

void tst_CompiledShare::initTestCase()
{
    QVERIFY2(m_library.load(), qPrintable(m_library.errorString()));
    for (const char *folder : {":/zvt", ":/qt-project.org/imports/zvt"}) {
        QDirIterator it(QString::fromLatin1(folder), {"*.qml"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            m_files << it.next();
    }
    m_files.sort();
    QVERIFY(m_files.size() > 30);
}

void tst_CompiledShare::cleanupTestCase() { QVERIFY(m_library.unload()); }

void tst_CompiledShare::everyFileIsCompiledAheadOfTime()
{
    for (const QString &file : std::as_const(m_files))
        QVERIFY2(compiledUnit(file), qPrintable(file));
}

void tst_CompiledShare::mostBindingsAndFunctionsRunAsCode()
{
    const auto row = [](const QString &name, const Share &share) {
        return QStringLiteral("%1 %2 of %3  %4\n")
            .arg(name, -70)
            .arg(share.compiled, 4)
            .arg(share.all, 4)
            .arg(share.interpretedLines.join(u' '));
    };
    Share sum;
    QString table;
    for (const QString &file : std::as_const(m_files)) {
        const Share share = shareOf(*compiledUnit(file));
        sum.compiled += share.compiled;
        sum.all += share.all;
        table += row(file, share);
    }
    table += row(QStringLiteral("Together"), sum);
    qInfo().noquote() << "Compiled bindings and functions, and the lines of the others:\n" + table;
    QVERIFY2(sum.compiled * 100 >= sum.all * floorPercent,
             qPrintable(QStringLiteral("only %1 %").arg(100.0 * sum.compiled / sum.all)));
}

ZVT_TEST(tst_CompiledShare)
#include "tst_CompiledShare.moc"
