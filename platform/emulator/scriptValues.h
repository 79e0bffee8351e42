#pragma once

#include "platform/emulator/arguments.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace emulator
{

// The values of Gate::script() as outputs of a call. The value of a block of bytes is a QByteArray.

/// Returns a scripted value as an output of the type T.
template <class T> T fromScript(const QVariant &scripted)
{
    if constexpr (isList<T>) {
        T list;
        for (const QVariant &item : scripted.toList())
            list.add(fromScript<typename IsList<T>::Value>(item));
        return list;
    } else if constexpr (std::is_same_v<T, hlx::CString>) {
        return scripted.toString().toUtf8().constData();
    } else if constexpr (std::is_class_v<T>) {
        return scripted.value<T>();
    } else if constexpr (std::is_same_v<T, bool>) {
        return scripted.toBool();
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(scripted.toDouble());
    } else if constexpr (std::is_same_v<T, uint64_t>) {
        return scripted.toULongLong();
    } else {
        return static_cast<T>(scripted.toLongLong());
    }
}

/// Copies bytes to the start of a block, as many as fit.
inline void copyBytes(const QByteArray &bytes, const Block &block)
{
    std::memcpy(block.data, bytes.constData(), std::min(block.size, static_cast<size_t>(bytes.size())));
}

/// Moves the first scripted value into the argument, if the argument is an output and a value is left.
template <class T> void takeScripted(QVariantList &values, T &argument)
{
    if constexpr (isOutput<T>) {
        if (values.isEmpty())
            return;
        const QVariant scripted = values.takeFirst();
        if constexpr (isTextOutput<T>)
            argument.value = scripted.toString().toStdString();
        else if constexpr (isBlock<T>)
            copyBytes(scripted.toByteArray(), argument);
        else
            *argument = fromScript<std::remove_pointer_t<T>>(scripted);
    }
}

/// Writes the values of a script to the outputs of a call, in their order. Outputs without a value do not change.
template <class... Args> void writeScript(const QVariant &script, Args &...arguments)
{
    QVariantList values = script.typeId() == QMetaType::QVariantList ? script.toList() : QVariantList{script};
    (takeScripted(values, arguments), ...);
}

} // namespace emulator
