#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include "hlx/IFileSystem.h"

namespace hlx
{

struct FileCloser {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

/// An open file that closes itself.
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// More than any file that is read as a whole can hold in earnest.
constexpr std::size_t largestWholeFile = std::size_t{1} << 30;

/// Opens a file; null if it can not, or if there is no file system.
FileHandle openFile(IFileSystem *files, const CString &path, const char *mode);

/// The present size of an open file in bytes; 0 if it can not be told.
uint64_t sizeOf(const FileHandle &file);

/// Reads exactly `size` bytes from an offset; false if they are not all there.
bool readAt(const FileHandle &file, uint64_t offset, void *data, std::size_t size);

/// Writes all of the bytes at an offset, past any buffer of the stream; false if not all of them went there.
bool writeAt(const FileHandle &file, uint64_t offset, const void *data, std::size_t size);

/// A whole file of at most largestWholeFile bytes.
std::optional<std::vector<uint8_t>> readFile(IFileSystem *files, const CString &path);

/// Replaces a file. False if not all of it could be written; a cut file may be left then.
bool writeFile(IFileSystem *files, const CString &path, const std::vector<uint8_t> &bytes);

} // namespace hlx
