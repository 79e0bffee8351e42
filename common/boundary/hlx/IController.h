#pragma once

#include <cstdint>
#include <memory>

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "hlx/delegate.h"

namespace hlx::cam
{

/// The controller of one camera of any family: the part that hosts and plug-ins use without knowing the family. The
/// operations of a family are in its own interface (IZVTController).
class IController
{
public:
    /// One standard window size in pixels.
    struct SWindowSize {
        uint16_t width = 0;
        uint16_t height = 0;
    };

    /// One factory calibration. The view models use only the name.
    struct SFactoryCalibration {
        CString name;
        float low = 0.0F;
        float high = 0.0F;
        CString lens;
        CString filter;
        CString comment;
    };

    /// Called with the name of the value that has changed.
    using ValueChanged = hlx::delegate<void(hlx::CString)>;

    IController();
    IController(const IController &) = delete;
    IController &operator=(const IController &) = delete;
    virtual ~IController();

    /// Calls every delegate of the list with `name`, on the calling thread; "Connected" is the name when the connection
    /// has changed. Any thread. The list is locked during the calls, so that a removal on another thread waits for
    /// them. A delegate may add and remove delegates.
    void FireValueChanged(const hlx::CString &name);

    /// Adds `listener` unless the list holds an equal one. Any thread.
    void AddValueChanged(const ValueChanged &listener);

    /// Removes the equal listener, if there is one. After that no call of it runs on another thread. Any thread.
    void RemoveValueChanged(const ValueChanged &listener);

    /// A copy of the list of value-changed delegates. Any thread.
    hlx::TArray<ValueChanged> ValueChangedDelegates() const;

private:
    struct Listeners;
    const std::shared_ptr<Listeners> m_listeners; ///< Shared with running calls: a delegate may destroy the controller.
};

} // namespace hlx::cam
