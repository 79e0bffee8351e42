#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// The cover in front of the lens. Where it is, is known once it has moved: not while it moves, nor after a move that
/// was cut off.
class LensCover : public Device
{
public:
    enum State : uint8_t { Open = 0, Closed = 1, Unknown = 2 };

    /// Knows in the profile: "state", "moveSeconds".
    LensCover(Camera &camera, Section &section);

    State state() const;

    /// Opens or closes it, and ends when that is done; at once where it is so already. Refused if it is sent elsewhere
    /// meanwhile.
    Status moveTo(uint8_t state);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;
    /// "state": starts to move there, or makes it unknown.
    bool set(const QString &name, const QVariant &value) override;

private:
    void start(State state);

    State m_target;
    int64_t m_moveMilliseconds;
    int64_t m_arrival = 0; ///< When it will be, or has come, where it was sent.
};

} // namespace emulator
