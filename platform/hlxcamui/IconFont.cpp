#include "platform/hlxcamui/IconFont.h"

#include <QFontDatabase>

namespace hlx::cam::ui
{

QString IconFont::name() const
{
    // Added once for all pages of the process, since each addition keeps a copy of the file in memory.
    static const QString family
        = QFontDatabase::applicationFontFamilies(
              QFontDatabase::addApplicationFont(QStringLiteral(":/hlxcamui/fonts/fontawesome-webfont.ttf")))
              .value(0);
    return family;
}

} // namespace hlx::cam::ui
