#include "platform/emulator/devices/RecordingRecipe.h"

#include "platform/emulator/devices/RecipeReader.h"
#include "platform/emulator/devices/RecipeWriter.h"
#include "platform/emulator/devices/Recording.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

static bool isDuration(double time) { return std::isfinite(time) && time >= 0; }

// The members of structs. A structured binding names all of them, so that a new one is not forgotten.

template <class Archive, Like<image::Size> T> static void archiveMembers(Archive &archive, T &size)
{
    auto &[width, height] = size;
    archive(width, height);
}

template <class Archive, Like<image::Window> T> static void archiveMembers(Archive &archive, T &window)
{
    auto &[x, y, width, height] = window;
    archive(x, y, width, height);
}

template <class Archive, Like<image::Scene> T> static void archiveMembers(Archive &archive, T &scene)
{
    auto &[pattern, blackbody1, blackbody2, hasTargets, secondSource, microseconds] = scene;
    archive.choice(pattern, image::Scene::Area);
    archive(blackbody1, blackbody2, hasTargets, secondSource, microseconds);
}

template <class Archive, Like<image::Optics> T> static void archiveMembers(Archive &archive, T &optics)
{
    auto &[magnification, defocus, blocked, lensCelsius, flagCover, flagCelsius, transmission, filterCelsius, mirrored,
           inverted]
        = optics;
    archive(magnification, defocus, blocked, lensCelsius, flagCover, flagCelsius, transmission, filterCelsius, mirrored,
            inverted);
}

template <class Archive, Like<image::Voltages> T> static void archiveMembers(Archive &archive, T &voltages)
{
    auto &[globalOffset, bias, skimming, reference, common] = voltages;
    archive(globalOffset, bias, skimming, reference, common);
}

template <class Archive, Like<image::Readout> T> static void archiveMembers(Archive &archive, T &readout)
{
    auto &[integrationTime, saturatingTime, gainLevel, highSensitivity, reducedNoise, cooling, warmth, caseCelsius,
           voltages, color, clockNoise, noise]
        = readout;
    archive(integrationTime, saturatingTime, gainLevel, highSensitivity, reducedNoise);
    archive.choice(cooling, image::Readout::Stirling);
    archive(warmth, caseCelsius, voltages, color, clockNoise, noise);
}

/// Without the maps of the detector and the table of the correction, which a recorded exposure does not have.
template <class Archive, Like<image::Exposure> T> static void archiveMembers(Archive &archive, T &exposure)
{
    auto &[window, frameNumber, scene, optics, band, readout, detector, correction, repair, showBadPixels,
           videoCorrected, digitalCorrected, digitalGain, digitalOffset]
        = exposure;
    archive(window, frameNumber, scene, optics, readout);
    archive.choice(band, image::Light::Short);
    archive.choice(repair, image::Repair::None);
    archive(showBadPixels, videoCorrected, digitalCorrected, digitalGain, digitalOffset);
}

template <class Archive, Like<RecordedSettings::Preset> T> static void archiveMembers(Archive &archive, T &preset)
{
    auto &[exposure, correction] = preset;
    archive(exposure, correction);
}

template <class Archive, Like<RecordedSettings> T> static void archiveMembers(Archive &archive, T &settings)
{
    auto &[presets, irigShift, realTimeShift, irigLatch, integrationDelay] = settings;
    archive(presets, irigShift, realTimeShift);
    archive.choice(irigLatch, RecordedSettings::IntegrationEnds);
    archive(integrationDelay);
    // The IRIG times are computed from these.
    archive.require([&settings] {
        return isDuration(settings.integrationDelay) && std::ranges::all_of(settings.presets, [](const auto &preset) {
                   return isDuration(preset.exposure.readout.integrationTime);
               });
    });
}

template <class Archive, Like<RecordedMotion> T> static void archiveMembers(Archive &archive, T &motion)
{
    auto &[magnification, defocus, lensCelsius, flagCover, flagCelsius, transmission, filterCelsius, warmth,
           caseCelsius, blocked]
        = motion;
    archive(magnification, defocus, lensCelsius, flagCover, flagCelsius, transmission, filterCelsius, warmth,
            caseCelsius, blocked);
}

template <class Archive, Like<Recording::Segment> T> static void archiveMembers(Archive &archive, T &segment)
{
    auto &[firstNumber, settings, motion] = segment;
    archive(firstNumber, settings, motion);
}

template <class Archive, Like<FramePattern::Turn> T> static void archiveMembers(Archive &archive, T &turn)
{
    auto &[repeats, width] = turn;
    archive(repeats, width);
}

template <class Archive, Like<FrameSignal> T> static void archiveMembers(Archive &archive, T &signal)
{
    auto &[pulses, delay, startsReadout] = signal;
    archive(pulses, delay, startsReadout);
}

template <class Archive, Like<FrameTiming> T> static void archiveMembers(Archive &archive, T &timing)
{
    auto &[kind, pattern, frames, signal, cyclePulses, durations, integrations] = timing;
    archive.choice(kind, FrameTiming::CycleByPulse);
    archive(pattern, frames, signal, cyclePulses, durations, integrations);
    archive.require([&timing] {
        const bool hasPulses = timing.kind == FrameTiming::Free || timing.signal.pulses.exists();
        const bool hasCycles = timing.kind != FrameTiming::CycleByPulse || timing.cyclePulses > 0;
        return timing.frames == 0 || (timing.pattern.framesInCycle() > 0 && hasPulses && hasCycles);
    });
}

template <class Archive, Like<SequenceRun::Trigger> T> static void archiveMembers(Archive &archive, T &trigger)
{
    auto &[pulses, delay] = trigger;
    archive(pulses, delay);
}

template <class Archive, Like<PresetAdvance::Turn> T> static void archiveMembers(Archive &archive, T &turn)
{
    auto &[start, firstNumber, timing, pulse] = turn;
    archive(start, firstNumber, timing, pulse);
}

template <class Archive, Like<PresetAdvance> T> static void archiveMembers(Archive &archive, T &advance)
{
    auto &[timings, pulses, delay] = advance;
    archive(timings, pulses, delay);
    archive.require([&advance] { return advance.pulses.exists(); });
}

RecordingRecipe toRecipe(const Recording &recording)
{
    RecipeWriter writer;
    writer(recording);
    return {writer.bytes(), writer.corrections()};
}

std::shared_ptr<const Recording> fromRecipe(const RecordingRecipe &recipe)
{
    RecipeReader reader(recipe.bytes, recipe.corrections);
    auto recording = std::make_shared<Recording>();
    reader(*recording);
    return reader.complete() ? std::move(recording) : nullptr;
}

} // namespace emulator
