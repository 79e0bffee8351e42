#pragma once

#include <concepts>
#include <type_traits>

namespace emulator
{

// The values of a recording as bytes. RecipeWriter and RecipeReader are archives: a type passes its members to either
// of them in one function, so that both agree. This is a static member function of a class,
//
//     template <class Archive, class Self> static void archive(Archive &archive, Self &self)
//     {
//         archive(self.m_first, self.m_count);
//         archive.require([&self] { return self.m_count > 0; });
//     }
//
// or a function archiveMembers() in this namespace. A reader asks for a condition only if all values before it are
// valid. Objects to which several pointers point are written once.

/// Whether a type is the other one, const or not.
template <class T, class Other>
concept Like = std::same_as<std::remove_const_t<T>, Other>;

template <class T>
concept PlainNumber = std::is_arithmetic_v<T>;

template <class T, class Archive>
concept HasArchive = requires(Archive &archive, T &value)
{
    std::remove_const_t<T>::archive(archive, value);
};

/// Passes the members of a value to an archive.
template <class Archive, class T> void passMembers(Archive &archive, T &value)
{
    if constexpr (HasArchive<T, Archive>)
        std::remove_const_t<T>::archive(archive, value);
    else
        archiveMembers(archive, value);
}

} // namespace emulator
