#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

/// Lists the interface that a plug-in shows to QML: the classes that can be reached from its root model, and the types
/// that it has registered. GUI thread only; no camera is needed.
class InterfaceDump
{
public:
    /// One line for each property, invokable, public slot, signal and enum value, sorted. The fields, separated by
    /// tabs: class, kind, name, type or signature, access, notify signal; "-" for a field that does not apply. Members
    /// of base classes, except those of QObject, are listed under the class itself.
    ///
    /// `module` is the name of the QML module (version 1.0) whose types belong to it.
    static QStringList lines(QObject &root, const char *module);

private:
    void visitRegistered(const char *module);
    void visitObject(QObject &object);
    void visitType(QMetaType type);
    void visitClass(const QMetaObject &type);
    void listProperties(const QMetaObject &type);
    void listMethods(const QMetaObject &type);
    void listEnums(const QMetaObject &type);
    void add(const QMetaObject &type, const QStringList &fields);

    QSet<const QObject *> m_objects;
    QSet<QString> m_classes;
    QStringList m_lines;
};
