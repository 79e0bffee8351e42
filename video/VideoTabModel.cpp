#include "video/VideoTabModel.h"

#include "common/CameraRoot.h"
#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/rows.h"
#include "common/setters.h"

#include <array>
#include <limits>
#include <tuple>

#include "hlx/TArray.h"
#include "zvt/zvtsdk.h"

namespace
{

constexpr uint32_t paletteNameSize = 257;
constexpr uint8_t boardSetWithoutDde = 6; ///< Rowan.

struct Format {
    uint8_t number; ///< Of the camera.
    const char *name;
};

/// All formats, in the order in which the manufacturing mode offers them.
constexpr std::array allFormats{
    //: Names of the formats of a video output
    Format{0, QT_TRANSLATE_NOOP("VideoTabModel", "NTSC")},
    Format{3, QT_TRANSLATE_NOOP("VideoTabModel", "NTSC (Square Pixel)")},
    Format{101, QT_TRANSLATE_NOOP("VideoTabModel", "480i")},
    Format{1, QT_TRANSLATE_NOOP("VideoTabModel", "PAL")},
    Format{4, QT_TRANSLATE_NOOP("VideoTabModel", "PAL (Square Pixel)")},
    Format{102, QT_TRANSLATE_NOOP("VideoTabModel", "576i")},
    Format{2, QT_TRANSLATE_NOOP("VideoTabModel", "SVGA")},
    Format{6, QT_TRANSLATE_NOOP("VideoTabModel", "SXGA")},
    Format{12, QT_TRANSLATE_NOOP("VideoTabModel", "720p @ 50Hz")},
    Format{10, QT_TRANSLATE_NOOP("VideoTabModel", "720p @ 59.9Hz")},
    Format{5, QT_TRANSLATE_NOOP("VideoTabModel", "720p @ 60Hz")},
    Format{7, QT_TRANSLATE_NOOP("VideoTabModel", "1080p @ 24Hz")},
    Format{13, QT_TRANSLATE_NOOP("VideoTabModel", "1080p @ 25Hz")},
    Format{11, QT_TRANSLATE_NOOP("VideoTabModel", "1080p @ 29.9Hz")},
    Format{8, QT_TRANSLATE_NOOP("VideoTabModel", "1080p @ 30Hz")},
    Format{9, QT_TRANSLATE_NOOP("VideoTabModel", "1080p @ 60Hz")},
};

/// The names of the modes of the gain control, by the numbers of the camera.
constexpr std::array agcModeNames{
    //: Names of the modes of the automatic gain control; DDE is its detail enhancement
    QT_TRANSLATE_NOOP("VideoTabModel", "Plateau"), QT_TRANSLATE_NOOP("VideoTabModel", "DDE"),
    QT_TRANSLATE_NOOP("VideoTabModel", "Auto Linear"), QT_TRANSLATE_NOOP("VideoTabModel", "Manual Linear")};

const QList<uint8_t> &allFormatNumbers()
{
    static const QList<uint8_t> numbers = [] {
        QList<uint8_t> list;
        for (const Format &format : allFormats)
            list << format.number;
        return list;
    }();
    return numbers;
}

QString formatText(uint8_t number)
{
    for (const Format &format : allFormats)
        if (format.number == number)
            return VideoTabModel::tr(format.name);
    //: A format of a video output
    return VideoTabModel::tr("Unknown Format");
}

QString agcModeText(uint8_t mode)
{
    //: A mode of the automatic gain control
    return mode < agcModeNames.size() ? VideoTabModel::tr(agcModeNames.at(mode)) : VideoTabModel::tr("Unknown Mode");
}

template <class Text> QStringList textsOf(const QList<uint8_t> &numbers, Text text)
{
    QStringList texts;
    for (const uint8_t number : numbers)
        texts << text(number);
    return texts;
}

/// Whether board set, type and subtype of the camera can be read. Only the board set is used.
bool readBoardSet(uint64_t handle, uint8_t &boardSet)
{
    uint8_t type = 0;
    uint8_t subtype = 0;
    return zvtGetBoardType(handle, &boardSet) == 0 && zvtGetCameraType(handle, &type) == 0
        && zvtGetCameraSubtype(handle, &subtype) == 0;
}

Nullable<QList<uint8_t>> readFormats(uint64_t handle)
{
    Nullable<QList<uint8_t>> formats;
    hlx::TArray<unsigned char> list;
    if (zvtGetVideoFormats(handle, &list) == 0)
        formats = QList<uint8_t>(list.begin(), list.end());
    return formats;
}

Nullable<QStringList> readPalettes(uint64_t handle)
{
    Nullable<QStringList> palettes;
    hlx::TArray<zvtSDirEntry> list;
    if (zvtListPalettes(handle, &list) == 0) {
        QStringList names;
        for (const zvtSDirEntry &palette : list)
            names << QString::fromUtf8(palette.name.c_str());
        palettes = names;
    }
    return palettes;
}

} // namespace

struct VideoTabModel::Rows {
    static constexpr Row showOverlay{zvtGetVideoOverlayEnabled, &VideoSettings::showOverlay, &Self::m_showOverlay,
                                     &Self::showOverlayChanged, zvtSetVideoOverlayEnabled};
    static constexpr Row useFilterRate{zvtGetVideoAGCFilterRateEnabled, &VideoSettings::useFilterRate,
                                       &Self::m_useFilterRate, &Self::useFilterRateChanged,
                                       zvtSetVideoAGCFilterRateEnabled};
    static constexpr Row filterRate{zvtGetVideoAGCFilterRate, &VideoSettings::filterRate, &Self::m_filterRate,
                                    &Self::filterRateChanged, zvtSetVideoAGCFilterRate};
    static constexpr Row useFilterDampening{zvtGetVideoAGCDampeningEnabled, &VideoSettings::useFilterDampening,
                                            &Self::m_useFilterDampening, &Self::useFilterDampeningChanged,
                                            zvtSetVideoAGCDampeningEnabled};
    static constexpr Row plateauP{zvtGetVideoAGCPlateauP, &VideoSettings::plateauP, &Self::m_plateauP,
                                  &Self::plateauPChanged, zvtSetVideoAGCPlateauP};
    static constexpr Row brightness{zvtGetVideoBrightness, &VideoSettings::brightness, &Self::m_brightness,
                                    &Self::brightnessChanged, zvtSetVideoBrightness};
    static constexpr Row contrast{zvtGetVideoContrast, &VideoSettings::contrast, &Self::m_contrast,
                                  &Self::contrastChanged, zvtSetVideoContrast};
    static constexpr Row manualLow{zvtGetVideoAGCManualLow, &VideoSettings::manualLow, &Self::m_manualLow,
                                   &Self::manualLowChanged, zvtSetVideoAGCManualLow};
    static constexpr Row manualHigh{zvtGetVideoAGCManualHigh, &VideoSettings::manualHigh, &Self::m_manualHigh,
                                    &Self::manualHighChanged, zvtSetVideoAGCManualHigh};
    static constexpr Row ddeSharpness{zvtGetVideoAGCDDESharpness, &VideoSettings::ddeSharpness, &Self::m_ddeSharpness,
                                      &Self::ddeSharpnessChanged, zvtSetVideoAGCDDESharpness};
    static constexpr Row updateRate{zvtGetVideoUpdateRate, &VideoSettings::updateRate, &Self::m_updateRate,
                                    &Self::selectedUpdateRateIndexChanged, zvtSetVideoUpdateRate};
    static constexpr Row temporalFilter{zvtGetVideoTemporalFilter, &VideoSettings::temporalFilter,
                                        &Self::m_temporalFilter, &Self::selectedTemporalFilterIndexChanged,
                                        zvtSetVideoTemporalFilter};
    static constexpr Row temporalFilterThreshold{
        zvtGetVideoTemporalFilterThreshold, &VideoSettings::temporalFilterThreshold, &Self::m_temporalFilterThreshold,
        &Self::temporalFilterThresholdChanged, zvtSetVideoTemporalFilterThreshold};

    static constexpr std::tuple filters{showOverlay, useFilterRate, filterRate, useFilterDampening};
    static constexpr std::tuple levels{plateauP, brightness, contrast, manualLow, manualHigh, ddeSharpness};
    static constexpr std::tuple temporal{temporalFilter, temporalFilterThreshold};
    static constexpr std::tuple signalledInAnyCase{updateRate, temporalFilter, temporalFilterThreshold};
};

VideoTabModel::VideoTabModel(QObject *parent) : BaseTabModel(parent)
{
    if (CameraRoot *root = CameraRoot::of(this))
        root->onManufacturingModeChanged(this, [this] { onManufacturingModeChanged(); });
}

// Reading

void VideoTabModel::refresh() { m_refresh.start(&VideoSettings::read); }

VideoTabModel::VideoSettings VideoTabModel::VideoSettings::read(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    VideoSettings settings;
    uint8_t boardSet = 0;
    if (!readBoardSet(handle, boardSet))
        return settings;
    settings.formats = readFormats(handle);
    fetch(settings.format, zvtGetVideoFormat, handle);
    readAll(settings, Rows::filters, handle);
    fetch(settings.filterDampening, zvtGetVideoAGCDampening, handle);
    settings.agcModes = boardSet == boardSetWithoutDde ? QList<uint8_t>{AGC_PLATEAU, AGC_LINEAR, AGC_MANUAL}
                                                       : QList<uint8_t>{AGC_PLATEAU, AGC_DDE, AGC_LINEAR, AGC_MANUAL};
    fetch(settings.agcMode, zvtGetVideoAGCMethod, handle);
    readAll(settings, Rows::levels, handle);
    settings.palettes = readPalettes(handle);
    readText<paletteNameSize>(settings.palette, zvtGetPalette, handle);
    if (camera.capabilities->hasUpdateRate())
        fetch(settings.updateRate, zvtGetVideoUpdateRate, handle);
    if (camera.capabilities->hasTemporalFilter())
        readAll(settings, Rows::temporal, handle);
    return settings;
}

void VideoTabModel::finishedWatcher()
{
    const VideoSettings settings = m_refresh.result();
    publishFormats(settings);
    publishFilters(settings);
    publishAgcMode(settings);
    publishAllIfChanged(this, settings, Rows::levels);
    publishPalettes(settings);
    publishAll(this, settings, Rows::signalledInAnyCase);
    m_refresh.finish();
}

void VideoTabModel::publishFormats(const VideoSettings &settings)
{
    if (settings.formats.set() && settings.formats.get() != m_cameraFormats) {
        m_cameraFormats = settings.formats.get();
        if (!manufacturingMode())
            showFormats(m_cameraFormats);
        else if (m_shownFormats != allFormatNumbers())
            showFormats(allFormatNumbers());
    }
    if (!settings.format.set())
        return;
    publishIfChanged(this, settings.format, m_format, &Self::isSDChanged);
    if (!m_shownFormats.isEmpty())
        publishFormatIndex();
}

void VideoTabModel::publishFilters(const VideoSettings &settings)
{
    publishIfChanged(this, settings.showOverlay, m_showOverlay, &Self::showOverlayChanged);
    publishIfChanged(this, settings.useFilterRate, m_useFilterRate, &Self::useFilterRateChanged);
    // Required: compared as doubles, so that a rate that is not exact as a float is signalled each time.
    if (settings.filterRate.set() && !sameValue<double>(settings.filterRate.get(), m_filterRate))
        announce(this, static_cast<float>(settings.filterRate.get()), m_filterRate, &Self::filterRateChanged);
    publishIfChanged(this, settings.useFilterDampening, m_useFilterDampening, &Self::useFilterDampeningChanged);
    if (settings.filterDampening.set() && !sameValue(settings.filterDampening.get(), m_filterDampening))
        announceDampening(settings.filterDampening.get());
}

void VideoTabModel::publishAgcMode(const VideoSettings &settings)
{
    if (settings.agcModes.set() && settings.agcModes.get() != m_agcModes) {
        m_agcModes = settings.agcModes.get();
        announce(this, textsOf(m_agcModes, agcModeText), m_agcModeStrings, &Self::agcModeStringsChanged);
    }
    if (!settings.agcMode.set())
        return;
    publishIfChanged(this, settings.agcMode, m_agcMode, &Self::agcModeChanged);
    if (settings.agcModes.set())
        storeOnly(this, static_cast<int>(m_agcModes.indexOf(m_agcMode)), m_agcModeIndex, &Self::agcModeIndexChanged);
}

void VideoTabModel::publishPalettes(const VideoSettings &settings)
{
    if (!settings.palettes.set())
        return;
    publishIfChanged(this, settings.palettes, m_palettes, &Self::palettesChanged);
    if (settings.palette.set())
        storeOnly(this, static_cast<int>(m_palettes.indexOf(settings.palette.get())), m_paletteIndex,
                  &Self::paletteIndexChanged);
}

// Formats

bool VideoTabModel::manufacturingMode() const
{
    const CameraRoot *root = CameraRoot::of(this);
    return root && root->manufacturingMode();
}

void VideoTabModel::onManufacturingModeChanged()
{
    const QList<uint8_t> &formats = manufacturingMode() ? allFormatNumbers() : m_cameraFormats;
    if (formats == m_shownFormats)
        return;
    showFormats(formats);
    publishFormatIndex();
}

void VideoTabModel::showFormats(const QList<uint8_t> &formats)
{
    m_shownFormats = formats;
    announce(this, textsOf(formats, formatText), m_formatStrings, &Self::formatStringsChanged);
}

void VideoTabModel::publishFormatIndex()
{
    storeOnly(this, static_cast<int>(m_shownFormats.indexOf(m_format)), m_formatIndex, &Self::formatIndexChanged);
}

void VideoTabModel::setFormatIndex(int index)
{
    if (index == m_formatIndex || index < 0 || index >= m_shownFormats.size()
        || setters::write(this, zvtSetVideoFormat, m_shownFormats.at(index)) != 0)
        return;
    m_format = m_shownFormats.at(index);
    announce(this, index, m_formatIndex, &Self::formatIndexChanged);
    emit isSDChanged();
}

bool VideoTabModel::isSD() const { return m_format == 0 || m_format == 1 || m_format == 3 || m_format == 4; }

void VideoTabModel::setShowOverlay(bool show) { writeAccepted(this, show, Rows::showOverlay); }

// The gain control

void VideoTabModel::setUseFilterRate(bool use) { writeAccepted(this, use, Rows::useFilterRate); }

void VideoTabModel::setFilterRate(float rate) { writeAccepted(this, rate, Rows::filterRate); }

void VideoTabModel::setUseFilterDampening(bool use) { writeAccepted(this, use, Rows::useFilterDampening); }

void VideoTabModel::setFilterDampening(float dampening)
{
    if (dampening != m_filterDampening && setters::write(this, zvtSetVideoAGCDampening, dampening) == 0)
        announceDampening(dampening);
}

void VideoTabModel::announceDampening(float dampening)
{
    const bool wasLocked = lockFilterDampening();
    announce(this, dampening, m_filterDampening, &Self::filterDampeningChanged);
    if (lockFilterDampening() != wasLocked)
        emit lockFilterDampeningChanged();
}

void VideoTabModel::setLockFilterDampening(bool lock)
{
    if (lock == lockFilterDampening())
        return;
    if (lock)
        m_savedDampening = m_filterDampening;
    setFilterDampening(lock ? 0.0F : m_savedDampening);
}

void VideoTabModel::setAgcModeIndex(int index)
{
    if (index == m_agcModeIndex || index < 0 || index >= m_agcModes.size()
        || setters::write(this, zvtSetVideoAGCMethod, m_agcModes.at(index)) != 0)
        return;
    m_agcMode = m_agcModes.at(index);
    announce(this, index, m_agcModeIndex, &Self::agcModeIndexChanged);
    emit agcModeChanged();
}

void VideoTabModel::setPlateauP(uint plateau) { writeAccepted(this, plateau, Rows::plateauP); }

void VideoTabModel::setManualLow(int counts)
{
    if (counts >= 0 && counts <= std::numeric_limits<uint16_t>::max())
        writeAccepted(this, counts, Rows::manualLow);
}

void VideoTabModel::setManualHigh(int counts)
{
    if (counts >= 0 && counts <= std::numeric_limits<uint16_t>::max())
        writeAccepted(this, counts, Rows::manualHigh);
}

void VideoTabModel::setDdeSharpness(int sharpness)
{
    constexpr int mostSharpness = 7;
    if (sharpness >= 1 && sharpness <= mostSharpness)
        writeAccepted(this, sharpness, Rows::ddeSharpness);
}

// The picture

void VideoTabModel::setBrightness(int brightness) { writeAccepted(this, brightness, Rows::brightness); }

void VideoTabModel::setContrast(int contrast) { writeAccepted(this, contrast, Rows::contrast); }

void VideoTabModel::setPaletteIndex(int index)
{
    if (index == m_paletteIndex || index < 0 || index >= m_palettes.size()
        || setters::write(this, zvtLoadPalette, m_palettes.at(index)) != 0)
        return;
    announce(this, index, m_paletteIndex, &Self::paletteIndexChanged);
}

void VideoTabModel::setSelectedUpdateRateIndex(int index) { writeStandard(this, index, Rows::updateRate); }

void VideoTabModel::setSelectedTemporalFilterIndex(int index) { writeStandard(this, index, Rows::temporalFilter); }

void VideoTabModel::setTemporalFilterThreshold(uint counts)
{
    writeStandard(this, counts, Rows::temporalFilterThreshold);
}
