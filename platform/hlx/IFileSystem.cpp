#include "hlx/IFileSystem.h"

#include <filesystem>

namespace hlx
{

namespace
{

class ComputerFileSystem : public IFileSystem
{
public:
    std::FILE *OpenFile(const CString &path, const char *mode) override
    {
        // A folder would open but fail on every read; a pipe would block its reader forever.
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(path.c_str(), error);
        if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
            return nullptr;
        return std::fopen(path.c_str(), mode);
    }

    bool DeleteFile(const CString &path) override
    {
        std::error_code error;
        return !std::filesystem::is_directory(path.c_str(), error) && std::filesystem::remove(path.c_str(), error);
    }
};

} // namespace

IFileSystem::~IFileSystem() = default;

IFileSystem *fileSystem()
{
    static ComputerFileSystem files;
    return &files;
}

} // namespace hlx
