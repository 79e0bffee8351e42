#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace emulator
{

class RecordedCorrection;
class Recording;

/// A recording as bytes: everything but its corrections, which it refers to by their places in a list.
struct RecordingRecipe {
    /// The version of the bytes. Another one is needed when a value is added, removed or gets another meaning.
    static constexpr uint32_t layout = 3;

    std::vector<uint8_t> bytes;
    std::vector<std::shared_ptr<RecordedCorrection>> corrections;
};

RecordingRecipe toRecipe(const Recording &recording);
/// Returns null if the bytes are not those of a recording, or refer to a correction that is not there.
std::shared_ptr<const Recording> fromRecipe(const RecordingRecipe &recipe);

} // namespace emulator
