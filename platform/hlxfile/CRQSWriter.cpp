#include "platform/hlxfile/CRQSWriter.h"

#include "platform/hlxfile/MovieWriter.h"

namespace hlx::file
{

CRQSWriter::CRQSWriter() = default;
CRQSWriter::~CRQSWriter() = default;

bool CRQSWriter::Create(IFileSystem *files, const CString &path, const reduce::CReduceObjectArray &objects,
                        const MovieDescription &description)
{
    Close();
    m_writer = MovieWriter::create(rqsFormat, files, path, objects, description);
    return m_writer != nullptr;
}

bool CRQSWriter::PutFrame(uint32_t place, const void *pixels, const MovieFrame &frame)
{
    return m_writer != nullptr && m_writer->writeFrame(place, pixels, frame);
}

void CRQSWriter::Close() { m_writer.reset(); }

} // namespace hlx::file
