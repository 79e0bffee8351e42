#pragma once

#include <QString>

#include <stdexcept>

/// Something that the user gave cannot be used; what() is one line for him. Ends the program with status 2.
class BadInput : public std::runtime_error
{
public:
    explicit BadInput(const QString &message) : std::runtime_error(message.simplified().toStdString()) { }
};
