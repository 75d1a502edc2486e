#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "cls_profiles.h"
#include "database.h"
#include "form_windows.h"
#include "frm_preview.h"
#include "frm_property.h"
#include "ledgix_application.h"
#include "page_view.h"
#include "report_windows.h"

// From the click on a report's button in the property editor to the shown preview.
namespace {

using namespace ledgix;
using Clock = std::chrono::steady_clock;

constexpr int kWarmUpRounds = 5;
constexpr int kRounds = 100;
constexpr double kFrame = 1000.0 / 60;  // milliseconds, at 60 Hz

// Notes when the first picture of a preview is complete: its pages are drawn, and the event that had them drawn is
// through, which hands the picture to the screen.
class WatchedApplication : public shell::LedgixApplication {
public:
    using LedgixApplication::LedgixApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const bool is_page = event->type() == QEvent::Paint && qobject_cast<preview::PageView*>(receiver->parent());
        ++depth_;
        const bool result = LedgixApplication::notify(receiver, event);
        --depth_;
        drawn_ = drawn_ || is_page;
        if (drawn_ && !shown_ && depth_ == 0) {
            shown_ = true;
            shown_at_ = Clock::now();
        }
        return result;
    }

    void Forget() { drawn_ = shown_ = false; }
    bool shown() const { return shown_; }
    Clock::time_point shown_at() const { return shown_at_; }

private:
    int depth_ = 0;
    bool drawn_ = false;
    bool shown_ = false;
    Clock::time_point shown_at_;
};

// The property editor needs nothing of the main window here.
class NoDesktop : public editors::Desktop {
public:
    void AddDocument(QWidget&) override {}
    void RaiseDocument(QWidget&) override {}
    void ReloadProfileList() override {}
    void ShowHelpTopic(int) override {}
    QWidget* Owner() override { return nullptr; }
};

void Click(QPushButton& button) {
    const QPointF place = button.rect().center();
    const QPointF on_screen = button.mapToGlobal(place);
    QMouseEvent press(QEvent::MouseButtonPress, place, on_screen, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, place, on_screen, Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(&button, &press);
    QApplication::sendEvent(&button, &release);
}

void ClosePreviews() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<preview::frmPreview*>(widget))
            window->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

double Measure(WatchedApplication& application, QPushButton& button) {
    application.Forget();
    const Clock::time_point start = Clock::now();
    Click(button);
    while (!application.shown())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double taken = std::chrono::duration<double, std::milli>(application.shown_at() - start).count();
    ClosePreviews();
    return taken;
}

void Print(const char* what, double milliseconds) {
    std::printf("  %-18s %7.2f ms   %4.0f %% of a frame\n", what, milliseconds, 100 * milliseconds / kFrame);
}

void Run(WatchedApplication& application, QPushButton& button) {
    for (int round = 0; round < kWarmUpRounds; ++round)
        Measure(application, button);
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round)
        times.push_back(Measure(application, button));
    std::sort(times.begin(), times.end());
    std::printf("%s, from the click to the shown preview (%s)\n", qPrintable(button.text()),
                qPrintable(QApplication::platformName()));
    Print("fastest", times.front());
    Print("median", times[kRounds / 2]);
    Print("95th percentile", times[kRounds * 95 / 100]);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The offscreen platform tells of each window what it does not support.
    QLoggingCategory::setFilterRules("default.warning=false");
    WatchedApplication application(argc, argv);
    store::OpenDatabaseFile(LEDGIX_HOUSEHOLD);
    NoDesktop desktop;
    editors::FormWindows forms(desktop);
    preview::ReportWindows reports;
    model::InstallRecordWindows(&forms);
    zq::InstallPreview(&reports);
    model::gProfiles = std::make_unique<model::clsProfiles>();
    model::gProfiles->Load();
    model::clsProfile& profile = model::gProfiles->Item(1);
    profile.ReloadProfile();
    {
        editors::frmProperty editor(profile.Property(1), desktop, nullptr);
        editor.show();
        QApplication::processEvents();
        Run(application, *editor.cmdAnalyse);
        Run(application, *editor.cmd10Year);
    }
    model::gProfiles.reset();
    zq::InstallPreview(nullptr);
    model::InstallRecordWindows(nullptr);
    store::gDatabase.reset();
    return 0;
}
