#pragma once

/// Counts the warnings and errors of the QML engine and of QML code during its life. All messages are printed as
/// before. Only one counter may exist at a time. It counts messages from any thread.
class WarningCounter
{
public:
    WarningCounter();
    WarningCounter(const WarningCounter &) = delete;
    WarningCounter &operator=(const WarningCounter &) = delete;
    ~WarningCounter();

    /// Returns the count since the last call and starts again at 0.
    static int take();
};
