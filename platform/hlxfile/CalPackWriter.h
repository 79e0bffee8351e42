#pragma once

#include "hlx/CCalPack.h"

namespace hlx
{

/// Writes a pack in the format that CCalPack::Load() reads; replaces an existing file. Returns false if it could not be
/// written completely. The framework itself only reads these files.
bool saveCalPack(CCalPack &pack, IFileSystem *files, const CString &path);

} // namespace hlx
