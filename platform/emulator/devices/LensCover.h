#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The cover in front of the lens. The state is Unknown while the cover moves and after an interrupted move.
class LensCover : public Device
{
public:
    enum State : uint8_t { Open = 0, Closed = 1, Unknown = 2 };

    /// Profile keys: "state", "moveSeconds". Setting: "state", which starts a move or makes the state Unknown.
    LensCover(Camera &camera, Section &section);

    State state() const;

    /// Opens or closes it, and returns when that is done; at once if it is in that state. Refused if another command
    /// moves it meanwhile.
    Status moveTo(uint8_t state);

    QStringList restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;

private:
    Status start(State state);

    State m_target = Open;
    int64_t m_moveMilliseconds;
    int64_t m_arrival = 0; ///< The time at which the last move ends or ended.
};

} // namespace emulator
