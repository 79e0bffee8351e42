#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The cover in front of the lens. The state is Unknown while the cover moves and after an interrupted move. The cover
/// hides the scene unless it is Open.
class LensCover : public Device
{
public:
    enum State : uint8_t { Open = 0, Closed = 1, Unknown = 2 };

    /// Profile keys: "state", "moveSeconds" (duration of a move). Setting: "state", which starts a move or sets the
    /// state to Unknown.
    LensCover(Camera &camera, Section &section);

    State state() const;

    /// Opens or closes the cover, and returns at the end of the move. Refused for other states than Open and Closed,
    /// and if another command moves the cover meanwhile.
    Status moveTo(uint8_t state);

    QStringList restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    /// Makes this state the target, and starts a move unless it is the target already.
    Status start(State state);

    State m_target = Open;
    int64_t m_moveMilliseconds;
    int64_t m_arrival = 0; ///< The end of the last move, a time of Clock.
};

} // namespace emulator
