#pragma once

#include "tests/unit/ForeignController.h"

#include <functional>
#include <tuple>
#include <utility>

/// A controller whose downloads are functions of the test. They run on the thread of the download. Its
/// window is 640 by 512 pixels at first.
class MovieController final : public ForeignController
{
public:
    using Progress = hlx::delegate<int(int, unsigned int, unsigned int)>;

    using ForeignController::ForeignController;

    bool GetWindow(uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height) override
    {
        *x = 0;
        *y = 0;
        std::tie(*width, *height) = window;
        return true;
    }
    bool SetWindow(uint16_t /*x*/, uint16_t /*y*/, uint16_t width, uint16_t height) override
    {
        window = {width, height};
        return true;
    }
    bool DownloadMovie(hlx::CString /*path*/, Progress progress, unsigned int first, unsigned int last) override
    {
        return download(std::move(progress), first, last);
    }
    bool FindFrameRange(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last) override
    {
        return findFrames(start, end, first, last);
    }

    std::function<bool(Progress progress, unsigned int first, unsigned int last)> download
        = [](const Progress &, unsigned int, unsigned int) { return true; };
    std::function<bool(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last)> findFrames
        = [](hlx::CDateTime, hlx::CDateTime, unsigned int *, unsigned int *) { return true; };
    std::pair<uint16_t, uint16_t> window{640, 512};
};
