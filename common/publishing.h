#pragma once

#include "common/Nullable.h"

#include <cmath>
#include <concepts>
#include <utility>

// The only ways to store a read value in a model and to signal it. GUI thread only.

/// Stores and signals the value if it was read, changed or not; else the last value stays and nothing is signalled.
template <class Model, class Signaller, class Value, class Member>
void publish(Model *model, const Nullable<Value> &value, Member &member, void (Signaller::*changed)())
{
    if (!value.set())
        return;
    member = value.get();
    emit(model->*changed)();
}

/// True if `first` and `second` show the same on a page. Two numbers that are none do, so that a sensor which keeps
/// failing in this way does not signal for ever.
template <class Value> bool sameOnShow(const Value &first, const Value &second)
{
    if constexpr (std::floating_point<Value>)
        return first == second || (std::isnan(first) && std::isnan(second));
    else
        return first == second;
}

/// Stores and signals the value if it was read and differs from the stored one.
template <class Model, class Signaller, class Value, class Member>
void publishIfChanged(Model *model, const Nullable<Value> &value, Member &member, void (Signaller::*changed)())
{
    if (!value.set() || sameOnShow<Member>(static_cast<Member>(value.get()), member))
        return;
    member = static_cast<Member>(value.get());
    emit(model->*changed)();
}

/// Stores and signals the value whatever happened.
template <class Model, class Signaller, class Value, class Member>
void announce(Model *model, Value &&value, Member &member, void (Signaller::*changed)())
{
    member = std::forward<Value>(value);
    emit(model->*changed)();
}

/// Stores a pair that was read together (a minimum and a maximum), and signals it once.
template <class Model, class Signaller, class Value, class Member>
void publishPair(Model *model, const Nullable<Value> &first, Member &firstMember, const Nullable<Value> &second,
                 Member &secondMember, void (Signaller::*changed)())
{
    if (!first.set())
        return;
    firstMember = first.get();
    secondMember = second.get();
    emit(model->*changed)();
}

/// The same, but signalled only if one of the two differs from the stored one.
template <class Model, class Signaller, class Value, class Member>
void publishPairIfChanged(Model *model, const Nullable<Value> &first, Member &firstMember,
                          const Nullable<Value> &second, Member &secondMember, void (Signaller::*changed)())
{
    if (first.set()
        && !(sameOnShow<Member>(static_cast<Member>(first.get()), firstMember)
             && sameOnShow<Member>(static_cast<Member>(second.get()), secondMember)))
        publishPair(model, first, firstMember, second, secondMember, changed);
}
