#pragma once

#include "hlx/CString.h"

namespace hlx::path
{

/// The name followed by the extension, with a dot between them (added if the extension does not begin with one). An
/// empty extension adds nothing. Dots inside the name stay.
CString MakeFilename(CString name, CString extension);

/// The folder and the name with one separator between them; if one of them is empty, the other one alone.
CString MakePath(CString folder, CString name, char separator);

/// True if the pattern matches the whole text: '*' matches any number of bytes, '?' one byte. Case-sensitive.
bool WildcardMatch(CString pattern, CString text);

} // namespace hlx::path
