#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "benchmarks/memory.h"
#include "hlx/CQDSEQImagerFile.h"
#include "hlx/CRQSImagerFile.h"
#include "platform/emulator/crc32.h"
#include "platform/hlxfile/CRQSWriter.h"
#include "recording/convertToQdseq.h"
#include "tests/support/computedMicroseconds.h"

#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <vector>

#include <malloc.h>

namespace
{

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr unsigned int width = 640;
constexpr unsigned int height = 512;
constexpr std::size_t frameBytes = std::size_t{2} * width * height;
constexpr unsigned int frames = 200;

void require(bool condition)
{
    if (!condition)
        throw std::runtime_error("the movie cannot be written or read");
}

/// A movie and its conversion in a temporary folder.
class Movie
{
public:
    Movie()
    {
        hlx::reduce::CReduceObjectArray objects;
        objects.format = {width, height, 2};
        std::vector<uint8_t> pixels(frameBytes);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<uint8_t>(i * 31 >> 3);
        hlx::file::CRQSWriter writer;
        require(writer.Create(hlx::fileSystem(), m_source, objects, {}));
        for (uint32_t frame = 0; frame < frames; ++frame)
            require(writer.PutFrame(frame, pixels.data(), {.number = frame}));
    }

    void convert() const
    {
        using Progress = hlx::delegate<int(int, unsigned int, unsigned int)>;
        unsigned int calls = 0;
        require(ConvertToQdseq(m_source, m_result, {}, Progress::FromLamda([&calls](int, unsigned int, unsigned int) {
                                   ++calls;
                                   return 0;
                               }))
                == 1);
        require(calls == frames + 1);
    }

    /// The loop over the two file classes, with nothing else.
    void copyFrames() const
    {
        hlx::file::CRQSImagerFile input;
        hlx::file::CQDSEQImagerFile output;
        require(input.Open(hlx::fileSystem(), m_source, 0));
        require(output.Create(hlx::fileSystem(), m_result, input.reduceObjects(), 0));
        const auto buffer = std::make_unique<uint8_t[]>(frameBytes);
        unsigned char preset = 0;
        for (unsigned int frame = 0; frame < frames; ++frame) {
            input.GetFrame(buffer.get(), frame, preset, input.reduceObjects());
            output.PutFrame(buffer.get(), preset, input.reduceObjects());
        }
    }

    /// A file that is truncated instead is flushed to the disk.
    void removeResult() const { QFile::remove(QString::fromUtf8(m_result.c_str())); }

private:
    hlx::CString pathOf(const char *name) const
    {
        return m_folder.filePath(QString::fromLatin1(name)).toUtf8().constData();
    }

    QTemporaryDir m_folder;
    const hlx::CString m_source = pathOf("a.rqs");
    const hlx::CString m_result = pathOf("a.qdseq");
};

/// Milliseconds for one frame.
struct Cost {
    double processor = 0;
    double wall = 0;
};

/// Converts the movie again and again for two seconds at least.
Cost costOf(const Movie &movie, void (Movie::*convert)() const)
{
    constexpr double shortest = 2;
    Seconds wall{};
    qint64 processor = 0;
    int rounds = 0;
    for (; wall.count() < shortest; ++rounds) {
        movie.removeResult();
        const auto start = Clock::now();
        const qint64 computed = computedMicroseconds();
        (movie.*convert)();
        processor += computedMicroseconds() - computed;
        wall += Clock::now() - start;
    }
    return {1e-3 * double(processor) / rounds / frames, 1e3 * wall.count() / rounds / frames};
}

void measureTimes(const Movie &movie, Report &report)
{
    constexpr int rounds = 5;
    constexpr double ratioLimit = 1.10;

    std::vector<double> ratios;
    std::vector<double> wallRatios;
    std::vector<double> milliseconds;
    for (int round = 0; round < rounds; ++round) {
        const Cost conversion = costOf(movie, &Movie::convert);
        const Cost bare = costOf(movie, &Movie::copyFrames);
        ratios.push_back(conversion.processor / bare.processor);
        wallRatios.push_back(conversion.wall / bare.wall);
        milliseconds.push_back(conversion.processor);
    }
    report.figure(QStringLiteral("conversion over the bare loop"), median(ratios), ratioLimit,
                  QStringLiteral("%1 ms a frame of 640x512; %2 by the wall clock")
                      .arg(median(milliseconds), 0, 'f', 2)
                      .arg(median(wallRatios), 0, 'f', 3));
}

void measureMemory(const Movie &movie, Report &report)
{
    constexpr double limit = 2; // MiB; a frame has 0.63.

    movie.removeResult();
    malloc_trim(0); // Freed memory that the process still has would hide what the conversion takes.
    forgetPeak();
    const double before = mebibytes("VmRSS");
    movie.convert();
    report.figure(QStringLiteral("conversion of 200 frames of 640x512, MiB"), mebibytes("VmHWM") - before, limit);
}

void measureChecksum(Report &report)
{
    constexpr int rounds = 101;
    constexpr double limit = 0.3; // Milliseconds.

    std::vector<uint8_t> frame(frameBytes, 1);
    std::vector<double> milliseconds;
    for (int round = 0; round < rounds; ++round) {
        const qint64 start = computedMicroseconds();
        // The next round depends on the result, so that no round is left out.
        frame[0] = static_cast<uint8_t>(emulator::crc32(frame));
        milliseconds.push_back(1e-3 * double(computedMicroseconds() - start));
    }
    report.figure(QStringLiteral("CRC-32 of a frame of 640x512, ms"), median(milliseconds), limit);
}

} // namespace

void measureConversion(Report &report)
{
    const Movie movie;
    movie.convert(); // Fills the file cache, and creates what is created once.
    measureMemory(movie, report);
    measureTimes(movie, report);
    measureChecksum(report);
}
