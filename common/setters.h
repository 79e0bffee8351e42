#pragma once

#include "common/CameraAccess.h"
#include "common/Refresh.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <QString>

#include <type_traits>
#include <utility>

// The forms in which a setter takes the operator's change to the camera. `set` is an SDK function, called as
// set(handle, arguments..., value), or an operation of the controller, called as set(arguments..., value); the value is
// converted to its last parameter, a QString to UTF-8. Each form returns at once if the value is the stored one, and
// tells whether it differed, so that more can hang on it. GUI thread only.

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

/// Writes, stores and signals; the status is not looked at.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool standard(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
              Arguments... arguments)
{
    if (value == member)
        return false;
    setters::write(model, set, value, arguments...);
    announce(model, value, member, changed);
    return true;
}

/// Writes, stores if the camera took it, and signals either way, so that a refused control snaps back.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool confirmed(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
               Arguments... arguments)
{
    if (value == member)
        return false;
    if (setters::write(model, set, value, arguments...) == 0)
        member = value;
    emit(model->*changed)();
    return true;
}

/// Writes, and stores and signals only if the camera took it.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool accepted(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
              Arguments... arguments)
{
    if (value == member)
        return false;
    if (setters::write(model, set, value, arguments...) == 0)
        announce(model, value, member, changed);
    return true;
}

/// Stores and signals; something else writes the values together.
template <class Model, class Value, class Member, class Signaller>
bool storeOnly(Model *model, const Value &value, Member &member, void (Signaller::*changed)())
{
    if (value == member)
        return false;
    announce(model, value, member, changed);
    return true;
}

/// As standard(), and then reads the model anew.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
bool writeAndReread(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                    Arguments... arguments)
{
    const bool differed = standard(model, value, member, changed, set, arguments...);
    if (differed)
        model->refresh();
    return differed;
}

/// Writes on a pool thread, for a slow operation: `pending` brings the status to its finished slot. Whether a second
/// write is dropped while one runs is a matter of its form; false if it was. A text is given as a QByteArray: what a
/// pointer points at would be gone.
template <class Model, class Set, class... Arguments>
bool writeOnPool(Refresh<Model, int> &pending, Set set, Arguments... arguments)
{
    static_assert(!(std::is_pointer_v<Arguments> || ...), "give the task a value of its own");
    const auto plain = [](const auto &argument) {
        if constexpr (std::is_same_v<std::decay_t<decltype(argument)>, QByteArray>)
            return argument.constData();
        else
            return argument;
    };
    return pending.start([=](const CameraAccess &camera) -> int { return set(camera.handle, plain(arguments)...); });
}
