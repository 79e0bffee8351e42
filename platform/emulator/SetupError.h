#pragma once

#include <stdexcept>

namespace emulator
{

/// A profile or a storage folder cannot be used. what() is one line for the user.
class SetupError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace emulator
