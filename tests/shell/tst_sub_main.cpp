#include <QApplication>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <new>

#include "clock.h"
#include "cls_profiles.h"
#include "database.h"
#include "error_of.h"
#include "frm_main.h"
#include "frm_splash.h"
#include "household_file.h"
#include "message_recorder.h"
#include "preview.h"
#include "record_windows.h"
#include "registry.h"
#include "sub_main.h"

using namespace ledgix;
using namespace ledgix::test;
using namespace ledgix::shell;

namespace {

constexpr runtime::CivilTime kDay{2026, 11, 20, 0, 0, 0};

template <class Window>
Window* TheWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* found = qobject_cast<Window*>(window))
            return found;
    return nullptr;
}

template <class Window>
bool IsShown() {
    const Window* window = TheWindow<Window>();
    return window && window->isVisible();
}

bool AnyWindowIsShown() {
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            return true;
    return false;
}

// Goes on by a step whenever it is read, and keeps what it told.
class SteppingClock : public runtime::Clock {
public:
    SteppingClock(double start, double step) : next_(start), step_(step) { runtime::InstallClock(this); }
    ~SteppingClock() override { runtime::InstallClock(nullptr); }

    std::vector<double> told;
    bool splash_always_shown = true;

    runtime::CivilTime Now() override { return kDay; }
    double SecondsSinceMidnight() override {
        splash_always_shown = splash_always_shown && IsShown<frmSplash>();
        told.push_back(next_);
        next_ += step_;
        return told.back();
    }

private:
    double next_;
    double step_;
};

class FailingClock : public runtime::Clock {
public:
    explicit FailingClock(std::function<void()> fail) : fail_(std::move(fail)) { runtime::InstallClock(this); }
    ~FailingClock() override { runtime::InstallClock(nullptr); }

    runtime::CivilTime Now() override { return kDay; }
    double SecondsSinceMidnight() override {
        fail_();
        return 0;
    }

private:
    std::function<void()> fail_;
};

// Records boxes; the first ones fail to come up. Notes which windows are shown meanwhile.
class FailingBox : public runtime::MessageBox {
public:
    explicit FailingBox(int failures) : failures_(failures) { runtime::InstallMessageBox(this); }
    ~FailingBox() override { runtime::InstallMessageBox(nullptr); }

    QStringList titles;
    bool splash_always_shown = true;
    bool main_window_shown = false;

    runtime::MessageAnswer Show(std::string_view, int, std::string_view title) override {
        splash_always_shown = splash_always_shown && IsShown<frmSplash>();
        main_window_shown = main_window_shown || IsShown<frmMain>();
        if (failures_-- > 0)
            runtime::RaiseError(runtime::ErrorNumber::kDeviceIo);
        titles << QString::fromStdString(std::string(title));
        return runtime::MessageAnswer::kOk;
    }

private:
    int failures_;
};

// An application folder of its own, and settings that nobody has made yet.
class Surroundings {
public:
    const TemporaryFolder folder;

private:
    ScopedEnvironment application_{"LEDGIX_FOLDER", folder.path()};
    ScopedEnvironment settings_{"LEDGIX_SETTINGS", folder.File("settings.reg")};
    DiagnosisRecorder diagnoses_;
};

void Set(const std::string& name, std::string value) {
    services::SaveRegistrySetting("Settings", name, value);
}

}  // namespace

class tst_SubMain : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places_.path()); }
    void cleanup();

    void waitsWithTheSplashForAnEmptyCommandLine();
    void waitsOnOverMidnight();
    void anyArgumentSkipsSplashAndWait_data();
    void anyArgumentSkipsSplashAndWait();
    void aClickOrAKeyEndsTheWait_data();
    void aClickOrAKeyEndsTheWait();
    void loadsTheProfiles();
    void theSplashStaysUntilEverythingIsLoaded();
    void aMissingDatabaseIsReportedInOrder();
    void anErrorInMDIFormLoadSkipsItsRestOnly();
    void anErrorEndsTheProgram();
    void anyOtherErrorEndsTheProgramToo();
    void anErrorBehindTheMainWindowLeavesNoWindow();
    void startsAndEndsAgainAndAgain();
    void endingTakesOpenEditorsAlong();
    void endingWithoutAStartDoesNothing();

private:
    QTemporaryDir places_;  // of windows
    Surroundings surroundings_;
};

void tst_SubMain::cleanup() {
    EndProgram();
    QVERIFY(!AnyWindowIsShown());
    QVERIFY(!TheWindow<frmMain>());
    QVERIFY(!TheWindow<frmSplash>());
    QFile::remove(QString::fromStdString(surroundings_.folder.File("settings.reg")));
    QFile::remove(QString::fromStdString(surroundings_.folder.File("property.mdb")));
}

void tst_SubMain::waitsWithTheSplashForAnEmptyCommandLine() {
    const MessageRecorder messages;
    SteppingClock clock(100.4, 0.25);
    QVERIFY(SubMain(""));
    QCOMPARE(clock.told, std::vector<double>({100.4, 100.65, 100.9, 101.15, 101.4, 101.65}));
    QVERIFY(clock.splash_always_shown);
    QVERIFY(!TheWindow<frmSplash>());
    QVERIFY(IsShown<frmMain>());
}

void tst_SubMain::waitsOnOverMidnight() {
    const MessageRecorder messages;
    class Midnight : public SteppingClock {
    public:
        Midnight() : SteppingClock(86399.2, 0.3) {}
        double SecondsSinceMidnight() override {
            const double clock = SteppingClock::SecondsSinceMidnight();
            return told.size() > 40 ? 86400.5 : clock >= 86400 ? clock - 86400 : clock;
        }
    } clock;
    QVERIFY(SubMain(""));
    QCOMPARE(clock.told.size(), 41U);
}

void tst_SubMain::anyArgumentSkipsSplashAndWait_data() {
    QTest::addColumn<QString>("command_line");
    QTest::newRow("a word") << "profile";
    QTest::newRow("a blank") << " ";
    QTest::newRow("an empty argument") << "\"\"";
}

void tst_SubMain::anyArgumentSkipsSplashAndWait() {
    QFETCH(QString, command_line);
    FailingBox box(0);
    const SteppingClock clock(100, 0);
    QVERIFY(SubMain(command_line.toStdString()));
    QVERIFY(clock.told.empty());
    QVERIFY(!box.titles.isEmpty());
    QVERIFY(!box.splash_always_shown);
    QVERIFY(IsShown<frmMain>());
}

void tst_SubMain::aClickOrAKeyEndsTheWait_data() {
    QTest::addColumn<bool>("by_key");
    QTest::newRow("click") << false;
    QTest::newRow("key") << true;
}

void tst_SubMain::aClickOrAKeyEndsTheWait() {
    QFETCH(bool, by_key);
    const MessageRecorder messages;
    const SteppingClock stopped(100, 0);
    QTimer::singleShot(20, this, [by_key] {
        auto* splash = TheWindow<frmSplash>();
        if (by_key)
            QTest::keyClick(splash, Qt::Key_Escape);
        else
            QTest::mouseClick(splash, Qt::LeftButton);
    });
    QVERIFY(SubMain(""));
    QVERIFY(!TheWindow<frmSplash>());
    QVERIFY(IsShown<frmMain>());
}

void tst_SubMain::loadsTheProfiles() {
    const MessageRecorder messages;
    surroundings_.folder.Write("property.mdb", SampleContent("household-2000.mdb"));
    QVERIFY(SubMain("x"));
    QVERIFY(messages.messages().empty());
    QVERIFY(store::gDatabase);
    QVERIFY(model::gProfiles->Count() > 0);
}

void tst_SubMain::theSplashStaysUntilEverythingIsLoaded() {
    FailingBox box(0);
    const SteppingClock clock(100, 2);
    QVERIFY(SubMain(""));
    QCOMPARE(box.titles.last(), "Vantreo Ledgix");
    QVERIFY(box.splash_always_shown);
    QVERIFY(!box.main_window_shown);
}

void tst_SubMain::aMissingDatabaseIsReportedInOrder() {
    Set("Networkable", "1");
    Set("DatabaseLocation", surroundings_.folder.File("elsewhere.mdb"));
    const MessageRecorder messages;
    QVERIFY(SubMain("x"));
    QStringList texts;
    for (const MessageRecorder::Message& message : messages.messages())
        texts << QString::fromStdString(message.text);
    QVERIFY(texts.value(0).startsWith("Unable to access "));
    QCOMPARE(texts.value(1), "");
    const qsizetype schema = texts.indexOf(QRegularExpression("^The database was not updated.*"));
    QVERIFY(schema > 1);
    for (qsizetype i = 2; i < texts.size(); ++i)
        QVERIFY2(i == schema || texts[i].startsWith("General Errors...\r\n\r\n91 - "), qPrintable(texts[i]));
    QVERIFY(IsShown<frmMain>());
    QCOMPARE(model::gProfiles->Count(), 0U);
}

void tst_SubMain::anErrorInMDIFormLoadSkipsItsRestOnly() {
    FailingBox box(1);
    QVERIFY(SubMain("x"));
    QCOMPARE(box.titles.first(), "MDIForm_Load");
    QVERIFY(model::gProfiles);
    QVERIFY(IsShown<frmMain>());
}

void tst_SubMain::anErrorEndsTheProgram() {
    const MessageRecorder messages;
    const FailingClock clock([] { runtime::RaiseError(runtime::ErrorNumber::kOverflow, "Overflow"); });
    QVERIFY(!SubMain(""));
    QCOMPARE(messages.messages().size(), 1U);
    QVERIFY((messages.messages()[0] == MessageRecorder::Message{"6 - Overflow", 0, "Sub Main"}));
    QVERIFY(!AnyWindowIsShown());
    QVERIFY(!model::gProfiles);
}

void tst_SubMain::anyOtherErrorEndsTheProgramToo() {
    const MessageRecorder messages;
    const FailingClock clock([] { throw std::bad_alloc(); });
    QVERIFY(!SubMain(""));
    QCOMPARE(messages.messages().size(), 1U);
    QCOMPARE(messages.messages()[0].title, "Sub Main");
    QCOMPARE(messages.messages()[0].text, std::bad_alloc().what());
}

void tst_SubMain::anErrorBehindTheMainWindowLeavesNoWindow() {
    FailingBox box(2);
    QVERIFY(!SubMain("x"));
    QCOMPARE(box.titles, QStringList{"Sub Main"});
    QVERIFY(!TheWindow<frmMain>());
    QVERIFY(!model::gProfiles);
    QVERIFY(!store::gDatabase);
}

void tst_SubMain::startsAndEndsAgainAndAgain() {
    const MessageRecorder messages;
    surroundings_.folder.Write("property.mdb", SampleContent("household-2000.mdb"));
    for (int i = 0; i < 3; ++i) {
        QVERIFY(SubMain("x"));
        QVERIFY(IsShown<frmMain>());
        EndProgram();
        QVERIFY(!AnyWindowIsShown());
        QVERIFY(!model::gProfiles);
        QVERIFY(!store::gDatabase);
        QVERIFY(!zq::InstalledPreview());
        QCOMPARE(ErrorOf([] { model::WindowsOfRecords(); }), int(runtime::ErrorNumber::kObjectNotSet));
    }
}

void tst_SubMain::endingTakesOpenEditorsAlong() {
    const MessageRecorder messages;
    surroundings_.folder.Write("property.mdb", SampleContent("household-2000.mdb"));
    QVERIFY(SubMain("x"));
    model::gProfiles->Item(1).Display();
    QCoreApplication::processEvents();
    QVERIFY(messages.messages().empty());
    EndProgram();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    QVERIFY(messages.messages().empty());
}

void tst_SubMain::endingWithoutAStartDoesNothing() {
    const MessageRecorder messages;
    EndProgram();
    EndProgram();
    QVERIFY(messages.messages().empty());
}

QTEST_MAIN(tst_SubMain)
#include "tst_sub_main.moc"
