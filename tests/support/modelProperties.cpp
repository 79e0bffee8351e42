#include "tests/support/modelProperties.h"

#include <QAbstractItemModel>
#include <QDateTime>
#include <QMetaProperty>
#include <QRect>
#include <QUrl>

#include <utility>

namespace
{

/// The rows of a list as a page sees them: the values of each role, and of the objects among them.
QVariantList rowsOf(const QAbstractItemModel &list)
{
    QVariantList rows;
    for (int row = 0; row < list.rowCount(); ++row) {
        QVariantList values;
        for (const int role : list.roleNames().keys()) {
            const QVariant value = list.index(row, 0).data(role);
            const auto *object = value.value<QObject *>();
            values << (object ? QVariant(valuesOf(object)) : value);
        }
        rows << QVariant(values);
    }
    return rows;
}

/// A number that has not been read may be NaN, which does not equal itself.
bool isSame(const QVariant &first, const QVariant &second)
{
    return first == second || (qIsNaN(first.toDouble()) && qIsNaN(second.toDouble()));
}

QVariant randomValue(const QMetaType &type, QRandomGenerator &random)
{
    const auto pixels = [&random] { return random.bounded(700); };
    switch (type.id()) {
    case QMetaType::Bool:
        return random.bounded(2) == 1;
    case QMetaType::QString:
        return QString(random.bounded(300), QChar(random.bounded(32, 0x2000)));
    case QMetaType::QRect: {
        const int left = pixels();
        const int top = pixels();
        const int width = pixels();
        return QRect(left, top, width, pixels());
    }
    case QMetaType::QUrl:
        return QUrl(QStringLiteral("file:///%1").arg(random.bounded(8)));
    case QMetaType::QDateTime:
        return QDateTime::fromSecsSinceEpoch(random.generate());
    default:
        QVariant value(random.bounded(4) == 0 ? random.generate() : static_cast<quint32>(random.bounded(8)));
        value.convert(type);
        return value;
    }
}

bool isModel(const QObject *object)
{
    const QMetaObject *meta = object->metaObject();
    return meta->propertyCount() > QObject::staticMetaObject.propertyCount() && meta->className()[0] != 'Q'
        && !qobject_cast<const QAbstractItemModel *>(object);
}

void collectModels(QObject *model, const QString &path, QMap<QString, QObject *> &found)
{
    found.insert(path, model);
    const QString prefix = path.isEmpty() ? QString() : path + u'.';
    const auto collect = [&found](QObject *object, const QString &name) {
        if (object && isModel(object) && !found.values().contains(object))
            collectModels(object, name, found);
    };
    const QMetaObject *meta = model->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i)
        if (meta->property(i).metaType().flags().testFlag(QMetaType::PointerToQObject))
            collect(meta->property(i).read(model).value<QObject *>(), prefix + QLatin1String(meta->property(i).name()));
    QMap<QString, int> counts;
    for (QObject *child : model->children()) {
        const auto name = QString::fromLatin1(child->metaObject()->className());
        collect(child, QStringLiteral("%1%2[%3]").arg(prefix, name).arg(counts[name]++));
    }
}

} // namespace

QVariantMap valuesOf(const QObject *model)
{
    QVariantMap values;
    const QMetaObject *meta = model->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        QVariant value = property.read(model);
        if (property.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
            const auto *object = value.value<QObject *>();
            if (const auto *list = qobject_cast<const QAbstractItemModel *>(object))
                value = rowsOf(*list);
            else if (object && object->parent() == model)
                value = valuesOf(object);
            else
                continue;
        }
        values.insert(QString::fromLatin1(property.name()), value);
    }
    return values;
}

QStringList differing(const QVariantMap &first, const QVariantMap &second)
{
    QStringList names;
    for (auto it = first.cbegin(); it != first.cend(); ++it)
        if (!isSame(it.value(), second.value(it.key())))
            names << it.key();
    return names;
}

void writeRandomProperty(const QList<QObject *> &models, QRandomGenerator &random)
{
    QList<std::pair<QObject *, QMetaProperty>> writable;
    for (QObject *model : models) {
        const QMetaObject *meta = model->metaObject();
        for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
            if (meta->property(i).isWritable())
                writable.emplace_back(model, meta->property(i));
    }
    if (writable.isEmpty())
        return;
    const auto &[model, property] = writable.at(random.bounded(writable.size()));
    property.write(model, randomValue(property.metaType(), random));
}

QMap<QString, QObject *> modelsOf(QObject *root)
{
    QMap<QString, QObject *> models;
    collectModels(root, {}, models);
    return models;
}
