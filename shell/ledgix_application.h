#pragma once

#include <QApplication>

#include "desktop_message_box.h"

namespace ledgix::shell {

// The program as Qt knows it: its name, icon and look, and message boxes as windows, all as long as the object lives.
//
// An error that leaves the handler of an event is shown under the program's title, and the program goes on. One that
// comes while such a box is open is not shown: a window that fails whenever it is painted would fill the screen.
class LedgixApplication : public QApplication {
    Q_OBJECT

public:
    LedgixApplication(int& argc, char** argv);
    ~LedgixApplication() override;

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void ShowTrapped(std::string_view text);

    DesktopMessageBox message_box_;
    bool showing_ = false;
};

}  // namespace ledgix::shell
