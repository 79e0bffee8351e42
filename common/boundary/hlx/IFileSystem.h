#pragma once

#include <cstdio>

#include "hlx/CString.h"

namespace hlx
{

/// The access to files that the framework's file classes use. Any thread.
class IFileSystem
{
public:
    IFileSystem() = default;
    IFileSystem(const IFileSystem &) = delete;
    IFileSystem &operator=(const IFileSystem &) = delete;
    virtual ~IFileSystem();

    /// Opens a regular file; `mode` is that of fopen. Returns null if it fails. The caller closes the file.
    virtual std::FILE *OpenFile(const CString &path, const char *mode) = 0;

    /// Deletes a file. Returns false if there is none or it cannot be deleted.
    virtual bool DeleteFile(const CString &path) = 0;
};

/// The files of this computer. Never null; lives as long as the process.
IFileSystem *fileSystem();

} // namespace hlx
