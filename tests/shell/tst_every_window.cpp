#include <QMessageBox>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "application_files.h"
#include "cls_profiles.h"
#include "frm_about.h"
#include "frm_calc.h"
#include "frm_main.h"
#include "frm_property.h"
#include "frm_splash.h"
#include "frm_tax_rates.h"
#include "help_window.h"
#include "household_file.h"
#include "ledgix_application.h"
#include "sub_main.h"
#include "window_walk.h"
#include "zq_tab_dialog.h"

using namespace ledgix;
using namespace ledgix::test;

namespace {

shell::frmMain* MainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* main = qobject_cast<shell::frmMain*>(window))
            return main;
    return nullptr;
}

QWidget* WindowNamed(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == name && window->isVisible())
            return window;
    return nullptr;
}

constexpr QSize kSmallestScreenAtScale2(683, 384);

using Walk = std::function<void(QWidget&)>;

}  // namespace

// Every window of the program can be used without a mouse and without eyes, and shows all of its texts: at every scale
// that the environment sets, and with texts 30 % longer.
class tst_EveryWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void isUsableByEveryone_data();
    void isUsableByEveryone();
    void hasRoomForLongerTexts_data() { isUsableByEveryone_data(); }
    void hasRoomForLongerTexts();

private:
    // Shows the window of this name, has it walked, and puts it away.
    void Show(const QString& name, const Walk& walk);
    void ShowProfilePage(int page, const Walk& walk);
    void ShowMessage(const Walk& walk);
    void ShowChart(model::clsProfile& profile);

    QTemporaryDir places_;
    HouseholdFile file_{SampleContent("household-2000.mdb")};
};

void tst_EveryWindow::initTestCase() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places_.path());
    AddApplicationFiles(file_.folder().path());
    file_.Close();
}

void tst_EveryWindow::cleanup() {
    shell::EndProgram();
}

void tst_EveryWindow::isUsableByEveryone_data() {
    QTest::addColumn<bool>("captions_fields");  // its labels belong to fields
    for (const char* form : {"main window", "income page", "expenses page", "assets page", "liabilities page",
                             "purchases page", "property", "tax rates", "calculator", "preview", "chart", "help"})
        QTest::newRow(form) << true;
    for (const char* picture : {"splash", "about", "message"})
        QTest::newRow(picture) << false;
}

void tst_EveryWindow::ShowProfilePage(int page, const Walk& walk) {
    model::gProfiles->Item(1).Display();
    auto* pages = MainWindow()->findChild<controls::zqTabDialog*>("zqTabDialog1");
    QVERIFY(pages);
    pages->setCurrentTab(page);
    QTest::qWait(10);
    walk(*MainWindow());
}

void tst_EveryWindow::ShowMessage(const Walk& walk) {
    QTimer::singleShot(0, this, [&] {
        QWidget* box = QApplication::activeModalWidget();
        QVERIFY(box);
        walk(*box);
        box->close();
    });
    runtime::MsgBox("Delete profile 'Hannah & Tom'?", runtime::kYesNo + runtime::kQuestion);
}

void tst_EveryWindow::ShowChart(model::clsProfile& profile) {
    profile.LoadProperties();
    profile.Property(1).Year10Analysis(profile);
    QWidget* preview = WindowNamed("frmPreview");
    QVERIFY(preview);
    auto* pages = preview->findChild<QTabWidget*>();
    QVERIFY(pages);
    pages->setCurrentIndex(1);
}

void tst_EveryWindow::Show(const QString& name, const Walk& walk) {
    QVERIFY(shell::SubMain("started by a test"));
    model::clsProfile& profile = model::gProfiles->Item(1);
    const auto show = [&](QWidget& window) {
        window.show();
        // The screen of these tests is smaller than any in use.
        if (window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint))
            window.resize(window.size().expandedTo(kSmallestScreenAtScale2));
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        walk(window);
        window.close();
    };
    const QStringList pages{"income page", "expenses page", "assets page", "liabilities page", "purchases page"};
    if (pages.contains(name))
        return ShowProfilePage(int(pages.indexOf(name)) + 1, walk);
    if (name == "main window")
        return walk(*MainWindow());
    if (name == "message")
        return ShowMessage(walk);
    if (name == "calculator")
        return show(controls::frmCalc::Instance());
    if (name == "property") {
        profile.LoadProperties();
        editors::frmProperty form(profile.Property(1), *MainWindow(), nullptr);
        return show(form);
    }
    if (name == "tax rates") {
        editors::frmTaxRates form;
        return show(form);
    }
    if (name == "about") {
        shell::frmAbout form;
        return show(form);
    }
    if (name == "splash") {
        shell::frmSplash form;
        return show(form);
    }
    if (name == "help")
        shell::OpenHelp(1, MainWindow());
    else if (name == "preview")
        profile.Analyse();
    else
        ShowChart(profile);
    QWidget* window = WindowNamed(name == "help" ? "HelpWindow" : "frmPreview");
    QVERIFY(window);
    show(*window);
}

void tst_EveryWindow::isUsableByEveryone() {
    QFETCH(const bool, captions_fields);
    bool walked = false;
    Show(QTest::currentDataTag(), [&](QWidget& window) {
        walked = true;
        QCOMPARE(ControlsWithoutNames(window).join(" / "), QString());
        QCOMPARE(SharedMnemonics(window).join(" / "), QString());
        QCOMPARE(ControlsBeyondTheTabKey(window).join(" / "), QString());
        QCOMPARE(CutOffTexts(window).join(" / "), QString());
        if (captions_fields)
            QCOMPARE(LabelsWithoutBuddies(window).join(" / "), QString());
    });
    QVERIFY(walked);
}

void tst_EveryWindow::hasRoomForLongerTexts() {
    bool walked = false;
    Show(QTest::currentDataTag(), [&](QWidget& window) {
        walked = true;
        LengthenTexts(window);
        QCOMPARE(CutOffTexts(window).join(" / "), QString());
    });
    QVERIFY(walked);
}

int main(int argc, char** argv) {
    shell::LedgixApplication application(argc, argv);
    tst_EveryWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_every_window.moc"
