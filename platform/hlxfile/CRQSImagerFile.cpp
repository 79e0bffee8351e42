#include "hlx/CRQSImagerFile.h"

#include "platform/hlxfile/MovieObject.h"
#include "platform/hlxfile/MovieReader.h"

namespace hlx::file
{

CRQSImagerFile::CRQSImagerFile() = default;
CRQSImagerFile::~CRQSImagerFile() = default;

bool CRQSImagerFile::Open(IFileSystem *files, const CString &path, unsigned int)
{
    Close();
    m_reader = MovieReader::open(rqsFormat, files, path, m_reduceObjects);
    if (m_reader == nullptr)
        return false;
    MovieObject<MovieDescription>::put(m_reduceObjects, m_reader->description());
    return true;
}

void CRQSImagerFile::Close()
{
    m_reader.reset();
    m_reduceObjects = {};
}

unsigned int CRQSImagerFile::nFrames() const { return m_reader == nullptr ? 0 : m_reader->frames(); }

unsigned int CRQSImagerFile::xPixels() const { return m_reader == nullptr ? 0 : m_reader->imageFormat().width; }

unsigned int CRQSImagerFile::yPixels() const { return m_reader == nullptr ? 0 : m_reader->imageFormat().height; }

int CRQSImagerFile::GetDaType() const { return m_reader == nullptr ? 0 : m_reader->imageFormat().dataType; }

bool CRQSImagerFile::IsAbated() const { return m_reader != nullptr && m_reader->description().abated; }

bool CRQSImagerFile::GetFrame(void *buffer, unsigned int frame, unsigned char &preset,
                              reduce::CReduceObjectArray &objects)
{
    MovieFrame info;
    if (m_reader == nullptr || !m_reader->readFrame(frame, buffer, info))
        return false;
    preset = info.preset;
    MovieObject<MovieFrame>::put(objects, info);
    return true;
}

} // namespace hlx::file
