#pragma once

#include <cstddef>
#include <cstdint>

#include "hlx/CString.h"

/// The packed IRIG time of the SDK. Take no pointer or reference to its 16-bit members: they are not aligned.
#pragma pack(push, 1)
struct zvtSIRIG {
    uint16_t day; ///< Day of the year, from 1.
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
    uint32_t number; ///< Its number on the drive.
    uint16_t width; ///< Pixels.
    uint16_t height; ///< Lines, one more than the picture has.
    uint32_t numFrames; ///< Frames.
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
    uint8_t type; ///< Camera type.
    uint8_t detectorType; ///< Detector type.
    uint8_t roicType; ///< Readout type.
    uint8_t subType; ///< Camera subtype.
    uint8_t pleoraBoard; ///< Interface board.
    uint8_t variant; ///< Variant.
    uint8_t reserved7; ///< Not read.
    uint8_t reserved8; ///< Not read.
    uint8_t filterWheel; ///< 1: has a filter wheel.
    uint8_t reserved10[6]; ///< Not read.
    const char *name; ///< Zero-ended model name.
    const char *subTypeName; ///< Zero-ended subtype name.
    uint8_t reserved32[24]; ///< Not read.
};
static_assert(sizeof(zvtSModelInfo) == 56);
static_assert(offsetof(zvtSModelInfo, filterWheel) == 9 && offsetof(zvtSModelInfo, name) == 16);
static_assert(offsetof(zvtSModelInfo, subTypeName) == 24 && offsetof(zvtSModelInfo, reserved32) == 32);

/// An entry of a directory listing on the camera.
struct zvtSDirEntry {
    hlx::CString name;
    uint32_t kind = 0; ///< File or folder; not read by the view models.
    uint32_t size = 0; ///< Bytes.
    uint64_t time100ns = 0; ///< File time in units of 100 ns since 1601-01-01 00:00 UTC.
};

/// A row of the camera's extra information.
struct zvtSInfoEntry {
    hlx::CString name;
    hlx::CString value;
};

/// Where in the image window the auto focus looks: in its middle, or in that of one of its quarters.
enum zvtEAutoFocusROIPosition : uint8_t {
    ZVT_AF_ROI_CENTER = 0,
    ZVT_AF_ROI_TOP_LEFT = 1,
    ZVT_AF_ROI_TOP_RIGHT = 2,
    ZVT_AF_ROI_BOTTOM_LEFT = 3,
    ZVT_AF_ROI_BOTTOM_RIGHT = 4,
};

/// What the camera says about itself through its event queue.
enum zvtEEventType : int {
    ZVT_EVENT_NONE = 0, ///< The queue is empty.
    ZVT_EVENT_MAKE_UP_CHANGED = 1, ///< The capabilities have changed.
    ZVT_EVENT_SETTINGS_CHANGED = 2, ///< Another client has changed settings.
};
static_assert(sizeof(zvtEEventType) == sizeof(int));

/// What a stored non-uniformity correction says about itself.
struct zvtSNUCInfo {
    char cameraModel[64]; ///< UTF-8, zero-ended unless it fills the field.
    char cameraSerial[64]; ///< As above.
    uint16_t x; ///< Window in the sensor, pixels.
    uint16_t y;
    uint16_t width;
    uint16_t height;
    bool invert;
    bool revert;
    uint8_t frameSyncMode;
    uint32_t integrationWidth; ///< Clocks.
    uint32_t frameWidth; ///< Clocks.
    uint8_t filterID;
    uint8_t biasKind; ///< 2: a detector with two biases.
    float detectorBias; ///< Volts; P on N where there are two.
    float secondDetectorBias; ///< Volts; N on P.
    uint8_t gainLevel;
    float digitalOffset;
    float digitalGain;
    float analogOffset; ///< Global offset voltage.
    bool skimmingEnabled;
    float skimmingVoltage;
    uint8_t color; ///< 0: P on N, else N on P.
    uint8_t nucType;
    uint8_t nucSource;
    uint32_t numFrames; ///< Frames to average.
    bool detectBadPixels;
    bool detectTwinklers;
    uint32_t twinklerFrames;
    uint16_t twinklerDelta;
    uint16_t adMinimum;
    uint16_t adMaximum;
    float gainMinimum;
    float gainMaximum;
    uint32_t totalBadPixels;
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
