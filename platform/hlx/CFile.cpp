#include "hlx/CFile.h"

#include "hlx/IFileSystem.h"
#include "platform/hlx/formatted.h"

namespace hlx
{

IFile::~IFile() = default;

void IFile::WriteString(const CString &text) { Write(text.c_str(), static_cast<std::size_t>(text.length())); }

void IFile::WriteFormattedString(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    Write(text.data(), text.size());
}

CFile::~CFile() { CFile::Close(); }

bool CFile::Open(const CString &path, int flags)
{
    Close();
    if (flags == CreateForWriting)
        m_file = fileSystem()->OpenFile(path, "wb");
    return m_file != nullptr;
}

void CFile::Close()
{
    if (m_file != nullptr)
        std::fclose(m_file);
    m_file = nullptr;
}

void CFile::Write(const char *data, std::size_t size)
{
    if (m_file != nullptr)
        std::fwrite(data, 1, size, m_file);
}

} // namespace hlx
