#pragma once

#include <cstdint>
#include <memory>

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "hlx/delegate.h"

namespace hlx::cam
{

/// A camera's controller of any family. What a family can do stands in its own interface (IZVTController); here is only
/// what every host and plug-in may use without knowing the family.
class IController
{
public:
    /// One standard window size in pixels.
    struct SWindowSize {
        uint16_t width = 0;
        uint16_t height = 0;
    };

    /// One factory calibration. Only the name has a meaning to the view models.
    struct SFactoryCalibration {
        CString name;
        float low = 0.0F;
        float high = 0.0F;
        CString lens;
        CString filter;
        CString comment;
    };

    using ValueChanged = hlx::delegate<void(hlx::CString)>;

    IController();
    IController(const IController &) = delete;
    IController &operator=(const IController &) = delete;
    virtual ~IController();

    /// Calls every delegate of the list with `name` ("Connected" is the one that matters), on the calling thread. Any
    /// thread. The list is locked for the time of the calls, so that a removal on another thread waits for them; a
    /// delegate may itself add or remove.
    void FireValueChanged(const hlx::CString &name);

    /// Adds `listener` unless an equal one is in the list already. Any thread.
    void AddValueChanged(const ValueChanged &listener);

    /// Removes the equal listener, if there is one. When it returns, no call of it is in flight on another thread. Any
    /// thread.
    void RemoveValueChanged(const ValueChanged &listener);

    /// A copy of the list of value-changed delegates. Any thread.
    hlx::TArray<ValueChanged> ValueChangedDelegates() const;

private:
    struct Listeners;
    const std::shared_ptr<Listeners> m_listeners; ///< Shared with calls in flight: a delegate may end the controller.
};

} // namespace hlx::cam
