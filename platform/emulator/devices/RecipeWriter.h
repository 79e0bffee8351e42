#pragma once

#include "platform/emulator/devices/RecipeArchive.h"
#include "platform/hlx/ByteStream.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace emulator
{

class RecordedCorrection;

/// Writes values as bytes.
class RecipeWriter
{
public:
    using Corrections = std::vector<std::shared_ptr<RecordedCorrection>>;

    template <class... Values> void operator()(const Values &...values) { (put(values), ...); }
    /// An enumeration whose last value is `last`.
    template <class Choice> void choice(const Choice &value, Choice) { put(static_cast<uint8_t>(value)); }
    template <class Condition> void require(const Condition &) { }

    const std::vector<uint8_t> &bytes() const { return m_bytes.bytes(); }
    /// The corrections to which the recording refers by their places.
    const Corrections &corrections() const { return m_corrections; }

private:
    template <PlainNumber Number> void put(const Number &value)
    {
        if constexpr (std::floating_point<Number>)
            m_bytes.number(std::bit_cast<std::conditional_t<sizeof value == 4, uint32_t, uint64_t>>(value));
        else if constexpr (std::same_as<Number, bool>)
            m_bytes.number(static_cast<uint8_t>(value));
        else
            m_bytes.number(static_cast<std::make_unsigned_t<Number>>(value));
    }
    template <class T> void put(const T &value) { passMembers(*this, value); }
    template <class T, size_t Size> void put(const std::array<T, Size> &values)
    {
        for (const T &value : values)
            put(value);
    }
    template <class T> void put(const std::vector<T> &values) { putAll(values); }
    template <class T> void put(const std::deque<T> &values) { putAll(values); }
    template <class Values> void putAll(const Values &values)
    {
        m_bytes.number(static_cast<uint32_t>(values.size()));
        for (const auto &value : values)
            put(value);
    }
    template <class... Types> void put(const std::variant<Types...> &value)
    {
        m_bytes.number(static_cast<uint8_t>(value.index()));
        std::visit([this](const auto &present) { put(present); }, value);
    }
    template <class T> void put(const std::shared_ptr<const T> &pointer)
    {
        if (!pointer) {
            m_bytes.number(uint32_t(0));
            return;
        }
        const auto [known, isNew] = m_known.try_emplace(pointer.get(), static_cast<uint32_t>(m_known.size() + 1));
        m_bytes.number(known->second);
        if (isNew)
            put(*pointer);
    }
    void put(const std::shared_ptr<RecordedCorrection> &correction)
    {
        const auto known = std::ranges::find(m_corrections, correction);
        m_bytes.number(correction ? static_cast<uint32_t>(known - m_corrections.begin() + 1) : 0);
        if (correction && known == m_corrections.end())
            m_corrections.push_back(correction);
    }

    hlx::ByteWriter m_bytes;
    std::map<const void *, uint32_t> m_known;
    Corrections m_corrections;
};

} // namespace emulator
