#include "platform/hlxfile/CRQSWriter.h"

#include "platform/hlxfile/MovieWriter.h"

namespace hlx::file
{

CRQSWriter::CRQSWriter() = default;
CRQSWriter::~CRQSWriter() = default;

bool CRQSWriter::Create(IFileSystem *files, const CString &path, const reduce::CReduceObjectArray &objects, bool abated)
{
    Close();
    m_writer = MovieWriter::create(rqsFormat, files, path, objects, abated);
    return m_writer != nullptr;
}

bool CRQSWriter::PutFrame(const void *buffer, unsigned char preset)
{
    return m_writer != nullptr && m_writer->writeFrame(buffer, preset);
}

void CRQSWriter::Close() { m_writer.reset(); }

} // namespace hlx::file
