#pragma once

#include "common/Nullable.h"

#include <cmath>
#include <concepts>
#include <utility>

// The ways to store a value that was read in a model and to signal it. GUI thread only.

/// Stores and signals the value if it was read, even if it has not changed. Else keeps the old value, without a signal.
template <class Model, class Signaller, class Value, class Member>
void publish(Model *model, const Nullable<Value> &value, Member &member, void (Signaller::*changed)())
{
    if (!value.set())
        return;
    member = value.get();
    emit(model->*changed)();
}

/// True if `first` and `second` look the same on a page. Two NaN do, so that a sensor that keeps returning NaN does not
/// signal on each read.
template <class Value> bool sameValue(const Value &first, const Value &second)
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
    if (!value.set() || sameValue<Member>(static_cast<Member>(value.get()), member))
        return;
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): an int8_t of the SDK is a number, not a character.
    member = static_cast<Member>(value.get());
    emit(model->*changed)();
}

/// Stores and signals the value in any case.
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

/// As publishPair(), but stores and signals only if one of the two differs from its stored value.
template <class Model, class Signaller, class Value, class Member>
void publishPairIfChanged(Model *model, const Nullable<Value> &first, Member &firstMember,
                          const Nullable<Value> &second, Member &secondMember, void (Signaller::*changed)())
{
    if (first.set()
        && !(sameValue<Member>(static_cast<Member>(first.get()), firstMember)
             && sameValue<Member>(static_cast<Member>(second.get()), secondMember)))
        publishPair(model, first, firstMember, second, secondMember, changed);
}
