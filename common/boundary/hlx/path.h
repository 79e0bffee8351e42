#pragma once

#include "hlx/CString.h"

namespace hlx::path
{

/// The name with the extension behind it; a missing dot of the extension is added. Dots inside the name stay.
CString MakeFilename(CString name, CString extension);

/// The folder and the name with one separator between them. If either is empty, the other one.
CString MakePath(CString folder, CString name, char separator);

/// True if the pattern fits the whole text: '*' stands for any number of characters, '?' for one byte. Case counts.
bool WildcardMatch(CString pattern, CString text);

} // namespace hlx::path
