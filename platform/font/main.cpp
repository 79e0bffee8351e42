// zvtfont FONT FILE: writes the source FILE with the glyphs of a monospaced TrueType font, for
// platform/emulator/image/Font.h. Glyphs are rasterised without antialiasing, so they are the same in each build.
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>

namespace
{

constexpr QSize cell{8, 16};
constexpr int pixelSize = 13; ///< Its characters are as wide as the cell.

/// The characters in the order of the table.
QString characters()
{
    QString list;
    for (char16_t character = 32; character <= 126; ++character)
        list += QChar(character);
    return list + QChar(0xB0);
}

QFont fontFrom(const QString &path)
{
    const int id = QFontDatabase::addApplicationFont(path);
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty())
        qFatal("%s is no font", qPrintable(path));
    QFont font(families.first());
    font.setPixelSize(pixelSize);
    font.setStyleStrategy(QFont::StyleStrategy(QFont::NoAntialias | QFont::NoFontMerging));
    // Hinted, some characters are wider than the cell.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QImage draw(QChar character, const QFont &font)
{
    const QRect place(QPoint(cell.width(), cell.height()), cell);
    QImage image(cell * 3, QImage::Format_Mono);
    image.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    image.fill(0U);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(place.left(), place.top() + QFontMetrics(font).ascent(), QString(character));
    const QImage glyph = image.copy(place);
    painter.fillRect(place, Qt::black);
    painter.end();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelIndex(x, y) != 0)
                qFatal("the character %d is larger than its cell", int(character.unicode()));
    return glyph;
}

QByteArray toSource(const QImage &glyph)
{
    QByteArrayList rows;
    for (int y = 0; y < cell.height(); ++y)
        rows << "0x" + QByteArray(1, char(*glyph.constScanLine(y))).toHex();
    return "    {" + rows.join(", ") + "},\n";
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3)
        qFatal("use: zvtfont FONT FILE");
    const QFont font = fontFrom(arguments.at(1));
    QByteArray source = "// Made by zvtfont.\n"
                        "#include \"platform/emulator/image/Font.h\"\n\n"
                        "const std::array<emulator::image::Font::Glyph, emulator::image::Font::glyphCount>\n"
                        "    emulator::image::Font::glyphs{{\n";
    for (const QChar character : characters())
        source += toSource(draw(character, font));
    source += "}};\n";
    QSaveFile file(arguments.at(2));
    if (!file.open(QIODevice::WriteOnly) || file.write(source) != source.size() || !file.commit())
        qFatal("%s cannot be written: %s", qPrintable(arguments.at(2)), qPrintable(file.errorString()));
    return 0;
}
