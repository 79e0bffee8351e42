#pragma once

#include "common/CameraAccess.h"
#include "common/Refresh.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <QString>

#include <type_traits>
#include <utility>

// The forms of setters, which write a change of the operator to the camera. `set` is an SDK function, called as
// set(handle, arguments..., value), or an operation of the controller, called as set(arguments..., value). The value is
// converted to the type of its last parameter, a QString to UTF-8. Each form does nothing and returns false if the
// value equals the stored one, else returns true, so that the caller can add to it. GUI thread only.

namespace setters
{

template <class Set> inline constexpr bool isController = std::is_member_function_pointer_v<Set>;

template <class Model, class Set, class Value, class... Arguments>
int write(const Model *model, Set set, const Value &value, Arguments... arguments)
{
    using Parameter = typename reading::LastParameter<Set>::Type;
    const CameraAccess camera = CameraAccess::of(model);
    const auto call = [&](auto parameter) {
        if constexpr (isController<Set>)
            return reading::callController(camera.controller, set, arguments..., parameter);
        else
            return set(camera.handle, arguments..., parameter);
    };
    if constexpr (std::is_same_v<Value, QString>)
        return call(value.toUtf8().constData());
    else
        return call(static_cast<Parameter>(value));
}

} // namespace setters

/// Writes, stores and signals. Ignores the status.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool writeStandard(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                   Arguments... arguments)
{
    if (value == member)
        return false;
    setters::write(model, set, value, arguments...);
    announce(model, value, member, changed);
    return true;
}

/// Writes, stores the value if the camera accepted it, and signals in any case, so that the control of a refused value
/// returns to the stored one.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool writeConfirmed(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                    Arguments... arguments)
{
    if (value == member)
        return false;
    if (setters::write(model, set, value, arguments...) == 0)
        member = value;
    emit(model->*changed)();
    return true;
}

/// Writes, and stores and signals only if the camera accepted the value.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool writeAccepted(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                   Arguments... arguments)
{
    if (value == member)
        return false;
    if (setters::write(model, set, value, arguments...) == 0)
        announce(model, value, member, changed);
    return true;
}

/// Stores and signals, and writes nothing: for values that belong to the page, and for values that are written
/// together.
template <class Model, class Value, class Member, class Signaller>
bool storeOnly(Model *model, const Value &value, Member &member, void (Signaller::*changed)())
{
    if (value == member)
        return false;
    announce(model, value, member, changed);
    return true;
}

/// As writeStandard(), then reads the model again.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool writeAndReread(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                    Arguments... arguments)
{
    const bool differed = writeStandard(model, value, member, changed, set, arguments...);
    if (differed)
        model->refresh();
    return differed;
}

/// Writes on a pool thread, for a slow operation: `pending` delivers the status to its finished slot. Returns false if
/// its form drops the write because another one runs. `set` is an SDK function. A text must be a QByteArray, since a
/// pointer could dangle when the task runs.
template <class Model, class Set, class... Arguments>
bool writeOnPool(Refresh<Model, int> &pending, Set set, Arguments... arguments)
{
    static_assert(!(std::is_pointer_v<Arguments> || ...), "pass values: a pointer could dangle when the task runs");
    const auto sdkArgument = [](const auto &argument) {
        if constexpr (std::is_same_v<std::decay_t<decltype(argument)>, QByteArray>)
            return argument.constData();
        else
            return argument;
    };
    return pending.start(
        [=](const CameraAccess &camera) -> int { return set(camera.handle, sdkArgument(arguments)...); });
}
