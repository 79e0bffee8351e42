#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "hlx/CReferenceCounter.h"

namespace hlx
{

/// A pointer that shares its object with its copies. The last copy destroys the object, as the type with which the
/// first pointer was made. The count is atomic: threads may copy and drop pointers to the same object. One pointer
/// object may be used by one thread at a time.
template <class T> class TSharedPtr
{
public:
    TSharedPtr() = default;
    TSharedPtr(std::nullptr_t) { } // NOLINT(google-explicit-constructor)

    /// Takes ownership of the object. Null makes an empty pointer.
    template <class U>
    requires std::is_convertible_v<U *, T *>
    explicit TSharedPtr(U *object) : m_object(object)
    {
        if (object == nullptr)
            return;
        std::unique_ptr<U> guard(object);
        m_counter = new CReferenceCounter(const_cast<std::remove_cv_t<U> *>(object),
                                          [](void *counted) { delete static_cast<U *>(counted); });
        static_cast<void>(guard.release());
    }

    TSharedPtr(const TSharedPtr &other) : TSharedPtr(other, other.m_object) { }

    template <class U>
    requires std::is_convertible_v<U *, T *> TSharedPtr(const TSharedPtr<U> &other)
        : TSharedPtr(other, other.m_object) // NOLINT(google-explicit-constructor)
    {
    }

    /// Points to `object` and shares ownership with `owner`: `object` must live as long as the object of `owner`.
    template <class U>
    TSharedPtr(const TSharedPtr<U> &owner, T *object)
        : m_object(object), m_counter(owner.m_counter), m_context(owner.m_context)
    {
        if (m_counter != nullptr)
            m_counter->AddRef();
    }

    TSharedPtr(TSharedPtr &&other) noexcept { swap(other); }

    TSharedPtr &operator=(TSharedPtr other) noexcept
    {
        swap(other);
        return *this;
    }

    ~TSharedPtr()
    {
        if (m_counter != nullptr)
            m_counter->Release();
    }

    template <class... Args> static TSharedPtr make(Args &&...args)
    {
        return TSharedPtr(new T(std::forward<Args>(args)...));
    }

    T *get() const { return m_object; }
    T *operator->() const { return m_object; }
    std::add_lvalue_reference_t<T> operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    void reset() { TSharedPtr().swap(*this); }

    void swap(TSharedPtr &other) noexcept
    {
        std::swap(m_object, other.m_object);
        std::swap(m_counter, other.m_counter);
        std::swap(m_context, other.m_context);
    }

    /// The same object as a U, sharing ownership; empty if the object is not a U.
    template <class U> TSharedPtr<U> dynamicCast() const
    {
        U *object = dynamic_cast<U *>(m_object);
        return object == nullptr ? TSharedPtr<U>() : TSharedPtr<U>(*this, object);
    }

    template <class U> bool operator==(const TSharedPtr<U> &other) const { return m_object == other.get(); }
    bool operator==(std::nullptr_t) const { return m_object == nullptr; }

private:
    template <class U> friend class TSharedPtr;

    T *m_object = nullptr;
    CReferenceCounter *m_counter = nullptr;
    void *m_context = nullptr; ///< The third word of the framework's layout, copied with the other two.
};

static_assert(sizeof(TSharedPtr<int>) == 3 * sizeof(void *));

} // namespace hlx
