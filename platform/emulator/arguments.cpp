#include "platform/emulator/arguments.h"

namespace emulator
{

void appendQuoted(std::string &list, const char *text)
{
    if (text)
        list.append("\"").append(text).append("\"");
    else
        list += "null";
}

} // namespace emulator
