#include "hlx/CFile.h"

#include <cstdarg>
#include <vector>

#include "hlx/IFileSystem.h"

namespace hlx
{

IFile::~IFile() = default;

void IFile::WriteString(const CString &text) { Write(text.c_str(), static_cast<std::size_t>(text.length())); }

void IFile::WriteFormattedString(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length > 0) {
        std::vector<char> text(static_cast<std::size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), format, again);
        Write(text.data(), static_cast<std::size_t>(length));
    }
    va_end(again);
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
