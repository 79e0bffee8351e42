#pragma once

/// Counts the warnings and errors of the QML engine and of QML code for as long as it lives, and prints all messages as
/// before. There is one at a time; it counts on any thread.
class WarningCounter
{
public:
    WarningCounter();
    WarningCounter(const WarningCounter &) = delete;
    WarningCounter &operator=(const WarningCounter &) = delete;
    ~WarningCounter();

    /// How many there were since the last call.
    static int take();
};
