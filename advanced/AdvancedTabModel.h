#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"
#include "common/StringIntDisplaySanityModel.h"
#include "common/presetValues.h"

#include <cstdint>

/// The Advanced tab, with its first section: the digital gain and offset of each preset, the configuration of the
/// digital links, and the switch "black hot". The links can only be shown: no call sets them. GUI thread only.
class AdvancedTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)

    Q_PROPERTY(float gainMinValue READ gainMinValue CONSTANT FINAL)
    Q_PROPERTY(float gainMaxValue READ gainMaxValue CONSTANT FINAL)
    Q_PROPERTY(float presetZeroGain READ presetZeroGain WRITE setPresetZeroGain NOTIFY presetZeroGainChanged FINAL)
    Q_PROPERTY(float presetOneGain READ presetOneGain WRITE setPresetOneGain NOTIFY presetOneGainChanged FINAL)
    Q_PROPERTY(float presetTwoGain READ presetTwoGain WRITE setPresetTwoGain NOTIFY presetTwoGainChanged FINAL)
    Q_PROPERTY(float presetThreeGain READ presetThreeGain WRITE setPresetThreeGain NOTIFY presetThreeGainChanged FINAL)
    Q_PROPERTY(float offsetMinValue READ offsetMinValue CONSTANT FINAL)
    Q_PROPERTY(float offsetMaxValue READ offsetMaxValue CONSTANT FINAL)
    Q_PROPERTY(
        float presetZeroOffset READ presetZeroOffset WRITE setPresetZeroOffset NOTIFY presetZeroOffsetChanged FINAL)
    Q_PROPERTY(float presetOneOffset READ presetOneOffset WRITE setPresetOneOffset NOTIFY presetOneOffsetChanged FINAL)
    Q_PROPERTY(float presetTwoOffset READ presetTwoOffset WRITE setPresetTwoOffset NOTIFY presetTwoOffsetChanged FINAL)
    Q_PROPERTY(
        float presetThreeOffset READ presetThreeOffset WRITE setPresetThreeOffset NOTIFY presetThreeOffsetChanged FINAL)

    Q_PROPERTY(int selectedCameraLinkModeIndex READ selectedCameraLinkModeIndex WRITE setSelectedCameraLinkModeIndex
                   NOTIFY selectedCameraLinkModeIndexChanged FINAL)
    Q_PROPERTY(bool cameraLinkModeCanBeModified READ cameraLinkModeCanBeModified NOTIFY
                   cameraLinkModeCanBeModifiedChanged FINAL)
    Q_PROPERTY(int selectedCoaXPressLinksIndex READ selectedCoaXPressLinksIndex WRITE setSelectedCoaXPressLinksIndex
                   NOTIFY selectedCoaXPressLinksIndexChanged FINAL)
    Q_PROPERTY(bool coaXPressLinksCanBeModified READ coaXPressLinksCanBeModified NOTIFY
                   coaXPressLinksCanBeModifiedChanged FINAL)
    Q_PROPERTY(
        StringIntDisplaySanityModel *coaXPressLinksList READ coaXPressLinksList NOTIFY coaXPressLinksListChanged FINAL)
    Q_PROPERTY(bool blackHotAvailable READ blackHotAvailable NOTIFY blackHotAvailableChanged FINAL)
    Q_PROPERTY(bool blackHotEnabled READ blackHotEnabled WRITE setBlackHotEnabled NOTIFY blackHotEnabledChanged FINAL)

public:
    explicit AdvancedTabModel(QObject *parent) : BaseTabModel(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    // The gain is a factor, the offset a number of counts that is added after it. Both stay if the camera refuses
    // them, until the next read.
    float gainMinValue() const { return 0.0F; }
    float gainMaxValue() const { return 3.999F; }
    float presetZeroGain() const { return m_gains[0]; }
    void setPresetZeroGain(float gain) { setGain(0, gain); }
    float presetOneGain() const { return m_gains[1]; }
    void setPresetOneGain(float gain) { setGain(1, gain); }
    float presetTwoGain() const { return m_gains[2]; }
    void setPresetTwoGain(float gain) { setGain(2, gain); }
    float presetThreeGain() const { return m_gains[3]; }
    void setPresetThreeGain(float gain) { setGain(3, gain); }
    float offsetMinValue() const { return -16383.5F; }
    float offsetMaxValue() const { return 16383.5F; }
    float presetZeroOffset() const { return m_offsets[0]; }
    void setPresetZeroOffset(float counts) { setOffset(0, counts); }
    float presetOneOffset() const { return m_offsets[1]; }
    void setPresetOneOffset(float counts) { setOffset(1, counts); }
    float presetTwoOffset() const { return m_offsets[2]; }
    void setPresetTwoOffset(float counts) { setOffset(2, counts); }
    float presetThreeOffset() const { return m_offsets[3]; }
    void setPresetThreeOffset(float counts) { setOffset(3, counts); }

    // The setters of the two links only store, until the next read.
    int selectedCameraLinkModeIndex() const { return m_cameraLinkModeIndex; } ///< 0 base, 1 full, -1 before a read.
    void setSelectedCameraLinkModeIndex(int index);
    bool cameraLinkModeCanBeModified() const { return m_cameraLinkModeCanBeModified; }
    /// The number of links, although the first row of the list is one link. -1 before the first read.
    int selectedCoaXPressLinksIndex() const { return m_coaXPressLinksIndex; }
    void setSelectedCoaXPressLinksIndex(int index);
    bool coaXPressLinksCanBeModified() const { return m_coaXPressLinksCanBeModified; }
    StringIntDisplaySanityModel *coaXPressLinksList() { return &m_coaXPressLinksList; } ///< Built by each read.
    bool blackHotAvailable() const { return m_blackHotAvailable; }
    bool blackHotEnabled() const { return m_blackHotEnabled; } ///< Whether the video shows hot as black.
    void setBlackHotEnabled(bool enabled); ///< Stores and signals only what the camera accepts.

    Q_INVOKABLE void refresh() override;

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void presetZeroGainChanged();
    void presetOneGainChanged();
    void presetTwoGainChanged();
    void presetThreeGainChanged();
    void presetZeroOffsetChanged();
    void presetOneOffsetChanged();
    void presetTwoOffsetChanged();
    void presetThreeOffsetChanged();
    void selectedCameraLinkModeIndexChanged();
    void cameraLinkModeCanBeModifiedChanged();
    void selectedCoaXPressLinksIndexChanged();
    void coaXPressLinksCanBeModifiedChanged();
    void coaXPressLinksListChanged();
    void blackHotAvailableChanged();
    void blackHotEnabledChanged();

private:
    using Self = AdvancedTabModel;

    /// The result of a read.
    struct Settings {
        PerPreset<Nullable<float>> gains;
        PerPreset<Nullable<float>> offsets;
        Nullable<uint8_t> cameraLinkType;
        Nullable<uint8_t> coaXPressLinkCount;
        Nullable<bool> cameraLinkTypeWritable;
        Nullable<bool> coaXPressLinkCountWritable;
        Nullable<bool> blackHotAvailable;
        Nullable<bool> blackHotEnabled;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    void publishCoaXPressLinks(uint8_t count);
    void setGain(uint8_t preset, float gain);
    void setOffset(uint8_t preset, float counts);

    PerPreset<float> m_gains{};
    PerPreset<float> m_offsets{};
    int m_cameraLinkModeIndex = -1;
    bool m_cameraLinkModeCanBeModified = false;
    int m_coaXPressLinksIndex = -1;
    bool m_coaXPressLinksCanBeModified = false;
    StringIntDisplaySanityModel m_coaXPressLinksList;
    bool m_blackHotAvailable = false;
    bool m_blackHotEnabled = false;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
