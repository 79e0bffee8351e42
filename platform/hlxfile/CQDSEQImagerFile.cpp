#include "hlx/CQDSEQImagerFile.h"

#include "platform/hlxfile/MovieObject.h"
#include "platform/hlxfile/MovieWriter.h"

namespace hlx::file
{

CQDSEQImagerFile::CQDSEQImagerFile() = default;
CQDSEQImagerFile::~CQDSEQImagerFile() = default;

bool CQDSEQImagerFile::Create(IFileSystem *files, const CString &path, reduce::CReduceObjectArray &objects,
                              unsigned int)
{
    Close();
    const MovieDescription *description = MovieObject<MovieDescription>::in(objects);
    m_writer = MovieWriter::create(qdseqFormat, files, path, objects,
                                   description == nullptr ? MovieDescription() : *description);
    return m_writer != nullptr;
}

bool CQDSEQImagerFile::PutFrame(void *buffer, unsigned char preset, reduce::CReduceObjectArray &objects)
{
    if (m_writer == nullptr)
        return false;
    const uint32_t place = m_writer->frames();
    const MovieFrame *source = MovieObject<MovieFrame>::in(objects);
    MovieFrame frame = source == nullptr ? MovieFrame{.number = place} : *source;
    frame.preset = preset;
    return m_writer->writeFrame(place, buffer, frame);
}

void CQDSEQImagerFile::Close() { m_writer.reset(); }

} // namespace hlx::file
