#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// Access to the properties of any model through its meta-object, so that tests serve new models without a change. GUI
// thread only.

/// The values that a page sees, by property. A list model counts as its rows, an object that is a child of the model as
/// the values of that object. Other objects are left out.
QVariantMap valuesOf(const QObject *model);

/// The names of the properties of `first` that have another value in `second`, sorted.
QStringList differing(const QVariantMap &first, const QVariantMap &second);

/// Writes a random value to one of the writable properties of the models, if there is any.
void writeRandomProperty(const QList<QObject *> &models, QRandomGenerator &random);

/// The root model and all models below it: the objects in properties of a model and the children of a model,
/// recursively. Left out are list models with their rows, objects of Qt's own classes, and objects without properties
/// of their own.
///
/// The key of a model is the path of properties that leads to it, empty for the root. A child that no property holds
/// has the key "CLASS[n]" below its parent; n counts the parent's children of that class from 0.
QMap<QString, QObject *> modelsOf(QObject *root);
