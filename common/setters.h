#pragma once

#include "common/CameraAccess.h"
#include "common/Refresh.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <utility>

// The forms in which a setter takes the operator's change to the camera. Each returns at once if the value is the
// stored one. `set` is an SDK function, called as set(handle, arguments..., value), with the value converted to its
// last parameter. GUI thread only.

namespace setters
{

template <class Model, class Set, class Value, class... Arguments>
int write(const Model *model, Set set, const Value &value, Arguments... arguments)
{
    using Parameter = typename reading::LastParameter<Set>::Type;
    return set(CameraAccess::of(model).handle, arguments..., static_cast<Parameter>(value));
}

} // namespace setters

/// Writes, stores and signals; the status is not looked at.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
void standard(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
              Arguments... arguments)
{
    if (value == member)
        return;
    setters::write(model, set, value, arguments...);
    announce(model, value, member, changed);
}

/// Writes, stores if the camera took it, and signals either way, so that a refused control snaps back.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
void confirmed(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
               Arguments... arguments)
{
    if (value == member)
        return;
    if (setters::write(model, set, value, arguments...) == 0)
        member = value;
    emit(model->*changed)();
}

/// Stores and signals; something else writes the values together.
template <class Model, class Value, class Member, class Signaller>
void storeOnly(Model *model, const Value &value, Member &member, void (Signaller::*changed)())
{
    if (value == member)
        return;
    announce(model, value, member, changed);
}

/// As standard(), and then reads the model anew.
template <class Model, class Value, class Member, class Signaller, class Set, class... Arguments>
void writeAndReread(Model *model, const Value &value, Member &member, void (Signaller::*changed)(), Set set,
                    Arguments... arguments)
{
    if (value == member)
        return;
    setters::write(model, set, value, arguments...);
    announce(model, value, member, changed);
    model->refresh();
}

/// Writes on a pool thread, for a slow operation: `pending` brings the status to its finished slot. Dropped, like a
/// read, while the write before it runs.
template <class Model, class Set, class... Arguments>
void writeOnPool(Refresh<Model, int> &pending, Set set, Arguments... arguments)
{
    pending.start([set, arguments...](const CameraAccess &camera) { return set(camera.handle, arguments...); });
}
