#pragma once

#include "hlx/CCalPack.h"

namespace hlx
{

/// Writes a pack so that CCalPack::Load() reads it, in place of a file of that name. False if it can not be written as
/// a whole. Reading such files is the framework's business, writing them that of whoever calibrates the camera.
bool saveCalPack(CCalPack &pack, IFileSystem *files, const CString &path);

} // namespace hlx
