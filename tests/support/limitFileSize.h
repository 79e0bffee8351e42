#pragma once

#include <QtGlobal>

#include <csignal>
#include <optional>
#include <sys/resource.h>

/// Limits the size in bytes of the files that this process writes, in place of a full disk. Without a size, ends the
/// limit.
inline void limitFileSize(std::optional<qint64> size)
{
    std::signal(SIGXFSZ, size ? SIG_IGN : SIG_DFL);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = size ? static_cast<rlim_t>(*size) : limit.rlim_max;
    setrlimit(RLIMIT_FSIZE, &limit);
}
