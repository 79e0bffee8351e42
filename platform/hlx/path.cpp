#include "hlx/path.h"

#include <string_view>

namespace hlx::path
{

// The texts are passed by value, as the framework declares it.
// NOLINTBEGIN(performance-unnecessary-value-param)
CString MakeFilename(CString name, CString extension)
{
    if (extension.empty())
        return name;
    return extension.c_str()[0] == '.' ? name + extension.c_str() : name + "." + extension.c_str();
}

CString MakePath(CString folder, CString name, char separator)
{
    if (folder.empty())
        return name;
    if (name.empty())
        return folder;
    const bool ends = folder.c_str()[folder.length() - 1] == separator;
    const bool begins = name.c_str()[0] == separator;
    if (ends && begins)
        return folder + (name.c_str() + 1);
    if (ends || begins)
        return folder + name.c_str();
    const char between[] = {separator, '\0'};
    return folder + between + name.c_str();
}

bool WildcardMatch(CString pattern, CString text)
{
    const std::string_view p = pattern.c_str();
    const std::string_view t = text.c_str();
    std::size_t inPattern = 0;
    std::size_t inText = 0;
    // The position to continue at after a mismatch: after the last star, which then matches one character more.
    std::size_t behindStar = std::string_view::npos;
    std::size_t starEnd = 0;
    while (inText < t.size()) {
        if (inPattern < p.size() && p[inPattern] == '*') {
            behindStar = ++inPattern;
            starEnd = inText;
        } else if (inPattern < p.size() && (p[inPattern] == '?' || p[inPattern] == t[inText])) {
            ++inPattern;
            ++inText;
        } else if (behindStar != std::string_view::npos) {
            inPattern = behindStar;
            inText = ++starEnd;
        } else {
            return false;
        }
    }
    return p.find_first_not_of('*', inPattern) == std::string_view::npos;
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace hlx::path
