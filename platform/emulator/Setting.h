#pragma once

#include "platform/emulator/Rule.h"
#include "platform/emulator/Status.h"

#include <QFlags>
#include <QList>

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

namespace emulator
{

/// The description of a setting in a list of settings.
struct SettingInfo {
    enum Kind { Flag, WholeNumber, Number, Text, Texts, Numbers };

    QString name;
    Kind kind;
    Between range; ///< The range of a number, or of each entry of a list of numbers.
    QList<double> choices; ///< The only valid numbers; empty if every number in the range is valid.
    QJsonValue value; ///< The present value.
    bool changeable; ///< Whether the value can be changed at present.
};

/// Refuses a value that follows its rule but that the device does not accept.
Refusal refusedByTheCamera();
/// Refuses a change of an unknown setting.
Refusal noSuchSetting();

/// One row of a device's table of settings: the key of a setting, its value, the rule for the value, and its uses. The
/// same rule checks values from profiles, from snapshots, from other clients and from the device's own setters.
class Setting
{
public:
    enum Use {
        Profile = 1, ///< A profile may contain its first value.
        Snapshot = 2, ///< Device::save() and Device::restore() include it.
        OtherClient = 4, ///< Another client may change it.
        Memory = 8, ///< As Snapshot, but only for the memory of the camera, not for its snapshots.
        Everywhere = Profile | Snapshot | OtherClient,
    };
    Q_DECLARE_FLAGS(Uses, Use)

    /// A setting whose value is a member of the device. The initial value of the member is the default.
    template <class T>
    requires(!std::invocable<T &>) Setting(QString key, T &member, std::type_identity_t<Rule<T>> rule, Uses uses)
        : Setting(std::move(key), &member, std::function([&member] { return member; }),
                  std::function([&member](const T &value) {
                      member = value;
                      return Ok;
                  }),
                  std::move(rule), uses)
    {
    }
    template <class T> Setting(QString key, T &member, Uses uses) : Setting(std::move(key), member, Rule<T>(), uses) { }

    /// A setting whose value is computed, or that needs more than to be stored. `get` returns the present value. `set`
    /// receives a value that follows the rule, and returns a Status.
    template <std::invocable Get, class Set, class T = std::decay_t<std::invoke_result_t<Get>>>
    Setting(QString key, Get get, Set set, std::type_identity_t<Rule<T>> rule, Uses uses)
        : Setting(std::move(key), nullptr, std::function<T()>(std::move(get)),
                  std::function<Status(const T &)>(std::move(set)), std::move(rule), uses)
    {
    }
    template <std::invocable Get, class Set>
    requires(!std::convertible_to<Set, Uses>) Setting(QString key, Get get, Set set, Uses uses)
        : Setting(std::move(key), std::move(get), std::move(set), Rule<std::decay_t<std::invoke_result_t<Get>>>(), uses)
    {
    }

    /// Refuses changes while `condition` is false, for instance while the equipment is not available. Does not apply to
    /// the value in a profile. `condition` is a member of the device, or a function.
    Setting onlyIf(const bool &condition) &&;
    Setting onlyIf(std::function<bool()> condition) &&;
    /// Calls `consequence` after each accepted change, but not for the value in a profile.
    Setting then(std::function<void()> consequence) &&;

    const QString &key() const { return m_info.name; }
    bool isFor(Use use) const { return m_uses.testFlag(use); }
    bool isSaved() const { return isFor(Snapshot) || isFor(Memory); }
    bool isMember(const void *member) const { return member == m_member; }
    bool changeable() const { return !m_condition || m_condition(); }

    QJsonValue value() const { return m_get(); }
    /// Sets the first value, from a profile. Returns why it is refused, empty if it has been set.
    Refusal start(const QJsonValue &value) const { return m_set(value); }
    /// Changes the value. Returns why this is refused, empty if it has been changed. Refused while not changeable().
    Refusal change(const QJsonValue &value) const;

    SettingInfo info() const;

private:
    template <class T>
    Setting(QString key, const void *member, std::function<T()> get, std::function<Status(const T &)> set, Rule<T> rule,
            Uses uses)
        : m_info{std::move(key), kindOf<T>(), rule.range, rule.choices.numbers, {}, false}, m_uses(uses),
          m_member(member), m_get([get = std::move(get)] { return toJson(get()); }),
          m_set([set = std::move(set), rule = std::move(rule)](const QJsonValue &json) -> Refusal {
              T value{};
              Refusal refusal = rule.parse(json, value);
              if (refusal.isEmpty() && set(value) != Ok)
                  refusal = refusedByTheCamera();
              return refusal;
          })
    {
    }

    template <class T> static constexpr SettingInfo::Kind kindOf()
    {
        if constexpr (std::same_as<T, bool>)
            return SettingInfo::Flag;
        else if constexpr (std::floating_point<T>)
            return SettingInfo::Number;
        else if constexpr (NumberType<T>)
            return SettingInfo::WholeNumber;
        else if constexpr (std::same_as<T, QString> || std::same_as<T, std::string>)
            return SettingInfo::Text;
        else if constexpr (std::same_as<T, QStringList>)
            return SettingInfo::Texts;
        else
            return SettingInfo::Numbers;
    }

    SettingInfo m_info;
    Uses m_uses;
    const void *m_member;
    std::function<QJsonValue()> m_get;
    std::function<Refusal(const QJsonValue &)> m_set;
    std::function<bool()> m_condition;
    std::function<void()> m_consequence;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(Setting::Uses)

} // namespace emulator
