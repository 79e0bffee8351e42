#pragma once

#include <cstdint>

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "hlx/delegate.h"
#include "zvt/zvttypes.h"

/// \file
/// The camera SDK.
///
/// Handle: the first argument of nearly every function is the handle of a camera, from the controller's GetHandle(). It
/// is valid as long as the controller lives; a function fails for 0 and for a handle that is no longer valid. "No
/// handle" marks the functions that need no camera.
///
/// Status: a function that returns int returns 0 for success and any other value for failure; these other values all
/// mean the same. A function fails if the camera is not connected, lacks the equipment or the preset, or refuses the
/// value. It also fails for a null pointer, unless its comment allows null. A function that fails does not change its
/// outputs, unless its comment says otherwise. The few functions that return a text or a table return no status.
///
/// Outputs: a getter writes the value to the pointer argument, and its comment describes this value. A bool, and a byte
/// that is a flag, is 0 or 1.
///
/// Setters: if a camera cannot use a value, it refuses it: the setter fails and the camera keeps the old value. If a
/// comment says that values are refused, every camera refuses them. A range in a comment contains the meaningful
/// values; unless the comment says "refused", a camera may also accept others.
///
/// Units: "clocks" are periods of the detector clock (zvtGetClockFrequency()). A/D counts are the raw values of pixels,
/// 0 to 16383. Temperatures are in degrees Celsius or Kelvin as each comment says.
///
/// Presets: numbered from 0, as many as zvtGetNumPresets() returns.
///
/// Texts: UTF-8, with a terminating zero. A text is written to the caller's buffer, whose size in bytes is the next
/// argument; it is cut between two characters if it does not fit. Older cameras may fill a buffer to its last byte
/// without a zero: search for the zero within the buffer only. "Static text" is valid until the process ends.
///
/// Lists: entries are appended to the array unless the comment says otherwise.
///
/// Threads: any thread may call any function at any time, also with the same handle. A function that "blocks" or is
/// "slow" returns only when the camera has finished.

// One declaration per line, as the SDK's own reference lists them.
// clang-format off

extern "C" {

// ---- Identity -------------------------------------------------------------------------------------------------------
// Types, boards and detectors are numbers; functions below return their names. A new camera may use numbers that have
// no name yet.

/// The camera's model name.
int zvtGetCameraModel(uint64_t handle, char* buffer, uint32_t size);
/// Sets the model name. A text that is too long for the camera is refused.
int zvtSetCameraModel(uint64_t handle, const char* model);
/// The camera's serial number.
int zvtGetCameraSN(uint64_t handle, char* buffer, uint32_t size);
/// Sets the serial number. A text that is too long for the camera is refused.
int zvtSetCameraSN(uint64_t handle, const char* serial);
/// The camera's type; zvtGetCameraTypeName() names it.
int zvtGetCameraType(uint64_t handle, uint8_t* type);
/// Sets the camera's type, also to a number without a name.
int zvtSetCameraType(uint64_t handle, uint8_t type);
/// The subtype, counted within the type; zvtGetCameraSubtypeName() names it.
int zvtGetCameraSubtype(uint64_t handle, uint8_t* subtype);
/// Sets the subtype, also to a number without a name.
int zvtSetCameraSubtype(uint64_t handle, uint8_t subtype);
/// The interface board; zvtGetPleoraBoardTypeName() names it.
int zvtGetPleoraBoardType(uint64_t handle, uint8_t* out);
/// Sets the interface board, also to a number without a name.
int zvtSetPleoraBoardType(uint64_t handle, uint8_t board);
/// The set of boards, 0 to 6; newer cameras may return others.
int zvtGetBoardType(uint64_t handle, uint8_t* board);
/// The detector; zvtGetDetectorTypeName() names it.
int zvtGetDetectorType(uint64_t handle, uint8_t* detector);
/// The readout circuit; zvtGetReadoutName() names it.
int zvtGetReadout(uint64_t handle, uint8_t* readout);
/// The variant; zvtGetVariantName() names it.
int zvtGetVariant(uint64_t handle, uint8_t* out);
/// Appends further information about the camera, as names with values, always in the same order.
int zvtGetCameraExtraInfo(uint64_t handle, hlx::TArray<zvtSInfoEntry>* entries);

// ---- Names of identity values ---------------------------------------------------------------------------------------
// No handle. These functions fail for a number that has no name.

/// The name of a camera type.
int zvtGetCameraTypeName(uint8_t type, char* buffer, uint32_t size);
/// The name of a subtype of a camera type.
int zvtGetCameraSubtypeName(uint8_t type, uint8_t subtype, char* buffer, uint32_t size);
/// The name of a detector.
int zvtGetDetectorTypeName(uint8_t detector, char* buffer, uint32_t size);
/// The name of a readout circuit.
int zvtGetReadoutName(uint8_t readout, char* buffer, uint32_t size);
/// The name of an interface board.
int zvtGetPleoraBoardTypeName(uint8_t board, char* buffer, uint32_t size);
/// The name of a variant.
int zvtGetVariantName(uint8_t variant, char* buffer, uint32_t size);
/// The known camera models: a static array of zvtSModelInfo that ends at the first row with a null name. Never null.
const void* zvtGetModelInfoTable(void);

// ---- Time -----------------------------------------------------------------------------------------------------------

/// The real-time clock: year 0 for 2000, month 1 to 12, day 1 to 31, hour 0 to 23, minute and second 0 to 59.
int zvtGetRealTimeClock(uint64_t handle, uint8_t* year, uint8_t* month, uint8_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second);
/// Sets the real-time clock, in the ranges of zvtGetRealTimeClock(). A date or time that does not exist is refused.
int zvtSetRealTimeClock(uint64_t handle, uint8_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second);
/// The IRIG time: full year (0 if unknown), day of the year 1 to 366, hour 0 to 23, minute and second 0 to 59,
/// millisecond and microsecond 0 to 999.
int zvtGetIRIGTime(uint64_t handle, uint16_t* year, uint16_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second, uint16_t* millisecond, uint16_t* microsecond);
/// Sets the IRIG time; pass 0 for an unknown year. Numbers outside the ranges of zvtGetIRIGTime() are refused.
int zvtSetIRIGTime(uint64_t handle, uint16_t year, uint16_t dayOfYear, uint8_t hour, uint8_t minute, uint8_t second, uint16_t millisecond, uint16_t microsecond);
/// 1 while the camera is locked to an IRIG signal, else 0.
int zvtGetIRIGLocked(uint64_t handle, uint8_t* locked);
/// The total time that the camera has run, in minutes.
int zvtGetOperatingTime(uint64_t handle, uint32_t* minutes);

// ---- Temperatures ---------------------------------------------------------------------------------------------------

/// The detector's temperature in Kelvin, with every kind of cooler.
int zvtGetFPATemperature(uint64_t handle, float* temperature);
/// The temperature in Kelvin at and below which the detector counts as cold. For a thermo-electric cooler use the
/// setpoint instead. Fails on a camera that does not report this temperature.
int zvtGetFPAColdTemperature(uint64_t handle, float* temperature);
/// The temperatures of front panel, air gap and interior in degrees Celsius, measured by the sensor controller.
int zvtGetSCTemperatures(uint64_t handle, float* frontPanel, float* airGap, float* internal);
/// The temperature of the interior in degrees Celsius, measured by the readout electronics.
int zvtGetRSTemperatures(uint64_t handle, float* internal);
/// 1 if the lens has a temperature sensor, else 0.
int zvtGetHasLensTemperature(uint64_t handle, uint8_t* has);
/// The lens temperature in degrees Celsius. Fails without a sensor.
int zvtGetLensTemperature(uint64_t handle, float* temperature);

// ---- Detector cooler ------------------------------------------------------------------------------------------------

/// The kind of cooler; 1 is a thermo-electric one. zvtCoolerTypeText() names it.
int zvtMfgGetCoolerType(uint64_t handle, uint8_t* type);
/// The name of a kind of cooler, null for an unknown one. No handle; static text.
const char* zvtCoolerTypeText(uint8_t type);
/// The temperature that the cooler holds: degrees Celsius for a thermo-electric cooler, Kelvin for any other.
int zvtMfgGetCoolerSetpoint(uint64_t handle, float* setpoint);
/// Sets the temperature that the cooler holds, in the unit of zvtMfgGetCoolerSetpoint(). A temperature that the cooler
/// cannot reach is refused. Returns at once; the detector's temperature follows slowly.
int zvtMfgSetCoolerSetpoint(uint64_t handle, float setpoint);
/// 1 while the cooler has power, else 0.
int zvtMfgGetCoolerPowerEnabled(uint64_t handle, uint8_t* enabled);
/// Switches the cooler's power. Returns at once; the detector's temperature follows slowly.
int zvtMfgSetCoolerPowerEnabled(uint64_t handle, bool enabled);
/// The terms of the cooler's control loop: proportional, integral, differential, offset.
int zvtMfgGetCoolerSetup(uint64_t handle, float* kP, float* kI, float* kD, float* kOff);
/// Sets all four terms of the control loop.
int zvtMfgSetCoolerSetup(uint64_t handle, float kP, float kI, float kD, float kOff);

// ---- Window, presets and timing -------------------------------------------------------------------------------------
// The camera counts times in clocks.

/// A preset's window in pixels of the detector: the corner with the lowest x and y, and the size.
int zvtGetWindow(uint64_t handle, uint8_t preset, uint16_t* x, uint16_t* y, uint16_t* width, uint16_t* height);
/// The smallest and the largest size of a window, and the steps between sizes, in pixels.
int zvtGetWindowLimits(uint64_t handle, uint16_t* minW, uint16_t* maxW, uint16_t* minH, uint16_t* maxH, uint16_t* incW, uint16_t* incH);
/// The active preset.
int zvtGetActivePreset(uint64_t handle, uint8_t* preset);
/// The preset that the video output shows.
int zvtGetVideoPreset(uint64_t handle, uint8_t* preset);
/// The number of presets, 1 to 4.
int zvtGetNumPresets(uint64_t handle, uint8_t* count);
/// How presets follow each other: 0 a single preset, 1 superframing, 2 preset sequencing.
int zvtGetPresetSequencingMode(uint64_t handle, uint8_t* mode);
/// The frequency of the detector clock in hertz.
int zvtGetClockFrequency(uint64_t handle, uint32_t* hz);
/// Converts a period in clocks to its rate in hertz. 0 clocks are refused.
int zvtClocksToHertz(uint64_t handle, uint32_t clocks, double* hertz);
/// Converts a number of clocks to milliseconds.
int zvtClocksToMilliseconds(uint64_t handle, uint32_t clocks, double* milliseconds);
/// A preset's frame period in clocks.
int zvtGetFrameWidth(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets a preset's frame period in clocks. A period that is shorter than the result of zvtCalcMinFrameWidthEx() for the
/// preset's window and integration time is refused.
int zvtSetFrameWidth(uint64_t handle, uint8_t preset, uint32_t value);
/// A preset's integration time in clocks.
int zvtGetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets a preset's integration time in clocks. A time outside the camera's limits is refused. The frame period does not
/// change, even if it is now too short: check it with zvtCalcMinFrameWidthEx().
int zvtSetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t value);
/// 1 while the image is saturated, else 0.
int zvtGetSaturatedFlag(uint64_t handle, uint8_t* saturated);
/// The shortest frame period in clocks for a window size in pixels, at the shortest integration time. An empty window
/// is refused.
int zvtCalcMinFrameWidth(uint64_t handle, uint32_t* clocks, uint16_t width, uint16_t height);
/// The shortest frame period in clocks for a window size in pixels and an integration time in clocks, with or without
/// sequencing of presets. The period also depends on the noise reduction. An empty window is refused.
int zvtCalcMinFrameWidthEx(uint64_t handle, uint32_t* minClocks, uint16_t width, uint16_t height, uint32_t integrationWidth, bool sequencing);
/// The rate in hertz that is nearest to `wanted` (hertz) and whose period is a whole number of clocks. A `wanted` of 0
/// or less is refused.
int zvtSnapHertz(uint64_t handle, double* snapped, double wanted);

// ---- Events ---------------------------------------------------------------------------------------------------------

/// Removes the oldest event from the camera's queue and returns its type; ZVT_EVENT_NONE if the queue is empty.
int zvtReadEventQueue(uint64_t handle, zvtEEventType* type);

// ---- Focus ----------------------------------------------------------------------------------------------------------
// Positions are encoder counts of the lens; the near limit may be the larger number. `fov` is a field of view: 0
// narrow, 1 wide, or 2 on a lens without discrete fields of view; other values are refused. A move without a target
// position ends at a limit; every move ends at the next command. All moves fail while the focus is in manual mode.

/// The present position; it changes while the lens moves.
int zvtGetFocusCurrentPos(uint64_t handle, uint32_t* position);
/// The smallest and the largest position that the lens can reach.
int zvtGetFocusRange(uint64_t handle, uint32_t* minimum, uint32_t* maximum);
/// The near limit for a field of view.
int zvtGetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t* position);
/// Sets the near limit for a field of view. A position outside zvtGetFocusRange() is refused.
int zvtSetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t position);
/// The far limit for a field of view.
int zvtGetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t* position);
/// Sets the far limit for a field of view. A position outside zvtGetFocusRange() is refused.
int zvtSetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t position);
/// Moves the focus to a position. Blocks until it is there. A position outside zvtGetFocusRange() is refused.
int zvtSetFocusPos(uint64_t handle, uint32_t position);
/// Starts to move the focus to a position and returns. A position outside zvtGetFocusRange() is refused.
int zvtFocusMoveTo(uint64_t handle, uint32_t position);
/// Starts to move the focus and returns. `speed` is 1 slow, 2 medium, 3 fast, negative towards near, positive towards
/// far; 0 stops.
int zvtFocusMove(uint64_t handle, int32_t speed);
/// Starts to move the focus and returns. `percent` of the full speed is -100 to 100, negative towards near; 0 stops.
/// Fails on a lens that has only the three speeds of zvtFocusMove().
int zvtFocusMovePercent(uint64_t handle, float percent);
/// Moves the focus to the near limit of the present field of view. Blocks until it is there.
int zvtFocusNear(uint64_t handle);
/// Moves the focus to the far limit of the present field of view. Blocks until it is there.
int zvtFocusFar(uint64_t handle);
/// Whether the focus is turned by hand at the lens (manual mode).
int zvtGetFocusManualMode(uint64_t handle, bool* manual);
/// How slow moves are made in a field of view: 0 by steps of position, any other value by speed.
int zvtMfgGetFocusSlowControl(uint64_t handle, uint8_t fov, uint8_t* control);
/// The size of one such step in a field of view, in encoder counts.
int zvtMfgGetFocusPositionIncrement(uint64_t handle, uint8_t fov, uint32_t* increment);
/// Whether the lens can focus to a distance now.
int zvtGetFocusToDistanceAvailable(uint64_t handle, bool* available);
/// The nearest distance in metres; it depends on the zoom. Fails while focusing to a distance is not available.
int zvtGetFocusToDistanceMin(uint64_t handle, float* metres);
/// The farthest distance in metres; it depends on the zoom. Fails while focusing to a distance is not available.
int zvtGetFocusToDistanceMax(uint64_t handle, float* metres);
/// Starts to focus to a distance in metres and returns. A distance below zvtGetFocusToDistanceMin() or above
/// zvtGetFocusToDistanceMax() is replaced by this limit. A distance of 0 or less is refused.
int zvtFocusToDistance(uint64_t handle, float metres);

// ---- Automatic focus ------------------------------------------------------------------------------------------------

/// Focuses once. Blocks until the image is sharp. Pass 1; no other mode is defined.
int zvtAutoFocusFast(uint64_t handle, int32_t mode);
/// Focuses once over the whole range of the lens. Blocks until the image is sharp. Pass 0; no other flag is defined.
int zvtAutoFocusFull(uint64_t handle, int flag);
/// The side of the square focus region in pixels: 16, 32, 64, 128, 256 or 512. A camera may report another size.
int zvtGetAutoFocusROISize(uint64_t handle, uint16_t* size);
/// Sets the side of the focus region in pixels. Sizes other than these six are refused.
int zvtSetAutoFocusROISize(uint64_t handle, uint16_t size);
/// The place of the focus region, a zvtEAutoFocusROIPosition.
int zvtGetAutoFocusROIPosition(uint64_t handle, uint8_t* position);
/// Sets the place of the focus region. Values outside zvtEAutoFocusROIPosition are refused.
int zvtSetAutoFocusROIPosition(uint64_t handle, uint8_t position);
/// Whether the overlay shows the focus region during an automatic focus.
int zvtGetAutoFocusROIShowWhenFocusing(uint64_t handle, bool* show);
/// Shows or hides the focus region during an automatic focus; see also zvtSetVideoOverlayShowFocusROI().
int zvtSetAutoFocusROIShowWhenFocusing(uint64_t handle, bool show);

// ---- Zoom and field of view -----------------------------------------------------------------------------------------
// Zoom positions are encoder counts of the lens. A started move ends at the end of the range or at the next command.

/// The discrete field of view: 0 narrow, 1 wide. Fails on a lens without discrete fields of view.
int zvtGetFOV(uint64_t handle, uint8_t* fov);
/// Selects field of view 0 (narrow) or 1 (wide) and returns; other values are refused. The focus limits change at once,
/// and the focus moves to its place between the new ones.
int zvtSetFOV(uint64_t handle, uint8_t fov);
/// The commanded zoom position.
int zvtGetFOVPos(uint64_t handle, uint32_t* position);
/// Moves the zoom to a position. Blocks until it is there. A position outside zvtGetFOVRange() is refused.
int zvtSetFOVPos(uint64_t handle, uint32_t position);
/// The present zoom position; it differs from the commanded one while the lens moves.
int zvtGetFOVCurrentPos(uint64_t handle, uint32_t* position);
/// The least (widest) and the greatest (narrowest) zoom position. The lens may coast beyond them.
int zvtGetFOVRange(uint64_t handle, uint32_t* minimum, uint32_t* maximum);
/// Starts to move the zoom to a position and returns. A position outside zvtGetFOVRange() is refused.
int zvtFOVMoveTo(uint64_t handle, uint32_t position);
/// Starts to move the zoom and returns. `speed` is 1 slow, 2 medium, 3 fast, negative towards wide, positive towards
/// narrow; 0 stops.
int zvtFOVMove(uint64_t handle, int32_t speed);
/// Starts to move the zoom and returns. `percent` of the full speed is -100 to 100, negative towards wide; 0 stops.
/// Fails on a lens that moves by steps of speed only.
int zvtFOVMovePercent(uint64_t handle, float percent);
/// Moves the zoom to the widest field of view. Blocks until it is there.
int zvtFOVMin(uint64_t handle);
/// Moves the zoom to the narrowest field of view. Blocks until it is there.
int zvtFOVMax(uint64_t handle);

// ---- Lens cover, athermalization and lens states --------------------------------------------------------------------
// A lens state is a position of focus, zoom and field of view, stored on the camera under a name. Names that the camera
// cannot use are refused.

/// The lens cover: 0 open, 1 closed, 2 not known, as while it moves.
int zvtGetLensCoverState(uint64_t handle, uint8_t* state);
/// Opens (0) or closes (1) the lens cover; other values are refused. Blocks until it has moved.
int zvtSetLensCoverState(uint64_t handle, uint8_t state);
/// Whether the lens can correct its focus for temperature.
int zvtGetLensAthermalizationEnabledAvailable(uint64_t handle, bool* available);
/// Whether the lens corrects its focus for temperature. Fails if it cannot.
int zvtGetLensAthermalizationEnabled(uint64_t handle, bool* enabled);
/// Switches the correction of the focus for temperature. Refused if the lens cannot do it.
int zvtSetLensAthermalizationEnabled(uint64_t handle, bool enabled);
/// Replaces the content of `entries` by the stored lens states, in the camera's order. After a failure it may hold
/// some.
int zvtListLensStates(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// Moves the lens to a stored state. Blocks until it is there. Fails if there is none of this name.
int zvtLoadLensState(uint64_t handle, const char* name);
/// Stores the present position of the lens under a name; replaces a state of that name.
int zvtSaveLensStateAs(uint64_t handle, const char* name);
/// Renames a lens state. Fails if there is no such state or the new name is taken.
int zvtRenameLensState(uint64_t handle, const char* oldName, const char* newName);
/// Deletes a lens state. Fails if there is none of this name.
int zvtDeleteLensState(uint64_t handle, const char* name);

// ---- Filter wheel ---------------------------------------------------------------------------------------------------
// A filter is identified by its ID, 0 to 63, which the wheel reads from the filter. A slot is a place in the wheel, 0
// to 3.

/// 1 if the camera has a filter wheel, else 0.
int zvtGetFilterWheelPresent(uint64_t handle, uint8_t* out);
/// The number of slots in the wheel; 3 or 4 on known wheels.
int zvtGetNumFilters(uint64_t handle, uint8_t* count);
/// The IDs of the filters in slots 0 to 3.
int zvtGetFilterIDs(uint64_t handle, uint8_t* id0, uint8_t* id1, uint8_t* id2, uint8_t* id3);
/// The ID of the filter in a slot.
int zvtGetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t* out);
/// Stores the ID of the filter that is in a slot.
int zvtSetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t value);
/// The ID of the filter in the optical path; it may be in none of the slots.
int zvtGetCurrentFilterID(uint64_t handle, uint8_t* id);
/// Turns the wheel to a filter by its ID. Blocks until the wheel has stopped.
int zvtSetCurrentFilterID(uint64_t handle, uint8_t id);
/// Turns the wheel once and reads its filters again. Takes seconds. The number of filters and their IDs may change.
int zvtScanFilters(uint64_t handle);
/// The built-in name of a filter, null for an ID above 63. No handle; static text.
const char* zvtGetFilterName(uint8_t id);
/// The name of a filter: the user's if one was set, else the built-in one.
int zvtGetFilterNameEx(uint64_t handle, uint8_t id, char* buffer, uint32_t size);
/// Sets the user's name of a filter.
int zvtSetFilterInfoName(uint64_t handle, uint8_t id, const char* name);

// ---- Calibration flag -----------------------------------------------------------------------------------------------

/// Whether the camera has a flag.
int zvtGetFlagPresent(uint64_t handle, bool* out);
/// Whether the flag's temperature can be set.
int zvtGetFlagTemperatureControlled(uint64_t handle, bool* out);
/// The flag's position: 0 stowed, 1 in view.
int zvtGetFlagState(uint64_t handle, uint8_t* state);
/// Moves the flag out of view (0) or into view (1).
int zvtSetFlagState(uint64_t handle, uint8_t state);
/// The flag's temperature in degrees Celsius.
int zvtGetFlagTemperature(uint64_t handle, float* temperature);
/// The temperature that the flag is held at, in degrees Celsius.
int zvtGetFlagDesiredTemperature(uint64_t handle, float* temperature);
/// Sets the temperature to hold the flag at, in degrees Celsius. One out of the flag's range is refused.
int zvtSetFlagDesiredTemperature(uint64_t handle, float temperature);
/// Whether the flag's cooler runs. It cannot be set.
int zvtGetFlagCoolerEnabled(uint64_t handle, bool* enabled);

// ---- Frame synchronisation ------------------------------------------------------------------------------------------
// A polarity is 0 for active low, 1 for active high.

/// The source of the frame sync: 0 internal, 1 external, 2 video, 3 tri-level.
int zvtGetFrameSyncSource(uint64_t handle, uint8_t* source);
/// Sets the source of the frame sync, 0 to 3; 3 is refused without a tri-level input.
int zvtSetFrameSyncSource(uint64_t handle, uint8_t source);
/// What a frame sync starts: 0 the integration, 1 the readout. zvtFrameSyncModeText() names it.
int zvtGetFrameSyncMode(uint64_t handle, uint8_t* mode);
/// Sets what a frame sync starts: 0 the integration, 1 the readout.
int zvtSetFrameSyncMode(uint64_t handle, uint8_t mode);
/// The name of a frame sync mode, null for an unknown one. No handle; static text.
const char* zvtFrameSyncModeText(uint8_t mode);
/// The delay of the frame sync in microseconds.
int zvtGetFrameSyncDelay(uint64_t handle, float* microseconds);
/// Sets the delay of the frame sync in microseconds, 0 to 1e6; the nearest clock is stored. Else refused, also NaN.
int zvtSetFrameSyncDelay(uint64_t handle, float microseconds);
/// The polarity of the frame sync input.
int zvtGetFrameSyncPolarity(uint64_t handle, uint8_t* polarity);
/// Sets the polarity of the frame sync input.
int zvtSetFrameSyncPolarity(uint64_t handle, uint8_t polarity);
/// Whether the camera has a tri-level sync input.
int zvtGetTriLevelSyncSourceAvailable(uint64_t handle, bool* available);
/// What the sync output follows: 0 the start of integration, 1 the start of a frame, 2 the saturation flag.
int zvtGetSyncOutSource(uint64_t handle, uint8_t* source);
/// Sets what the sync output follows, 0 to 2.
int zvtSetSyncOutSource(uint64_t handle, uint8_t source);
/// The delay of a preset's sync output in microseconds.
int zvtGetSyncOutDelay(uint64_t handle, uint8_t preset, float* microseconds);
/// Sets the delay of a preset's sync output in microseconds; preset 0 to 3, ranges as of zvtSetFrameSyncDelay().
int zvtSetSyncOutDelay(uint64_t handle, uint8_t preset, float microseconds);
/// The polarity of the sync output.
int zvtGetSyncOutPolarity(uint64_t handle, uint8_t* polarity);
/// Sets the polarity of the sync output.
int zvtSetSyncOutPolarity(uint64_t handle, uint8_t polarity);
/// The polarity of the integration output.
int zvtGetIntegrateOutPolarity(uint64_t handle, uint8_t* out);
/// Sets the polarity of the integration output.
int zvtSetIntegrateOutPolarity(uint64_t handle, uint8_t value);
/// When a frame's time is taken: 0 at its start, 1 at the start of integration, 2 at the end of integration.
int zvtGetIRIGLatchSource(uint64_t handle, uint8_t* out);
/// Sets when a frame's time is taken, 0 to 2.
int zvtSetIRIGLatchSource(uint64_t handle, uint8_t value);

// ---- Trigger --------------------------------------------------------------------------------------------------------
// A polarity is 0 for active low, 1 for active high.

/// What a trigger starts: 0 free run (no trigger), 1 triggered free run, 2 a triggered sequence (a superframe on a
/// camera without preset sequencing), 3 the advance to the next preset.
int zvtGetTriggerMode(uint64_t handle, uint8_t* mode);
/// Sets what a trigger starts, 0 to 3; 3 only with preset sequencing.
int zvtSetTriggerMode(uint64_t handle, uint8_t mode);
/// The source of the trigger: 0 internal, 1 external, 2 software, 3 time.
int zvtGetTriggerSource(uint64_t handle, uint8_t* source);
/// Sets the source of the trigger, 0 to 3, and arms it.
int zvtSetTriggerSource(uint64_t handle, uint8_t source);
/// The delay of the trigger in microseconds.
int zvtGetTriggerDelay(uint64_t handle, float* microseconds);
/// Sets the delay of the trigger in microseconds; ranges as of zvtSetFrameSyncDelay().
int zvtSetTriggerDelay(uint64_t handle, float microseconds);
/// The polarity of the trigger input.
int zvtGetTriggerPolarity(uint64_t handle, uint8_t* polarity);
/// Sets the polarity of the trigger input.
int zvtSetTriggerPolarity(uint64_t handle, uint8_t polarity);
/// The rate of the internal trigger in hertz.
int zvtGetInternalTriggerRate(uint64_t handle, double* hertz);
/// Sets the rate of the internal trigger, 0.01 to 1e5 Hz; zvtSnapHertz() returns rates that the camera can do.
int zvtSetInternalTriggerRate(uint64_t handle, double hertz);
/// The time of a trigger with source 3: day of the year from 1, hour, minute, second, millisecond, microsecond.
int zvtGetIRIGTriggerTime(uint64_t handle, uint16_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second, uint16_t* millisecond, uint16_t* microsecond);
/// Sets the time of a trigger with source 3: day 1 to 366, and a time of that day up to 23:59:59.999 999. Else refused.
int zvtSetIRIGTriggerTime(uint64_t handle, uint16_t day, uint8_t hour, uint8_t minute, uint8_t second, uint16_t millisecond, uint16_t microsecond);
/// The number of sequences that one trigger starts.
int zvtGetSequenceCount(uint64_t handle, uint32_t* count);
/// Sets the number of sequences that one trigger starts, 1 to 1e6.
int zvtSetSequenceCount(uint64_t handle, uint32_t count);
/// Triggers once. Refused in free run, and with another source than software.
int zvtSoftwareTrigger(uint64_t handle);
/// Arms the trigger, so that a further one can start frames.
int zvtRearmTrigger(uint64_t handle);

// ---- Camera states --------------------------------------------------------------------------------------------------
// A state is a set of the camera's settings in a file on the camera. A transfer reports its progress on the calling
// thread as (done, total) with a total above 0. A delegate that returns anything but 0 stops the transfer, which then
// fails.

/// Replaces the content of `entries` by the stored states, in the camera's order.
int zvtListStates(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// 0 if there is a state of this name.
int zvtStateExists(uint64_t handle, const char* name);
/// 0 if a state can have this name: a valid file name of at most 199 bytes. No handle.
int zvtIsValidStateName(const char* name);
/// 0 if a file on the camera can have this name: at least one character that is no space, no space at its start, none
/// of / \ : * ? " < > |, at most 255 bytes of UTF-8. No handle.
int zvtIsValidFileName(const char* name);
/// The name of the camera's current state: the one last loaded or saved, or "Factory Defaults" or "Hard Defaults".
/// Empty if there is none.
int zvtGetStateName(uint64_t handle, char* buffer, uint32_t size);
/// 1 if the current state is the factory default, else 0.
int zvtIsFactoryDefaultState(uint64_t handle, uint8_t* isFactory);
/// Saves the settings in the current state. Fails if that has no name of its own. Slow.
int zvtSaveState(uint64_t handle);
/// Saves the settings as a state, which becomes the current one; replaces a state of that name. A name that is not
/// valid is refused. Slow.
int zvtSaveStateAs(uint64_t handle, const char* name);
/// Saves the settings as the factory default, which becomes the current state. Slow.
int zvtSaveFactoryDefaults(uint64_t handle);
/// Deletes a state. Fails if there is none of this name.
int zvtDeleteState(uint64_t handle, const char* name);
/// Renames a state. Fails if there is no such state, or the new name is taken or not valid.
int zvtRenameState(uint64_t handle, const char* oldName, const char* newName);
/// Copies a local file to the camera as a state named like the file without its last extension; replaces a state of
/// that name. Blocks. The progress may be null.
int zvtUploadStateStd(uint64_t handle, const char* file, hlx::delegate<int(unsigned int, unsigned int)>* progress);
/// Copies a state into a local file. Blocks. The progress may be null.
int zvtDownloadStateStd(uint64_t handle, const char* name, const char* file, hlx::delegate<int(unsigned int, unsigned int)>* progress);
/// Copies a local file to the camera as its factory default state. Blocks. The progress may be empty.
int zvtUploadFactoryDefaultStateStd(uint64_t handle, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies the factory default state into a local file. Blocks. The progress may be empty.
int zvtDownloadFactoryDefaultStateStd(uint64_t handle, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies the file with this path on the camera into a local file. Blocks. The progress may be empty.
int zvtDownloadFileStd(uint64_t handle, const char* cameraPath, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);

// ---- Non-uniformity corrections -------------------------------------------------------------------------------------
// Corrections (NUCs) are files on the camera; each preset has at most one loaded. Transfers report their progress as
// those of states do.

/// Replaces the content of `entries` by the stored corrections, in the camera's order.
int zvtListNUCs(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// 0 if there is a correction of this name.
int zvtNUCExists(uint64_t handle, const char* name);
/// The name of the correction loaded in a preset. Empty if there is none.
int zvtGetNUCName(uint64_t handle, uint8_t preset, char* buffer, uint32_t size);
/// The size of a correction in bytes and its time in units of 100 ns since 1601-01-01 00:00 UTC.
int zvtGetNUCFileInfo(uint64_t handle, const char* name, uint32_t* size, uint64_t* time100ns);
/// The description of a correction as far as its header holds it.
int zvtQueryNUCBasicInfo(uint64_t handle, const char* name, zvtSNUCInfo* out);
/// The whole description of a correction.
int zvtQueryNUCInfo(uint64_t handle, const char* name, zvtSNUCInfo* out);
/// Whether a correction is the factory's. Fails if there is none of this name.
int zvtIsFactoryNUC(uint64_t handle, const char* name, bool* out);
/// Loads a correction into a preset. Slow.
int zvtLoadNUC(uint64_t handle, uint8_t preset, const char* name);
/// Removes the loaded correction of a preset.
int zvtUnloadNUC(uint64_t handle, uint8_t preset);
/// Saves a preset's correction under its name. Slow.
int zvtSaveNUC(uint64_t handle, uint8_t preset);
/// Saves a preset's correction under a name, which becomes its own. Slow.
int zvtSaveNUCAs(uint64_t handle, uint8_t preset, const char* name);
/// Deletes a stored correction. Fails if there is none of this name.
int zvtDeleteNUC(uint64_t handle, const char* name);
/// Renames a stored correction. Fails if there is no such correction, if it is the factory's, or if the new name is
/// taken.
int zvtRenameNUC(uint64_t handle, const char* oldName, const char* newName);
/// The space left for corrections in bytes.
int zvtGetNUCFreeSpace(uint64_t handle, uint64_t* bytes);
/// An estimate, in bytes, of the size of a correction for a window size in pixels.
int zvtGuessNUCSize(uint64_t handle, uint16_t width, uint16_t height, uint32_t* bytes);
/// Copies a local file to the camera as a correction of this name. Blocks. The progress may be empty.
int zvtUploadNUCStdEx(uint64_t handle, const char* remoteName, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies a correction into a local file. Blocks. The progress may be empty. A transfer that is stopped leaves the part
/// it has written.
int zvtDownloadNUCStd(uint64_t handle, const char* name, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);

// ---- Making a correction --------------------------------------------------------------------------------------------
// The setters below only store a value for the next run. Temperatures are in degrees Celsius.

/// Sets the preset that the next run makes a correction for.
int zvtSetNUCPreset(uint64_t handle, uint8_t preset);
/// The kind of correction: 0 one-point, 1 two-point, 2 offset update. zvtNUCTypeText() names it.
int zvtGetNUCType(uint64_t handle, uint8_t* out);
/// Sets the kind of correction, 0 to 2.
int zvtSetNUCType(uint64_t handle, uint8_t value);
/// The name of a kind of correction, null for an unknown one. No handle; static text.
const char* zvtNUCTypeText(uint8_t type);
/// The source that the run measures: 0 external, 1 internal (the flag). zvtNUCSourceText() names it.
int zvtGetNUCSource(uint64_t handle, uint8_t* out);
/// Sets the source that the run measures: 0 external, 1 internal.
int zvtSetNUCSource(uint64_t handle, uint8_t value);
/// The name of a source, null for an unknown one. No handle; static text.
const char* zvtNUCSourceText(uint8_t source);
/// The number of frames averaged for each source, 0 to 255. A run with 0 frames ends with result 2.
int zvtGetNUCNumFrames(uint64_t handle, uint8_t* out);
/// Sets the number of frames averaged for each source, 0 to 255.
int zvtSetNUCNumFrames(uint64_t handle, uint8_t value);
/// The limits of a good pixel and whether bad pixels are looked for. Gain is a factor, 0.0 to 10.0; the signal is in A/D
/// counts.
int zvtGetNUCSetup(uint64_t handle, float* gainMin, float* gainMax, uint16_t* adLow, uint16_t* adHigh, bool* detectBadPixels);
/// Sets the limits of a good pixel, and whether bad pixels are looked for, as zvtGetNUCSetup() returns them.
int zvtSetNUCSetup(uint64_t handle, float gainMin, float gainMax, uint16_t adLow, uint16_t adHigh, bool detectBadPixels);
/// Whether twinkling pixels are looked for, in how many frames (1 to 1048575), and the greatest change in A/D counts of
/// a pixel that does not twinkle.
int zvtGetTwinklerSetup(uint64_t handle, bool* detect, uint32_t* numFrames, uint16_t* delta);
/// Sets the search for twinkling pixels, as zvtGetTwinklerSetup() returns it.
int zvtSetTwinklerSetup(uint64_t handle, bool detect, uint32_t numFrames, uint16_t delta);
/// Whether the factory's bad pixels count as bad too.
int zvtGetNUCUseFactoryBadPixels(uint64_t handle, bool* out);
/// Sets whether the factory's bad pixels count as bad too.
int zvtSetNUCUseFactoryBadPixels(uint64_t handle, bool value);
/// Which setpoints of the flag apply: 0 zvtGetNUCFlagSetpointDeltas(), 1 zvtGetNUCFlagSetpointTemps().
int zvtGetNUCFlagSetpointType(uint64_t handle, uint8_t* out);
/// Sets which setpoints of the flag apply: 0 the deltas above ambient, 1 the fixed temperatures.
int zvtSetNUCFlagSetpointType(uint64_t handle, uint8_t value);
/// The flag's first (low) and second (high) setpoint above ambient, in degrees Celsius.
int zvtGetNUCFlagSetpointDeltas(uint64_t handle, float* low, float* high);
/// Sets the flag's two setpoints above ambient, in degrees Celsius.
int zvtSetNUCFlagSetpointDeltas(uint64_t handle, float low, float high);
/// The flag's first (low) and second (high) setpoint in degrees Celsius.
int zvtGetNUCFlagSetpointTemps(uint64_t handle, float* low, float* high);
/// Sets the flag's two setpoints in degrees Celsius.
int zvtSetNUCFlagSetpointTemps(uint64_t handle, float low, float high);
/// The flag's greatest temperature (40 to 100) and the distance from its target at which it counts as stable (0.01 to
/// 10), in degrees Celsius; the number of readings that must be stable, 1 to 255; the time limit in milliseconds, 1000
/// to 600000.
int zvtGetNUCFlagConfig(uint64_t handle, float* flagMaxTemp, float* stableDelta, uint32_t* stableCount, uint32_t* timeout);
/// Sets the four values of zvtGetNUCFlagConfig().
int zvtSetNUCFlagConfig(uint64_t handle, float flagMaxTemp, float stableDelta, uint32_t stableCount, uint32_t timeout);
/// Starts a run with the settings above and returns.
int zvtStartNUC(uint64_t handle);
/// Continues a run that waits for an external source (status 2 or 6).
int zvtContinueNUC(uint64_t handle);
/// Ends the run, with result 1.
int zvtAbortNUC(uint64_t handle);
/// The status of the run and a text for the operator. 0: no run. Waiting for the operator to present an external
/// source: 2 (first), 6 (second). Waiting for the internal source: 3, 7. Collecting frames of a source: 4, 8; done: 5,
/// 9. Collecting frames for twinklers: 10; done: 11. Otherwise busy: 1 saving the old correction, 12 computing, 13
/// starting, 14 applying the factory's bad pixels.
int zvtGetNUCStatus(uint64_t handle, uint16_t* status, char* text, uint32_t size);
/// The result of the last run and a text for the operator: 0 good, 1 aborted, 2 invalid parameter, 3 the flag's cooler
/// ran away. Valid while the status is 0.
int zvtGetNUCResult(uint64_t handle, uint16_t* result, char* text, uint32_t size);
/// The numbers of bad pixels of a preset by reason: those of its last run that succeeded, 0 before the first one.
int zvtGetNUCResults(uint64_t handle, uint8_t preset, uint32_t* total, uint32_t* factory, uint32_t* newBad, uint32_t* twinkling, uint32_t* aboveGainMax, uint32_t* belowGainMin, uint32_t* aboveADMaxSrc1, uint32_t* belowADMinSrc1, uint32_t* aboveADMaxSrc2, uint32_t* belowADMinSrc2);
/// Makes the result of the run the loaded correction of its preset. Does not save it.
int zvtAcceptNUC(uint64_t handle);
/// Drops the result of the run and restores the old correction.
int zvtDiscardNUC(uint64_t handle);

// ---- Correction in use ----------------------------------------------------------------------------------------------

/// Whether the digital output is corrected.
int zvtGetDigitalOutputNUCEnabled(uint64_t handle, bool* out);
/// Switches the correction of the digital output.
int zvtSetDigitalOutputNUCEnabled(uint64_t handle, bool value);
/// Whether the video output is corrected.
int zvtGetVideoOutputNUCEnabled(uint64_t handle, bool* out);
/// Switches the correction of the video output.
int zvtSetVideoOutputNUCEnabled(uint64_t handle, bool value);
/// The automatic correction: whether it is on; whether a change of the front panel's temperature starts it, and the
/// change, 0.1 to 2000 degrees Celsius; whether it is repeated after a time, and the time, 1 to 604800 minutes.
int zvtGetAutoNUCSetup(uint64_t handle, bool* enabled, bool* useDeltaTemp, float* deltaTemp, bool* useDeltaTime, uint32_t* deltaTime);
/// Sets all five values of zvtGetAutoNUCSetup().
int zvtSetAutoNUCSetup(uint64_t handle, bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime, uint32_t deltaTime);
/// Starts an automatic correction now.
int zvtDoAutoNUC(uint64_t handle);
/// Whether the image shows bad pixels instead of replacing them.
int zvtGetShowBadPixels(uint64_t handle, bool* out);
/// Shows bad pixels in the live image or replaces them.
int zvtSetShowBadPixels(uint64_t handle, bool value);
/// How bad pixels are replaced: 0 two point gradient, 1 nearest neighbour, 2 not at all.
int zvtGetBadPixelCorrectionMethod(uint64_t handle, uint8_t* out);
/// Sets how bad pixels are replaced, 0 to 2.
int zvtSetBadPixelCorrectionMethod(uint64_t handle, uint8_t value);
/// Writes a preset's list of bad pixels into a file with this path on the camera, "/Temp/NAME.bpl". Any other path is
/// refused, and a preset without a correction.
int zvtSaveBadPixelList(uint64_t handle, uint8_t preset, const char* cameraPath);

// ---- Detector voltages, gain and image orientation ------------------------------------------------------------------

/// The number of colours of the detector; 2 for one with two spectral bands.
int zvtGetNumColors(uint64_t handle, uint8_t* count);
/// Selects the colour of a preset: 0 P on N, 1 N on P.
int zvtSetColor(uint64_t handle, uint8_t preset, uint8_t color);
/// Whether the gain levels have names.
int zvtGetGainLevelsAreNamed(uint64_t handle, bool* named);
/// The gain level, from 0.
int zvtGetGainLevel(uint64_t handle, uint8_t* level);
/// Sets the gain level, from 0. A level that the camera does not have is refused.
int zvtSetGainLevel(uint64_t handle, uint8_t level);
/// The name of a gain level; may be empty. Fails for a level without a name.
int zvtGetGainLevelName(uint64_t handle, uint8_t level, char* buffer, uint32_t size);
/// The global offset voltage in volts.
int zvtGetGlobalOffsetVoltage(uint64_t handle, float* out);
/// Sets the global offset voltage in volts, within zvtGetGlobalOffsetVoltageLimits().
int zvtSetGlobalOffsetVoltage(uint64_t handle, float value);
/// The limits of the global offset voltage in volts.
int zvtGetGlobalOffsetVoltageLimits(uint64_t handle, float* min, float* max);
/// The detector bias in millivolts; the P on N bias where there are two.
int zvtGetFPABias(uint64_t handle, float* out);
/// Sets the detector bias (the P on N bias where there are two) in millivolts, within zvtGetFPABiasLimits().
int zvtSetFPABias(uint64_t handle, float value);
/// Sets one of two detector biases, in the unit of zvtSetFPABias(). Index 1 is the N on P bias.
int zvtSetFPABiasEx(uint64_t handle, uint8_t index, float millivolts);
/// The limits of the detector bias in millivolts.
int zvtGetFPABiasLimits(uint64_t handle, float* min, float* max);
/// Whether the detector can skim.
int zvtGetSkimmingAvailable(uint64_t handle, bool* out);
/// Whether the detector skims.
int zvtGetSkimmingEnabled(uint64_t handle, bool* out);
/// Switches skimming.
int zvtSetSkimmingEnabled(uint64_t handle, bool value);
/// The skimming voltage in volts.
int zvtGetSkimmingVoltage(uint64_t handle, float* out);
/// Sets the skimming voltage in volts, within zvtGetSkimmingVoltageLimits().
int zvtSetSkimmingVoltage(uint64_t handle, float value);
/// The limits of the skimming voltage in volts.
int zvtGetSkimmingVoltageLimits(uint64_t handle, float* min, float* max);
/// A preset's digital gain, a factor from 0.0 to 3.999.
int zvtGetDigitalGain(uint64_t handle, uint8_t preset, float* out);
/// Sets a preset's digital gain, 0.0 to 3.999.
int zvtSetDigitalGain(uint64_t handle, uint8_t preset, float value);
/// A preset's digital offset in A/D counts, -16383.5 to 16383.5.
int zvtGetDigitalOffset(uint64_t handle, uint8_t preset, float* out);
/// Sets a preset's digital offset in A/D counts, -16383.5 to 16383.5.
int zvtSetDigitalOffset(uint64_t handle, uint8_t preset, float value);
/// Whether the image is flipped left to right.
int zvtGetRevertEnabled(uint64_t handle, bool* enabled);
/// Flips the image left to right, or stops flipping it.
int zvtSetRevertEnabled(uint64_t handle, bool enabled);
/// Whether the image is flipped top to bottom.
int zvtGetInvertEnabled(uint64_t handle, bool* enabled);
/// Flips the image top to bottom, or stops flipping it.
int zvtSetInvertEnabled(uint64_t handle, bool enabled);
/// Whether the camera has a high sensitivity mode.
int zvtGetHSMAvailable(uint64_t handle, bool* available);
/// Whether the high sensitivity mode is on. Fails without this mode.
int zvtGetHSMEnabled(uint64_t handle, bool* enabled);
/// Switches the high sensitivity mode. Refused without this mode.
int zvtSetHSMEnabled(uint64_t handle, bool enabled);

// ---- Saturation -----------------------------------------------------------------------------------------------------

/// The A/D count (0 to 16383) above which a pixel of a preset is saturated.
int zvtGetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t* out);
/// Sets the A/D count (0 to 16383) above which a pixel of a preset is saturated.
int zvtSetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t value);
/// The number of saturated pixels (0 to 1048576) above which a preset's image is saturated.
int zvtGetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets the number of saturated pixels (0 to 1048576) above which a preset's image is saturated.
int zvtSetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t value);
/// The number of saturated pixels of a preset in the latest frame.
int zvtGetSaturatedPixels(uint64_t handle, uint8_t preset, uint32_t* out);

// ---- Lock-in --------------------------------------------------------------------------------------------------------
// The camera locks to a periodic input signal.

/// The coupling of the input signal: 0 AC, 1 DC.
int zvtGetLockinCoupling(uint64_t handle, uint8_t* out);
/// Sets the coupling of the input signal: 0 AC, 1 DC.
int zvtSetLockinCoupling(uint64_t handle, uint8_t value);
/// The digital filter. Without a sample rate: 0 off, n of 1 to 7 the fraction 1/2^n. With one: n of 0 to 6 the
/// frequency 0.026368 * sample rate / 2^n.
int zvtGetLockinAlphaFilter(uint64_t handle, uint8_t* out);
/// Sets the digital filter, in the numbers of zvtGetLockinAlphaFilter(). The camera may take another one: read it back.
int zvtSetLockinAlphaFilter(uint64_t handle, uint8_t value);
/// The estimated frequency of the input signal in hertz.
int zvtGetLockinEstInputFreq(uint64_t handle, float* out);
/// Sets the estimated frequency in hertz, 0 or above. The camera may take another one: read it back.
int zvtSetLockinEstInputFreq(uint64_t handle, float value);
/// The sample rate in hertz that the camera found. Fails while there is none.
int zvtGetLockinSampleFreq(uint64_t handle, float* out);

// ---- Digital outputs ------------------------------------------------------------------------------------------------

/// 1 if the camera reports the transport that it streams over, else 0.
int zvtGetDeviceTLTypeAvailable(uint64_t handle, uint8_t* out);
/// The transport that the camera streams over. 0: stop the stream before a header mode is set, and start it afterwards.
int zvtGetDeviceTLType(uint64_t handle, uint8_t* out);
/// 1 if the header mode of GigE can be set, else 0.
int zvtGetGigEHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What GigE frames carry: 0 header and image, 1 header only, 2 image only. Fails while it is not available.
int zvtGetGigEHeaderMode(uint64_t handle, uint8_t* out);
/// Sets what GigE frames carry, 0 to 2; others are refused. Refused while GigE streams, and while it is not available.
int zvtSetGigEHeaderMode(uint64_t handle, uint8_t value);
/// The preset streamed over GigE, 4 for all presets. Fails on a camera that cannot select it.
int zvtGetGigEPreset(uint64_t handle, uint8_t* preset);
/// Sets the preset streamed over GigE, 4 for all presets. Any other number that is not a preset is refused.
int zvtSetGigEPreset(uint64_t handle, uint8_t preset);
/// 1 if the header mode of CameraLink can be set, else 0.
int zvtGetCameraLinkHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What CameraLink frames carry: 0 header and image, 1 image only. Fails while it is not available.
int zvtGetCameraLinkHeaderMode(uint64_t handle, uint8_t* out);
/// Sets what CameraLink frames carry: 0 header and image, 1 image only. Others are refused, and all while it is not
/// available.
int zvtSetCameraLinkHeaderMode(uint64_t handle, uint8_t value);
/// The CameraLink configuration: 0 base, 1 full; cameras may have others.
int zvtGetCameraLinkType(uint64_t handle, uint8_t* out);
/// 1 if the CameraLink configuration can be changed, else 0.
int zvtGetCameraLinkTypeWritable(uint64_t handle, uint8_t* out);
/// 1 if the header mode of CoaXPress can be set, else 0.
int zvtGetCoaXPressHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What CoaXPress frames carry: 0 header and image, 1 image only. Fails while it is not available.
int zvtGetCoaXPressHeaderMode(uint64_t handle, uint8_t* out);
/// Sets what CoaXPress frames carry: 0 header and image, 1 image only. Others are refused, and all while it is not
/// available.
int zvtSetCoaXPressHeaderMode(uint64_t handle, uint8_t value);
/// The number of CoaXPress links, 1 or 2.
int zvtGetCoaXPressLinkCount(uint64_t handle, uint8_t* out);
/// 1 if the number of CoaXPress links can be changed, else 0.
int zvtGetCoaXPressLinkCountWritable(uint64_t handle, uint8_t* out);

// ---- Video output ---------------------------------------------------------------------------------------------------

/// Appends the formats that the camera offers, in the numbers of zvtGetVideoFormat() and possibly others.
int zvtGetVideoFormats(uint64_t handle, hlx::TArray<unsigned char>* out);
/// The video format: 0 NTSC, 1 PAL, 2 SVGA, 3 NTSC and 4 PAL with square pixels, 5 720p at 60 Hz, 6 SXGA, 7 1080p at
/// 24, 8 at 30, 9 at 60 Hz, 10 720p at 59.9 Hz, 11 1080p at 29.9 Hz, 12 720p at 50 Hz, 13 1080p at 25 Hz, 101 480i, 102
/// 576i. It may be none of those offered.
int zvtGetVideoFormat(uint64_t handle, uint8_t* out);
/// Sets the video format, in the numbers of zvtGetVideoFormat().
int zvtSetVideoFormat(uint64_t handle, uint8_t value);
/// The update rate: 0 by frames, 1 by fields.
int zvtGetVideoUpdateRate(uint64_t handle, uint8_t* out);
/// Sets the update rate: 0 by frames, 1 by fields.
int zvtSetVideoUpdateRate(uint64_t handle, uint8_t value);
/// The temporal filter: 0 none, 1 four taps, 2 four taps adaptive.
int zvtGetVideoTemporalFilter(uint64_t handle, uint8_t* out);
/// Sets the temporal filter, 0 to 2.
int zvtSetVideoTemporalFilter(uint64_t handle, uint8_t value);
/// The threshold of the temporal filter, 0 to 65535.
int zvtGetVideoTemporalFilterThreshold(uint64_t handle, uint16_t* out);
/// Sets the threshold of the temporal filter, 0 to 65535.
int zvtSetVideoTemporalFilterThreshold(uint64_t handle, uint16_t value);
/// Whether the position of the image can be set.
int zvtGetVideoPositionWritable(uint64_t handle, bool* out);
/// The position of the image in the video: 0 as on the detector, 1 centred, 2 by zvtGetVideoOffset().
int zvtGetVideoPosition(uint64_t handle, uint8_t* out);
/// Sets the position of the image in the video, 0 to 2. Refused if it cannot be set.
int zvtSetVideoPosition(uint64_t handle, uint8_t value);
/// The offset of the image in the video in pixels, for position 2.
int zvtGetVideoOffset(uint64_t handle, int16_t* x, int16_t* y);
/// Sets this offset. Refused unless it is a multiple of 4 with which the image is inside the video.
int zvtSetVideoOffset(uint64_t handle, int16_t x, int16_t y);
/// Appends the zoom factors that the camera offers, as numbers that zvtVideoZoomFactorText() names.
int zvtGetVideoZoomFactors(uint64_t handle, hlx::TArray<unsigned char>* out);
/// The zoom factor, as such a number: 0 for 0.5X, 1 for 1X, 2 for 2X, 3 for 4X, 4 for 1.3X, 5 to fit the video.
int zvtGetVideoZoomFactor(uint64_t handle, uint8_t* out);
/// Sets the zoom factor, one of zvtGetVideoZoomFactors().
int zvtSetVideoZoomFactor(uint64_t handle, uint8_t value);
/// The name of a zoom factor, such as "1X". Never null. No handle; static text.
const char* zvtVideoZoomFactorText(uint8_t value);
/// The brightness of analog video, -128 to 127.
int zvtGetVideoBrightness(uint64_t handle, int8_t* out);
/// Sets the brightness of analog video, -128 to 127.
int zvtSetVideoBrightness(uint64_t handle, int8_t value);
/// The contrast of analog video, -128 to 127.
int zvtGetVideoContrast(uint64_t handle, int8_t* out);
/// Sets the contrast of analog video, -128 to 127.
int zvtSetVideoContrast(uint64_t handle, int8_t value);
/// 1 if the camera can show hot as black, else 0.
int zvtGetBlackHotAvailable(uint64_t handle, uint8_t* out);
/// 1 if the camera shows hot as black, else 0.
int zvtGetBlackHotEnabled(uint64_t handle, uint8_t* out);
/// Shows hot as black (1) or as white (0).
int zvtSetBlackHotEnabled(uint64_t handle, uint8_t value);
/// Appends the camera's palettes. Only their names have a meaning.
int zvtListPalettes(uint64_t handle, hlx::TArray<zvtSDirEntry>* out);
/// The name of the palette in use; it may be missing in the list.
int zvtGetPalette(uint64_t handle, char* buf, uint32_t size);
/// Selects a palette by its name.
int zvtLoadPalette(uint64_t handle, const char* name);

// ---- Automatic gain control of the video ----------------------------------------------------------------------------

/// The method: 0 plateau, 1 detail enhancement (DDE), 2 linear, 3 manual. Cameras may report others.
int zvtGetVideoAGCMethod(uint64_t handle, uint8_t* out);
/// Sets the method, 0 to 3.
int zvtSetVideoAGCMethod(uint64_t handle, uint8_t value);
/// The plateau, 1 to 16383.
int zvtGetVideoAGCPlateauP(uint64_t handle, uint32_t* out);
/// Sets the plateau, 1 to 16383.
int zvtSetVideoAGCPlateauP(uint64_t handle, uint32_t value);
/// The sharpness of the detail enhancement, 1 to 7.
int zvtGetVideoAGCDDESharpness(uint64_t handle, uint8_t* out);
/// Sets the sharpness of the detail enhancement, 1 to 7.
int zvtSetVideoAGCDDESharpness(uint64_t handle, uint8_t value);
/// The threshold of the detail enhancement, 0 to 16383.
int zvtGetVideoAGCDDEThreshold(uint64_t handle, uint32_t* out);
/// Sets the threshold of the detail enhancement, 0 to 16383.
int zvtSetVideoAGCDDEThreshold(uint64_t handle, uint32_t value);
/// The lower end of the manual range in A/D counts.
int zvtGetVideoAGCManualLow(uint64_t handle, uint16_t* out);
/// Sets the lower end of the manual range in A/D counts.
int zvtSetVideoAGCManualLow(uint64_t handle, uint16_t value);
/// The upper end of the manual range in A/D counts.
int zvtGetVideoAGCManualHigh(uint64_t handle, uint16_t* out);
/// Sets the upper end of the manual range in A/D counts.
int zvtSetVideoAGCManualHigh(uint64_t handle, uint16_t value);
/// Whether the filter rate limits changes.
int zvtGetVideoAGCFilterRateEnabled(uint64_t handle, bool* out);
/// Sets whether the filter rate limits changes.
int zvtSetVideoAGCFilterRateEnabled(uint64_t handle, bool value);
/// The filter rate, 0.0 to 20.0.
int zvtGetVideoAGCFilterRate(uint64_t handle, double* out);
/// Sets the filter rate, 0.0 to 20.0.
int zvtSetVideoAGCFilterRate(uint64_t handle, double value);
/// Whether changes are dampened.
int zvtGetVideoAGCDampeningEnabled(uint64_t handle, bool* out);
/// Sets whether changes are dampened.
int zvtSetVideoAGCDampeningEnabled(uint64_t handle, bool value);
/// The dampening, 0.0 to 1.0; 0.0 locks the gain.
int zvtGetVideoAGCDampening(uint64_t handle, float* out);
/// Sets the dampening, 0.0 to 1.0; 0.0 locks the gain.
int zvtSetVideoAGCDampening(uint64_t handle, float value);
/// Whether the gain control uses its region only.
int zvtGetVideoAGCROIEnabled(uint64_t handle, bool* out);
/// Sets whether the gain control uses its region only.
int zvtSetVideoAGCROIEnabled(uint64_t handle, bool value);
/// The region in pixels, relative to the window of the video preset.
int zvtGetVideoAGCROI(uint64_t handle, uint16_t* x, uint16_t* y, uint16_t* width, uint16_t* height);
/// Sets the region in pixels, at least 1 by 1. One that does not lie in the window of the video preset is refused.
int zvtSetVideoAGCROI(uint64_t handle, uint16_t x, uint16_t y, uint16_t width, uint16_t height);
/// Whether the overlay shows the region while it is in use; zvtSetVideoOverlayShowAGCROI() sets it.
int zvtGetVideoAGCROIShowWhenEnabled(uint64_t handle, bool* out);

// ---- Video overlay --------------------------------------------------------------------------------------------------
// Colours are indices into the overlay's palette, 0 to 255. Index 0 is transparent: nothing is drawn.

/// Whether the overlay is shown at all.
int zvtGetVideoOverlayEnabled(uint64_t handle, bool* out);
/// Shows or hides the whole overlay.
int zvtSetVideoOverlayEnabled(uint64_t handle, bool value);
/// The overlay's palette: 768 bytes, red, green and blue of 256 colours. The buffer must hold them.
int zvtGetVideoOverlayPalette(uint64_t handle, uint8_t* rgb768);
/// The colour of the text.
int zvtGetVideoOverlayTextColor(uint64_t handle, uint8_t* out);
/// Sets the colour of the text.
int zvtSetVideoOverlayTextColor(uint64_t handle, uint8_t value);
/// The colour of the text's background.
int zvtGetVideoOverlayTextBackground(uint64_t handle, uint8_t* out);
/// Sets the colour of the text's background.
int zvtSetVideoOverlayTextBackground(uint64_t handle, uint8_t value);
/// Whether the two colours of the text can be set.
int zvtGetVideoOverlayTextColorsAvailable(uint64_t handle, bool* out);
/// The colour of the frame around the gain control's region.
int zvtGetVideoOverlayAGCROIColor(uint64_t handle, uint8_t* out);
/// Sets the colour of the frame around the gain control's region.
int zvtSetVideoOverlayAGCROIColor(uint64_t handle, uint8_t value);
/// The colour of the frame around the focus region.
int zvtGetVideoOverlayFocusROIColor(uint64_t handle, uint8_t* out);
/// Sets the colour of the frame around the focus region.
int zvtSetVideoOverlayFocusROIColor(uint64_t handle, uint8_t value);
/// Whether the overlay shows the region of the gain control.
int zvtGetVideoOverlayShowAGCROI(uint64_t handle, bool* out);
/// Shows or hides the region of the gain control. Sets the value of zvtGetVideoAGCROIShowWhenEnabled() too.
int zvtSetVideoOverlayShowAGCROI(uint64_t handle, bool value);
/// Whether the overlay always shows the region of the automatic focus.
int zvtGetVideoOverlayShowFocusROI(uint64_t handle, bool* show);
/// Shows the region of the automatic focus always, or stops showing it.
int zvtSetVideoOverlayShowFocusROI(uint64_t handle, bool show);
/// Whether the overlay shows the camera's messages.
int zvtGetVideoOverlayShowMessage(uint64_t handle, bool* out);
/// Shows or hides the camera's messages.
int zvtSetVideoOverlayShowMessage(uint64_t handle, bool value);
/// Removes the message that is shown.
int zvtVideoOverlayClearMessage(uint64_t handle);
/// Whether the overlay shows the maker's logo.
int zvtGetVideoOverlayShowLogo(uint64_t handle, bool* out);
/// Shows or hides the maker's logo.
int zvtSetVideoOverlayShowLogo(uint64_t handle, bool value);
/// Whether the overlay shows the focus position.
int zvtGetVideoOverlayShowFocus(uint64_t handle, bool* out);
/// Shows or hides the focus position.
int zvtSetVideoOverlayShowFocus(uint64_t handle, bool value);
/// Whether the overlay shows the date.
int zvtGetVideoOverlayShowDate(uint64_t handle, bool* out);
/// Shows or hides the date.
int zvtSetVideoOverlayShowDate(uint64_t handle, bool value);
/// Whether the overlay shows the time.
int zvtGetVideoOverlayShowTime(uint64_t handle, bool* out);
/// Shows or hides the time.
int zvtSetVideoOverlayShowTime(uint64_t handle, bool value);
/// Whether the overlay shows the IRIG time.
int zvtGetVideoOverlayShowIRIG(uint64_t handle, bool* out);
/// Shows or hides the IRIG time.
int zvtSetVideoOverlayShowIRIG(uint64_t handle, bool value);
/// Whether the overlay shows the camera's model and serial number.
int zvtGetVideoOverlayShowCameraInfo(uint64_t handle, bool* out);
/// Shows or hides the camera's model and serial number.
int zvtSetVideoOverlayShowCameraInfo(uint64_t handle, bool value);
/// Whether the overlay shows the operating time.
int zvtGetVideoOverlayShowHourMeter(uint64_t handle, bool* out);
/// Shows or hides the operating time.
int zvtSetVideoOverlayShowHourMeter(uint64_t handle, bool value);
/// Whether the overlay shows the temperature of the front panel.
int zvtGetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool* out);
/// Shows or hides the temperature of the front panel.
int zvtSetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool value);
/// Whether the overlay shows the temperature of the air gap.
int zvtGetVideoOverlayShowAirGapTemp(uint64_t handle, bool* out);
/// Shows or hides the temperature of the air gap.
int zvtSetVideoOverlayShowAirGapTemp(uint64_t handle, bool value);
/// Whether the overlay shows the temperature of the interior.
int zvtGetVideoOverlayShowInternalTemp(uint64_t handle, bool* out);
/// Shows or hides the temperature of the interior.
int zvtSetVideoOverlayShowInternalTemp(uint64_t handle, bool value);
/// Whether the overlay shows the temperature of the chassis.
int zvtGetVideoOverlayShowChassisTemp(uint64_t handle, bool* out);
/// Shows or hides the temperature of the chassis.
int zvtSetVideoOverlayShowChassisTemp(uint64_t handle, bool value);
/// Whether the overlay shows the temperature of the lens.
int zvtGetVideoOverlayShowLensTemp(uint64_t handle, bool* out);
/// Shows or hides the temperature of the lens.
int zvtSetVideoOverlayShowLensTemp(uint64_t handle, bool value);
/// Whether the overlay shows the state of the flag.
int zvtGetVideoOverlayShowFlag(uint64_t handle, bool* out);
/// Shows or hides the state of the flag.
int zvtSetVideoOverlayShowFlag(uint64_t handle, bool value);
/// Whether the overlay shows the name of the palette.
int zvtGetVideoOverlayShowPalette(uint64_t handle, bool* out);
/// Shows or hides the name of the palette.
int zvtSetVideoOverlayShowPalette(uint64_t handle, bool value);
/// Whether the overlay shows the field of view.
int zvtGetVideoOverlayShowFOV(uint64_t handle, bool* out);
/// Shows or hides the field of view.
int zvtSetVideoOverlayShowFOV(uint64_t handle, bool value);
/// Whether the overlay shows the zoom factor.
int zvtGetVideoOverlayShowZoom(uint64_t handle, bool* out);
/// Shows or hides the zoom factor.
int zvtSetVideoOverlayShowZoom(uint64_t handle, bool value);
/// Whether the overlay shows the preset and its integration time.
int zvtGetVideoOverlayShowPreset(uint64_t handle, bool* out);
/// Shows or hides the preset and its integration time.
int zvtSetVideoOverlayShowPreset(uint64_t handle, bool value);
/// Whether the overlay shows the frame rate.
int zvtGetVideoOverlayShowFrameRate(uint64_t handle, bool* out);
/// Shows or hides the frame rate.
int zvtSetVideoOverlayShowFrameRate(uint64_t handle, bool value);
/// Whether the overlay shows the name of the camera's state.
int zvtGetVideoOverlayShowStateName(uint64_t handle, bool* out);
/// Shows or hides the name of the camera's state.
int zvtSetVideoOverlayShowStateName(uint64_t handle, bool value);
/// Whether the overlay can show a text of the user.
int zvtGetVideoOverlayUserDefinedFieldAvailable(uint64_t handle, bool* out);
/// Whether the overlay shows the user's text.
int zvtGetVideoOverlayShowUserDefinedField(uint64_t handle, bool* out);
/// Shows or hides the user's text.
int zvtSetVideoOverlayShowUserDefinedField(uint64_t handle, bool value);
/// The user's text, at most 64 bytes.
int zvtGetVideoOverlayUserDefinedFieldText(uint64_t handle, char* buf, uint32_t size);
/// Sets the user's text. More than 64 bytes are refused.
int zvtSetVideoOverlayUserDefinedFieldText(uint64_t handle, const char* text);
/// Resets all settings of the overlay to their defaults.
int zvtVideoOverlayUseDefaults(uint64_t handle);

// ---- Recorder -------------------------------------------------------------------------------------------------------
// The recorder keeps frames in the camera's memory or on its drive. Frames count from 0. A state number below is one of
// zvtGetSsdState().

/// The recorder's state: 0 disarmed, 1 armed, 2 recording, 3 complete, 4 playing, 5 saving, 6 playback paused, 7
/// formatting, 8 loading, 9 recording paused, 10 movie loaded, 11 arming, 12 asks for a download.
int zvtGetSsdState(uint64_t handle, uint8_t* state);
/// Makes the recorder ready for a trigger: state 11, then 1.
int zvtSsdArm(uint64_t handle);
/// Disarms the recorder: state 0.
int zvtSsdDisarm(uint64_t handle);
/// Starts a recording: state 2 until it is complete.
int zvtSsdTrigger(uint64_t handle);
/// Pauses a recording: state 9.
int zvtSsdRecordPause(uint64_t handle);
/// Continues a paused recording: state 2.
int zvtSsdRecordResume(uint64_t handle);
/// Ends a recording: state 3, or 4, 5, 11 or 12 by the automatic options below. With record mode 1 state 5; after
/// that 0, 11 or 12.
int zvtSsdRecordStop(uint64_t handle);
/// The number of frames to record. Without record modes, while the memory has a recording, the number of its frames.
int zvtGetSsdNumFrames(uint64_t handle, uint32_t* out);
/// Sets the number of frames to record, at most zvtGetSsdMaxNumFrames() or zvtGetSsdMaxNumFramesDisk() by the record
/// mode.
int zvtSetSsdNumFrames(uint64_t handle, uint32_t value);
/// The number of frames that the memory can hold; it depends on the window.
int zvtGetSsdMaxNumFrames(uint64_t handle, uint32_t* out);
/// The number of frames that the drive can still hold; it changes with a recording, a save and a format.
int zvtGetSsdMaxNumFramesDisk(uint64_t handle, uint32_t* out);
/// The number of frames kept from before the trigger.
int zvtGetSsdPretriggerFrames(uint64_t handle, uint32_t* out);
/// Sets the number of frames kept from before the trigger: at most the frames to record, or zvtGetSsdMaxNumFrames()
/// with record mode 1 or record type 2.
int zvtSetSsdPretriggerFrames(uint64_t handle, uint32_t value);
/// The number of frames in memory or in the loaded movie; may be 0. While it records, the number of those kept so far.
int zvtGetSsdNumFramesAcquired(uint64_t handle, uint32_t* out);
/// 1 if the camera has record modes, and with them the record type, duration and gate, the frame counts of the drive
/// and of the recording, loading of movies, automatic rearm and download; else 0.
int zvtGetSsdRecordModeAvailable(uint64_t handle, uint8_t* out);
/// Where frames are recorded: 0 in memory, 1 on the drive.
int zvtGetSsdRecordMode(uint64_t handle, uint8_t* out);
/// Sets where frames are recorded: 0 in memory, 1 on the drive.
int zvtSetSsdRecordMode(uint64_t handle, uint8_t value);
/// What ends a recording: 0 the number of frames, 1 the duration, 2 zvtSsdRecordStop().
int zvtGetSsdRecordType(uint64_t handle, uint8_t* out);
/// Sets what ends a recording, 0 to 2.
int zvtSetSsdRecordType(uint64_t handle, uint8_t value);
/// The duration of a recording in milliseconds.
int zvtGetSsdRecordDuration(uint64_t handle, uint32_t* out);
/// Sets the duration of a recording in milliseconds.
int zvtSetSsdRecordDuration(uint64_t handle, uint32_t value);
/// 1 if an input signal gates the recording, else 0.
int zvtGetSsdRecordGated(uint64_t handle, uint8_t* out);
/// Sets whether an input signal gates the recording (1) or not (0).
int zvtSetSsdRecordGated(uint64_t handle, uint8_t value);
/// 1 if the recorder arms itself after a recording, else 0.
int zvtGetSsdAutoRearm(uint64_t handle, uint8_t* out);
/// Sets whether the recorder arms itself after a recording (1) or not (0).
int zvtSetSsdAutoRearm(uint64_t handle, uint8_t value);
/// 1 if a recording is saved to the drive automatically, else 0.
int zvtGetSsdAutoSave(uint64_t handle, uint8_t* out);
/// Sets whether a recording is saved to the drive automatically (1) or not (0).
int zvtSetSsdAutoSave(uint64_t handle, uint8_t value);
/// 1 if a recording is played automatically, else 0.
int zvtGetSsdAutoPlay(uint64_t handle, uint8_t* out);
/// Sets whether a recording is played automatically (1) or not (0).
int zvtSetSsdAutoPlay(uint64_t handle, uint8_t value);
/// 1 if the recorder asks for a download after a recording (state 12), else 0.
int zvtGetSsdAutoDownload(uint64_t handle, uint8_t* out);
/// Sets whether the recorder asks for a download after a recording (1) or not (0).
int zvtSetSsdAutoDownload(uint64_t handle, uint8_t value);
/// Reports to the recorder that the requested download begins. State 12 ends by itself 60 s after it began or after
/// this call, unless the end of the download is reported before.
int zvtSsdAutoDownloadStart(uint64_t handle);
/// Reports to the recorder that the download has ended: it leaves state 12.
int zvtSsdAutoDownloadDone(uint64_t handle);

// ---- Playback -------------------------------------------------------------------------------------------------------
// Plays the recording in memory or the loaded movie.

/// Plays the recording or the loaded movie: state 4.
int zvtSsdPlayBuffer(uint64_t handle);
/// Pauses the playback: state 6.
int zvtSsdPauseBuffer(uint64_t handle);
/// Continues a paused playback: state 4.
int zvtSsdResumeBuffer(uint64_t handle);
/// Ends the playback: state 3, or 10 with a loaded movie. Accepted, without effect, in the states 3, 10 and 12.
int zvtSsdStopBuffer(uint64_t handle);
/// Shows one frame, counted from 0: state 6.
int zvtSsdSkipToFrame(uint64_t handle, uint32_t frame);
/// Shows the next frame: state 6.
int zvtSsdSkipForward(uint64_t handle);
/// Shows the previous frame: state 6.
int zvtSsdSkipBackward(uint64_t handle);
/// The frame that is shown.
int zvtGetSsdPlaybackFrame(uint64_t handle, uint32_t* out);
/// The playback rate in hertz. It is cut when a playback begins, and when a movie has been loaded.
int zvtGetSsdPlaybackRate(uint64_t handle, float* out);
/// Sets the playback rate in hertz. A rate outside of the camera's limits is cut; NaN is refused.
int zvtSetSsdPlaybackRate(uint64_t handle, float value);
/// 1 if the playback starts again at its end, else 0.
int zvtGetSsdLoopPlayback(uint64_t handle, uint8_t* out);
/// Sets whether the playback starts again at its end (1) or not (0).
int zvtSetSsdLoopPlayback(uint64_t handle, uint8_t value);
/// The first frame of the playback.
int zvtGetSsdStartFrame(uint64_t handle, uint32_t* out);
/// Sets the first frame of the playback.
int zvtSetSsdStartFrame(uint64_t handle, uint32_t value);
/// The last frame of the playback, included; 4294967295 for the last frame that there is.
int zvtGetSsdEndFrame(uint64_t handle, uint32_t* out);
/// Sets the last frame of the playback, included; 4294967295 for the last frame that there is.
int zvtSetSsdEndFrame(uint64_t handle, uint32_t value);

// ---- Drive ----------------------------------------------------------------------------------------------------------

/// 1 if the camera has a drive, else 0.
int zvtGetSsdDrivePresent(uint64_t handle, uint8_t* out);
/// 1 if the drive's file system can be read, else 0.
int zvtGetSsdDriveRecognized(uint64_t handle, uint8_t* out);
/// The drive's capacity in bytes.
int zvtGetSsdDriveSpaceTotal(uint64_t handle, int64_t* out);
/// The used space of the drive in bytes.
int zvtGetSsdDriveSpaceUsed(uint64_t handle, int64_t* out);
/// The free space of the drive in bytes.
int zvtGetSsdDriveSpaceFree(uint64_t handle, int64_t* out);
/// Formats the drive: state 7 for a while. All movies are lost.
int zvtSsdFormatDrive(uint64_t handle);
/// The name under which recordings are saved; may be empty.
int zvtGetSsdSaveName(uint64_t handle, char* buf, uint32_t size);
/// Sets the name under which recordings are saved.
int zvtSetSsdSaveName(uint64_t handle, const char* name);
/// Saves the recording to the drive: state 5 for a while.
int zvtSsdSaveBuffer(uint64_t handle);
/// The number of movies on the drive.
int zvtGetSsdMovieCount(uint64_t handle, uint32_t* out);
/// The movie with this place in the list, from 0.
int zvtGetSsdMovieInfo(uint64_t handle, uint32_t index, zvtSSsdMovieInfo* out);
/// Loads the movie with this place in the list: state 8, then 10; state 12 stays. Blocks. Refused if the frames of the
/// movie have another size than the window.
int zvtSsdLoadMovie(uint64_t handle, uint32_t index);
/// 1 while a movie is loaded, else 0.
int zvtGetSsdMovieLoaded(uint64_t handle, uint8_t* out);
/// Unloads the movie: state 0; state 12 stays.
int zvtSsdUnload(uint64_t handle);

// ---- Manufacturing --------------------------------------------------------------------------------------------------
// Voltages are identified by their names in zvtListVoltages(). A mask of 0xFFFFFFFF means all presets; presets without
// a correction are ignored.

/// 1 if the values below replace those of the readout circuit, else 0.
int zvtGetMfgOverrideRoicConfig(uint64_t handle, uint8_t* out);
/// Sets whether the values below replace those of the readout circuit (1) or not (0); others are refused. Read it
/// back.
int zvtSetMfgOverrideRoicConfig(uint64_t handle, uint8_t value);
/// 1 if there is an extra line sync, else 0.
int zvtGetMfgHasExtraLSync(uint64_t handle, uint8_t* out);
/// Sets whether there is an extra line sync (1) or not (0). Others are refused, and all without the override.
int zvtSetMfgHasExtraLSync(uint64_t handle, uint8_t value);
/// The dead time at the end of a line in clocks.
int zvtGetMfgLineDeadWidth(uint64_t handle, uint32_t* out);
/// Sets the dead time at the end of a line in clocks, 1 to 4095. Others are refused, and all without the override.
int zvtSetMfgLineDeadWidth(uint64_t handle, uint32_t value);
/// The dead time before the integration in clocks.
int zvtGetMfgPreIntDeadWidth(uint64_t handle, uint32_t* out);
/// Sets the dead time before the integration in clocks, 0 to 1e6. Others are refused, and all without the override.
int zvtSetMfgPreIntDeadWidth(uint64_t handle, uint32_t value);
/// The dead time after the integration in clocks.
int zvtGetMfgPostIntDeadWidth(uint64_t handle, uint32_t* out);
/// Sets the dead time after the integration in clocks, 0 to 1e6. Others are refused, and all without the override.
int zvtSetMfgPostIntDeadWidth(uint64_t handle, uint32_t value);
/// The number of dead rows before the image.
int zvtGetMfgPreDeadRows(uint64_t handle, uint32_t* out);
/// Sets the number of dead rows before the image, 0 to 255. Others are refused, and all without the override.
int zvtSetMfgPreDeadRows(uint64_t handle, uint32_t value);
/// The number of dead rows after the image.
int zvtGetMfgPostDeadRows(uint64_t handle, uint32_t* out);
/// Sets the number of dead rows after the image, 0 to 255. Others are refused, and all without the override.
int zvtSetMfgPostDeadRows(uint64_t handle, uint32_t value);
/// The phase shift of the detector clock, 0 to 100000000.
int zvtMfgGetClockPhaseShift(uint64_t handle, uint32_t* out);
/// Sets the phase shift of the detector clock, 0 to 100000000. Others are refused.
int zvtMfgSetClockPhaseShift(uint64_t handle, uint32_t value);
/// Appends the names of the detector's voltages.
int zvtListVoltages(uint64_t handle, hlx::TArray<hlx::CString>* out);
/// A voltage in volts.
int zvtGetVoltage(uint64_t handle, const char* name, float* out);
/// Sets a voltage in volts, within zvtGetVoltageLimits(). Fails if it cannot be set. A wrong voltage can damage the
/// camera.
int zvtSetVoltage(uint64_t handle, const char* name, float value);
/// The name of a voltage to show to the operator.
int zvtGetVoltageDisplayName(uint64_t handle, const char* name, char* buf, uint32_t size);
/// 1 if the voltage can be set, else 0.
int zvtGetVoltageEditable(uint64_t handle, const char* name, uint8_t* out);
/// The limits of a voltage in volts.
int zvtGetVoltageLimits(uint64_t handle, const char* name, float* min, float* max);
/// Makes the factory's list of bad pixels from the corrections loaded in the presets of the mask. Refused without any.
int zvtMfgFactoryBPLCreate(uint64_t handle, uint32_t presetMask);
/// Adds the bad pixels of the corrections loaded in the presets of the mask to the factory's list. Refused without any
/// correction, and if the list is damaged or belongs to a window that is neither the present one nor the whole array.
int zvtMfgFactoryBPLAppend(uint64_t handle, uint32_t presetMask);
/// Applies the factory's list of bad pixels to the corrections loaded in the presets of the mask. Refused as
/// zvtMfgFactoryBPLAppend() is.
int zvtMfgFactoryBPLApply(uint64_t handle, uint32_t presetMask);

} // extern "C"
