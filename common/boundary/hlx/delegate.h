#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace hlx
{

template <class Signature> class delegate;

/// A callable value of three words: a call stub, an object and a manager. Copies of a delegate made from a functor
/// share the functor, and the last copy destroys it. The count is atomic: copies may be used and dropped on different
/// threads. A delegate made from a member function does not own its object.
template <class R, class... Args> class delegate<R(Args...)>
{
public:
    delegate() = default;
    delegate(const delegate &other) : m_stub(other.m_stub), m_object(other.m_object), m_manager(other.m_manager)
    {
        if (m_manager != nullptr)
            m_manager(m_object, Operation::AddRef);
    }
    delegate(delegate &&other) noexcept { swap(other); }
    delegate &operator=(delegate other) noexcept
    {
        swap(other);
        return *this;
    }
    ~delegate()
    {
        if (m_manager != nullptr)
            m_manager(m_object, Operation::Release);
    }

    /// FromMember<Class, &Class::method>(object) calls the method of `object`, which must live during the calls.
    template <class Class, auto method> static delegate FromMember(Class *object)
    {
        delegate result;
        result.m_object = const_cast<std::remove_cv_t<Class> *>(object);
        result.m_stub = [](void *target, Args... args) -> R {
            return static_cast<R>(std::invoke(method, static_cast<Class *>(target), std::forward<Args>(args)...));
        };
        return result;
    }

    /// Calls a copy of the functor.
    template <class Functor> static delegate FromLamda(Functor &&functor)
    {
        using Shared = SharedFunctor<std::decay_t<Functor>>;
        delegate result;
        result.m_object = new Shared{std::forward<Functor>(functor)};
        result.m_stub = [](void *target, Args... args) -> R {
            return static_cast<R>(std::invoke(static_cast<Shared *>(target)->functor, std::forward<Args>(args)...));
        };
        result.m_manager = &Shared::manage;
        return result;
    }

    bool empty() const { return m_stub == nullptr; }
    explicit operator bool() const { return !empty(); }

    /// An empty delegate does nothing and returns R(), so that callers need not test an optional callback.
    R operator()(Args... args) const
    {
        if (empty())
            return R();
        return m_stub(m_object, std::forward<Args>(args)...);
    }

    /// True for the same function on the same object. A delegate made from a functor is equal only to its copies.
    friend bool operator==(const delegate &left, const delegate &right)
    {
        return left.m_stub == right.m_stub && left.m_object == right.m_object;
    }

    void swap(delegate &other) noexcept
    {
        std::swap(m_stub, other.m_stub);
        std::swap(m_object, other.m_object);
        std::swap(m_manager, other.m_manager);
    }

private:
    enum class Operation { AddRef, Release };

    template <class Functor> struct SharedFunctor {
        Functor functor;
        std::atomic<unsigned> count{1};

        static void manage(void *object, Operation operation)
        {
            auto *shared = static_cast<SharedFunctor *>(object);
            if (operation == Operation::AddRef)
                shared->count.fetch_add(1, std::memory_order_relaxed);
            else if (shared->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
                delete shared;
        }
    };

    R (*m_stub)(void *object, Args... args) = nullptr;
    void *m_object = nullptr;
    void (*m_manager)(void *object, Operation operation) = nullptr;
};

static_assert(sizeof(delegate<void()>) == 3 * sizeof(void *));

} // namespace hlx
