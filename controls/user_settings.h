#pragma once

#include <QSettings>

namespace ledgix::controls {

// What the program keeps for its user, such as the places of windows; nothing of the household.
inline QSettings UserSettings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, "Vantreo", "Ledgix");
}

}  // namespace ledgix::controls
