#include "appearance_choice.h"

#include <sstream>
#include <string_view>

#include "text.h"

namespace ledgix::shell {

namespace {

constexpr double kMiddleLightness = 0.5;

std::string WithoutBlanks(std::string_view text) {
    std::string kept;
    for (const char c : text)
        if (c != ' ' && c != '\t' && c != '\r')
            kept += c;
    return kept;
}

bool PrefersDark(const std::string& settings) {
    std::istringstream lines(settings);
    std::string line;
    bool prefers = false;
    while (std::getline(lines, line)) {
        const std::string setting = runtime::FoldCase(WithoutBlanks(line));
        const std::string_view name = "gtk-application-prefer-dark-theme=";
        if (setting.starts_with(name)) {
            const std::string value = setting.substr(name.size());
            prefers = value == "1" || value == "true";
        }
    }
    return prefers;
}

}  // namespace

Tone ChooseTone(const AppearanceSurroundings& surroundings) {
    const std::string chosen = runtime::FoldCase(surroundings.chosen);
    if (chosen == "light")
        return Tone::kLight;
    if (chosen == "dark" || runtime::FoldCase(surroundings.gtk_theme).ends_with("dark") ||
        PrefersDark(surroundings.gtk_settings))
        return Tone::kDark;
    return surroundings.platform_lightness < kMiddleLightness ? Tone::kDark : Tone::kLight;
}

}  // namespace ledgix::shell
