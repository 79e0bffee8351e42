#pragma once

#include <cstdio>

#include "hlx/CString.h"

namespace hlx
{

/// The files as the framework's file classes reach them. Any thread.
class IFileSystem
{
public:
    IFileSystem() = default;
    IFileSystem(const IFileSystem &) = delete;
    IFileSystem &operator=(const IFileSystem &) = delete;
    virtual ~IFileSystem();

    /// Opens a regular file in the manner of fopen; null if it can not. The caller closes it.
    virtual std::FILE *OpenFile(const CString &path, const char *mode) = 0;

    /// True if there was such a file and it is gone.
    virtual bool DeleteFile(const CString &path) = 0;
};

/// The computer's files.
IFileSystem *fileSystem();

} // namespace hlx
