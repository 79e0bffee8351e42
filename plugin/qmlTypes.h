#pragma once

// Declares the plug-in's types to the QML compiler and qmllint. Only moc and qmltyperegistrar read this file; no source
// includes it. At run time plugin.cpp registers the named types, by the same names. QML reaches the others by
// properties of ZvtCameraModel and its sub-models.

#include "advanced/AdvancedAnalogSettingsModel.h"
#include "advanced/AdvancedLockinSettingsModel.h"
#include "advanced/AdvancedMiscSettingsModel.h"
#include "advanced/AdvancedSaturationSettingsModel.h"
#include "advanced/AdvancedTabModel.h"
#include "common/CameraCapabilitiesModel.h"
#include "common/FPASizeIntValidator.h"
#include "common/StringIntDisplaySanityModel.h"
#include "common/ZvtModelModel.h"
#include "common/ZvtModelTable.h"
#include "correction/CorrectionTabModel.h"
#include "correction/LoadNucOptionsModel.h"
#include "correction/NucInfoModel.h"
#include "correction/NucListModel.h"
#include "correction/NucProcessModel.h"
#include "manufacturing/MfgCoolerSettingsModel.h"
#include "manufacturing/MfgCorvinFilterSettingsModel.h"
#include "manufacturing/MfgMiscSettingsModel.h"
#include "manufacturing/MfgNucSettingsModel.h"
#include "manufacturing/MfgRoicConfigModel.h"
#include "manufacturing/MfgTabModel.h"
#include "manufacturing/MfgToolsModel.h"
#include "manufacturing/MfgVoltageSettingsModel.h"
#include "manufacturing/VoltageItemModel.h"
#include "plugin/ZvtCameraModel.h"
#include "recording/BatchDownloadEntry.h"
#include "recording/BatchDownloadModel.h"
#include "recording/SsdMovieFileInfoModel.h"
#include "recording/SsdTabModel.h"
#include "setup/EditFilterNamesModel.h"
#include "setup/FilterNameEditorItemModel.h"
#include "setup/FilterWheelItemModel.h"
#include "setup/FlagSettingsModel.h"
#include "setup/SetupCoolerSettingsModel.h"
#include "setup/SetupFilterWheelSettingsModel.h"
#include "setup/SetupGeneralModel.h"
#include "setup/SetupTabModel.h"
#include "setup/SyncSettingsModel.h"
#include "setup/ZvtCameraPresetModel.h"
#include "state/CameraStateEntry.h"
#include "state/CameraStateModel.h"
#include "status/AboutItemModel.h"
#include "status/AboutModel.h"
#include "status/AdjustTimeModel.h"
#include "status/StatusTabModel.h"
#include "video/AgcRoiSettingsModel.h"
#include "video/OverlaySettingsModel.h"
#include "video/VideoOutputSettingsModel.h"
#include "video/VideoTabModel.h"

#include <QtQml/qqmlregistration.h>

#include "hlxui/ObjectListModel.h"
#include "hlxui/StringListModel.h"

// Declares a type, with the macros that set its name in QML.
#define ZVT_FOREIGN_TYPE(Type, ...)                                                                                    \
    struct Foreign##Type {                                                                                             \
        Q_GADGET                                                                                                       \
        QML_FOREIGN(Type)                                                                                              \
        __VA_ARGS__                                                                                                    \
    };

// Registered by name.
ZVT_FOREIGN_TYPE(BatchDownloadEntry, QML_NAMED_ELEMENT(BatchDownloadEntry) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(BatchDownloadModel, QML_NAMED_ELEMENT(BatchDownloadModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(FPASizeIntValidator, QML_NAMED_ELEMENT(FPASizeIntValidator))
ZVT_FOREIGN_TYPE(MfgRoicConfigModel, QML_NAMED_ELEMENT(MfgRoicConfigModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(NucInfoModel, QML_NAMED_ELEMENT(NucInfoModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(NucProcessModel, QML_NAMED_ELEMENT(NucProcessModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(SetupGeneralModel, QML_NAMED_ELEMENT(SetupGeneralModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(SsdMovieFileInfoModel, QML_NAMED_ELEMENT(SsdMovieFileInfoModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(SsdTabModel, QML_NAMED_ELEMENT(SsdTabModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(SyncSettingsModel, QML_NAMED_ELEMENT(SyncSettingsModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(VideoTabModel, QML_NAMED_ELEMENT(VideoTabModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(ZvtCameraModel, QML_NAMED_ELEMENT(ZvtCameraModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(ZvtCameraPresetModel, QML_NAMED_ELEMENT(ZvtCameraPresetModel) QML_UNCREATABLE(""))
ZVT_FOREIGN_TYPE(ZvtModelTable, QML_NAMED_ELEMENT(ZvtModelTable))

// Reached by properties.
ZVT_FOREIGN_TYPE(AboutItemModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AboutModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdjustTimeModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdvancedAnalogSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdvancedLockinSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdvancedMiscSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdvancedSaturationSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AdvancedTabModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(AgcRoiSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(CameraCapabilitiesModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(CameraStateEntry, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(CameraStateModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(CorrectionTabModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(EditFilterNamesModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(FilterNameEditorItemModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(FilterWheelItemModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(FlagSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(LoadNucOptionsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgCoolerSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgCorvinFilterSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgMiscSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgNucSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgTabModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgToolsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(MfgVoltageSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(NucListModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(ObjectListModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(OverlaySettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(SetupCoolerSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(SetupFilterWheelSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(SetupTabModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(StatusTabModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(StringIntDisplaySanityModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(StringListModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(VideoOutputSettingsModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(VoltageItemModel, QML_ANONYMOUS)
ZVT_FOREIGN_TYPE(ZvtModelModel, QML_ANONYMOUS)
