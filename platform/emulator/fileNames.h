#pragma once

#include <string_view>

namespace emulator
{

/// Returns whether a file on a camera can have this name: valid UTF-8 of at most 255 bytes, with at least one character
/// that is not a space, without a space at its start and without / \ : * ? " < > |. Names are case-sensitive.
bool isFileName(std::string_view name);

/// Returns whether a state of a camera can have this name: a file name of at most 199 bytes.
bool isStateName(std::string_view name);

/// Returns whether a correction of a camera can have this name: a file name of at most 200 bytes.
bool isCorrectionName(std::string_view name);

} // namespace emulator
