#include "platform/emulator/devices/VideoPalette.h"
#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <mutex>

using emulator::image::Palette;
using emulator::image::Rgb;

/// The palettes of the video output.
class tst_videoPalette : public Test
{
    Q_OBJECT

private slots:
    void theCameraListsItsPalettes();
    void palettesAreLoadedByTheirNames();
    void otherNamesAreRefused();
    void aProfileMayHaveAnotherPalette();
    void everyBufferHoldsABoundedName();
    void palettesFollowTheirFormulas();
    void greyPalettesGetBrighter();
    void snapshotsAndOtherClientsHaveIt();
    void aPaletteIsReadOnce();

private:
    static QString name(const LensRig &rig)
    {
        char text[257] = "";
        return zvtGetPalette(rig.handle(), text, sizeof text) == 0 ? QString::fromUtf8(text) : "failed";
    }
    static Palette palette(LensRig &rig)
    {
        const std::lock_guard lock(rig.camera().mutex());
        return rig.camera().device<emulator::VideoPalette>()->palette();
    }
    static QStringList listed(const LensRig &rig)
    {
        hlx::TArray<zvtSDirEntry> entries;
        if (zvtListPalettes(rig.handle(), &entries) != 0)
            return {"failed"};
        QStringList names;
        for (const zvtSDirEntry &entry : entries)
            names << QString::fromUtf8(entry.name.c_str());
        return names;
    }
};

void tst_videoPalette::theCameraListsItsPalettes()
{
    const LensRig rig;
    QCOMPARE(listed(rig), QStringList({"Contour", "Fire", "Grayscale", "Green", "Ice", "Iron", "Rainbow", "Sepia"}));
    QCOMPARE(name(rig), QStringLiteral("Grayscale"));
}

void tst_videoPalette::palettesAreLoadedByTheirNames()
{
    LensRig rig;
    std::vector<Palette> palettes{palette(rig)};
    for (const QString &wanted : listed(rig)) {
        QCOMPARE(zvtLoadPalette(rig.handle(), qPrintable(wanted)), 0);
        QCOMPARE(name(rig), wanted);
        if (wanted != "Grayscale") {
            QVERIFY(std::ranges::find(palettes, palette(rig)) == palettes.end());
            palettes.push_back(palette(rig));
        }
    }
    QCOMPARE(palettes.size(), size_t(8));
}

void tst_videoPalette::otherNamesAreRefused()
{
    const LensRig rig;
    QCOMPARE(zvtLoadPalette(rig.handle(), "Iron"), 0);
    for (const char *other : {"", "iron", "Iron ", "Iron.json", "../palettes/Fire", "Unknown", "\xFF"})
        QCOMPARE(zvtLoadPalette(rig.handle(), other), int(emulator::Refused));
    QCOMPARE(name(rig), QStringLiteral("Iron"));
}

void tst_videoPalette::aProfileMayHaveAnotherPalette()
{
    LensRig rig("edge-values");
    const QString other(256, 'P');
    QCOMPARE(name(rig), other);
    QVERIFY(!listed(rig).contains(other));
    QCOMPARE(zvtLoadPalette(rig.handle(), qPrintable(other)), int(emulator::Refused));
    // Its colours are those of the default.
    const Palette unlisted = palette(rig);
    QCOMPARE(zvtLoadPalette(rig.handle(), "Grayscale"), 0);
    QVERIFY(unlisted == palette(rig));
    QCOMPARE(name(rig), QStringLiteral("Grayscale"));
}

void tst_videoPalette::everyBufferHoldsABoundedName()
{
    const LensRig rig;
    for (const uint32_t size : {1U, 2U, 9U, 10U, 64U}) {
        std::vector<char> text(size + 1, 'x');
        QCOMPARE(zvtGetPalette(rig.handle(), text.data(), size), 0);
        QCOMPARE(QString::fromLatin1(text.data()), QStringLiteral("Grayscale").left(int(size) - 1));
        QCOMPARE(text[size], 'x');
    }
}

// The formulas of docs/emulated-camera.md.
void tst_videoPalette::palettesFollowTheirFormulas()
{
    struct Color {
        double red;
        double green;
        double blue;
    };
    const auto cut = [](double share) { return std::clamp(share, 0.0, 1.0); };
    const auto rainbow = [cut](double t) {
        const double sixths = 4 * (1 - t);
        return Color{cut(std::abs(sixths - 3) - 1), cut(2 - std::abs(sixths - 2)), cut(2 - std::abs(sixths - 4))};
    };
    const double pi = std::acos(-1.0);
    const std::map<QString, std::function<Color(double)>> formulas{
        {"Contour",
         [&](double t) {
             const int level = static_cast<int>(std::lround(t * 255));
             return level % 16 == 0 ? Color{} : rainbow(level / 16 / 15.0);
         }},
        {"Fire",
         [&](double t) {
             return Color{cut(3 * t), cut(3 * t - 1), cut(3 * t - 2)};
         }},
        {"Grayscale",
         [](double t) {
             return Color{t, t, t};
         }},
        {"Green",
         [](double t) {
             return Color{0.4 * t * t, t, 0.4 * t * t};
         }},
        {"Ice",
         [&](double t) {
             return Color{cut(3 * t - 2), cut(3 * t - 1), cut(3 * t)};
         }},
        {"Iron",
         [&](double t) {
             return Color{std::sqrt(t), t * t * t, std::max(t < 0.5 ? std::sin(2 * pi * t) : 0.0, cut(5 * t - 4))};
         }},
        {"Rainbow", rainbow},
        {"Sepia",
         [](double t) {
             return Color{std::pow(t, 0.7), t, std::pow(t, 1.5)};
         }},
    };
    LensRig rig;
    QCOMPARE(qsizetype(formulas.size()), listed(rig).size());
    for (const auto &[palette, formula] : formulas) {
        QCOMPARE(zvtLoadPalette(rig.handle(), qPrintable(palette)), 0);
        const Palette colors = tst_videoPalette::palette(rig);
        for (size_t level = 0; level < colors.size(); ++level) {
            const Color color = formula(double(level) / 255);
            const auto isNear = [](uint8_t byte, double share) { return std::abs(byte - 255 * share) <= 0.5 + 1e-9; };
            QVERIFY2(isNear(colors[level].red, color.red) && isNear(colors[level].green, color.green)
                         && isNear(colors[level].blue, color.blue),
                     qPrintable(QString("%1, level %2").arg(palette).arg(level)));
        }
    }
}

void tst_videoPalette::greyPalettesGetBrighter()
{
    LensRig rig;
    for (const char *name : {"Grayscale", "Fire", "Ice", "Sepia", "Green"}) {
        QCOMPARE(zvtLoadPalette(rig.handle(), name), 0);
        const Palette colors = palette(rig);
        const auto brightness = [](Rgb color) { return color.red + color.green + color.blue; };
        for (size_t level = 1; level < colors.size(); ++level)
            QVERIFY2(brightness(colors[level]) > brightness(colors[level - 1]), name);
    }
}

void tst_videoPalette::snapshotsAndOtherClientsHaveIt()
{
    LensRig rig;
    QVERIFY(rig.set("palette.name", "Rainbow"));
    QVERIFY(!rig.set("palette.name", "Unknown"));
    QCOMPARE(name(rig), QStringLiteral("Rainbow"));
    const QJsonObject snapshot = rig.camera().snapshot();
    const Palette rainbow = palette(rig);
    QCOMPARE(zvtLoadPalette(rig.handle(), "Ice"), 0);
    QVERIFY(palette(rig) != rainbow);
    rig.camera().restore(snapshot);
    QCOMPARE(name(rig), QStringLiteral("Rainbow"));
    QVERIFY(palette(rig) == rainbow);
}

void tst_videoPalette::aPaletteIsReadOnce()
{
    LensRig rig;
    LensRig other;
    const auto colors = [](LensRig &camera) {
        const std::lock_guard lock(camera.camera().mutex());
        return &camera.camera().device<emulator::VideoPalette>()->palette();
    };
    const Palette *const grey = colors(rig);
    QCOMPARE(colors(other), grey);
    QCOMPARE(zvtLoadPalette(rig.handle(), "Iron"), 0);
    QVERIFY(colors(rig) != grey);
    QCOMPARE(zvtLoadPalette(rig.handle(), "Grayscale"), 0);
    QCOMPARE(colors(rig), grey);
}

ZVT_TEST(tst_videoPalette)
#include "tst_videoPalette.moc"
