#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieReader;

/// A raw movie as the camera transferred it, for reading. One thread at a time. All numbers are 0 while no file is
/// open.
class CRQSImagerFile
{
public:
    CRQSImagerFile();
    CRQSImagerFile(const CRQSImagerFile &) = delete;
    CRQSImagerFile &operator=(const CRQSImagerFile &) = delete;
    ~CRQSImagerFile();

    /// Closes the file that was open. False if there is no such file, or if it is foreign, cut short or corrupt; none
    /// is open then. The last argument is always 0. Throws std::bad_alloc if there is no memory for the reduce objects.
    bool Open(IFileSystem *files, const CString &path, unsigned int reserved);
    void Close();

    unsigned int nFrames() const;
    unsigned int xPixels() const;
    unsigned int yPixels() const;
    /// The number of the element type, see hlx::reduce::SImageFormat.
    int GetDaType() const;
    /// The pixels have been corrected already, so that the raw ones are lost.
    bool IsAbated() const;
    /// The reduce objects of the open movie; edits stay in memory.
    reduce::CReduceObjectArray &reduceObjects() { return m_reduceObjects; }

    /// Fills `buffer` with the pixels of a frame and `preset` with the preset it was taken with. False, with both left
    /// alone, if the frame can not be read or the buffer is null; a null buffer will do for frames of no pixels. The
    /// array stays as it is, since the frames of this format have no reduce objects of their own.
    bool GetFrame(void *buffer, unsigned int frame, unsigned char &preset, reduce::CReduceObjectArray &objects);

private:
    std::unique_ptr<MovieReader> m_reader;
    reduce::CReduceObjectArray m_reduceObjects;
};

} // namespace hlx::file
