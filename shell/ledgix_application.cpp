#include "ledgix_application.h"

#include <QScopedValueRollback>

#include "appearance.h"
#include "application_icon.h"
#include "program_version.h"

namespace ledgix::shell {

LedgixApplication::LedgixApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setOrganizationName("Vantreo");
    setApplicationName("Ledgix");
    // No display name: it would be added to the title of every window and message box.
    setApplicationVersion(
        QString("%1.%2.%3").arg(kProgramVersion.major).arg(kProgramVersion.minor).arg(kProgramVersion.revision));
    setDesktopFileName("ledgix");
    setWindowIcon(ApplicationIcon());
    ApplyAppearance(*this);
    runtime::InstallMessageBox(&message_box_);
}

LedgixApplication::~LedgixApplication() {
    runtime::InstallMessageBox(nullptr);
}

bool LedgixApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        // The text of our own errors has their number in front.
        ShowTrapped(error.what());
    }
    return false;
}

void LedgixApplication::ShowTrapped(std::string_view text) {
    if (showing_)
        return;
    const QScopedValueRollback<bool> showing(showing_, true);
    runtime::MsgBox(text);
}

}  // namespace ledgix::shell
