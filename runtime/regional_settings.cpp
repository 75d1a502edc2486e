#include "regional_settings.h"

#include <optional>

namespace ledgix::runtime {

namespace {

std::optional<RegionalSettings>& Installed() {
    static std::optional<RegionalSettings> settings;
    return settings;
}

}  // namespace

const RegionalSettings& UnitedStates() {
    static const RegionalSettings settings{
        "$",
        true,
        false,
        RegionalSettings::Minus::kBeforeAll,
        ".",
        ",",
        {3},
        "m/d/yyyy",
        {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
        Paper::kLetter};
    return settings;
}

const RegionalSettings& Region() {
    if (!Installed())
        Installed() = ReadUserSettings();
    return *Installed();
}

void InstallRegion(const RegionalSettings& settings) {
    Installed() = settings;
}

}  // namespace ledgix::runtime
