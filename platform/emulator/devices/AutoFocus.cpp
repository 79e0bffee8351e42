#include "platform/emulator/devices/AutoFocus.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FocusSearch.h"
#include "zvt/zvttypes.h"

#include <optional>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

/// Counts a search while it lives.
class Counted
{
public:
    explicit Counted(int &searches) : m_searches(searches) { ++m_searches; }
    Counted(const Counted &) = delete;
    Counted &operator=(const Counted &) = delete;
    ~Counted() { --m_searches; }

private:
    int &m_searches;
};

} // namespace

AutoFocus::AutoFocus(Camera &camera, Section &section) : Device(camera)
{
    addSettings(
        section,
        {
            {u"regionSize"_s, m_region.size, Between{1, UINT16_MAX}, Profile},
            {u"regionSize"_s, m_region.size, OneOf{{16, 32, 64, 128, 256, 512}}, Snapshot | OtherClient},
            {u"regionPosition"_s, m_region.position, Between{ZVT_AF_ROI_CENTER, ZVT_AF_ROI_BOTTOM_RIGHT}, Everywhere},
            {u"showWhenFocusing"_s, m_showWhenFocusing, Everywhere},
            {u"showAlways"_s, m_showAlways, Everywhere},
            {u"sceneDistance"_s, m_sceneDistance, Between{0.001, 1e9}, Profile | OtherClient},
        });
}

Status AutoFocus::focusFast()
{
    return focus([](FocusSearch &search, const Focus &focus) { return search.climb(focus.position()); });
}

Status AutoFocus::focusFull()
{
    return focus([](FocusSearch &search, const Focus &focus) {
        return search.scan(focus.descending() ? FocusSearch::Down : FocusSearch::Up);
    });
}

Status AutoFocus::focus(const std::function<Status(FocusSearch &, const Focus &)> &searchCoarsely)
{
    auto *const focus = camera().device<Focus>();
    if (!focus)
        return Absent;
    FocusMeter meter(camera(), m_region);
    if (!meter.seesScene())
        return Refused;
    const Counted counted(m_searches);
    const uint32_t start = focus->position();
    const auto goBack = [focus, start] {
        const Status status = focus->goTo(start);
        return status == Ok ? Refused : status;
    };
    const auto measureAt = [&](uint32_t place, double &sharpness) {
        if (const Status status = focus->goTo(place); status != Ok)
            return status;
        const uint64_t commands = focus->commands();
        const std::optional<double> measure = meter.measure();
        if (!camera().connected())
            return NotConnected;
        if (focus->commands() != commands)
            return Refused;
        sharpness = measure.value_or(0);
        return measure ? Ok : goBack();
    };
    FocusSearch search(focus->minimum(), focus->maximum(), measureAt);
    Status status = searchCoarsely(search, *focus);
    if (status == Ok)
        status = search.refine();
    if (status != Ok)
        return status;
    return search.hasContrast() ? focus->goTo(search.sharpest()) : goBack();
}

} // namespace emulator
