#pragma once

#include <QJsonObject>

namespace emulator
{

/// Returns those of `values` that are not the same in `reference`.
inline QJsonObject changedValues(QJsonObject values, const QJsonObject &reference)
{
    for (const QString &key : values.keys())
        if (values.value(key) == reference.value(key))
            values.remove(key);
    return values;
}

} // namespace emulator
