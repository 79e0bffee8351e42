#pragma once

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <cstdint>
#include <tuple>

/// One setting of a family of same-shaped settings: how it is read, where the record and the model keep it, how it is
/// signalled and written. A model with such a family states it once, as a constant tuple of rows that its reader, its
/// finished slot and its setters walk:
///
///     static constexpr std::tuple rows{Row{zvtGetX, &Result::x, &Self::m_x, &Self::xChanged, zvtSetX}, ...};
template <class Model, class Record, class Out, class Field, class Member, class In> struct Row {
    int (*get)(uint64_t, Out *);
    Nullable<Field> Record::*field;
    Member Model::*member;
    void (Model::*changed)();
    int (*set)(uint64_t, In);
};

/// Reads every row of `rows` into `record`, in their order. Pool task.
template <class Record, class... Rows> void readAll(Record &record, const std::tuple<Rows...> &rows, uint64_t handle)
{
    std::apply([&](const auto &...row) { (read(record.*row.field, row.get, handle), ...); }, rows);
}

/// Publishes every row of `rows` from `record`, in their order. GUI thread only.
template <class Model, class Record, class... Rows>
void publishAll(Model *model, const Record &record, const std::tuple<Rows...> &rows)
{
    std::apply([&](const auto &...row) { (publish(model, record.*row.field, model->*row.member, row.changed), ...); },
               rows);
}

/// The setter of a row in the standard form. GUI thread only.
template <class Model, class Value, class... Types>
void standard(Model *model, const Value &value, const Row<Model, Types...> &row)
{
    standard(model, value, model->*row.member, row.changed, row.set);
}

/// The setter of a row in the confirmed form. GUI thread only.
template <class Model, class Value, class... Types>
void confirmed(Model *model, const Value &value, const Row<Model, Types...> &row)
{
    confirmed(model, value, model->*row.member, row.changed, row.set);
}
