#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace emulator::image
{

/// Values that do not change, and that copies of this object share. A moved object keeps its values. Copies may be used
/// on several threads.
template <class T> class SharedVector
{
public:
    SharedVector() : SharedVector(std::vector<T>()) { }
    SharedVector(std::vector<T> values) : m_values(std::make_shared<const std::vector<T>>(std::move(values))) { }

    /// A move copies, so that the source keeps its values.
    SharedVector(const SharedVector &) = default;
    SharedVector &operator=(const SharedVector &) = default;
    ~SharedVector() = default;

    /// Returns the values, of which a caller can make a changed copy.
    const std::vector<T> &values() const { return *m_values; }

    size_t size() const { return m_values->size(); }
    const T *data() const { return m_values->data(); }
    const T &operator[](size_t index) const { return (*m_values)[index]; }
    auto begin() const { return m_values->begin(); }
    auto end() const { return m_values->end(); }

    bool operator==(const SharedVector &other) const { return *m_values == *other.m_values; }

private:
    std::shared_ptr<const std::vector<T>> m_values;
};

} // namespace emulator::image
