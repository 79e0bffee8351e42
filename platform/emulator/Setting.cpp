#include "platform/emulator/Setting.h"

namespace emulator
{

using namespace Qt::StringLiterals;

Refusal refusedByTheCamera() { return u"is refused by the camera"_s; }

Refusal noSuchSetting() { return u"there is no such setting"_s; }

Setting Setting::onlyIf(const bool &condition) &&
{
    m_condition = [&condition] { return condition; };
    return std::move(*this);
}

Setting Setting::onlyIf(std::function<bool()> condition) &&
{
    m_condition = std::move(condition);
    return std::move(*this);
}

Setting Setting::then(std::function<void()> consequence) &&
{
    m_consequence = std::move(consequence);
    return std::move(*this);
}

Refusal Setting::change(const QJsonValue &value) const
{
    if (!changeable())
        return u"cannot be changed now"_s;
    Refusal refusal = m_set(value);
    if (refusal.isEmpty() && m_consequence)
        m_consequence();
    return refusal;
}

SettingInfo Setting::info() const
{
    SettingInfo info = m_info;
    info.value = value();
    info.changeable = changeable();
    return info;
}

} // namespace emulator
