#pragma once

#include <cstddef>
#include <cstdio>

#include "hlx/CString.h"

namespace hlx
{

/// A file that text is written to. One thread at a time. Writing to a file that is not open does nothing.
class IFile
{
public:
    IFile() = default;
    IFile(const IFile &) = delete;
    IFile &operator=(const IFile &) = delete;
    virtual ~IFile();

    virtual bool Open(const CString &path, int flags) = 0;
    virtual void Close() = 0;

    /// Writes the bytes of the text as they are: no translation of line ends.
    void WriteString(const CString &text);
    /// In the manner of printf.
    void WriteFormattedString(const char *format, ...) __attribute__((format(printf, 2, 3)));

protected:
    virtual void Write(const char *data, std::size_t size) = 0;
};

/// A file of the computer.
class CFile : public IFile
{
public:
    /// Creates the file or empties an existing one, for writing.
    static constexpr int CreateForWriting = 0x28;

    CFile() = default;
    ~CFile() override;

    /// True if the file is open now; a file that was open before is closed first. Flags other than CreateForWriting are
    /// refused.
    bool Open(const CString &path, int flags) override;
    void Close() override;

protected:
    void Write(const char *data, std::size_t size) override;

private:
    std::FILE *m_file = nullptr;
};

} // namespace hlx
