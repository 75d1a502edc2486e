#pragma once

#include <string>

namespace ledgix::shell {

enum class Tone { kLight, kDark };

// What tells whether the user likes windows light or dark; empty where nothing is said.
struct AppearanceSurroundings {
    std::string chosen;             // "light" or "dark"; anything else says nothing
    std::string gtk_theme;          // name of the desktop's theme; one that ends in "dark" is dark
    std::string gtk_settings;       // content of the desktop's settings.ini
    double platform_lightness = 1;  // of the platform's own window colour, 0 black to 1 white
};

// The first of them that says something, in their order. Letters of either case.
Tone ChooseTone(const AppearanceSurroundings& surroundings);

}  // namespace ledgix::shell
