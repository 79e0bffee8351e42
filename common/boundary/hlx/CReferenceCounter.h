#pragma once

#include <atomic>

namespace hlx
{

/// Counts the references to one object, starting with one. The release of the last one destroys the object and the
/// counter. Any thread.
class CReferenceCounter
{
public:
    /// `destroy` is called once with `object`, on the thread that drops the last reference.
    CReferenceCounter(void *object, void (*destroy)(void *object)) : m_object(object), m_destroy(destroy) { }
    CReferenceCounter(const CReferenceCounter &) = delete;
    CReferenceCounter &operator=(const CReferenceCounter &) = delete;

    void AddRef();
    void Release();

private:
    ~CReferenceCounter() = default;

    std::atomic<unsigned> m_count{1};
    void *m_object;
    void (*m_destroy)(void *object);
};

} // namespace hlx
