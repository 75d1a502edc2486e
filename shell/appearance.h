#pragma once

#include <QPalette>

#include "appearance_choice.h"

class QApplication;

// How the program's windows look.
namespace ledgix::shell {

// What this system says of light and dark: the environment variables LEDGIX_APPEARANCE and GTK_THEME, the user's
// gtk-3.0/settings.ini, and `platform`, the palette that the program began with.
AppearanceSurroundings SystemSurroundings(const QPalette& platform);

// Our own colours, complete for windows in use, not in use and disabled.
QPalette PaletteOf(Tone tone);

// Gives the program its style and colours; nothing where the platform's own style has its own colours.
void ApplyAppearance(QApplication& application);

}  // namespace ledgix::shell
