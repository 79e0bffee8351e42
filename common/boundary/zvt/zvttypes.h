#pragma once

#include <cstddef>
#include <cstdint>

#include "hlx/CString.h"

/// The packed IRIG time of the SDK. Its 16-bit members are not aligned: never take a pointer or reference to them.
#pragma pack(push, 1)
struct zvtSIRIG {
    uint16_t day; ///< Day of the year, 1 to 366.
    uint8_t hour; ///< 0 to 23.
    uint8_t minute; ///< 0 to 59.
    uint8_t second; ///< 0 to 59.
    uint16_t millisecond; ///< 0 to 999.
    uint16_t microsecond; ///< 0 to 999.
};
#pragma pack(pop)
static_assert(sizeof(zvtSIRIG) == 9);
static_assert(offsetof(zvtSIRIG, millisecond) == 5 && offsetof(zvtSIRIG, microsecond) == 7);

/// One movie on the camera's drive.
#pragma pack(push, 1)
struct zvtSSsdMovieInfo {
    char name[68]; ///< Zero-ended UTF-8.
    uint32_t number; ///< The movie's number on the drive.
    uint16_t width; ///< Pixels.
    uint16_t height; ///< Lines: one more than the picture has.
    uint32_t numFrames; ///< The number of frames.
    zvtSIRIG startTime; ///< Time of the first frame.
    zvtSIRIG endTime; ///< Time of the last frame.
    uint8_t reserved[2]; ///< Not used.
};
#pragma pack(pop)
static_assert(sizeof(zvtSSsdMovieInfo) == 100);
static_assert(offsetof(zvtSSsdMovieInfo, number) == 68 && offsetof(zvtSSsdMovieInfo, width) == 72);
static_assert(offsetof(zvtSSsdMovieInfo, numFrames) == 76 && offsetof(zvtSSsdMovieInfo, startTime) == 80);
static_assert(offsetof(zvtSSsdMovieInfo, endTime) == 89);

/// One row of the table of camera models. The table ends at the first row whose name is null.
struct zvtSModelInfo {
    uint8_t boardSet; ///< 0 to 6.
    uint8_t type; ///< Camera type, see zvtGetCameraTypeName().
    uint8_t detectorType; ///< Detector type, see zvtGetDetectorTypeName().
    uint8_t roicType; ///< Readout circuit, see zvtGetReadoutName().
    uint8_t subType; ///< Camera subtype, see zvtGetCameraSubtypeName().
    uint8_t pleoraBoard; ///< Interface board, see zvtGetPleoraBoardTypeName().
    uint8_t variant; ///< Variant, see zvtGetVariantName().
    uint8_t reserved7; ///< Not read.
    uint8_t reserved8; ///< Not read.
    uint8_t filterWheel; ///< 1 if the camera has a filter wheel, else 0.
    uint8_t reserved10[6]; ///< Not read.
    const char *name; ///< Zero-ended model name.
    const char *subTypeName; ///< Zero-ended subtype name.
    uint8_t reserved32[24]; ///< Not read.
};
static_assert(sizeof(zvtSModelInfo) == 56);
static_assert(offsetof(zvtSModelInfo, filterWheel) == 9 && offsetof(zvtSModelInfo, name) == 16);
static_assert(offsetof(zvtSModelInfo, subTypeName) == 24 && offsetof(zvtSModelInfo, reserved32) == 32);

/// One file of a list on the camera. Names are UTF-8.
struct zvtSDirEntry {
    hlx::CString name;
    uint32_t kind = 0; ///< File or folder. Not used by the view models.
    uint32_t size = 0; ///< Bytes.
    uint64_t time100ns = 0; ///< File time in units of 100 ns since 1601-01-01 00:00 UTC.
};

/// A row of the camera's extra information. Texts are UTF-8.
struct zvtSInfoEntry {
    hlx::CString name;
    hlx::CString value;
};

/// The centre of the region that the automatic focus uses: the middle of the image window or of one of its quarters.
enum zvtEAutoFocusROIPosition : uint8_t {
    ZVT_AF_ROI_CENTER = 0,
    ZVT_AF_ROI_TOP_LEFT = 1,
    ZVT_AF_ROI_TOP_RIGHT = 2,
    ZVT_AF_ROI_BOTTOM_LEFT = 3,
    ZVT_AF_ROI_BOTTOM_RIGHT = 4,
};

/// An event of the camera's event queue. Cameras may report others, which clients ignore.
enum zvtEEventType : int {
    ZVT_EVENT_NONE = 0, ///< The queue is empty.
    ZVT_EVENT_MAKE_UP_CHANGED = 1, ///< The capabilities have changed.
    ZVT_EVENT_SETTINGS_CHANGED = 2, ///< Another client has changed settings.
};
static_assert(sizeof(zvtEEventType) == sizeof(int));

/// The description of a stored non-uniformity correction: the camera and the settings that it was made with, and what
/// the search for bad pixels found.
struct zvtSNUCInfo {
    char cameraModel[64]; ///< UTF-8, zero-ended unless it fills the field.
    char cameraSerial[64]; ///< UTF-8, zero-ended unless it fills the field.
    uint16_t x; ///< The window, in pixels of the detector.
    uint16_t y;
    uint16_t width;
    uint16_t height;
    bool invert; ///< Flipped top to bottom.
    bool revert; ///< Flipped left to right.
    uint8_t frameSyncMode; ///< See zvtGetFrameSyncMode().
    uint32_t integrationWidth; ///< Integration time in clocks.
    uint32_t frameWidth; ///< Frame period in clocks.
    uint8_t filterID; ///< 0 to 63.
    uint8_t biasKind; ///< 2 for a detector with two biases.
    float detectorBias; ///< In the unit of zvtSetFPABias(); P on N where there are two.
    float secondDetectorBias; ///< In the same unit; N on P.
    uint8_t gainLevel; ///< From 0.
    float digitalOffset; ///< A/D counts.
    float digitalGain; ///< A factor.
    float analogOffset; ///< Global offset voltage in volts.
    bool skimmingEnabled;
    float skimmingVoltage; ///< Volts.
    uint8_t color; ///< 0 for P on N, any other value for N on P.
    uint8_t nucType; ///< See zvtGetNUCType().
    uint8_t nucSource; ///< See zvtGetNUCSource().
    uint32_t numFrames; ///< Frames averaged for each source.
    bool detectBadPixels;
    bool detectTwinklers;
    uint32_t twinklerFrames; ///< Frames in which twinkling pixels were looked for.
    uint16_t twinklerDelta; ///< The greatest change of a pixel that does not twinkle, A/D counts.
    uint16_t adMinimum; ///< The limits of a good pixel's signal, A/D counts.
    uint16_t adMaximum;
    float gainMinimum; ///< The limits of a good pixel's gain, a factor.
    float gainMaximum;
    uint32_t totalBadPixels; ///< Numbers of bad pixels, here and below.
    uint32_t twinklingPixels;
    uint32_t factoryBadPixels;
    uint32_t aboveGainMaximum;
    uint32_t belowGainMinimum;
    uint32_t aboveAdMaximumSource1;
    uint32_t belowAdMinimumSource1;
    uint32_t aboveAdMaximumSource2;
    uint32_t belowAdMinimumSource2;
    uint32_t newBadPixels;
};
