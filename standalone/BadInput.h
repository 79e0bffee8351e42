#pragma once

#include <QString>

#include <stdexcept>

/// An option, file or folder of the user cannot be used. what() is one line that explains why to the user. The program
/// ends with status 2.
class BadInput : public std::runtime_error
{
public:
    explicit BadInput(const QString &message) : std::runtime_error(message.simplified().toStdString()) { }
};
