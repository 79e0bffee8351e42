#pragma once

#include <string_view>

namespace emulator
{

/// Whether a file on a camera can have this name: UTF-8 with at least one character that is no space, no space at its
/// start, none of / \ : * ? " < > |, at most 255 bytes. Names that differ in case are different names.
bool isFileName(std::string_view name);

/// Whether a state of a camera can have this name: a file name of at most 199 bytes.
bool isStateName(std::string_view name);

} // namespace emulator
