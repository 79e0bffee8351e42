#pragma once

#include <array>
#include <memory>

#include "hlx/CNucFile.h"
#include "hlx/CRCalFile.h"
#include "hlx/IFileSystem.h"

namespace hlx
{

/// A pack of an optional calibration and of optional corrections for presets 0 to 7, from a file with the extension
/// .cal, .xcalpk or .xnucpk. One thread at a time.
class CCalPack
{
public:
    static constexpr unsigned char presetCount = 8;

    /// Replaces the pack by the pack in a file. Returns false and keeps the old pack if the file is missing, is not a
    /// pack, is truncated or is corrupt.
    bool Load(IFileSystem *files, CString path);

    /// The pack's calibration. If there is none: a new, empty one with `create`, else null.
    reduce::CRCalFile *cal(bool create);

    /// The pack's correction of a preset. If there is none: a new, empty one with `create`, else null. Null for a
    /// preset above 7.
    CNucFile *nuc(unsigned char preset, bool create);

private:
    std::unique_ptr<reduce::CRCalFile> m_calibration;
    std::array<std::unique_ptr<CNucFile>, presetCount> m_corrections;
};

} // namespace hlx
