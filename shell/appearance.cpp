#include "appearance.h"

#include <QApplication>
#include <QStandardPaths>

#include "files.h"
#include "ledgix_style.h"
#include "runtime_error.h"

namespace ledgix::shell {

namespace {

// A role's colours in light and in dark windows, 0xRRGGBB; and those of disabled things where they differ.
struct RoleColours {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
    QRgb disabled_light;
    QRgb disabled_dark;
};

constexpr RoleColours Same(QPalette::ColorRole role, QRgb light, QRgb dark) {
    return {role, light, dark, light, dark};
}

constexpr QRgb kFaintLight = 0x6F7A87;
constexpr QRgb kFaintDark = 0x87919D;

constexpr RoleColours kColours[] = {
    Same(QPalette::Window, 0xF3F5F8, 0x20262E),
    Same(QPalette::Base, 0xFFFFFF, 0x171C22),
    Same(QPalette::AlternateBase, 0xEFF3F8, 0x1D232A),
    Same(QPalette::Button, 0xEBEFF4, 0x2F3843),
    Same(QPalette::Light, 0xFFFFFF, 0x4A5563),
    Same(QPalette::Midlight, 0xF7F9FB, 0x3A4450),
    Same(QPalette::Mid, 0xB9C2CC, 0x2A323B),
    Same(QPalette::Dark, 0x98A3AF, 0x12161B),
    Same(QPalette::Shadow, 0x5D6874, 0x0A0D10),
    Same(QPalette::BrightText, 0xFFFFFF, 0xFFFFFF),
    Same(QPalette::ToolTipBase, 0xFFFFFF, 0x2F3843),
    Same(QPalette::ToolTipText, 0x1B2430, 0xE8ECF1),
    Same(QPalette::LinkVisited, 0x6B4796, 0xC3A6EC),
    {QPalette::WindowText, 0x1B2430, 0xE8ECF1, kFaintLight, kFaintDark},
    {QPalette::Text, 0x1B2430, 0xE8ECF1, kFaintLight, kFaintDark},
    {QPalette::ButtonText, 0x1B2430, 0xE8ECF1, kFaintLight, kFaintDark},
    {QPalette::PlaceholderText, 0x5C6875, 0x9BA6B3, kFaintLight, kFaintDark},
    {QPalette::Link, 0x1A5FA0, 0x84BCF2, kFaintLight, kFaintDark},
    {QPalette::Highlight, 0x1F6AAE, 0x2A70B2, 0xC3CDD8, 0x3E4955},
    {QPalette::HighlightedText, 0xFFFFFF, 0xFFFFFF, 0x4A5560, 0xC2CAD3},
};

QString Variable(const char* name) {
    return QString::fromLocal8Bit(qgetenv(name));
}

std::string GtkSettings() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    try {
        return runtime::ReadFile((folder + "/gtk-3.0/settings.ini").toStdString());
    } catch (const runtime::RuntimeError&) {
        return {};
    }
}

}  // namespace

AppearanceSurroundings SystemSurroundings(const QPalette& platform) {
    return {Variable("LEDGIX_APPEARANCE").toStdString(), Variable("GTK_THEME").toStdString(), GtkSettings(),
            platform.color(QPalette::Window).lightnessF()};
}

QPalette PaletteOf(Tone tone) {
    const bool dark = tone == Tone::kDark;
    QPalette palette;
    for (const RoleColours& colours : kColours) {
        const QColor colour(dark ? colours.dark : colours.light);
        palette.setColor(QPalette::Active, colours.role, colour);
        palette.setColor(QPalette::Inactive, colours.role, colour);
        palette.setColor(QPalette::Disabled, colours.role,
                         QColor(dark ? colours.disabled_dark : colours.disabled_light));
    }
    return palette;
}

void ApplyAppearance([[maybe_unused]] QApplication& application) {
#if !defined(Q_OS_WIN) && !defined(Q_OS_MACOS)
    const Tone tone = ChooseTone(SystemSurroundings(application.palette()));
    QApplication::setStyle(new LedgixStyle);
    QApplication::setPalette(PaletteOf(tone));
#endif
}

}  // namespace ledgix::shell
