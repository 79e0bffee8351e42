#pragma once

namespace emulator
{

/// How a call to the camera ends. The plug-in distinguishes only zero and not zero; the values are for readers of a
/// call log.
enum Status : int {
    Ok = 0,
    InvalidHandle = -1,
    NotConnected = -2,
    Absent = -3, ///< The camera lacks the equipment.
    Refused = -4, ///< The camera does not take the value.
    Injected = -5, ///< A test asked for the failure.
    Stopped = -6, ///< The caller has ended the transfer.
    Pending = -999 ///< The call has not ended yet.
};

} // namespace emulator
