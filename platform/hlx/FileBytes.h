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

/// An open file; its destructor closes it.
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// The largest file that is read as a whole, in bytes; real files are far smaller.
constexpr std::size_t largestWholeFile = std::size_t{1} << 30;

/// Opens a file. Returns null if it cannot be opened or `files` is null.
FileHandle openFile(IFileSystem *files, const CString &path, const char *mode);

/// The current size of an open file in bytes; 0 if it cannot be determined.
uint64_t sizeOf(const FileHandle &file);

/// Reads exactly `size` bytes from an offset. Returns false if there are fewer.
bool readAt(const FileHandle &file, uint64_t offset, void *data, std::size_t size);

/// Writes bytes at an offset, bypassing the buffer of the stream. Returns false if not all of them were written.
bool writeAt(const FileHandle &file, uint64_t offset, const void *data, std::size_t size);

/// Reads a whole file. Returns nothing if it cannot be read or has more than largestWholeFile bytes.
std::optional<std::vector<uint8_t>> readFile(IFileSystem *files, const CString &path);

/// Writes a file; replaces an existing one. Returns false if it could not be written completely; a truncated file may
/// remain then.
bool writeFile(IFileSystem *files, const CString &path, const std::vector<uint8_t> &bytes);

} // namespace hlx
