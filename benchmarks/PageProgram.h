#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The program zvtbenchpage, which loads the built plug-in as a host does. It is a program of its own since this one is
/// linked with the models: with the plug-in beside them every meta-object would exist twice.
namespace PageProgram
{

/// What it prints in this mode; ends the whole run with its words if it fails.
QByteArray run(const QString &mode);

/// The lines of run(), each split into its fields at the tabs.
QList<QList<QByteArray>> table(const QString &mode);

/// How many instructions all its threads execute in this mode, from the start of the process to its end. Takes valgrind
/// and a quarter of a minute.
double instructions(const QString &mode);

} // namespace PageProgram
