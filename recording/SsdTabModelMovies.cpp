#include "recording/SsdTabModel.h"

#include "common/publishing.h"
#include "common/setters.h"
#include "recording/SsdMovieFileInfoModel.h"

#include <array>

#include "zvt/zvtsdk.h"

// Part of SsdTabModel: the movies on the drive, and the load of one of them into the memory.

namespace
{

/// The size in the largest unit of which it holds at least one, with two decimals. Not localised.
QString convertBytesToHumanReadable(int64_t bytes)
{
    constexpr double step = 1024.0;
    constexpr double perStep = 0.0009765625;
    //: The unit of a size on the drive
    const std::array units{SsdTabModel::tr("bytes"), QStringLiteral("KB"), QStringLiteral("MB"), QStringLiteral("GB"),
                           QStringLiteral("TB")};
    auto value = static_cast<double>(bytes);
    size_t unit = 0;
    for (; value >= step && unit + 1 < units.size(); ++unit)
        value *= perStep;
    return QString().setNum(value, 'f', 2) + u' ' + units.at(unit);
}

} // namespace

// The list

void SsdTabModel::loadAndViewFiles()
{
    if (!m_fileListing.begin())
        return;
    announce(this, true, m_fileListLoading, &Self::fileListLoadingChanged);
    m_fileListing.run(&SsdFileListing::read);
}

void SsdTabModel::finishedFileListingWatcher()
{
    const SsdFileListing listing = m_fileListing.result();
    m_fileListModel.removeAll();
    // Required: the place in this list, also if a movie before it could not be read.
    for (int index = 0; index < listing.movies.size(); ++index)
        m_fileListModel.append(new SsdMovieFileInfoModel(index, listing.movies.at(index), this));
    emit fileListModelChanged();
    publishSpace(listing.totalSpace, m_totalSpace, &Self::totalSpaceChanged);
    publishSpace(listing.freeSpace, m_freeSpace, &Self::freeSpaceChanged);
    publishSpace(listing.usedSpace, m_usedSpace, &Self::usedSpaceChanged);
    announce(this, false, m_fileListLoading, &Self::fileListLoadingChanged);
    m_fileListing.finish();
}

void SsdTabModel::publishSpace(const Nullable<int64_t> &bytes, QString &text, void (Self::*changed)())
{
    //: A size that could not be read
    const QString unknown = tr("Unknown", "disk drive space");
    announce(this, bytes.set() ? convertBytesToHumanReadable(bytes.get()) : unknown, text, changed);
}

// The load

void SsdTabModel::loadMovie(SsdMovieFileInfoModel *info)
{
    if (!info || m_fileLoad.running())
        return;
    const auto index = static_cast<uint32_t>(info->index());
    const QString name = info->name();
    const uint number = info->number();
    const auto width = static_cast<uint16_t>(info->width());
    const auto height = static_cast<uint16_t>(info->height());
    // The next poll corrects the state if the window is refused.
    setState(LOADING);
    if (!fitWindow(width, height))
        return;
    m_loadedMovieName = name;
    m_loadedMovieNumber = number;
    m_fileLoad.start([index](const CameraAccess &camera) { return SsdFileLoad::run(camera.handle, index); });
}

/// Gives the camera's window the size of a movie. Returns whether it has this size.
bool SsdTabModel::fitWindow(uint16_t width, uint16_t height)
{
    const CameraAccess camera = CameraAccess::of(this);
    CameraWindow present;
    return zvtGetWindow(camera.handle, 0, &present.x, &present.y, &present.width, &present.height) == 0
        && m_keptWindow.fit(camera.controller, present, width, height);
}

// Required: also a failed load takes the frames and counts as from the drive.
void SsdTabModel::finishedFileLoadWatcher()
{
    const SsdFileLoad load = m_fileLoad.result();
    publish(this, load.currentFrame, m_currentFrame, &Self::currentFrameChanged);
    publish(this, load.startFrame, m_startFrame, &Self::startFrameChanged);
    publish(this, load.endFrame, m_endFrame, &Self::endFrameChanged);
    publish(this, load.totalFrames, m_totalFramesInFile, &Self::totalFramesInFileChanged);
    setFromDisk(true);
    if (load.loaded) {
        setMovieLoaded(true);
        emit didLoadMovie();
    }
    updateTimerHandlerDirect();
    m_fileLoad.finish();
}
