#pragma once

#include "platform/emulator/devices/RecipeArchive.h"
#include "platform/hlx/ByteStream.h"

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace emulator
{

struct FrameTiming;
struct PresetAdvance;
struct RecordedSettings;
class RecordedCorrection;

/// Reads what a RecipeWriter has written. After other bytes ok() is false, and the values are not valid.
class RecipeReader
{
public:
    using Corrections = std::vector<std::shared_ptr<RecordedCorrection>>;

    RecipeReader(const std::vector<uint8_t> &bytes, Corrections corrections)
        : m_bytes(bytes), m_corrections(std::move(corrections))
    {
    }

    template <class... Values> void operator()(Values &...values) { (take(values), ...); }
    template <class Choice> void choice(Choice &value, Choice last)
    {
        const auto number = m_bytes.number<uint8_t>();
        need(number <= static_cast<uint8_t>(last));
        value = ok() ? static_cast<Choice>(number) : Choice();
    }
    /// What must be true of the values so far. Not called after a failure, since it may need valid values.
    template <std::predicate Condition> void require(const Condition &condition)
    {
        if (ok() && !condition())
            m_bytes.fail();
    }

    bool ok() const { return m_bytes.ok(); }
    /// Whether all is valid, and no bytes are left.
    bool complete() const { return m_bytes.complete(); }

private:
    void need(bool condition)
    {
        if (!condition)
            m_bytes.fail();
    }
    template <PlainNumber Number> void take(Number &value)
    {
        if constexpr (std::floating_point<Number>) {
            using Bits = std::conditional_t<sizeof value == 4, uint32_t, uint64_t>;
            value = std::bit_cast<Number>(m_bytes.number<Bits>());
        } else if constexpr (std::same_as<Number, bool>) {
            const auto number = m_bytes.number<uint8_t>();
            need(number <= 1);
            value = number == 1;
        } else {
            value = static_cast<Number>(m_bytes.number<std::make_unsigned_t<Number>>());
        }
    }
    template <class T> void take(T &value) { passMembers(*this, value); }
    template <class T, size_t Size> void take(std::array<T, Size> &values)
    {
        for (T &value : values)
            take(value);
    }
    template <class T> void take(std::vector<T> &values) { takeAll(values); }
    template <class T> void take(std::deque<T> &values) { takeAll(values); }
    template <class Values> void takeAll(Values &values)
    {
        // Each value takes a byte or more, so a wrong number ends soon.
        for (auto left = m_bytes.number<uint32_t>(); left > 0 && ok(); --left)
            take(values.emplace_back());
    }
    template <class... Types> void take(std::variant<Types...> &value)
    {
        const auto index = m_bytes.number<uint8_t>();
        need(index < sizeof...(Types));
        size_t place = 0;
        ((place++ == index ? take(value.template emplace<Types>()) : void()), ...);
    }
    template <class T> void take(std::shared_ptr<const T> &pointer)
    {
        const auto number = m_bytes.number<uint32_t>();
        pointer = nullptr;
        if (number == 0)
            return;
        if (number <= m_known.size()) {
            const auto *const known = std::get_if<std::shared_ptr<const T>>(&m_known[number - 1]);
            need(known != nullptr);
            pointer = known ? *known : nullptr;
            return;
        }
        need(number == m_known.size() + 1);
        if (!ok())
            return;
        // Its place is taken before the objects to which it points.
        m_known.emplace_back();
        auto read = std::make_shared<T>();
        take(*read);
        m_known[number - 1] = pointer = std::move(read);
    }
    void take(std::shared_ptr<RecordedCorrection> &correction)
    {
        const auto number = m_bytes.number<uint32_t>();
        need(number <= m_corrections.size());
        correction = ok() && number > 0 ? m_corrections[number - 1] : nullptr;
    }

    using Known = std::variant<std::monostate, std::shared_ptr<const FrameTiming>, std::shared_ptr<const PresetAdvance>,
                               std::shared_ptr<const RecordedSettings>>;

    hlx::ByteReader m_bytes;
    std::vector<Known> m_known;
    Corrections m_corrections;
};

} // namespace emulator
