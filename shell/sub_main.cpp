#include "sub_main.h"

#include <QEventLoop>
#include <QTimer>
#include <memory>

#include "clock.h"
#include "cls_profiles.h"
#include "database.h"
#include "form_windows.h"
#include "frm_main.h"
#include "frm_splash.h"
#include "help_key.h"
#include "message_box.h"
#include "preview.h"
#include "report_windows.h"
#include "splash_wait.h"

namespace ledgix::shell {

namespace {

constexpr const char* kLabel = "Sub Main";
constexpr int kPauseMilliseconds = 15;

// What lives from the start to the end of the program.
class Program {
public:
    Program() {
        model::InstallRecordWindows(&forms_);
        zq::InstallPreview(&reports_);
    }
    ~Program() {
        if (model::gProfiles)
            for (std::size_t i = 1; i <= model::gProfiles->Count(); ++i)
                model::gProfiles->Item(i).CloseForm();
        model::gProfiles.reset();
        zq::InstallPreview(nullptr);
        model::InstallRecordWindows(nullptr);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    frmMain& main_window() { return main_window_; }

private:
    frmMain main_window_;
    editors::FormWindows forms_{main_window_};
    preview::ReportWindows reports_;
    HelpKey help_key_{main_window_};
};

std::unique_ptr<Program> program;

void ProcessEvents(const frmSplash& splash) {
    QEventLoop pause;
    QTimer::singleShot(kPauseMilliseconds, &pause, &QEventLoop::quit);
    QObject::connect(&splash, &frmSplash::Dismissed, &pause, &QEventLoop::quit);
    pause.exec();
}

double Clock() {
    return runtime::SystemTime().SecondsSinceMidnight();
}

void ShowAndWait(frmSplash& splash) {
    splash.show();
    splash.activateWindow();
    const SplashWait wait(Clock());
    while (!splash.dismissed() && !wait.IsOver(Clock()))
        ProcessEvents(splash);
}

void Start(const std::string& command_line) {
    std::unique_ptr<frmSplash> splash;
    if (command_line.empty()) {
        splash = std::make_unique<frmSplash>();
        ShowAndWait(*splash);
    }
    program = std::make_unique<Program>();
    program->main_window().MDIForm_Load();
    model::gProfiles = std::make_unique<model::clsProfiles>();
    model::gProfiles->Load();
    splash.reset();
    program->main_window().show();
    program->main_window().activateWindow();
}

}  // namespace

bool SubMain(const std::string& command_line) {
    try {
        Start(command_line);
        return true;
    } catch (const std::exception& error) {
        runtime::MsgBox(error.what(), runtime::kOkOnly, kLabel);
    }
    EndProgram();
    return false;
}

void EndProgram() {
    program.reset();
    store::gDatabase.reset();
}

}  // namespace ledgix::shell
