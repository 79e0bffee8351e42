#pragma once

#include "platform/emulator/Setting.h"

#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

/// A setting, or an entry of a setting that is a list, as a row of a card shows it.
struct SettingRow {
    enum Control { Switch, Choice, Field, Pulse };

    QString setting; ///< Its name in the camera, such as "cooler.setpoint".
    int entry = -1; ///< The index of the entry; -1: the whole setting.
    QString group;
    QString label;
    QString name; ///< The accessible name of the control.
    emulator::SettingInfo::Kind kind = emulator::SettingInfo::Flag;
    Control control = Switch;
    QJsonValue value;
    QString unit;
    QString hint; ///< The valid values, or what the setting does.
    QString note; ///< What the user should know about the value; empty for none.
    QStringList choices; ///< The texts of choiceValues.
    QList<QJsonValue> choiceValues;
    bool usable = true; ///< Whether the value can be changed now.
    QString refusal; ///< Why the last change was refused; empty if it was not.

    /// A row for a whole setting: with the control for its kind, and its range as the hint.
    static SettingRow of(const emulator::SettingInfo &setting);

    bool operator==(const SettingRow &other) const = default;

    /// The value as the text of a field: a list is its entries with commas between them, texts in quotation marks.
    QString text() const;
    /// The value of a text in the field, in the form of text(). Any other text is returned unchanged, and the camera
    /// refuses it.
    QVariant valueOf(const QString &text) const;
    /// The index of the value in `choices`.
    int choice() const { return static_cast<int>(choiceValues.indexOf(value)); }
    /// Makes a value that is not among the choices the last one of them.
    void completeChoices();
};
