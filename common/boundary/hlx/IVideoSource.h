#pragma once

namespace hlx::cam
{

/// The streaming object of a controller. Any thread.
class IVideoSource
{
public:
    IVideoSource() = default;
    IVideoSource(const IVideoSource &) = delete;
    IVideoSource &operator=(const IVideoSource &) = delete;
    virtual ~IVideoSource();

    virtual void StopStream() = 0;
    virtual void StartStream() = 0;
};

} // namespace hlx::cam
