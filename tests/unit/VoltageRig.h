#pragma once

#include "tests/support/CameraRig.h"

#include <QJsonArray>

#include <optional>
#include <string>
#include <vector>

/// A voltage of a camera.
struct ScriptedVoltage {
    std::string name;
    QString displayName;
    double volts;
    bool editable;
    double minVolts;
    double maxVolts;
};

inline const std::vector<ScriptedVoltage> scriptedVoltages{{"VDDA", "Analog supply", 5.0, false, 0.0, 6.0},
                                                           {"VREF", "Referenz für alle", 1.5, true, 1.0, 2.25},
                                                           {"V ß", "", -2.5, true, -3.0, 3.0}};

/// Lets the camera have these voltages, in place of its own.
inline void scriptVoltages(emulator::Gate &gate, const std::vector<ScriptedVoltage> &voltages = scriptedVoltages)
{
    using emulator::Answer;
    gate.answerFrom([voltages](const emulator::Call &call) -> std::optional<Answer> {
        const auto success = [](const QJsonArray &results) { return Answer{emulator::Ok, results, {}}; };
        if (call.name == "zvtListVoltages") {
            QJsonArray names;
            for (const auto &voltage : voltages)
                names << QString::fromStdString(voltage.name);
            return success({QJsonValue(names)});
        }
        for (const auto &voltage : voltages) {
            if (call.arguments != '"' + voltage.name + '"')
                continue;
            if (call.name == "zvtGetVoltageDisplayName")
                return success({voltage.displayName});
            if (call.name == "zvtGetVoltage")
                return success({voltage.volts});
            if (call.name == "zvtGetVoltageEditable")
                return success({voltage.editable ? 1 : 0});
            if (call.name == "zvtGetVoltageLimits")
                return success({voltage.minVolts, voltage.maxVolts});
        }
        return std::nullopt;
    });
}
