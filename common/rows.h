#pragma once

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <cstddef>
#include <tuple>

/// One setting of a family of similar settings: its getter, its fields in the record and in the model, its signal and
/// its setter. A model with such a family declares it once, as a constant tuple of rows for its reader, its finished
/// slot and its setters:
///
///     static constexpr std::tuple rows{Row{zvtGetX, &Result::x, &Self::m_x, &Self::xChanged, zvtSetX}, ...};
///
/// A row that the operator cannot write has no last entry. Further arguments of the functions (a preset) are passed in
/// the calls: readAll(record, rows, handle, preset), writeStandard(this, value, row, preset).
template <class Model, class Record, class Get, class Field, class Member, class Set = std::nullptr_t> struct Row {
    Get get;
    Nullable<Field> Record::*field;
    Member Model::*member;
    void (Model::*changed)();
    Set set = {};
};

template <class Model, class Record, class Get, class Field, class Member>
Row(Get, Nullable<Field> Record::*, Member Model::*, void (Model::*)()) -> Row<Model, Record, Get, Field, Member>;

template <class Model, class Record, class Get, class Field, class Member, class Set>
Row(Get, Nullable<Field> Record::*, Member Model::*, void (Model::*)(), Set)
    -> Row<Model, Record, Get, Field, Member, Set>;

/// Reads each row of `rows` into `record`, in order. A failed row leaves its field unset. Pool task.
template <class Record, class... Rows, class... Arguments>
void readAll(Record &record, const std::tuple<Rows...> &rows, Arguments... arguments)
{
    std::apply([&](const auto &...row) { (fetch(record.*row.field, row.get, arguments...), ...); }, rows);
}

/// Publishes each row of `rows` from `record` by publish(), in order. GUI thread only.
template <class Model, class Record, class... Rows>
void publishAll(Model *model, const Record &record, const std::tuple<Rows...> &rows)
{
    const auto publishRow
        = [&](const auto &row) { publish(model, record.*row.field, model->*row.member, row.changed); };
    std::apply([&](const auto &...row) { (publishRow(row), ...); }, rows);
}

/// As publishAll(), by publishIfChanged(). GUI thread only.
template <class Model, class Record, class... Rows>
void publishAllIfChanged(Model *model, const Record &record, const std::tuple<Rows...> &rows)
{
    const auto publishRow
        = [&](const auto &row) { publishIfChanged(model, record.*row.field, model->*row.member, row.changed); };
    std::apply([&](const auto &...row) { (publishRow(row), ...); }, rows);
}

/// writeStandard() for a row. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool writeStandard(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return writeStandard(model, value, model->*row.member, row.changed, row.set, arguments...);
}

/// writeConfirmed() for a row. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool writeConfirmed(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return writeConfirmed(model, value, model->*row.member, row.changed, row.set, arguments...);
}

/// writeAccepted() for a row. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool writeAccepted(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return writeAccepted(model, value, model->*row.member, row.changed, row.set, arguments...);
}
