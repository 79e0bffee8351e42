#pragma once

#include <cstddef>
#include <cstdio>

#include "hlx/CString.h"

namespace hlx
{

/// A text file for writing. One thread at a time. Writing to a file that is not open does nothing.
class IFile
{
public:
    IFile() = default;
    IFile(const IFile &) = delete;
    IFile &operator=(const IFile &) = delete;
    virtual ~IFile();

    /// Returns true if the file is open. The flags are those of the derived class.
    virtual bool Open(const CString &path, int flags) = 0;
    virtual void Close() = 0;

    /// Writes the bytes of the text unchanged, line ends included.
    void WriteString(const CString &text);
    /// Writes a text formatted as by printf.
    void WriteFormattedString(const char *format, ...) __attribute__((format(printf, 2, 3)));

protected:
    virtual void Write(const char *data, std::size_t size) = 0;
};

/// A file of this computer, opened through fileSystem().
class CFile : public IFile
{
public:
    /// The flags of Open(): creates the file, or empties an existing one, for writing.
    static constexpr int CreateForWriting = 0x28;

    CFile() = default;
    ~CFile() override;

    /// Closes the file that was open before. Flags other than CreateForWriting are refused.
    bool Open(const CString &path, int flags) override;
    void Close() override;

protected:
    void Write(const char *data, std::size_t size) override;

private:
    std::FILE *m_file = nullptr;
};

} // namespace hlx
