#include "platform/hlxcamui/IconFont.h"

#include <QFontDatabase>

namespace hlx::cam::ui
{

QString IconFont::name() const
{
    // Once for all pages of the process: each addition would keep a copy of the file in memory.
    static const QString family
        = QFontDatabase::applicationFontFamilies(
              QFontDatabase::addApplicationFont(QStringLiteral(":/hlxcamui/fonts/fontawesome-webfont.ttf")))
              .value(0);
    return family;
}

} // namespace hlx::cam::ui
