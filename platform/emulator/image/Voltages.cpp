#include "platform/emulator/image/Voltages.h"

#include "platform/emulator/image/limits.h"

#include <cmath>

namespace emulator::image
{

namespace
{

double square(double value) { return value * value; }

double withinRange(double millivolts) { return within(0, millivolts, Voltages::maximumBias); }

double addedCommon(double volts)
{
    return within(Voltages::minimumCommon, volts, Voltages::maximumCommon) - Voltages::startCommon;
}

/// Proportional to the response.
double responseAt(double millivolts)
{
    constexpr double saturation = 120; // Millivolts.
    return 1 - std::exp(-millivolts / saturation);
}

/// Proportional to the read noise.
double readNoiseAt(double millivolts)
{
    constexpr double doubling = 400; // Millivolts.
    return 1 + square(square(millivolts / doubling));
}

} // namespace

double Voltages::addedCounts() const
{
    constexpr double countsPerVolt = 400;
    return countsPerVolt * addedVolts();
}

double Voltages::addedVolts() const
{
    constexpr double offsetPerReference = 2;
    return within(-maximumOffset, globalOffset, maximumOffset)
        + offsetPerReference * (within(minimumReference, reference, maximumReference) - startReference);
}

double Voltages::response() const
{
    constexpr double steps = 1 << 20;
    constexpr double perVolt = 0.3;
    const double ofCommon = 1 + perVolt * addedCommon(common);
    return std::floor(responseAt(withinRange(bias)) / responseAt(startBias) * ofCommon * steps + 0.5) / steps;
}

double Voltages::excess() const
{
    return (withinRange(bias) - startBias) / (maximumBias - startBias)
        + addedCommon(common) / (maximumCommon - startCommon);
}

double Voltages::readNoise() const { return readNoiseAt(withinRange(bias)) / readNoiseAt(startBias); }

double Voltages::twinkling() const { return square(withinRange(bias) / startBias); }

double Voltages::skimmedCounts(double integrationTime) const
{
    constexpr double countsPerVolt = 600;
    constexpr double countedMilliseconds = 2;
    constexpr double longest = 1e9;
    return countsPerVolt * within(0, skimming, maximumSkimming) * within(0, integrationTime, longest)
        / countedMilliseconds;
}

} // namespace emulator::image
