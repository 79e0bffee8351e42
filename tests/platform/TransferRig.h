#pragma once

#include "platform/emulator/crc32.h"
#include "platform/hlxcamzvt/makeController.h"
#include "platform/hlxfile/MovieReader.h"
#include "tests/platform/RecorderRig.h"

#include <QFile>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// A camera with a recorder, whose memory is downloaded to a file. The link loses nothing unless the test changes it.
class TransferRig : public RecorderRig
{
public:
    struct Report {
        int stage;
        unsigned int done;
        unsigned int total;
        bool operator==(const Report &) const = default;
    };
    using Progress = std::function<int(Report)>;

    /// A frame of the movie.
    struct Frame {
        uint32_t checksum; ///< Of its pixels.
        hlx::file::MovieFrame info;
    };

    static constexpr unsigned int toTheEnd = 0xFFFFFFFF;

    explicit TransferRig(const char *profile = "everything") : RecorderRig(profile) { loseNothing(); }

    void openWith(const char *recorder)
    {
        RecorderRig::openWith(recorder);
        loseNothing();
    }
    bool lose(int perMillion) { return set("link.lossPerMillion", perMillion); }
    void loseNothing()
    {
        if (!lose(0))
            qFatal("the camera has no link");
    }

    QString path() const { return m_folder.filePath(QStringLiteral("movie.rqs")); }
    bool exists() const { return QFile::exists(path()); }

    /// Downloads to path(), and adds to `reports`.
    bool download(unsigned int first = 0, unsigned int last = toTheEnd, const Progress &progress = {})
    {
        return downloadTo(path(), first, last, progress);
    }
    bool download(const Progress &progress) { return download(0, toTheEnd, progress); }
    bool downloadTo(const QString &file, unsigned int first, unsigned int last, const Progress &progress = {})
    {
        const auto report = [&](int stage, unsigned int done, unsigned int total) {
            reports.push_back({stage, done, total});
            return progress ? progress(reports.back()) : 0;
        };
        using Delegate = hlx::delegate<int(int, unsigned int, unsigned int)>;
        return controller()->DownloadMovie(qPrintable(file), Delegate::FromLamda(report), first, last);
    }
    hlx::TSharedPtr<hlx::cam::CZVTController> controller()
    {
        return hlx::cam::makeController(camera().shared_from_this());
    }

    /// Opens the movie. Null if it is none. `objects` are its reduce objects then.
    std::unique_ptr<hlx::file::MovieReader> open() { return openMovie(hlx::file::rqsFormat, path()); }
    using RecorderRig::open;
    std::unique_ptr<hlx::file::MovieReader> openMovie(const hlx::file::MovieFormat &format, const QString &file)
    {
        objects = {};
        return hlx::file::MovieReader::open(format, hlx::fileSystem(), qPrintable(file), objects);
    }
    /// The frames of the movie; nothing at the places where it has none that can be read.
    std::vector<std::optional<Frame>> frames() { return framesOf(open().get()); }
    static std::vector<std::optional<Frame>> framesOf(const hlx::file::MovieReader *movie)
    {
        std::vector<std::optional<Frame>> frames;
        for (unsigned int place = 0; movie && place < movie->frames(); ++place) {
            std::vector<uint8_t> pixels(movie->imageFormat().frameBytes());
            hlx::file::MovieFrame info;
            const bool whole = movie->readFrame(place, pixels.data(), info);
            frames.push_back(whole ? std::optional(Frame{emulator::crc32(pixels), info}) : std::nullopt);
        }
        return frames;
    }
    /// The checksums of the frames of the movie; 0 for a frame that cannot be read.
    std::vector<uint32_t> downloaded()
    {
        std::vector<uint32_t> checksums;
        for (const auto &frame : frames())
            checksums.push_back(frame ? frame->checksum : 0);
        return checksums;
    }
    /// The checksums that the recorder has for the frames of its memory.
    std::vector<uint32_t> recorded(uint64_t first = 0, uint64_t count = std::numeric_limits<uint32_t>::max())
    {
        std::vector<uint32_t> checksums;
        for (uint64_t n = first; n < first + count; ++n) {
            const auto frame = recorder().frame(n);
            if (!frame)
                break;
            checksums.push_back(frame->checksum);
        }
        return checksums;
    }

    std::vector<Report> reports;
    hlx::reduce::CReduceObjectArray objects;

private:
    QTemporaryDir m_folder;
};
