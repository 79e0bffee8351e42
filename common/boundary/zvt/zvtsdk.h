#pragma once

#include <cstdint>

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "hlx/delegate.h"
#include "zvt/zvttypes.h"

/// \file
/// The camera SDK.
///
/// Handle: nearly every function takes the handle of a camera first, as the controller's GetHandle() gives it. It is
/// valid as long as the controller lives; 0 and a handle that is no longer valid make a function fail.
///
/// Status: a function that returns int returns 0 for success and anything else for failure. No other value has a
/// meaning of its own. A function fails on a camera that is not connected, that lacks the equipment or refuses the
/// value, and for a null pointer where nothing is said about null. A function that fails leaves its outputs as they
/// are. The few functions that return a text or a table return no status.
///
/// Outputs: pointers to the natural type of the value. What is told of a function that reads is what it writes there. A
/// bool and a byte that stands for one are 0 or 1.
///
/// Texts: UTF-8, zero-ended. A text comes back in a buffer of the caller's, whose size in bytes comes next; it is cut
/// between two characters where it does not fit. Older cameras may fill a buffer to its last byte without a zero:
/// search for the zero within the buffer only.
///
/// Lists: entries are appended to the array, where nothing else is said.
///
/// Threads: any thread may call any function at any time, with the same handle too. A function that is said to block or
/// to be slow keeps its caller for as long as the camera takes.

// One declaration per line, as the SDK's own reference lists them.
// clang-format off

extern "C" {

// ---- Identity -------------------------------------------------------------------------------------------------------

/// The camera's model name.
int zvtGetCameraModel(uint64_t handle, char* buffer, uint32_t size);
/// Renames the model. UTF-8.
int zvtSetCameraModel(uint64_t handle, const char* model);
/// The camera's serial number.
int zvtGetCameraSN(uint64_t handle, char* buffer, uint32_t size);
/// Writes the serial number. UTF-8.
int zvtSetCameraSN(uint64_t handle, const char* serial);
/// The camera's type; zvtGetCameraTypeName() names it.
int zvtGetCameraType(uint64_t handle, uint8_t* type);
/// Sets it.
int zvtSetCameraType(uint64_t handle, uint8_t type);
/// The camera's subtype; zvtGetCameraSubtypeName() names it.
int zvtGetCameraSubtype(uint64_t handle, uint8_t* subtype);
/// Sets it.
int zvtSetCameraSubtype(uint64_t handle, uint8_t subtype);
/// The interface board; zvtGetPleoraBoardTypeName() names it.
int zvtGetPleoraBoardType(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetPleoraBoardType(uint64_t handle, uint8_t board);
/// The set of boards, 0 to 6.
int zvtGetBoardType(uint64_t handle, uint8_t* board);
/// The detector; zvtGetDetectorTypeName() names it.
int zvtGetDetectorType(uint64_t handle, uint8_t* detector);
/// The readout circuit; zvtGetReadoutName() names it.
int zvtGetReadout(uint64_t handle, uint8_t* readout);
/// The variant; zvtGetVariantName() names it.
int zvtGetVariant(uint64_t handle, uint8_t* out);
/// Appends further names and values that describe the camera, always in the same order.
int zvtGetCameraExtraInfo(uint64_t handle, hlx::TArray<zvtSInfoEntry>* entries);

// ---- Names of identity values ---------------------------------------------------------------------------------------
// They take no handle; they fail for a value that they do not know.

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
/// The table of known camera models: zvtSModelInfo rows, ended by one whose name is null. Never null; valid for ever.
const void* zvtGetModelInfoTable(void);

// ---- Time -----------------------------------------------------------------------------------------------------------

/// The real-time clock: years from 2000, month and day from 1, hour 0 to 23.
int zvtGetRealTimeClock(uint64_t handle, uint8_t* year, uint8_t* month, uint8_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second);
/// Sets the clock. The camera keeps its time if the values are no date and time.
int zvtSetRealTimeClock(uint64_t handle, uint8_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second);
/// The IRIG time. The year may be 0 for not known; the day counts from 1 within the year.
int zvtGetIRIGTime(uint64_t handle, uint16_t* year, uint16_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second, uint16_t* millisecond, uint16_t* microsecond);
/// Sets the IRIG time; the year in full, 0 for not known, the day of the year from 1.
int zvtSetIRIGTime(uint64_t handle, uint16_t year, uint16_t dayOfYear, uint8_t hour, uint8_t minute, uint8_t second, uint16_t millisecond, uint16_t microsecond);
/// 1 while the camera is locked to an IRIG signal, else 0.
int zvtGetIRIGLocked(uint64_t handle, uint8_t* locked);
/// The minutes that the camera has run in its life.
int zvtGetOperatingTime(uint64_t handle, uint32_t* minutes);

// ---- Temperatures ---------------------------------------------------------------------------------------------------

/// The detector's temperature in Kelvin.
int zvtGetFPATemperature(uint64_t handle, float* temperature);
/// The temperature in Kelvin below which the detector counts as cold.
int zvtGetFPAColdTemperature(uint64_t handle, float* temperature);
/// Front panel, air gap and interior in degrees Celsius, measured by the sensor controller.
int zvtGetSCTemperatures(uint64_t handle, float* frontPanel, float* airGap, float* internal);
/// The interior in degrees Celsius, measured by the readout electronics.
int zvtGetRSTemperatures(uint64_t handle, float* internal);
/// 1 if the lens has a temperature sensor, else 0.
int zvtGetHasLensTemperature(uint64_t handle, uint8_t* has);
/// The lens temperature in degrees Celsius. Fails without a sensor.
int zvtGetLensTemperature(uint64_t handle, float* temperature);

// ---- Detector cooler ------------------------------------------------------------------------------------------------

/// The kind of cooler, 1 for a thermo-electric one; zvtCoolerTypeText() names it.
int zvtMfgGetCoolerType(uint64_t handle, uint8_t* type);
/// The name of a kind of cooler, null for one that is not known. No handle; valid for ever.
const char* zvtCoolerTypeText(uint8_t type);
/// The temperature that the cooler holds, in degrees Celsius for a thermo-electric one, else in Kelvin.
int zvtMfgGetCoolerSetpoint(uint64_t handle, float* setpoint);
/// Sets the temperature that the cooler holds; the detector follows in time.
int zvtMfgSetCoolerSetpoint(uint64_t handle, float setpoint);
/// 1 while the cooler has power, else 0.
int zvtMfgGetCoolerPowerEnabled(uint64_t handle, uint8_t* enabled);
/// Switches the cooler's power.
int zvtMfgSetCoolerPowerEnabled(uint64_t handle, bool enabled);
/// The terms of the cooler's control loop: proportional, integral, differential, offset.
int zvtMfgGetCoolerSetup(uint64_t handle, float* kP, float* kI, float* kD, float* kOff);
/// Sets it.
int zvtMfgSetCoolerSetup(uint64_t handle, float kP, float kI, float kD, float kOff);

// ---- Window, presets and timing -------------------------------------------------------------------------------------
// Presets count from 0. Times inside the camera are counted in clocks of the detector.

/// A preset's window in pixels of the detector.
int zvtGetWindow(uint64_t handle, uint8_t preset, uint16_t* x, uint16_t* y, uint16_t* width, uint16_t* height);
/// The least and the greatest size of a window in pixels, and the steps between sizes.
int zvtGetWindowLimits(uint64_t handle, uint16_t* minW, uint16_t* maxW, uint16_t* minH, uint16_t* maxH, uint16_t* incW, uint16_t* incH);
/// The preset in use.
int zvtGetActivePreset(uint64_t handle, uint8_t* preset);
/// The preset shown on the video output.
int zvtGetVideoPreset(uint64_t handle, uint8_t* preset);
/// The number of presets, 1 to 4.
int zvtGetNumPresets(uint64_t handle, uint8_t* count);
/// How the presets follow each other, 0 for not at all.
int zvtGetPresetSequencingMode(uint64_t handle, uint8_t* mode);
/// The detector clock in hertz.
int zvtGetClockFrequency(uint64_t handle, uint32_t* hz);
/// The rate in hertz of a period in clocks. Fails for 0 clocks.
int zvtClocksToHertz(uint64_t handle, uint32_t clocks, double* hertz);
/// The time in milliseconds of a number of clocks.
int zvtClocksToMilliseconds(uint64_t handle, uint32_t clocks, double* milliseconds);
/// A preset's frame period in clocks.
int zvtGetFrameWidth(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets it.
int zvtSetFrameWidth(uint64_t handle, uint8_t preset, uint32_t value);
/// A preset's integration time in clocks.
int zvtGetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets it.
int zvtSetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t value);
/// 1 while the image is saturated, else 0.
int zvtGetSaturatedFlag(uint64_t handle, uint8_t* saturated);
/// The shortest frame period in clocks for a window of this size in pixels, with the shortest integration. Fails for an
/// empty window.
int zvtCalcMinFrameWidth(uint64_t handle, uint32_t* clocks, uint16_t width, uint16_t height);
/// The shortest frame period in clocks for a window in pixels, an integration time in clocks, with or without preset
/// sequencing. It follows the noise reduction too. Fails for an empty window.
int zvtCalcMinFrameWidthEx(uint64_t handle, uint32_t* minClocks, uint16_t width, uint16_t height, uint32_t integrationWidth, bool sequencing);
/// The rate nearest to the wanted one, both in hertz, whose period is a whole number of clocks. Fails for a
/// rate that is not above 0.
int zvtSnapHertz(uint64_t handle, double* snapped, double wanted);

// ---- Events ---------------------------------------------------------------------------------------------------------

/// Takes one event from the camera's queue: ZVT_EVENT_NONE when it is empty.
int zvtReadEventQueue(uint64_t handle, zvtEEventType* type);

// ---- Focus ----------------------------------------------------------------------------------------------------------
// Positions are encoder counts of the lens; near may lie above far. A field of view is 0 narrow, 1 wide, and 2 on a
// lens without discrete fields of view.

/// Where the focus is now; it changes while the lens moves.
int zvtGetFocusCurrentPos(uint64_t handle, uint32_t* position);
/// The focus positions that the lens can reach.
int zvtGetFocusRange(uint64_t handle, uint32_t* minimum, uint32_t* maximum);
/// The near limit of the focus for a field of view.
int zvtGetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t* position);
/// Sets it.
int zvtSetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t position);
/// The far limit of the focus for a field of view.
int zvtGetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t* position);
/// Sets it.
int zvtSetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t position);
/// Sends the focus to a position. Blocks until it is there.
int zvtSetFocusPos(uint64_t handle, uint32_t position);
/// Sends the focus to a position. Answers at once; the lens travels afterwards.
int zvtFocusMoveTo(uint64_t handle, uint32_t position);
/// Moves the focus with a signed speed until it is stopped by 0. Answers at once.
int zvtFocusMove(uint64_t handle, int32_t speed);
/// Moves the focus with a percentage of its speed, the sign being the direction, until it is stopped by 0. Answers at
/// once.
int zvtFocusMovePercent(uint64_t handle, float percent);
/// Drives the focus to the near limit of the present field of view. Blocks until it is there.
int zvtFocusNear(uint64_t handle);
/// Drives the focus to the far limit of the present field of view. Blocks until it is there.
int zvtFocusFar(uint64_t handle);
/// Whether the focus is turned by hand at the lens; its motor then refuses commands.
int zvtGetFocusManualMode(uint64_t handle, bool* manual);
/// How the lens moves slowly in a field of view: 0 by steps of position, else by speed.
int zvtMfgGetFocusSlowControl(uint64_t handle, uint8_t fov, uint8_t* control);
/// The step of position in a field of view.
int zvtMfgGetFocusPositionIncrement(uint64_t handle, uint8_t fov, uint32_t* increment);
/// Whether the lens can focus to a distance now.
int zvtGetFocusToDistanceAvailable(uint64_t handle, bool* available);
/// The nearest distance in metres; it depends on the zoom.
int zvtGetFocusToDistanceMin(uint64_t handle, float* metres);
/// The farthest distance in metres; it depends on the zoom.
int zvtGetFocusToDistanceMax(uint64_t handle, float* metres);
/// Starts focusing to a distance in metres, or to the nearest in reach. Answers at once; the lens travels afterwards.
int zvtFocusToDistance(uint64_t handle, float metres);

// ---- Automatic focus ------------------------------------------------------------------------------------------------

/// Focuses once. Blocks until the image is sharp. The mode is 1.
int zvtAutoFocusFast(uint64_t handle, int32_t mode);
/// Focuses once over the whole range of the lens. Blocks until the image is sharp. The flag is 0.
int zvtAutoFocusFull(uint64_t handle, int flag);
/// The side of the focus region in pixels: 16, 32, 64, 128, 256 or 512.
int zvtGetAutoFocusROISize(uint64_t handle, uint16_t* size);
/// Sets the side of the focus region; other sizes are refused.
int zvtSetAutoFocusROISize(uint64_t handle, uint16_t size);
/// Where the focus region lies, a zvtEAutoFocusROIPosition.
int zvtGetAutoFocusROIPosition(uint64_t handle, uint8_t* position);
/// Sets it.
int zvtSetAutoFocusROIPosition(uint64_t handle, uint8_t position);
/// Whether the overlay shows the region during an automatic focus.
int zvtGetAutoFocusROIShowWhenFocusing(uint64_t handle, bool* show);
/// Sets it.
int zvtSetAutoFocusROIShowWhenFocusing(uint64_t handle, bool show);

// ---- Zoom and field of view -----------------------------------------------------------------------------------------

/// The discrete field of view: 0 narrow, 1 wide. Fails on a lens without.
int zvtGetFOV(uint64_t handle, uint8_t* fov);
/// Selects a discrete field of view. Answers at once; the focus limits change with it, and the focus travels
/// afterwards.
int zvtSetFOV(uint64_t handle, uint8_t fov);
/// The commanded zoom position.
int zvtGetFOVPos(uint64_t handle, uint32_t* position);
/// Sends the zoom to a position. Blocks until it is there.
int zvtSetFOVPos(uint64_t handle, uint32_t position);
/// Where the zoom is now; it differs from the commanded position while the lens moves.
int zvtGetFOVCurrentPos(uint64_t handle, uint32_t* position);
/// The zoom positions in use. The lens may coast past them.
int zvtGetFOVRange(uint64_t handle, uint32_t* minimum, uint32_t* maximum);
/// Sends the zoom to a position. Answers at once; the lens travels afterwards.
int zvtFOVMoveTo(uint64_t handle, uint32_t position);
/// Moves the zoom with a signed speed until it is stopped by 0. Answers at once.
int zvtFOVMove(uint64_t handle, int32_t speed);
/// Moves the zoom with a percentage of its speed, the sign being the direction, until it is stopped by 0. Answers at
/// once.
int zvtFOVMovePercent(uint64_t handle, float percent);
/// Drives to the widest field of view. Blocks until it is there.
int zvtFOVMin(uint64_t handle);
/// Drives to the narrowest field of view. Blocks until it is there.
int zvtFOVMax(uint64_t handle);

// ---- Lens cover, athermalization and lens states --------------------------------------------------------------------

/// The lens cover: 0 open, 1 closed, 2 not known.
int zvtGetLensCoverState(uint64_t handle, uint8_t* state);
/// Opens or closes the lens cover. Blocks until it has moved.
int zvtSetLensCoverState(uint64_t handle, uint8_t state);
/// Whether the lens can correct its focus for temperature.
int zvtGetLensAthermalizationEnabledAvailable(uint64_t handle, bool* available);
/// Whether the lens corrects its focus for temperature.
int zvtGetLensAthermalizationEnabled(uint64_t handle, bool* enabled);
/// Sets it.
int zvtSetLensAthermalizationEnabled(uint64_t handle, bool enabled);
/// The stored lens states in the camera's order. After a failure the list may hold some of them.
int zvtListLensStates(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// Moves the lens to a stored state.
int zvtLoadLensState(uint64_t handle, const char* name);
/// Stores where the lens is under a name, over a state of that name.
int zvtSaveLensStateAs(uint64_t handle, const char* name);
/// Renames a lens state. Fails if there is no such state or the new name is taken.
int zvtRenameLensState(uint64_t handle, const char* oldName, const char* newName);
/// Deletes a lens state. Fails if there is none of this name.
int zvtDeleteLensState(uint64_t handle, const char* name);

// ---- Filter wheel ---------------------------------------------------------------------------------------------------
// A filter is known by its ID, 0 to 63, which the wheel reads from the filter; a slot is a place in the wheel, from 0.

/// 1 if the camera has a filter wheel, else 0.
int zvtGetFilterWheelPresent(uint64_t handle, uint8_t* out);
/// The number of slots in the wheel.
int zvtGetNumFilters(uint64_t handle, uint8_t* count);
/// The filters in the four slots.
int zvtGetFilterIDs(uint64_t handle, uint8_t* id0, uint8_t* id1, uint8_t* id2, uint8_t* id3);
/// The filter in a slot.
int zvtGetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t* out);
/// Tells the camera which filter is in a slot.
int zvtSetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t value);
/// The filter in the path; it may be in none of the slots.
int zvtGetCurrentFilterID(uint64_t handle, uint8_t* id);
/// Turns the wheel to a filter. Blocks until the wheel stands still.
int zvtSetCurrentFilterID(uint64_t handle, uint8_t id);
/// Turns the wheel once and reads its filters anew. Slow. The number of filters and their IDs may change.
int zvtScanFilters(uint64_t handle);
/// The built-in name of a filter, null for an ID above 63. No handle; valid for ever.
const char* zvtGetFilterName(uint8_t id);
/// The name of a filter: the user's, else the built-in one.
int zvtGetFilterNameEx(uint64_t handle, uint8_t id, char* buffer, uint32_t size);
/// Gives a filter a name. UTF-8.
int zvtSetFilterInfoName(uint64_t handle, uint8_t id, const char* name);

// ---- Calibration flag -----------------------------------------------------------------------------------------------

/// Whether the camera has a flag.
int zvtGetFlagPresent(uint64_t handle, bool* out);
/// Whether the flag's temperature can be set.
int zvtGetFlagTemperatureControlled(uint64_t handle, bool* out);
/// Where the flag is: 0 stowed, 1 in view.
int zvtGetFlagState(uint64_t handle, uint8_t* state);
/// Sets it.
int zvtSetFlagState(uint64_t handle, uint8_t state);
/// The flag's temperature in degrees Celsius.
int zvtGetFlagTemperature(uint64_t handle, float* temperature);
/// The temperature that the flag is held at, in degrees Celsius.
int zvtGetFlagDesiredTemperature(uint64_t handle, float* temperature);
/// Sets the flag's temperature in degrees Celsius; one out of the flag's range is refused.
int zvtSetFlagDesiredTemperature(uint64_t handle, float temperature);
/// Whether the flag's cooler runs.
int zvtGetFlagCoolerEnabled(uint64_t handle, bool* enabled);

// ---- Frame synchronisation ------------------------------------------------------------------------------------------

/// What starts a frame: 0 internal, 1 external, 2 video, 3 tri-level.
int zvtGetFrameSyncSource(uint64_t handle, uint8_t* source);
/// Sets what starts a frame; 3 is refused where there is no tri-level input.
int zvtSetFrameSyncSource(uint64_t handle, uint8_t source);
/// What a frame sync starts: 0 the integration, 1 the readout; zvtFrameSyncModeText() names it.
int zvtGetFrameSyncMode(uint64_t handle, uint8_t* mode);
/// Sets it.
int zvtSetFrameSyncMode(uint64_t handle, uint8_t mode);
/// What a frame sync starts, in words; null for a mode that is not known. No handle; valid for ever.
const char* zvtFrameSyncModeText(uint8_t mode);
/// The delay of the frame sync in microseconds.
int zvtGetFrameSyncDelay(uint64_t handle, float* microseconds);
/// Sets it.
int zvtSetFrameSyncDelay(uint64_t handle, float microseconds);
/// The edge of the frame sync: 0 active low, 1 active high.
int zvtGetFrameSyncPolarity(uint64_t handle, uint8_t* polarity);
/// Sets it.
int zvtSetFrameSyncPolarity(uint64_t handle, uint8_t polarity);
/// Whether the camera has a tri-level sync input.
int zvtGetTriLevelSyncSourceAvailable(uint64_t handle, bool* available);
/// What the sync output follows: 0 the start of integration, 1 the start of a frame, 2 the saturation flag.
int zvtGetSyncOutSource(uint64_t handle, uint8_t* source);
/// Sets it.
int zvtSetSyncOutSource(uint64_t handle, uint8_t source);
/// The delay of a preset's sync output in microseconds.
int zvtGetSyncOutDelay(uint64_t handle, uint8_t preset, float* microseconds);
/// Sets it.
int zvtSetSyncOutDelay(uint64_t handle, uint8_t preset, float microseconds);
/// The sync output: 0 active low, 1 active high.
int zvtGetSyncOutPolarity(uint64_t handle, uint8_t* polarity);
/// Sets it.
int zvtSetSyncOutPolarity(uint64_t handle, uint8_t polarity);
/// The integration output: 0 active low, 1 active high.
int zvtGetIntegrateOutPolarity(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetIntegrateOutPolarity(uint64_t handle, uint8_t value);
/// When a frame's time is taken: 0 at its start, 1 at the start of integration, 2 at its end.
int zvtGetIRIGLatchSource(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetIRIGLatchSource(uint64_t handle, uint8_t value);

// ---- Trigger --------------------------------------------------------------------------------------------------------

/// How frames are triggered: 0 free run, 1 triggered free run, 2 triggered sequence, 3 triggered preset advance.
int zvtGetTriggerMode(uint64_t handle, uint8_t* mode);
/// Sets it.
int zvtSetTriggerMode(uint64_t handle, uint8_t mode);
/// What triggers: 0 internal, 1 external, 2 software, 3 time.
int zvtGetTriggerSource(uint64_t handle, uint8_t* source);
/// Sets it.
int zvtSetTriggerSource(uint64_t handle, uint8_t source);
/// The delay of the trigger in microseconds.
int zvtGetTriggerDelay(uint64_t handle, float* microseconds);
/// Sets it.
int zvtSetTriggerDelay(uint64_t handle, float microseconds);
/// The edge of the trigger: 0 active low, 1 active high.
int zvtGetTriggerPolarity(uint64_t handle, uint8_t* polarity);
/// Sets it.
int zvtSetTriggerPolarity(uint64_t handle, uint8_t polarity);
/// The rate of the internal trigger in hertz.
int zvtGetInternalTriggerRate(uint64_t handle, double* hertz);
/// Sets it.
int zvtSetInternalTriggerRate(uint64_t handle, double hertz);
/// The time of a trigger by time; the day counts from 1 within the year.
int zvtGetIRIGTriggerTime(uint64_t handle, uint16_t* day, uint8_t* hour, uint8_t* minute, uint8_t* second, uint16_t* millisecond, uint16_t* microsecond);
/// Sets it.
int zvtSetIRIGTriggerTime(uint64_t handle, uint16_t day, uint8_t hour, uint8_t minute, uint8_t second, uint16_t millisecond, uint16_t microsecond);
/// The sequences that one trigger gives.
int zvtGetSequenceCount(uint64_t handle, uint32_t* count);
/// Sets it.
int zvtSetSequenceCount(uint64_t handle, uint32_t count);
/// Triggers once.
int zvtSoftwareTrigger(uint64_t handle);
/// Prepares a further trigger.
int zvtRearmTrigger(uint64_t handle);

// ---- Camera states --------------------------------------------------------------------------------------------------
// A state is a set of the camera's settings in a file on the camera. Progress is told on the calling thread as (done,
// total) with a total above 0; a delegate that returns anything but 0 ends the transfer, which then fails.

/// The stored states in the camera's order. Takes the place of what the list held.
int zvtListStates(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// 0 if there is a state of this name.
int zvtStateExists(uint64_t handle, const char* name);
/// 0 if a state can have this name: a valid file name of at most 199 bytes. No handle.
int zvtIsValidStateName(const char* name);
/// 0 if a file on the camera can have this name: at least one character that is no space, no space at its start, none
/// of / \ : * ? " < > |, at most 255 bytes of UTF-8. No handle.
int zvtIsValidFileName(const char* name);
/// The name of the state that the camera is in, UTF-8: the one last loaded or saved, "Factory Defaults" or "Hard
/// Defaults" where it was one of these. Empty if it is in none.
int zvtGetStateName(uint64_t handle, char* buffer, uint32_t size);
/// 1 if the camera is in its factory default state, else 0.
int zvtIsFactoryDefaultState(uint64_t handle, uint8_t* isFactory);
/// Saves over the current state. Fails if that has no name of its own. Slow.
int zvtSaveState(uint64_t handle);
/// Saves under a valid name, which becomes the current state. Slow.
int zvtSaveStateAs(uint64_t handle, const char* name);
/// Saves the settings as the factory default. Slow.
int zvtSaveFactoryDefaults(uint64_t handle);
/// Deletes a state. Fails if there is none of this name.
int zvtDeleteState(uint64_t handle, const char* name);
/// Renames a state. Fails if there is no such state, or the new name is taken or not valid.
int zvtRenameState(uint64_t handle, const char* oldName, const char* newName);
/// Copies a local file to the camera as a state named like the file without its last extension, over a state of that
/// name. Blocks. The progress may be null.
int zvtUploadStateStd(uint64_t handle, const char* file, hlx::delegate<int(unsigned int, unsigned int)>* progress);
/// Copies a state into a local file. Blocks. The progress may be null.
int zvtDownloadStateStd(uint64_t handle, const char* name, const char* file, hlx::delegate<int(unsigned int, unsigned int)>* progress);
/// Copies a local file to the camera as its factory default state. Blocks. The progress may be empty.
int zvtUploadFactoryDefaultStateStd(uint64_t handle, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies the factory default state into a local file. Blocks. The progress may be empty.
int zvtDownloadFactoryDefaultStateStd(uint64_t handle, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies a file of the camera, given by its path there, into a local file. Blocks. The progress may be empty.
int zvtDownloadFileStd(uint64_t handle, const char* cameraPath, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);

// ---- Non-uniformity corrections -------------------------------------------------------------------------------------
// Corrections (NUCs) are files on the camera; each preset has at most one loaded. Transfers tell their progress as
// those of states do.

/// The stored corrections in the camera's order. Takes the place of what the list held.
int zvtListNUCs(uint64_t handle, hlx::TArray<zvtSDirEntry>* entries);
/// 0 if there is a correction of this name.
int zvtNUCExists(uint64_t handle, const char* name);
/// The name of the correction loaded in a preset. Empty if there is none.
int zvtGetNUCName(uint64_t handle, uint8_t preset, char* buffer, uint32_t size);
/// The size of a correction in bytes and its time in units of 100 ns since 1601-01-01 00:00 UTC.
int zvtGetNUCFileInfo(uint64_t handle, const char* name, uint32_t* size, uint64_t* time100ns);
/// What a correction says about itself, as far as its header tells. The record stays as it is on failure.
int zvtQueryNUCBasicInfo(uint64_t handle, const char* name, zvtSNUCInfo* out);
/// All that a correction says about itself.
int zvtQueryNUCInfo(uint64_t handle, const char* name, zvtSNUCInfo* out);
/// Whether a correction is the factory's. Fails if there is none of this name.
int zvtIsFactoryNUC(uint64_t handle, const char* name, bool* out);
/// Loads a correction into a preset. Slow.
int zvtLoadNUC(uint64_t handle, uint8_t preset, const char* name);
/// Removes the correction of a preset.
int zvtUnloadNUC(uint64_t handle, uint8_t preset);
/// Saves a preset's correction under its name. Slow.
int zvtSaveNUC(uint64_t handle, uint8_t preset);
/// Saves a preset's correction under a name, which becomes its own. Slow.
int zvtSaveNUCAs(uint64_t handle, uint8_t preset, const char* name);
/// Deletes a correction. Fails if there is none of this name.
int zvtDeleteNUC(uint64_t handle, const char* name);
/// Renames a correction. Fails if the new name is taken.
int zvtRenameNUC(uint64_t handle, const char* oldName, const char* newName);
/// The space left for corrections in bytes.
int zvtGetNUCFreeSpace(uint64_t handle, uint64_t* bytes);
/// The size in bytes that a correction for a window in pixels would have.
int zvtGuessNUCSize(uint64_t handle, uint16_t width, uint16_t height, uint32_t* bytes);
/// Copies a local file to the camera as a correction of this name. Blocks. The progress may be empty.
int zvtUploadNUCStdEx(uint64_t handle, const char* remoteName, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);
/// Copies a correction into a local file. Blocks. The progress may be empty. What was written stays if it is ended.
int zvtDownloadNUCStd(uint64_t handle, const char* name, const char* localPath, hlx::delegate<int(unsigned int, unsigned int)> progress);

// ---- Making a correction --------------------------------------------------------------------------------------------

/// The preset that the next run makes a correction for.
int zvtSetNUCPreset(uint64_t handle, uint8_t preset);
/// The kind of correction: 0 one-point, 1 two-point, 2 offset update; zvtNUCTypeText() names it.
int zvtGetNUCType(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetNUCType(uint64_t handle, uint8_t value);
/// The name of a kind of correction, null for one that is not known. No handle; valid for ever.
const char* zvtNUCTypeText(uint8_t type);
/// What the camera looks at: 0 external, 1 internal; zvtNUCSourceText() names it.
int zvtGetNUCSource(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetNUCSource(uint64_t handle, uint8_t value);
/// The name of a source, null for one that is not known. No handle; valid for ever.
const char* zvtNUCSourceText(uint8_t source);
/// The frames averaged for each source.
int zvtGetNUCNumFrames(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetNUCNumFrames(uint64_t handle, uint8_t value);
/// The limits of a good pixel: gain as a factor, signal in A/D counts, and whether bad pixels are looked for.
int zvtGetNUCSetup(uint64_t handle, float* gainMin, float* gainMax, uint16_t* adLow, uint16_t* adHigh, bool* detectBadPixels);
/// Sets it.
int zvtSetNUCSetup(uint64_t handle, float gainMin, float gainMax, uint16_t adLow, uint16_t adHigh, bool detectBadPixels);
/// Whether twinkling pixels are looked for, over how many frames, and the change in A/D counts from which a pixel
/// twinkles.
int zvtGetTwinklerSetup(uint64_t handle, bool* detect, uint32_t* numFrames, uint16_t* delta);
/// Sets it.
int zvtSetTwinklerSetup(uint64_t handle, bool detect, uint32_t numFrames, uint16_t delta);
/// Whether the factory's bad pixels count too.
int zvtGetNUCUseFactoryBadPixels(uint64_t handle, bool* out);
/// Sets it.
int zvtSetNUCUseFactoryBadPixels(uint64_t handle, bool value);
/// How the flag's temperatures are given: 0 above ambient, 1 as they are.
int zvtGetNUCFlagSetpointType(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetNUCFlagSetpointType(uint64_t handle, uint8_t value);
/// The flag's two temperatures above ambient in degrees Celsius.
int zvtGetNUCFlagSetpointDeltas(uint64_t handle, float* low, float* high);
/// Sets it.
int zvtSetNUCFlagSetpointDeltas(uint64_t handle, float low, float high);
/// The flag's two temperatures in degrees Celsius.
int zvtGetNUCFlagSetpointTemps(uint64_t handle, float* low, float* high);
/// Sets it.
int zvtSetNUCFlagSetpointTemps(uint64_t handle, float low, float high);
/// The flag's greatest temperature and the change at which it counts as stable, in degrees Celsius; how many readings
/// must be stable; and the time limit in milliseconds.
int zvtGetNUCFlagConfig(uint64_t handle, float* flagMaxTemp, float* stableDelta, uint32_t* stableCount, uint32_t* timeout);
/// Sets it.
int zvtSetNUCFlagConfig(uint64_t handle, float flagMaxTemp, float stableDelta, uint32_t stableCount, uint32_t timeout);
/// Starts a run with the settings above. Answers at once.
int zvtStartNUC(uint64_t handle);
/// Goes on when the run waits for an external source (status 2 or 6).
int zvtContinueNUC(uint64_t handle);
/// Ends the run.
int zvtAbortNUC(uint64_t handle);
/// Where a run stands, 0 to 14, 0 for no run, and a text for the operator.
int zvtGetNUCStatus(uint64_t handle, uint16_t* status, char* text, uint32_t size);
/// How the last run ended, 0 to 3, 0 for well, and a text for the operator. To be asked when the status is 0.
int zvtGetNUCResult(uint64_t handle, uint16_t* result, char* text, uint32_t size);
/// The counts of bad pixels of a preset by their reason, during a run and after it.
int zvtGetNUCResults(uint64_t handle, uint8_t preset, uint32_t* total, uint32_t* factory, uint32_t* newBad, uint32_t* twinkling, uint32_t* aboveGainMax, uint32_t* belowGainMin, uint32_t* aboveADMaxSrc1, uint32_t* belowADMinSrc1, uint32_t* aboveADMaxSrc2, uint32_t* belowADMinSrc2);
/// Makes the result of the run the loaded correction of its preset.
int zvtAcceptNUC(uint64_t handle);
/// Drops the result of the run; the old correction comes back.
int zvtDiscardNUC(uint64_t handle);

// ---- Correction in use ----------------------------------------------------------------------------------------------

/// Whether the digital output is corrected.
int zvtGetDigitalOutputNUCEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetDigitalOutputNUCEnabled(uint64_t handle, bool value);
/// Whether the video output is corrected.
int zvtGetVideoOutputNUCEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOutputNUCEnabled(uint64_t handle, bool value);
/// The automatic correction: whether it is on, whether a change of temperature in degrees Celsius starts it and which,
/// whether time in minutes does and how much.
int zvtGetAutoNUCSetup(uint64_t handle, bool* enabled, bool* useDeltaTemp, float* deltaTemp, bool* useDeltaTime, uint32_t* deltaTime);
/// Sets it.
int zvtSetAutoNUCSetup(uint64_t handle, bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime, uint32_t deltaTime);
/// Starts the automatic correction now.
int zvtDoAutoNUC(uint64_t handle);
/// Whether the image shows bad pixels instead of correcting them.
int zvtGetShowBadPixels(uint64_t handle, bool* out);
/// Sets it.
int zvtSetShowBadPixels(uint64_t handle, bool value);
/// How bad pixels are replaced: 0 two point gradient, 1 nearest neighbour, 2 not at all.
int zvtGetBadPixelCorrectionMethod(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetBadPixelCorrectionMethod(uint64_t handle, uint8_t value);
/// Writes the list of bad pixels of a preset to a path on the camera.
int zvtSaveBadPixelList(uint64_t handle, uint8_t preset, const char* cameraPath);

// ---- Detector voltages, gain and image orientation ------------------------------------------------------------------

/// The number of colours of the detector; 2 for one with two spectral bands.
int zvtGetNumColors(uint64_t handle, uint8_t* count);
/// Selects the colour of a preset.
int zvtSetColor(uint64_t handle, uint8_t preset, uint8_t color);
/// Whether the gain levels have names.
int zvtGetGainLevelsAreNamed(uint64_t handle, bool* named);
/// The gain level, from 0.
int zvtGetGainLevel(uint64_t handle, uint8_t* level);
/// Sets it.
int zvtSetGainLevel(uint64_t handle, uint8_t level);
/// The name of a gain level.
int zvtGetGainLevelName(uint64_t handle, uint8_t level, char* buffer, uint32_t size);
/// The global offset voltage in volts.
int zvtGetGlobalOffsetVoltage(uint64_t handle, float* out);
/// Sets it.
int zvtSetGlobalOffsetVoltage(uint64_t handle, float value);
/// The limits of the global offset voltage in volts.
int zvtGetGlobalOffsetVoltageLimits(uint64_t handle, float* min, float* max);
/// The detector bias in millivolts; the P on N bias where there are two.
int zvtGetFPABias(uint64_t handle, float* out);
/// Sets it.
int zvtSetFPABias(uint64_t handle, float value);
/// Sets one of several detector biases; index 1 is the N on P bias.
int zvtSetFPABiasEx(uint64_t handle, uint8_t index, float volts);
/// The limits of the detector bias in millivolts.
int zvtGetFPABiasLimits(uint64_t handle, float* min, float* max);
/// Whether the detector can skim.
int zvtGetSkimmingAvailable(uint64_t handle, bool* out);
/// Whether the detector skims.
int zvtGetSkimmingEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetSkimmingEnabled(uint64_t handle, bool value);
/// The skimming voltage in volts.
int zvtGetSkimmingVoltage(uint64_t handle, float* out);
/// Sets it.
int zvtSetSkimmingVoltage(uint64_t handle, float value);
/// The limits of the skimming voltage in volts.
int zvtGetSkimmingVoltageLimits(uint64_t handle, float* min, float* max);
/// A preset's digital gain as a factor.
int zvtGetDigitalGain(uint64_t handle, uint8_t preset, float* out);
/// Sets it.
int zvtSetDigitalGain(uint64_t handle, uint8_t preset, float value);
/// A preset's digital offset in A/D counts.
int zvtGetDigitalOffset(uint64_t handle, uint8_t preset, float* out);
/// Sets it.
int zvtSetDigitalOffset(uint64_t handle, uint8_t preset, float value);
/// Whether the image is flipped left to right.
int zvtGetRevertEnabled(uint64_t handle, bool* enabled);
/// Sets it.
int zvtSetRevertEnabled(uint64_t handle, bool enabled);
/// Whether the image is flipped top to bottom.
int zvtGetInvertEnabled(uint64_t handle, bool* enabled);
/// Sets it.
int zvtSetInvertEnabled(uint64_t handle, bool enabled);
/// Whether the camera has a high sensitivity mode.
int zvtGetHSMAvailable(uint64_t handle, bool* available);
/// Whether the high sensitivity mode is on.
int zvtGetHSMEnabled(uint64_t handle, bool* enabled);
/// Sets it.
int zvtSetHSMEnabled(uint64_t handle, bool enabled);

// ---- Saturation -----------------------------------------------------------------------------------------------------

/// The A/D count above which a pixel of a preset is saturated.
int zvtGetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t* out);
/// Sets it.
int zvtSetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t value);
/// The number of saturated pixels above which a preset's image is saturated.
int zvtGetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t* out);
/// Sets it.
int zvtSetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t value);
/// The saturated pixels of a preset in the latest frame.
int zvtGetSaturatedPixels(uint64_t handle, uint8_t preset, uint32_t* out);

// ---- Lock-in --------------------------------------------------------------------------------------------------------

/// The coupling of the lock-in signal: 0 AC, 1 DC.
int zvtGetLockinCoupling(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetLockinCoupling(uint64_t handle, uint8_t value);
/// The digital filter, as an index.
int zvtGetLockinAlphaFilter(uint64_t handle, uint8_t* out);
/// Sets the digital filter. The camera may take another one: read it back.
int zvtSetLockinAlphaFilter(uint64_t handle, uint8_t value);
/// The estimated frequency of the input in hertz.
int zvtGetLockinEstInputFreq(uint64_t handle, float* out);
/// Sets the estimated frequency. The camera may take another one: read it back.
int zvtSetLockinEstInputFreq(uint64_t handle, float value);
/// The sample rate in hertz. Fails while it is not set.
int zvtGetLockinSampleFreq(uint64_t handle, float* out);

// ---- Digital outputs ------------------------------------------------------------------------------------------------

/// Whether the camera tells what kind of transport it streams over.
int zvtGetDeviceTLTypeAvailable(uint64_t handle, uint8_t* out);
/// The transport: 0 one whose stream has to be stopped for a change of its format.
int zvtGetDeviceTLType(uint64_t handle, uint8_t* out);
/// 1 if the header mode of GigE can be set, else 0.
int zvtGetGigEHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What GigE frames carry: 0 header and image, 1 header only, 2 image only.
int zvtGetGigEHeaderMode(uint64_t handle, uint8_t* out);
/// Sets what GigE frames carry. Refused while GigE streams.
int zvtSetGigEHeaderMode(uint64_t handle, uint8_t value);
/// The preset streamed over GigE, 4 for all.
int zvtGetGigEPreset(uint64_t handle, uint8_t* preset);
/// Sets it.
int zvtSetGigEPreset(uint64_t handle, uint8_t preset);
/// 1 if the header mode of CameraLink can be set, else 0.
int zvtGetCameraLinkHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What CameraLink frames carry: 0 header and image, 1 image only.
int zvtGetCameraLinkHeaderMode(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetCameraLinkHeaderMode(uint64_t handle, uint8_t value);
/// The CameraLink configuration: 0 base, 1 full.
int zvtGetCameraLinkType(uint64_t handle, uint8_t* out);
/// 1 if the CameraLink configuration can be changed, else 0.
int zvtGetCameraLinkTypeWritable(uint64_t handle, uint8_t* out);
/// 1 if the header mode of CoaXPress can be set, else 0.
int zvtGetCoaXPressHeaderModeAvailable(uint64_t handle, uint8_t* out);
/// What CoaXPress frames carry: 0 header and image, 1 image only.
int zvtGetCoaXPressHeaderMode(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetCoaXPressHeaderMode(uint64_t handle, uint8_t value);
/// The number of CoaXPress links, 1 or 2.
int zvtGetCoaXPressLinkCount(uint64_t handle, uint8_t* out);
/// 1 if the number of CoaXPress links can be changed, else 0.
int zvtGetCoaXPressLinkCountWritable(uint64_t handle, uint8_t* out);

// ---- Video output ---------------------------------------------------------------------------------------------------

/// The video formats of the camera.
int zvtGetVideoFormats(uint64_t handle, hlx::TArray<unsigned char>* out);
/// The video format: 0 NTSC, 1 PAL, 2 SVGA, 3 NTSC and 4 PAL with square pixels, 5 720p at 60 Hz, 6 SXGA, 7 1080p at
/// 24, 8 at 30, 9 at 60 Hz, 10 720p at 59.9 Hz, 11 1080p at 29.9 Hz, 12 720p at 50 Hz, 13 1080p at 25 Hz, 101 480i, 102
/// 576i.
int zvtGetVideoFormat(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoFormat(uint64_t handle, uint8_t value);
/// The update rate: 0 by frames, 1 by fields.
int zvtGetVideoUpdateRate(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoUpdateRate(uint64_t handle, uint8_t value);
/// The temporal filter: 0 none, 1 four taps, 2 four taps adaptive.
int zvtGetVideoTemporalFilter(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoTemporalFilter(uint64_t handle, uint8_t value);
/// The threshold of the temporal filter in A/D counts.
int zvtGetVideoTemporalFilterThreshold(uint64_t handle, uint16_t* out);
/// Sets it.
int zvtSetVideoTemporalFilterThreshold(uint64_t handle, uint16_t value);
/// Whether the position of the image can be set.
int zvtGetVideoPositionWritable(uint64_t handle, bool* out);
/// The position of the image in the video: 0 as on the detector, 1 centred, 2 by an offset.
int zvtGetVideoPosition(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoPosition(uint64_t handle, uint8_t value);
/// The offset of the image in the video in pixels.
int zvtGetVideoOffset(uint64_t handle, int16_t* x, int16_t* y);
/// Sets it.
int zvtSetVideoOffset(uint64_t handle, int16_t x, int16_t y);
/// The zoom factors of the camera; zvtVideoZoomFactorText() names them.
int zvtGetVideoZoomFactors(uint64_t handle, hlx::TArray<unsigned char>* out);
/// The zoom factor, one of the camera's.
int zvtGetVideoZoomFactor(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoZoomFactor(uint64_t handle, uint8_t value);
/// The name of a zoom factor, such as "1X". Never null. No handle; valid for ever.
const char* zvtVideoZoomFactorText(uint8_t value);
/// The brightness of analog video, -15 to 63.
int zvtGetVideoBrightness(uint64_t handle, int8_t* out);
/// Sets it.
int zvtSetVideoBrightness(uint64_t handle, int8_t value);
/// The contrast of analog video, -128 to 127.
int zvtGetVideoContrast(uint64_t handle, int8_t* out);
/// Sets it.
int zvtSetVideoContrast(uint64_t handle, int8_t value);
/// 1 if the camera can show hot as black, else 0.
int zvtGetBlackHotAvailable(uint64_t handle, uint8_t* out);
/// 1 if hot is shown as black, else 0.
int zvtGetBlackHotEnabled(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetBlackHotEnabled(uint64_t handle, uint8_t value);
/// The palettes of the camera. Only their names mean something.
int zvtListPalettes(uint64_t handle, hlx::TArray<zvtSDirEntry>* out);
/// The name of the palette in use; it may be missing in the list.
int zvtGetPalette(uint64_t handle, char* buf, uint32_t size);
/// Selects a palette by its name.
int zvtLoadPalette(uint64_t handle, const char* name);

// ---- Automatic gain control of the video ----------------------------------------------------------------------------

/// The method: 0 plateau, 1 detail enhancement (DDE), 2 linear, 3 manual.
int zvtGetVideoAGCMethod(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoAGCMethod(uint64_t handle, uint8_t value);
/// The plateau, 1 to 16383.
int zvtGetVideoAGCPlateauP(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetVideoAGCPlateauP(uint64_t handle, uint32_t value);
/// The sharpness of the detail enhancement, 1 to 7.
int zvtGetVideoAGCDDESharpness(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoAGCDDESharpness(uint64_t handle, uint8_t value);
/// The threshold of the detail enhancement, 0 to 16383.
int zvtGetVideoAGCDDEThreshold(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetVideoAGCDDEThreshold(uint64_t handle, uint32_t value);
/// The lower end of the manual range in A/D counts.
int zvtGetVideoAGCManualLow(uint64_t handle, uint16_t* out);
/// Sets it.
int zvtSetVideoAGCManualLow(uint64_t handle, uint16_t value);
/// The upper end of the manual range in A/D counts.
int zvtGetVideoAGCManualHigh(uint64_t handle, uint16_t* out);
/// Sets it.
int zvtSetVideoAGCManualHigh(uint64_t handle, uint16_t value);
/// Whether the filter rate limits changes.
int zvtGetVideoAGCFilterRateEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoAGCFilterRateEnabled(uint64_t handle, bool value);
/// The filter rate, 0.0 to 20.0.
int zvtGetVideoAGCFilterRate(uint64_t handle, double* out);
/// Sets it.
int zvtSetVideoAGCFilterRate(uint64_t handle, double value);
/// Whether changes are dampened.
int zvtGetVideoAGCDampeningEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoAGCDampeningEnabled(uint64_t handle, bool value);
/// The dampening, 0.0 to 1.0; 0.0 locks the gain.
int zvtGetVideoAGCDampening(uint64_t handle, float* out);
/// Sets it.
int zvtSetVideoAGCDampening(uint64_t handle, float value);
/// Whether the gain control looks at a region only.
int zvtGetVideoAGCROIEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoAGCROIEnabled(uint64_t handle, bool value);
/// The region in pixels of the preset's window.
int zvtGetVideoAGCROI(uint64_t handle, uint16_t* x, uint16_t* y, uint16_t* width, uint16_t* height);
/// Sets the region; one that leaves the window is refused.
int zvtSetVideoAGCROI(uint64_t handle, uint16_t x, uint16_t y, uint16_t width, uint16_t height);
/// Whether the overlay shows the region while it is in use; zvtSetVideoOverlayShowAGCROI() sets it.
int zvtGetVideoAGCROIShowWhenEnabled(uint64_t handle, bool* out);

// ---- Video overlay --------------------------------------------------------------------------------------------------
// The zvt...VideoOverlayShow... functions say whether the overlay shows a piece of information. Colours are places in
// the overlay's palette; place 0 is transparent for texts.

/// Whether the overlay is shown at all.
int zvtGetVideoOverlayEnabled(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayEnabled(uint64_t handle, bool value);
/// The overlay's palette: writes 768 bytes, red, green and blue of 256 colours. The buffer must hold them.
int zvtGetVideoOverlayPalette(uint64_t handle, uint8_t* rgb768);
/// The colour of the text.
int zvtGetVideoOverlayTextColor(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoOverlayTextColor(uint64_t handle, uint8_t value);
/// The colour behind the text.
int zvtGetVideoOverlayTextBackground(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoOverlayTextBackground(uint64_t handle, uint8_t value);
/// Whether the text can be coloured.
int zvtGetVideoOverlayTextColorsAvailable(uint64_t handle, bool* out);
/// The colour of the frame around the gain control region.
int zvtGetVideoOverlayAGCROIColor(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoOverlayAGCROIColor(uint64_t handle, uint8_t value);
/// The colour of the frame around the focus region.
int zvtGetVideoOverlayFocusROIColor(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetVideoOverlayFocusROIColor(uint64_t handle, uint8_t value);
/// Shows the region of the gain control.
int zvtGetVideoOverlayShowAGCROI(uint64_t handle, bool* out);
/// Sets it, and with it what zvtGetVideoAGCROIShowWhenEnabled() reads.
int zvtSetVideoOverlayShowAGCROI(uint64_t handle, bool value);
/// Shows the region of the automatic focus.
int zvtGetVideoOverlayShowFocusROI(uint64_t handle, bool* show);
/// Sets it.
int zvtSetVideoOverlayShowFocusROI(uint64_t handle, bool show);
/// Shows the camera's messages.
int zvtGetVideoOverlayShowMessage(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowMessage(uint64_t handle, bool value);
/// Removes the message on show.
int zvtVideoOverlayClearMessage(uint64_t handle);
/// Shows the maker's logo.
int zvtGetVideoOverlayShowLogo(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowLogo(uint64_t handle, bool value);
/// Shows the focus position.
int zvtGetVideoOverlayShowFocus(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowFocus(uint64_t handle, bool value);
/// Shows the date.
int zvtGetVideoOverlayShowDate(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowDate(uint64_t handle, bool value);
/// Shows the time.
int zvtGetVideoOverlayShowTime(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowTime(uint64_t handle, bool value);
/// Shows the IRIG time.
int zvtGetVideoOverlayShowIRIG(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowIRIG(uint64_t handle, bool value);
/// Shows the camera's model and serial number.
int zvtGetVideoOverlayShowCameraInfo(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowCameraInfo(uint64_t handle, bool value);
/// Shows the operating time.
int zvtGetVideoOverlayShowHourMeter(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowHourMeter(uint64_t handle, bool value);
/// Shows the temperature of the front panel.
int zvtGetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool value);
/// Shows the temperature of the air gap.
int zvtGetVideoOverlayShowAirGapTemp(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowAirGapTemp(uint64_t handle, bool value);
/// Shows the temperature of the interior.
int zvtGetVideoOverlayShowInternalTemp(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowInternalTemp(uint64_t handle, bool value);
/// Shows the temperature of the chassis.
int zvtGetVideoOverlayShowChassisTemp(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowChassisTemp(uint64_t handle, bool value);
/// Shows the temperature of the lens.
int zvtGetVideoOverlayShowLensTemp(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowLensTemp(uint64_t handle, bool value);
/// Shows the state of the flag.
int zvtGetVideoOverlayShowFlag(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowFlag(uint64_t handle, bool value);
/// Shows the palette as a bar.
int zvtGetVideoOverlayShowPalette(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowPalette(uint64_t handle, bool value);
/// Shows the field of view.
int zvtGetVideoOverlayShowFOV(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowFOV(uint64_t handle, bool value);
/// Shows the zoom factor.
int zvtGetVideoOverlayShowZoom(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowZoom(uint64_t handle, bool value);
/// Shows the preset and its integration time.
int zvtGetVideoOverlayShowPreset(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowPreset(uint64_t handle, bool value);
/// Shows the frame rate.
int zvtGetVideoOverlayShowFrameRate(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowFrameRate(uint64_t handle, bool value);
/// Shows the name of the camera's state.
int zvtGetVideoOverlayShowStateName(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowStateName(uint64_t handle, bool value);
/// Whether the overlay has a text of the user's.
int zvtGetVideoOverlayUserDefinedFieldAvailable(uint64_t handle, bool* out);
/// Shows the user's text.
int zvtGetVideoOverlayShowUserDefinedField(uint64_t handle, bool* out);
/// Sets it.
int zvtSetVideoOverlayShowUserDefinedField(uint64_t handle, bool value);
/// The user's text, at most 64 bytes.
int zvtGetVideoOverlayUserDefinedFieldText(uint64_t handle, char* buf, uint32_t size);
/// Sets the user's text. UTF-8; more than 64 bytes are refused.
int zvtSetVideoOverlayUserDefinedFieldText(uint64_t handle, const char* text);
/// Gives everything about the overlay its default.
int zvtVideoOverlayUseDefaults(uint64_t handle);

// ---- Recorder -------------------------------------------------------------------------------------------------------
// The recorder keeps frames in the camera's memory or on its drive. Frames count from 0.

/// What the recorder does: 0 disarmed, 1 armed, 2 recording, 3 complete, 4 playing, 5 saving, 6 playback paused, 7
/// formatting, 8 loading, 9 recording paused, 10 movie loaded, 11 arming, 12 asks for a download.
int zvtGetSsdState(uint64_t handle, uint8_t* state);
/// Makes the recorder ready for a trigger: state 11, then 1.
int zvtSsdArm(uint64_t handle);
/// Back to state 0.
int zvtSsdDisarm(uint64_t handle);
/// Starts a recording: state 2 until it is complete.
int zvtSsdTrigger(uint64_t handle);
/// Pauses a recording: state 9.
int zvtSsdRecordPause(uint64_t handle);
/// Goes on with a paused recording: state 2.
int zvtSsdRecordResume(uint64_t handle);
/// Ends a recording.
int zvtSsdRecordStop(uint64_t handle);
/// The frames to record.
int zvtGetSsdNumFrames(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetSsdNumFrames(uint64_t handle, uint32_t value);
/// The frames that memory holds; it depends on the window.
int zvtGetSsdMaxNumFrames(uint64_t handle, uint32_t* out);
/// The frames that the drive holds; it changes with what is stored there.
int zvtGetSsdMaxNumFramesDisk(uint64_t handle, uint32_t* out);
/// The frames kept from before the trigger.
int zvtGetSsdPretriggerFrames(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetSsdPretriggerFrames(uint64_t handle, uint32_t value);
/// The frames in memory or in the loaded movie.
int zvtGetSsdNumFramesAcquired(uint64_t handle, uint32_t* out);
/// 1 if the record mode and what belongs to it can be set, else 0.
int zvtGetSsdRecordModeAvailable(uint64_t handle, uint8_t* out);
/// Where frames are recorded: 0 in memory, 1 on the drive.
int zvtGetSsdRecordMode(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdRecordMode(uint64_t handle, uint8_t value);
/// What ends a recording: 0 a number of frames, 1 a time, 2 the operator.
int zvtGetSsdRecordType(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdRecordType(uint64_t handle, uint8_t value);
/// The length of a recording in milliseconds.
int zvtGetSsdRecordDuration(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetSsdRecordDuration(uint64_t handle, uint32_t value);
/// 1 if the trigger signal gates the recording, else 0.
int zvtGetSsdRecordGated(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdRecordGated(uint64_t handle, uint8_t value);
/// 1 if the recorder is armed again after a recording, else 0.
int zvtGetSsdAutoRearm(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdAutoRearm(uint64_t handle, uint8_t value);
/// 1 if a recording is saved to the drive by itself, else 0.
int zvtGetSsdAutoSave(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdAutoSave(uint64_t handle, uint8_t value);
/// 1 if a recording is played by itself, else 0.
int zvtGetSsdAutoPlay(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdAutoPlay(uint64_t handle, uint8_t value);
/// 1 if the recorder asks for a download after a recording (state 12), else 0.
int zvtGetSsdAutoDownload(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdAutoDownload(uint64_t handle, uint8_t value);
/// Takes up the download that the recorder asks for.
int zvtSsdAutoDownloadStart(uint64_t handle);
/// Tells the recorder that the download is over; it leaves state 12.
int zvtSsdAutoDownloadDone(uint64_t handle);

// ---- Playback -------------------------------------------------------------------------------------------------------

/// Plays what is recorded or loaded: state 4.
int zvtSsdPlayBuffer(uint64_t handle);
/// Pauses the playback: state 6.
int zvtSsdPauseBuffer(uint64_t handle);
/// Goes on with a paused playback: state 4.
int zvtSsdResumeBuffer(uint64_t handle);
/// Ends the playback.
int zvtSsdStopBuffer(uint64_t handle);
/// Shows one frame: state 6.
int zvtSsdSkipToFrame(uint64_t handle, uint32_t frame);
/// Shows the next frame: state 6.
int zvtSsdSkipForward(uint64_t handle);
/// Shows the frame before: state 6.
int zvtSsdSkipBackward(uint64_t handle);
/// The frame on show.
int zvtGetSsdPlaybackFrame(uint64_t handle, uint32_t* out);
/// The playback rate in hertz.
int zvtGetSsdPlaybackRate(uint64_t handle, float* out);
/// Sets it.
int zvtSetSsdPlaybackRate(uint64_t handle, float value);
/// 1 if the playback starts again at its end, else 0.
int zvtGetSsdLoopPlayback(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetSsdLoopPlayback(uint64_t handle, uint8_t value);
/// The first frame of the playback.
int zvtGetSsdStartFrame(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetSsdStartFrame(uint64_t handle, uint32_t value);
/// The last frame of the playback; 4294967295 for the last there is.
int zvtGetSsdEndFrame(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetSsdEndFrame(uint64_t handle, uint32_t value);

// ---- Drive ----------------------------------------------------------------------------------------------------------

/// 1 if the camera has a drive, else 0.
int zvtGetSsdDrivePresent(uint64_t handle, uint8_t* out);
/// 1 if the drive can be read, else 0.
int zvtGetSsdDriveRecognized(uint64_t handle, uint8_t* out);
/// The drive's size in bytes.
int zvtGetSsdDriveSpaceTotal(uint64_t handle, int64_t* out);
/// The bytes used on the drive.
int zvtGetSsdDriveSpaceUsed(uint64_t handle, int64_t* out);
/// The bytes free on the drive.
int zvtGetSsdDriveSpaceFree(uint64_t handle, int64_t* out);
/// Formats the drive: state 7 for a while. All movies are lost.
int zvtSsdFormatDrive(uint64_t handle);
/// The name under which recordings are saved; may be empty.
int zvtGetSsdSaveName(uint64_t handle, char* buf, uint32_t size);
/// Sets the name under which recordings are saved. UTF-8.
int zvtSetSsdSaveName(uint64_t handle, const char* name);
/// Saves what is recorded to the drive: state 5 for a while.
int zvtSsdSaveBuffer(uint64_t handle);
/// The number of movies on the drive.
int zvtGetSsdMovieCount(uint64_t handle, uint32_t* out);
/// A movie by its place in the list, from 0.
int zvtGetSsdMovieInfo(uint64_t handle, uint32_t index, zvtSSsdMovieInfo* out);
/// Loads a movie by its place in the list: state 8, then 10. Blocks.
int zvtSsdLoadMovie(uint64_t handle, uint32_t index);
/// 1 while a movie is loaded, else 0.
int zvtGetSsdMovieLoaded(uint64_t handle, uint8_t* out);
/// Unloads the movie: state 0.
int zvtSsdUnload(uint64_t handle);

// ---- Manufacturing --------------------------------------------------------------------------------------------------
// Widths are in clocks of the detector.

/// 1 if the values below stand in for those of the readout circuit, else 0.
int zvtGetMfgOverrideRoicConfig(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetMfgOverrideRoicConfig(uint64_t handle, uint8_t value);
/// 1 if there is one line sync more, else 0.
int zvtGetMfgHasExtraLSync(uint64_t handle, uint8_t* out);
/// Sets it.
int zvtSetMfgHasExtraLSync(uint64_t handle, uint8_t value);
/// The dead time at the end of a line.
int zvtGetMfgLineDeadWidth(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetMfgLineDeadWidth(uint64_t handle, uint32_t value);
/// The dead time before the integration.
int zvtGetMfgPreIntDeadWidth(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetMfgPreIntDeadWidth(uint64_t handle, uint32_t value);
/// The dead time after the integration.
int zvtGetMfgPostIntDeadWidth(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetMfgPostIntDeadWidth(uint64_t handle, uint32_t value);
/// The dead rows before the image.
int zvtGetMfgPreDeadRows(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetMfgPreDeadRows(uint64_t handle, uint32_t value);
/// The dead rows behind the image.
int zvtGetMfgPostDeadRows(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtSetMfgPostDeadRows(uint64_t handle, uint32_t value);
/// The phase shift of the detector clock, 0 to 100000000.
int zvtMfgGetClockPhaseShift(uint64_t handle, uint32_t* out);
/// Sets it.
int zvtMfgSetClockPhaseShift(uint64_t handle, uint32_t value);
/// The names of the detector's voltages.
int zvtListVoltages(uint64_t handle, hlx::TArray<hlx::CString>* out);
/// A voltage by its name, in volts.
int zvtGetVoltage(uint64_t handle, const char* name, float* out);
/// Sets it.
int zvtSetVoltage(uint64_t handle, const char* name, float value);
/// The name of a voltage for the operator.
int zvtGetVoltageDisplayName(uint64_t handle, const char* name, char* buf, uint32_t size);
/// 1 if the voltage can be set, else 0.
int zvtGetVoltageEditable(uint64_t handle, const char* name, uint8_t* out);
/// The limits of a voltage in volts.
int zvtGetVoltageLimits(uint64_t handle, const char* name, float* min, float* max);
/// Makes the factory's list of bad pixels from those of the presets in a mask; 0xFFFFFFFF stands for all presets.
int zvtMfgFactoryBPLCreate(uint64_t handle, uint32_t presetMask);
/// Adds the bad pixels of the presets in a mask to the factory's list.
int zvtMfgFactoryBPLAppend(uint64_t handle, uint32_t presetMask);
/// Applies the factory's list of bad pixels to the presets in a mask.
int zvtMfgFactoryBPLApply(uint64_t handle, uint32_t presetMask);

} // extern "C"
