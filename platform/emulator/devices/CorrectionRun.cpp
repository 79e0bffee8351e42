#include "platform/emulator/devices/CorrectionRun.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/AutomaticCorrection.h"
#include "platform/emulator/devices/BadPixelLists.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"

#include <algorithm>
#include <utility>

namespace emulator
{

namespace
{

// Milliseconds.
constexpr int64_t startingTime = 300;
constexpr int64_t savingTime = 500;
constexpr int64_t pauseTime = 200; ///< After the frames of a source.
constexpr int64_t factoryPixelsTime = 300;
constexpr int64_t operatorTimeout = 600'000;
constexpr int64_t silenceTimeout = 10'000;

const char *textOf(CorrectionRun::Result result)
{
    switch (result) {
    case CorrectionRun::Done:
        return "Done";
    case CorrectionRun::Aborted:
        return "Stopped";
    case CorrectionRun::InvalidParameters:
        return "Invalid parameters";
    case CorrectionRun::FlagTooHot:
        return "The flag is too hot";
    }
    return "";
}

std::string collectingText(uint32_t frames)
{
    return "Collecting " + std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

} // namespace

CorrectionRun::CorrectionRun(Camera &camera, Section &) : Device(camera), m_flag(camera) { }

/// Whether the camera can make a correction now. A recorder keeps the frames as they are while it is armed or records,
/// and until it has decided to arm again.
bool CorrectionRun::mayStart() const
{
    const auto *const recorder = camera().device<Recorder>();
    return !running() && (!recorder || !recorder->watchesFrames());
}

CorrectionRun::Readout CorrectionRun::presentReadout() const
{
    const auto &window = camera().device<Sensor>()->geometry().window();
    const ImageMode &image = *camera().device<ImageMode>();
    return {{window.x, window.y, window.width, window.height}, {image.reverted(), image.inverted()}};
}

Status CorrectionRun::start()
{
    const auto &setup = camera().device<CorrectionSetup>()->values();
    // The check of the list releases the camera's lock, so everything is checked again after it.
    for (std::optional<image::Window> checked;;) {
        if (!mayStart() || camera().device<Sensor>()->repeats(setup.preset) == 0)
            return Refused;
        const image::Window window = presentReadout().window;
        if (!usesFactoryList(setup) || checked == window)
            break;
        const bool usable = camera().device<BadPixelLists>()->isFactoryListUsable(window);
        if (!camera().connected())
            return NotConnected;
        if (!usable)
            return Refused;
        checked = window;
        camera().catchUp();
    }
    camera().device<Corrections>()->discard();
    m_automatic.reset();
    begin(setup);
    return Ok;
}

Status CorrectionRun::startAutomatic(std::vector<int> presets)
{
    if (!mayStart() || presets.empty() || !m_flag.exists() || camera().device<Corrections>()->hasPending())
        return Refused;
    CorrectionSetup::Values values = camera().device<CorrectionSetup>()->values();
    values.type = CorrectionSetup::OffsetUpdate;
    values.source = CorrectionSetup::Internal;
    values.preset = static_cast<uint8_t>(presets.front());
    presets.erase(presets.begin());
    m_automatic = std::move(presets);
    begin(values);
    return Ok;
}

void CorrectionRun::begin(const CorrectionSetup::Values &values)
{
    ++m_number;
    m_values = values;
    m_readout = presentReadout();
    m_collectors = {};
    m_computed = false;
    m_made.reset();
    enter(Starting, Clock::now());
}

Status CorrectionRun::proceed()
{
    catchUp();
    if (m_status != WaitingForFirst && m_status != WaitingForSecond)
        return Refused;
    m_continued = true;
    catchUp();
    return Ok;
}

Status CorrectionRun::abort()
{
    if (!running())
        return Refused;
    finish(Aborted);
    return Ok;
}

bool CorrectionRun::giveWay()
{
    if (running() && m_automatic)
        finish(Aborted);
    return !running();
}

Status CorrectionRun::status(uint16_t &number, std::string &text)
{
    const Status looked = look();
    if (looked != Ok)
        return looked;
    number = m_status;
    text = statusText();
    return Ok;
}

Status CorrectionRun::result(uint16_t &number, std::string &text)
{
    const Status looked = look();
    if (looked != Ok)
        return looked;
    number = m_result;
    text = textOf(m_result);
    return Ok;
}

Status CorrectionRun::counts(uint8_t preset, image::BadPixelCounts &counts)
{
    const Status looked = look();
    if (looked != Ok)
        return looked;
    counts = preset < m_counts.size() ? m_counts.at(preset) : image::BadPixelCounts();
    return Ok;
}

std::string CorrectionRun::statusText() const
{
    switch (m_status) {
    case Ready:
        return "Ready";
    case Saving:
        return "Saving the present correction";
    case WaitingForFirst:
        return "Place the first source before the lens and press Next";
    case WaitingForSecond:
        return "Place the second source before the lens and press Next";
    case WaitingForFlag:
    case WaitingForFlagAgain:
        return m_flag.text();
    case CollectingFirst:
    case CollectingSecond:
        return collectingText(wantedFrames());
    case CollectingTwinklers:
        return collectingText(wantedFrames()) + " for twinkling pixels";
    case FirstDone:
        return "The first source is done";
    case SecondDone:
        return "The second source is done";
    case TwinklersDone:
        return "The search for twinkling pixels is done";
    case Computing:
        return "Computing";
    case Starting:
        return "Starting";
    case ApplyingFactoryBadPixels:
        return "Applying the factory's bad pixels";
    }
    return {};
}

void CorrectionRun::expose(int, image::Exposure &exposure) const
{
    // A client of the emulated camera need not change the temperature of its blackbody during a run.
    exposure.scene.secondSource = !internal() && atSecondSource();
}

bool CorrectionRun::atSecondSource() const
{
    switch (m_status) {
    case WaitingForSecond:
    case CollectingSecond:
    case SecondDone:
    case CollectingTwinklers:
    case TwinklersDone:
        return true;
    case ApplyingFactoryBadPixels:
    case Computing:
        return twoPoint();
    default:
        return false;
    }
}

// The steps in time.

void CorrectionRun::enter(RunStatus status, int64_t time)
{
    m_status = status;
    m_stepStart = time;
    m_continued = false;
    m_silentSince.reset();
    switch (status) {
    case WaitingForFirst:
    case WaitingForSecond:
        m_stepStart = Clock::now();
        break;
    case WaitingForFlag:
    case WaitingForFlagAgain:
        if (m_automatic)
            m_flag.beginAsItIs(m_values);
        else
            m_flag.begin(m_values, status == WaitingForFlagAgain);
        break;
    case CollectingFirst:
        m_info = presentSettings(camera(), m_values.preset);
        [[fallthrough]];
    case CollectingSecond:
    case CollectingTwinklers:
        m_collected = 0;
        m_collectors.at(source()) = std::make_shared<image::FrameCollector>();
        break;
    default:
        break;
    }
}

CorrectionRun::RunStatus CorrectionRun::firstWait() const { return internal() ? WaitingForFlag : WaitingForFirst; }

/// Whether the bad pixels of the factory's list become those of the correction.
bool CorrectionRun::usesFactoryList(const CorrectionSetup::Values &values)
{
    return values.useFactoryBadPixels && values.type != CorrectionSetup::OffsetUpdate;
}

CorrectionRun::RunStatus CorrectionRun::lastSteps() const
{
    return usesFactoryList(m_values) && m_status != ApplyingFactoryBadPixels ? ApplyingFactoryBadPixels : Computing;
}

CorrectionRun::RunStatus CorrectionRun::nextStatus() const
{
    switch (m_status) {
    case Starting:
        return camera().device<Corrections>()->isLoaded(m_values.preset) && !m_automatic ? Saving : firstWait();
    case Saving:
        return firstWait();
    case WaitingForFirst:
    case WaitingForFlag:
        return CollectingFirst;
    case CollectingFirst:
        return FirstDone;
    case FirstDone:
        if (!twoPoint())
            return lastSteps();
        return internal() ? WaitingForFlagAgain : WaitingForSecond;
    case WaitingForSecond:
    case WaitingForFlagAgain:
        return CollectingSecond;
    case CollectingSecond:
        return SecondDone;
    case SecondDone:
        return m_values.limits.twinklers ? CollectingTwinklers : lastSteps();
    case CollectingTwinklers:
        return TwinklersDone;
    default:
        return lastSteps();
    }
}

void CorrectionRun::catchUp()
{
    while (running()) {
        const int64_t now = Clock::now();
        if (presentReadout() != m_readout)
            return finish(Aborted);
        const std::optional<int64_t> end = endOfStep(now);
        if (!end) {
            if (running() && m_flag.tooHot())
                finish(FlagTooHot);
            return;
        }
        if (m_status == Starting && !parametersAreValid())
            return finish(InvalidParameters);
        if (m_status == Computing)
            return finish(m_made ? Done : InvalidParameters);
        enter(nextStatus(), *end);
    }
}

/// Returns when the present step has ended, a time of Clock. Nothing while it goes on, and if it ends the run.
std::optional<int64_t> CorrectionRun::endOfStep(int64_t now)
{
    const auto after = [&](int64_t duration) {
        const bool over = Clock::remaining(m_stepStart + duration, duration) == 0;
        return over ? std::optional(std::min(m_stepStart + duration, now)) : std::nullopt;
    };
    switch (m_status) {
    case Starting:
        return after(startingTime);
    case Saving:
        return after(savingTime);
    case WaitingForFirst:
    case WaitingForSecond:
        if (m_continued)
            return now;
        if (after(operatorTimeout))
            finish(Aborted);
        return std::nullopt;
    case WaitingForFlag:
    case WaitingForFlagAgain:
        return endOfFlagWait(now);
    case CollectingFirst:
    case CollectingSecond:
    case CollectingTwinklers:
        return endOfCollecting(now);
    case FirstDone:
    case SecondDone:
    case TwinklersDone:
        return after(pauseTime);
    case ApplyingFactoryBadPixels:
        return after(factoryPixelsTime);
    default:
        // look() computes when the time is over.
        return m_computed ? after(computingMilliseconds()) : std::nullopt;
    }
}

std::optional<int64_t> CorrectionRun::endOfFlagWait(int64_t now)
{
    int64_t end = now;
    switch (m_flag.look(now, end)) {
    case CorrectionFlag::Settled:
        return end;
    case CorrectionFlag::TooHot:
        finish(FlagTooHot);
        break;
    case CorrectionFlag::TimedOut:
        finish(Aborted);
        break;
    case CorrectionFlag::Settling:
        break;
    }
    return std::nullopt;
}

std::optional<int64_t> CorrectionRun::endOfCollecting(int64_t now)
{
    const double rate = frameRate();
    if (rate <= 0) {
        m_silentSince = m_silentSince.value_or(now);
        if (now - *m_silentSince >= silenceTimeout)
            finish(Aborted);
        return std::nullopt;
    }
    // The time without frames does not count.
    if (m_silentSince)
        m_stepStart += std::max<int64_t>(0, now - *std::exchange(m_silentSince, std::nullopt));
    const int64_t duration = collectingMilliseconds(rate);
    if (m_collected < wantedFrames() || Clock::remaining(m_stepStart + duration, duration) > 0)
        return std::nullopt;
    return std::min(m_stepStart + duration, now);
}

void CorrectionRun::finish(Result result)
{
    ++m_number;
    m_status = Ready;
    m_result = result;
    m_collectors = {};
    if (result == FlagTooHot)
        m_flag.switchPowerOff();
    if (result == Done)
        deliver(*std::exchange(m_made, std::nullopt));
    if (result == Done && m_automatic && !m_automatic->empty()) {
        m_values.preset = static_cast<uint8_t>(m_automatic->front());
        m_automatic->erase(m_automatic->begin());
        begin(m_values);
        return;
    }
    m_flag.release();
    if (m_automatic)
        camera().device<AutomaticCorrection>()->runEnded();
}

void CorrectionRun::deliver(Made made)
{
    m_counts.at(m_values.preset) = made.counts;
    CorrectionInfo info = m_info;
    // An update of a part makes a correction of the whole window of the old one.
    info.x = static_cast<uint16_t>(made.table->window.x);
    info.y = static_cast<uint16_t>(made.table->window.y);
    info.width = static_cast<uint16_t>(made.table->window.width);
    info.height = static_cast<uint16_t>(made.table->window.height);
    info.nucType = m_values.type;
    info.nucSource = m_values.source;
    info.numFrames = m_values.frames;
    info.detectBadPixels = m_values.limits.detect;
    info.detectTwinklers = twoPoint() && m_values.limits.twinklers;
    info.twinklerFrames = m_values.twinklerFrames;
    info.twinklerDelta = m_values.limits.twinklerDelta;
    info.adMinimum = m_values.limits.adMin;
    info.adMaximum = m_values.limits.adMax;
    info.gainMinimum = m_values.limits.gainMin;
    info.gainMaximum = m_values.limits.gainMax;
    setCounts(info, made.counts);
    Correction correction{std::move(info), std::move(made.table)};
    auto *const corrections = camera().device<Corrections>();
    corrections->offer(m_values.preset, std::move(correction), m_values.type == CorrectionSetup::OffsetUpdate);
    if (m_automatic)
        corrections->accept();
}

} // namespace emulator
