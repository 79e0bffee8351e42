#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The program zvtbenchpage, which loads the built plug-in as a host does. It is a separate program because this one is
/// linked with the models: together with the plug-in, every meta-object would exist twice.
namespace PageProgram
{

/// Runs the program in a mode and returns its output. If it fails, ends the benchmark program with its error output.
QByteArray run(const QString &mode);

/// The lines of run(), each split into fields at the tab characters.
QList<QList<QByteArray>> table(const QString &mode);

/// The number of instructions that all threads of the program execute in a mode, from its start to its end. Needs
/// valgrind and takes about 15 seconds.
double instructions(const QString &mode);

} // namespace PageProgram
