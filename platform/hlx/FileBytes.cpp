#include "platform/hlx/FileBytes.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace hlx
{

namespace
{

// The system may transfer fewer bytes than requested, or none if a signal interrupts the call.
template <class Transfer> bool transferAll(uint64_t offset, std::size_t size, Transfer transfer)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = transfer(offset + done, done, size - done);
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            return false;
    }
    return true;
}

} // namespace

FileHandle openFile(IFileSystem *files, const CString &path, const char *mode)
{
    return FileHandle(files == nullptr ? nullptr : files->OpenFile(path, mode));
}

uint64_t sizeOf(const FileHandle &file)
{
    struct stat status {
    };
    return fstat(fileno(file.get()), &status) == 0 ? static_cast<uint64_t>(status.st_size) : 0;
}

bool readAt(const FileHandle &file, uint64_t offset, void *data, std::size_t size)
{
    auto *bytes = static_cast<uint8_t *>(data);
    return transferAll(offset, size, [&](uint64_t from, std::size_t done, std::size_t left) {
        return pread(fileno(file.get()), bytes + done, left, static_cast<off_t>(from));
    });
}

bool writeAt(const FileHandle &file, uint64_t offset, const void *data, std::size_t size)
{
    const auto *bytes = static_cast<const uint8_t *>(data);
    return transferAll(offset, size, [&](uint64_t to, std::size_t done, std::size_t left) {
        return pwrite(fileno(file.get()), bytes + done, left, static_cast<off_t>(to));
    });
}

std::optional<std::vector<uint8_t>> readFile(IFileSystem *files, const CString &path)
{
    const FileHandle file = openFile(files, path, "rb");
    if (file == nullptr || sizeOf(file) > largestWholeFile)
        return std::nullopt;
    std::vector<uint8_t> bytes(sizeOf(file));
    if (!readAt(file, 0, bytes.data(), bytes.size()))
        return std::nullopt;
    return bytes;
}

bool writeFile(IFileSystem *files, const CString &path, const std::vector<uint8_t> &bytes)
{
    const FileHandle file = openFile(files, path, "wb");
    return file != nullptr && writeAt(file, 0, bytes.data(), bytes.size());
}

} // namespace hlx
