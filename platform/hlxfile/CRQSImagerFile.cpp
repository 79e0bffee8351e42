#include "hlx/CRQSImagerFile.h"

#include "platform/hlxfile/MovieReader.h"

namespace hlx::file
{

CRQSImagerFile::CRQSImagerFile() = default;
CRQSImagerFile::~CRQSImagerFile() = default;

bool CRQSImagerFile::Open(IFileSystem *files, const CString &path, unsigned int)
{
    Close();
    m_reader = MovieReader::open(rqsFormat, files, path, m_reduceObjects);
    return m_reader != nullptr;
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

bool CRQSImagerFile::IsAbated() const { return m_reader != nullptr && m_reader->abated(); }

bool CRQSImagerFile::GetFrame(void *buffer, unsigned int frame, unsigned char &preset, reduce::CReduceObjectArray &)
{
    return m_reader != nullptr && m_reader->readFrame(frame, buffer, preset);
}

} // namespace hlx::file
