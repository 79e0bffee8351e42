#include "platform/emulator/devices/Environment.h"

#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double lagMilliseconds = 300'000;

/// The temperature on the straight line through two points.
double interpolate(const ChamberProgram::Point &from, const ChamberProgram::Point &to, int64_t milliseconds)
{
    const auto part = static_cast<double>(milliseconds - from.milliseconds)
        / static_cast<double>(to.milliseconds - from.milliseconds);
    return from.celsius + (to.celsius - from.celsius) * part;
}

/// Returns the value that follows a temperature with the lag, after the temperature has changed linearly from `first`
/// to `last`. `value` is the value at the start: the solution of dv/dt = (T - v) / lag.
double follow(double value, double first, double last, int64_t milliseconds)
{
    const double lags = static_cast<double>(milliseconds) / lagMilliseconds;
    const double behind = (last - first) / lags; // The distance of the value after a long time.
    return last - behind + (value - first + behind) * std::exp(-lags);
}

} // namespace

Environment::Environment(Camera &camera, Section &section)
    : Device(camera), m_profileAmbient(section.number(u"ambient"_s, 23, ChamberProgram::celsiusRange.minimum,
                                                      ChamberProgram::celsiusRange.maximum)),
      m_course{{0, m_profileAmbient}}, m_startTime(Clock::now()), m_laggedAtStart(m_profileAmbient)
{
    const auto set = [this](double celsius) {
        start({{0, celsius}});
        return Ok;
    };
    addSettings({Setting(
                     u"ambient"_s, [this] { return ambient(); }, set, ChamberProgram::celsiusRange, OtherClient)
                     .onlyIf([this] { return !m_runsProgram; }),
                 {u"movingTargets"_s, m_hasTargets, OtherClient}});
}

double Environment::ambient() const
{
    const int64_t now = elapsed(Clock::now());
    const auto to = std::ranges::upper_bound(m_course, now, {}, &ChamberProgram::Point::milliseconds);
    const auto from = std::prev(to);
    return to == m_course.end() ? from->celsius : interpolate(*from, *to, now);
}

double Environment::laggedAmbient(int64_t time) const
{
    const int64_t now = elapsed(time);
    double value = m_laggedAtStart;
    for (auto from = m_course.begin(); from != m_course.end() && from->milliseconds < now; ++from) {
        const auto to = std::next(from);
        const bool reached = to == m_course.end() || now < to->milliseconds;
        const int64_t end = reached ? now : to->milliseconds;
        const double last = to == m_course.end() ? from->celsius : interpolate(*from, *to, end);
        value = follow(value, from->celsius, last, end - from->milliseconds);
    }
    return value;
}

int64_t Environment::nextTurn(int64_t time) const
{
    const int64_t now = elapsed(time);
    const auto to = std::ranges::upper_bound(m_course, now, {}, &ChamberProgram::Point::milliseconds);
    if (to == m_course.end())
        return std::numeric_limits<int64_t>::max();
    // On a straight line the value turns once at most: where it equals the temperature.
    const auto from = std::prev(to);
    const double behind = (to->celsius - from->celsius) * lagMilliseconds
        / static_cast<double>(to->milliseconds - from->milliseconds); // As in follow().
    const double ahead = interpolate(*from, *to, now) - laggedAmbient(time);
    double rest = static_cast<double>(to->milliseconds - now);
    if (behind * ahead < 0)
        rest = std::clamp(lagMilliseconds * std::log(1 - ahead / behind), 1.0, rest);
    return m_startTime + now + static_cast<int64_t>(std::ceil(rest));
}

void Environment::run(const ChamberProgram &program)
{
    m_runsProgram = !program.points.empty();
    Course course = program.points;
    if (!m_runsProgram)
        course = {{0, m_profileAmbient}};
    else if (course.front().milliseconds > 0)
        course.insert(course.begin(), {0, ambient()});
    start(std::move(course));
}

void Environment::expose(int, image::Exposure &exposure) const
{
    exposure.readout.caseCelsius = laggedAmbient();
    exposure.optics.lensCelsius = exposure.readout.caseCelsius;
    exposure.scene.hasTargets = m_hasTargets;
}

void Environment::start(Course course)
{
    for (const auto &listener : m_listeners)
        listener();
    m_laggedAtStart = laggedAmbient();
    m_startTime = Clock::now();
    m_course = std::move(course);
}

} // namespace emulator
