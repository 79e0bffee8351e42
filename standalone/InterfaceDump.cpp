#include "standalone/InterfaceDump.h"

#include "hlxui/ObjectListModel.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QMetaType>
#include <QtQml>

namespace
{

QString accessOf(const QMetaProperty &property)
{
    QStringList access;
    if (property.isReadable())
        access.append(QStringLiteral("read"));
    if (property.isWritable())
        access.append(QStringLiteral("write"));
    if (property.isConstant())
        access.append(QStringLiteral("constant"));
    if (property.isFinal())
        access.append(QStringLiteral("final"));
    return access.join(u' ');
}

/// The signature with the names of the parameters, which signal handlers in QML can use.
QString signatureOf(const QMetaMethod &method)
{
    const QList<QByteArray> names = method.parameterNames();
    QStringList parameters;
    for (int i = 0; i < method.parameterCount(); ++i)
        parameters.append(QString::fromLatin1(method.parameterTypeName(i) + ' ' + names.value(i)).trimmed());
    return QString::fromLatin1(method.typeName()) + u'(' + parameters.join(QStringLiteral(", ")) + u')';
}

QString kindOf(const QMetaMethod &method)
{
    switch (method.methodType()) {
    case QMetaMethod::Signal:
        return QStringLiteral("signal");
    case QMetaMethod::Slot:
        return QStringLiteral("slot");
    default:
        return QStringLiteral("invokable");
    }
}

} // namespace

QStringList InterfaceDump::lines(QObject &root, const char *module)
{
    InterfaceDump dump;
    dump.visitObject(root);
    dump.visitRegistered(module);
    dump.m_lines.removeDuplicates();
    dump.m_lines.sort();
    return dump.m_lines;
}

void InterfaceDump::visitRegistered(const char *module)
{
    // QML does not list the types of a module. But the registration of a type also registers the pointer to its class,
    // and these pointer types have consecutive numbers, with gaps where a library has been unloaded.
    constexpr int last = QMetaType::User + 10'000;
    for (int id = QMetaType::User; id < last; ++id) {
        if (!QMetaType::isRegistered(id))
            continue;
        const QMetaType type(id);
        const QMetaObject *metaObject = type.flags() & QMetaType::PointerToQObject ? type.metaObject() : nullptr;
        // Known classes and those of Qt are not looked up: a look-up that fails is slow.
        if (!metaObject || m_classes.contains(QString::fromLatin1(metaObject->className()))
            || qstrncmp(metaObject->className(), "Q", 1) == 0)
            continue;
        if (qmlTypeId(module, 1, 0, metaObject->className()) >= 0)
            visitClass(*metaObject);
    }
}

void InterfaceDump::visitObject(QObject &object)
{
    if (m_objects.contains(&object))
        return;
    m_objects.insert(&object);
    const QMetaObject &type = *object.metaObject();
    visitClass(type);
    for (int i = QObject::staticMetaObject.propertyCount(); i < type.propertyCount(); ++i)
        if (type.property(i).metaType().flags() & QMetaType::PointerToQObject)
            if (auto *value = type.property(i).read(&object).value<QObject *>())
                visitObject(*value);
    // All rows of a list have the same class, so the first one is enough.
    if (const auto *list = qobject_cast<ObjectListModel *>(&object); list && list->size() > 0)
        visitObject(*list->at(0));
}

void InterfaceDump::visitType(QMetaType type)
{
    if (type.flags() & QMetaType::PointerToQObject)
        if (const QMetaObject *metaObject = type.metaObject())
            visitClass(*metaObject);
}

void InterfaceDump::visitClass(const QMetaObject &type)
{
    if (m_classes.contains(QString::fromLatin1(type.className())))
        return;
    m_classes.insert(QString::fromLatin1(type.className()));
    listProperties(type);
    listMethods(type);
    listEnums(type);
}

void InterfaceDump::listProperties(const QMetaObject &type)
{
    for (int i = QObject::staticMetaObject.propertyCount(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QString notify
            = property.hasNotifySignal() ? QString::fromLatin1(property.notifySignal().name()) : QStringLiteral("-");
        add(type,
            {QStringLiteral("property"), QString::fromLatin1(property.name()), QString::fromLatin1(property.typeName()),
             accessOf(property), notify});
        visitType(property.metaType());
    }
}

void InterfaceDump::listMethods(const QMetaObject &type)
{
    for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        if (method.access() != QMetaMethod::Public)
            continue;
        add(type,
            {kindOf(method), QString::fromLatin1(method.name()), signatureOf(method), QStringLiteral("public"),
             QStringLiteral("-")});
        visitType(method.returnMetaType());
        for (int parameter = 0; parameter < method.parameterCount(); ++parameter)
            visitType(method.parameterMetaType(parameter));
    }
}

void InterfaceDump::listEnums(const QMetaObject &type)
{
    for (int i = QObject::staticMetaObject.enumeratorCount(); i < type.enumeratorCount(); ++i) {
        const QMetaEnum values = type.enumerator(i);
        for (int key = 0; key < values.keyCount(); ++key)
            add(type,
                {QStringLiteral("enum"), QString::fromLatin1(values.key(key)),
                 QString::fromLatin1(values.name()) + u'=' + QString::number(values.value(key)),
                 QStringLiteral("public"), QStringLiteral("-")});
    }
}

void InterfaceDump::add(const QMetaObject &type, const QStringList &fields)
{
    m_lines.append(QString::fromLatin1(type.className()) + u'\t' + fields.join(u'\t'));
}
