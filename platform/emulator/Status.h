#pragma once

namespace emulator
{

/// The result of a call to the camera. The plug-in only distinguishes zero from other values; the values themselves are
/// for readers of the call log.
enum Status : int {
    Ok = 0,
    InvalidHandle = -1,
    NotConnected = -2,
    Absent = -3, ///< The camera lacks the equipment.
    Refused = -4, ///< The camera refuses the value or the operation.
    Injected = -5, ///< A test requested the failure.
    Stopped = -6, ///< The caller has stopped the transfer.
    Pending = -999 ///< The call has not ended yet.
};

} // namespace emulator
