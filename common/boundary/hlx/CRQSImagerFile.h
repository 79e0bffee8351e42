#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieReader;

/// A raw movie as the camera transferred it, for reading. All numbers are 0 while no file is open. One thread at a
/// time.
class CRQSImagerFile
{
public:
    CRQSImagerFile();
    CRQSImagerFile(const CRQSImagerFile &) = delete;
    CRQSImagerFile &operator=(const CRQSImagerFile &) = delete;
    ~CRQSImagerFile();

    /// Closes the open file and opens another one. Returns false, and then no file is open, if the file is missing, is
    /// not a movie, ends before its first frame, or has a damaged head. A movie that was cut off or never closed opens
    /// up to its last whole frame. `reserved` is always 0. Throws std::bad_alloc if the memory does not suffice for the
    /// reduce objects.
    bool Open(IFileSystem *files, const CString &path, unsigned int reserved);
    void Close();

    /// The number of frames.
    unsigned int nFrames() const;
    /// The width and the height of a frame in pixels.
    unsigned int xPixels() const;
    unsigned int yPixels() const;
    /// The number of the data type of a pixel, see hlx::reduce::SImageFormat::dataType.
    int GetDaType() const;
    /// True if the pixels have been corrected already: the raw values are lost.
    bool IsAbated() const;
    /// The reduce objects of the open movie. Changes stay in memory. The array also carries the movie's
    /// description of the camera into a converted movie that is created with it.
    reduce::CReduceObjectArray &reduceObjects() { return m_reduceObjects; }

    /// Fills `buffer` with the pixels of a frame, counted from 0, and `preset` with the preset with which it was taken.
    /// `objects` carries number and time of the frame afterwards, for CQDSEQImagerFile::PutFrame(). Returns false, and
    /// leaves all three as they are, if the frame cannot be read or is damaged, or if `buffer` is null (allowed for
    /// frames without pixels).
    bool GetFrame(void *buffer, unsigned int frame, unsigned char &preset, reduce::CReduceObjectArray &objects);

private:
    std::unique_ptr<MovieReader> m_reader;
    reduce::CReduceObjectArray m_reduceObjects;
};

} // namespace hlx::file
