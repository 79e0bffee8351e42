#include "hlx/CQDSEQImagerFile.h"

#include "platform/hlxfile/MovieWriter.h"

namespace hlx::file
{

CQDSEQImagerFile::CQDSEQImagerFile() = default;
CQDSEQImagerFile::~CQDSEQImagerFile() = default;

bool CQDSEQImagerFile::Create(IFileSystem *files, const CString &path, reduce::CReduceObjectArray &objects,
                              unsigned int)
{
    Close();
    // Abated frames are not converted, so this is false.
    m_writer = MovieWriter::create(qdseqFormat, files, path, objects, false);
    return m_writer != nullptr;
}

bool CQDSEQImagerFile::PutFrame(void *buffer, unsigned char preset, reduce::CReduceObjectArray &)
{
    return m_writer != nullptr && m_writer->writeFrame(buffer, preset);
}

void CQDSEQImagerFile::Close() { m_writer.reset(); }

} // namespace hlx::file
