#include "platform/emulator/Rule.h"

#include <QStringList>

namespace emulator
{

using namespace Qt::StringLiterals;

Refusal OneOf::check(const QJsonValue &json) const
{
    // parse() refuses a value that is not a number.
    if (!json.isDouble() || numbers.contains(json.toDouble()))
        return {};
    QStringList texts;
    for (const double number : numbers)
        texts.append(values::toText(number));
    return u"must be one of %1"_s.arg(texts.join(u", "));
}

} // namespace emulator
