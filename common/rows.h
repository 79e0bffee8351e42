#pragma once

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <cstddef>
#include <tuple>

/// One setting of a family of same-shaped settings: how it is read, where the record and the model keep it, how it is
/// signalled and written. A model with such a family states it once, as a constant tuple of rows that its reader, its
/// finished slot and its setters walk:
///
///     static constexpr std::tuple rows{Row{zvtGetX, &Result::x, &Self::m_x, &Self::xChanged, zvtSetX}, ...};
///
/// A row that the operator can not write has no last entry. Functions with further arguments (a preset) get them from
/// the walk: readAll(record, rows, handle, preset), standard(this, value, row, preset).
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

/// Reads every row of `rows` into `record`, in their order. Pool task.
template <class Record, class... Rows, class... Arguments>
void readAll(Record &record, const std::tuple<Rows...> &rows, Arguments... arguments)
{
    std::apply([&](const auto &...row) { (read(record.*row.field, row.get, arguments...), ...); }, rows);
}

/// Publishes every row of `rows` from `record`, in their order. GUI thread only.
template <class Model, class Record, class... Rows>
void publishAll(Model *model, const Record &record, const std::tuple<Rows...> &rows)
{
    const auto publishRow
        = [&](const auto &row) { publish(model, record.*row.field, model->*row.member, row.changed); };
    std::apply([&](const auto &...row) { (publishRow(row), ...); }, rows);
}

/// The same, each row only if it has changed. GUI thread only.
template <class Model, class Record, class... Rows>
void publishAllIfChanged(Model *model, const Record &record, const std::tuple<Rows...> &rows)
{
    const auto publishRow
        = [&](const auto &row) { publishIfChanged(model, record.*row.field, model->*row.member, row.changed); };
    std::apply([&](const auto &...row) { (publishRow(row), ...); }, rows);
}

/// The setter of a row in the standard form. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool standard(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return standard(model, value, model->*row.member, row.changed, row.set, arguments...);
}

/// The setter of a row in the confirmed form. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool confirmed(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return confirmed(model, value, model->*row.member, row.changed, row.set, arguments...);
}

/// The setter of a row in the accepted form. GUI thread only.
template <class Model, class Value, class... Types, class... Arguments>
bool accepted(Model *model, const Value &value, const Row<Model, Types...> &row, Arguments... arguments)
{
    return accepted(model, value, model->*row.member, row.changed, row.set, arguments...);
}
