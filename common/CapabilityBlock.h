#pragma once

#include <atomic>

/// A number that pool tasks read while the GUI thread may write it. Access is relaxed: a new value of one capability
/// says nothing about the others.
template <class T> class Capability
{
public:
    T operator()() const { return m_value.load(std::memory_order_relaxed); }
    void set(T value) { m_value.store(value, std::memory_order_relaxed); }

private:
    std::atomic<T> m_value{};
};

/// The capabilities of the camera as last read by CameraCapabilitiesModel. A task reads the live values when it needs
/// them, without the model. Written on the GUI thread only; read on any thread.
class CapabilityBlock
{
public:
    Capability<bool> hasFrontPanelTemperature; ///< A sensor at the front panel.
    Capability<bool> hasAirGapTemperature; ///< A sensor in the air gap.
    Capability<bool> hasInternalTemperature; ///< An internal sensor; read only from a camera without a chassis sensor.
    Capability<bool> hasChassisTemperature; ///< A sensor at the chassis.
    Capability<bool> hasFPAGain; ///< A choice of detector gains.
    Capability<int> numFPAGainLevels; ///< The number of detector gains.
    Capability<bool> hasReplaceableFilters; ///< Filters that the user can change.
    Capability<bool> hasGigEPreset; ///< A video preset of its own for GigE.
    Capability<bool> hasVideoOutputSettings; ///< Settings of the video outputs.
    Capability<bool> hasLensStatesFunctionality; ///< Lens positions stored in the camera under names.
    Capability<bool> hasContinuousOpticalZoom; ///< A zoom lens that stops anywhere.
    Capability<bool> hasDiscontinuousOpticalZoom; ///< A lens with a few fields of view.
    Capability<bool> hasFocus; ///< A focus motor.
    Capability<bool> hasFocusToDistance; ///< Focusing to a distance.
    Capability<bool> hasFovMovePercent; ///< Moving the field of view to a percentage.
    Capability<bool> hasFocusMovePercent; ///< Moving the focus to a percentage.
    Capability<bool> hasWindowSettings; ///< A choice of frame sizes.
    Capability<bool> hasWindowDimensionsThatCanBeArbitrary; ///< Frames of any size within the limits.
    Capability<bool> hasBilinearZoom; ///< Bilinear video zoom.
    Capability<bool> hasFilterWheel; ///< A filter wheel.
    Capability<bool> hasFlag; ///< A flag, the internal shutter.
    Capability<bool> hasFlagCooler; ///< A cooled flag.
    Capability<bool> hasLensCover; ///< A lens cover.
    Capability<bool> hasBadPixelCorrection; ///< Replacement of bad pixels.
    Capability<bool> hasUpdateRate; ///< A choice of video update rates.
    Capability<bool> hasTemporalFilter; ///< A temporal filter for the video.
    Capability<bool> hasOverlayCustomization; ///< An overlay that can be changed.
    Capability<bool> hasVideoAgcRoi; ///< A region of interest for the video's gain control.
    Capability<bool> hasCameraLinkMode; ///< A choice of Camera Link modes.
    Capability<bool> hasCoaXPressLinksToUse; ///< A choice of CoaXPress links.
    Capability<bool> hasSkimming; ///< Skimming settings.
    Capability<bool> hasLockin; ///< Lock-in settings.
    Capability<bool> hasAdvancedMiscSettings; ///< The miscellaneous settings of the advanced page.
    Capability<bool> hasSsd; ///< A solid-state drive.
    Capability<bool> hasTeCooler; ///< A thermoelectric cooler.
};
