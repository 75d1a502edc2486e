#include <QApplication>
#include <QStyle>
#include <QTest>
#include <cmath>

#include "appearance.h"
#include "application_icon.h"
#include "ledgix_style.h"
#include "scoped_environment.h"
#include "temporary_folder.h"

using namespace ledgix::shell;
using ledgix::test::ScopedEnvironment;
using ledgix::test::TemporaryFolder;

Q_DECLARE_METATYPE(Tone)

namespace {

double Linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

// From 1, no difference, to 21, black on white.
double Contrast(const QColor& a, const QColor& b) {
    const double bright = std::max(Luminance(a), Luminance(b));
    const double dim = std::min(Luminance(a), Luminance(b));
    return (bright + 0.05) / (dim + 0.05);
}

struct Pair {
    const char* name;
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

constexpr Pair kPairs[] = {
    {"text on a window", QPalette::WindowText, QPalette::Window},
    {"text in a field", QPalette::Text, QPalette::Base},
    {"text in every second row", QPalette::Text, QPalette::AlternateBase},
    {"text on a button", QPalette::ButtonText, QPalette::Button},
    {"selected text", QPalette::HighlightedText, QPalette::Highlight},
    {"tool tip", QPalette::ToolTipText, QPalette::ToolTipBase},
    {"placeholder", QPalette::PlaceholderText, QPalette::Base},
    {"link", QPalette::Link, QPalette::Window},
    {"link in a text", QPalette::Link, QPalette::Base},
    {"visited link", QPalette::LinkVisited, QPalette::Base},
};

void AddTones() {
    QTest::addColumn<Tone>("tone");
    QTest::newRow("light") << Tone::kLight;
    QTest::newRow("dark") << Tone::kDark;
}

}  // namespace

class tst_Appearance : public QObject {
    Q_OBJECT

private slots:
    void textsAreReadable_data() { AddTones(); }
    void textsAreReadable();
    void disabledTextsAreFainterAndStillLegible_data() { AddTones(); }
    void disabledTextsAreFainterAndStillLegible();
    void aDarkWindowIsDark();
    void asksTheEnvironmentAndTheDesktop();
    void givesTheProgramItsColours();
    void messageBoxesHavePicturesAtEveryScale();
    void theIconIsSharpAtEverySize_data();
    void theIconIsSharpAtEverySize();
    void theIconKeepsItsBarsApartAtEverySize_data();
    void theIconKeepsItsBarsApartAtEverySize();
};

void tst_Appearance::textsAreReadable() {
    QFETCH(Tone, tone);
    const QPalette palette = PaletteOf(tone);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        for (const Pair& pair : kPairs) {
            const double contrast = Contrast(palette.color(group, pair.text), palette.color(group, pair.ground));
            QVERIFY2(contrast >= 4.5, qPrintable(QString("%1: %2").arg(pair.name).arg(contrast)));
        }
}

void tst_Appearance::disabledTextsAreFainterAndStillLegible() {
    QFETCH(Tone, tone);
    const QPalette palette = PaletteOf(tone);
    for (const Pair& pair : kPairs) {
        if (pair.text == QPalette::ToolTipText || pair.text == QPalette::LinkVisited)
            continue;
        const QColor disabled = palette.color(QPalette::Disabled, pair.text);
        const double contrast = Contrast(disabled, palette.color(QPalette::Disabled, pair.ground));
        QVERIFY2(contrast >= 3, qPrintable(QString("%1: %2").arg(pair.name).arg(contrast)));
        QVERIFY2(disabled != palette.color(QPalette::Active, pair.text), pair.name);
    }
}

void tst_Appearance::aDarkWindowIsDark() {
    QVERIFY(PaletteOf(Tone::kDark).color(QPalette::Window).lightnessF() < 0.25);
    QVERIFY(PaletteOf(Tone::kLight).color(QPalette::Window).lightnessF() > 0.9);
}

void tst_Appearance::asksTheEnvironmentAndTheDesktop() {
    const TemporaryFolder folder;
    folder.MakeFolder("gtk-3.0");
    folder.Write("gtk-3.0/settings.ini", "[Settings]\n");
    const ScopedEnvironment settings("XDG_CONFIG_HOME", folder.path());
    const ScopedEnvironment choice("LEDGIX_APPEARANCE", "dark");
    const ScopedEnvironment theme("GTK_THEME", "Yaru");
    const AppearanceSurroundings seen = SystemSurroundings(QPalette(Qt::white));
    QCOMPARE(seen.chosen, "dark");
    QCOMPARE(seen.gtk_theme, "Yaru");
    QCOMPARE(seen.gtk_settings, "[Settings]\n");
    QVERIFY(seen.platform_lightness > 0.9);
    QVERIFY(SystemSurroundings(QPalette(Qt::black)).platform_lightness < 0.1);
}

void tst_Appearance::givesTheProgramItsColours() {
    const ScopedEnvironment choice("LEDGIX_APPEARANCE", "dark");
    ApplyAppearance(*qApp);
    QCOMPARE(QApplication::palette().color(QPalette::Window), PaletteOf(Tone::kDark).color(QPalette::Window));
    QVERIFY(QApplication::style()->inherits("ledgix::shell::LedgixStyle"));
}

void tst_Appearance::messageBoxesHavePicturesAtEveryScale() {
    const LedgixStyle style;
    for (const QStyle::StandardPixmap kind : {QStyle::SP_MessageBoxQuestion, QStyle::SP_MessageBoxWarning})
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QImage picture = style.standardIcon(kind, nullptr, nullptr).pixmap(QSize(32, 32), scale).toImage();
            QCOMPARE(picture.size(), (QSizeF(32, 32) * scale).toSize());
            const QPoint foot(picture.width() / 2, picture.height() * 8 / 10);
            QCOMPARE(qAlpha(picture.pixel(foot)), 255);
            QCOMPARE(qAlpha(picture.pixel(0, 0)), 0);
        }
}

void tst_Appearance::theIconIsSharpAtEverySize_data() {
    QTest::addColumn<int>("edge");
    for (const QSize& size : ApplicationIcon().availableSizes())
        QTest::addRow("%d", size.width()) << size.width();
}

void tst_Appearance::theIconIsSharpAtEverySize() {
    QFETCH(int, edge);
    const QImage picture = ApplicationIcon().pixmap(QSize(edge, edge), 1.0).toImage();
    QCOMPARE(picture.size(), QSize(edge, edge));
    // The sides of the wall lie on whole pixels: there are no half-seen ones along a row of it.
    const int row = edge * 7 / 10;
    int solid = 0;
    for (int x = 0; x < edge; ++x) {
        const int alpha = qAlpha(picture.pixel(x, row));
        QVERIFY2(alpha == 0 || alpha == 255, qPrintable(QString("%1: %2").arg(x).arg(alpha)));
        solid += alpha == 255 ? 1 : 0;
    }
    QVERIFY(solid > edge / 2);
    QCOMPARE(qAlpha(picture.pixel(0, 0)), 0);
}

void tst_Appearance::theIconKeepsItsBarsApartAtEverySize_data() {
    theIconIsSharpAtEverySize_data();
}

void tst_Appearance::theIconKeepsItsBarsApartAtEverySize() {
    QFETCH(int, edge);
    const QImage picture = ApplicationIcon().pixmap(QSize(edge, edge), 1.0).toImage();
    const int row = edge * 82 / 100;
    const QRgb wall = picture.pixel(edge * 3 / 20, row);
    int bars = 0;
    bool in_bar = false;
    for (int x = edge * 3 / 20; x < edge * 17 / 20; ++x) {
        const bool bar = picture.pixel(x, row) != wall;
        bars += bar && !in_bar ? 1 : 0;
        in_bar = bar;
    }
    QCOMPARE(bars, 3);
}

QTEST_MAIN(tst_Appearance)
#include "tst_appearance.moc"
