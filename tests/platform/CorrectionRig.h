#pragma once

#include "platform/emulator/image/output.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/settingOf.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

/// A camera with a cold detector, a window of 160x128 and a blackbody of 20 C before its lens, and its corrections. The
/// second blackbody has 35 C.
class CorrectionRig : public FrameRig
{
public:
    static constexpr int pixels = 160 * 128;

    explicit CorrectionRig(const char *profile = "everything") : FrameRig(profile) { prepare(); }

    void openWith(const char *devices, const char *extended = "everything")
    {
        FrameRig::openWith(devices, extended);
        prepare();
    }

    struct Step {
        uint16_t status;
        QString text;
        int64_t milliseconds;
    };

    /// The status of the run, 999 if it cannot be read.
    uint16_t status() const
    {
        uint16_t number = 999;
        char text[256] = "";
        return zvtGetNUCStatus(handle(), &number, text, sizeof text) == 0 ? number : 999;
    }
    QString text() const
    {
        uint16_t number = 0;
        char text[256] = "";
        zvtGetNUCStatus(handle(), &number, text, sizeof text);
        return QString::fromUtf8(text);
    }
    /// The result of the last run as "NUMBER TEXT".
    QString result() const
    {
        uint16_t number = 999;
        char text[256] = "";
        zvtGetNUCResult(handle(), &number, text, sizeof text);
        return QString::number(number) + ' ' + QString::fromUtf8(text);
    }
    std::array<uint32_t, 10> counts(uint8_t preset = 0) const
    {
        std::array<uint32_t, 10> c{};
        c.fill(none);
        zvtGetNUCResults(handle(), preset, &c[0], &c[1], &c[2], &c[3], &c[4], &c[5], &c[6], &c[7], &c[8], &c[9]);
        return c;
    }

    bool setType(uint8_t type, uint8_t source = 0)
    {
        return zvtSetNUCType(handle(), type) == 0 && zvtSetNUCSource(handle(), source) == 0;
    }

    /// Looks at the run every 50 ms until it is ready. Presses Next where the run waits for the operator.
    std::vector<Step> walk(int64_t most = 200'000)
    {
        std::vector<Step> steps;
        for (int64_t time = 0; time <= most; time += 50) {
            const uint16_t number = status();
            if (steps.empty() || steps.back().status != number)
                steps.push_back({number, text(), 0});
            if (number == 0)
                break;
            if (number == 2 || number == 6)
                zvtContinueNUC(handle());
            emulator::Clock::advance(50);
            steps.back().milliseconds += 50;
        }
        return steps;
    }
    /// The same, until the run has this status. Returns false if it does not come.
    bool walkTo(uint16_t wanted, int64_t most = 200'000)
    {
        for (int64_t time = 0; time <= most; time += 50) {
            const uint16_t number = status();
            if (number == wanted || number == 0)
                return number == wanted;
            if (number == 2 || number == 6)
                zvtContinueNUC(handle());
            emulator::Clock::advance(50);
        }
        return false;
    }
    /// Starts a run and walks it to its end. Returns its result.
    QString run()
    {
        if (zvtStartNUC(handle()) != 0)
            return QStringLiteral("not started");
        walk();
        return result();
    }
    /// Makes, accepts and saves a correction of the present window.
    bool make(const char *name)
    {
        return run() == QLatin1String("0 Done") && zvtAcceptNUC(handle()) == 0 && zvtSaveNUCAs(handle(), 0, name) == 0;
    }
    static QString statuses(const std::vector<Step> &steps)
    {
        QStringList texts;
        for (const Step &step : steps)
            texts << QString::number(step.status);
        return texts.join(' ');
    }

    QString name(uint8_t preset = 0) const
    {
        char text[300] = "";
        return zvtGetNUCName(handle(), preset, text, sizeof text) == 0 ? QString::fromUtf8(text)
                                                                       : QStringLiteral("refused");
    }
    QStringList names() { return settingOf(camera(), "corrections.names").toStringList(); }

    /// The next event of the queue.
    zvtEEventType event() const
    {
        zvtEEventType type = ZVT_EVENT_NONE;
        zvtReadEventQueue(handle(), &type);
        return type;
    }
    /// Removes all events, and returns how many there were.
    int events() const
    {
        int count = 0;
        while (event() != ZVT_EVENT_NONE)
            ++count;
        return count;
    }

    Counts output(emulator::image::Output output = emulator::image::Output::Video, int preset = 0)
    {
        const auto frame = camera().newestFrame(preset, output);
        return frame ? frame->counts : Counts();
    }
    /// The residual of the video output: the deviation between the truly good pixels of the mean of frames of a flat
    /// field, in counts.
    double residual(int frames = 32)
    {
        emulator::Clock::advance(frames * 10 + 100);
        const auto newest = camera().newestFrame(0);
        emulator::image::Statistics statistics(newest->counts.size(), faults());
        for (int back = 0; back < frames; ++back)
            if (const auto frame
                = camera().frame(0, newest->start.number - static_cast<uint64_t>(back), emulator::image::Output::Video))
                statistics.add(frame->counts);
        return statistics.frames() == frames ? statistics.spatialDeviation() : -1;
    }
    double rawResidual()
    {
        emulator::Clock::advance(1000);
        return statistics(32).spatialDeviation();
    }

private:
    void prepare()
    {
        useSmallWindow();
        showArea(20);
        emulator::Clock::advance(1000);
        events();
    }
};
