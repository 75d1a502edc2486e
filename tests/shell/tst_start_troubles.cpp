#include <QApplication>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#ifndef _WIN32
#include <unistd.h>
#endif

#include "cls_profiles.h"
#include "dao_transaction.h"
#include "database.h"
#include "fixed_clock.h"
#include "frm_main.h"
#include "household_file.h"
#include "message_recorder.h"
#include "sub_main.h"

using namespace ledgix;
using namespace ledgix::test;

namespace {

constexpr runtime::CivilTime kMoment{2026, 11, 7, 9, 5, 3};

// The rights of an ordinary user as long as it lives; files of the superuser are protected from him.
class OrdinaryUser {
public:
    OrdinaryUser() : before_(::geteuid()) {
        if (before_ == 0 && ::seteuid(kNobody) != 0)
            qFatal("the rights cannot be given away");
    }
    ~OrdinaryUser() {
        if (before_ == 0 && ::seteuid(before_) != 0)
            qFatal("the rights do not come back");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    uid_t before_;
};

void Allow(const std::string& path, std::filesystem::perms permissions) {
    std::filesystem::permissions(path, permissions);
}
constexpr auto kReadAll =
    std::filesystem::perms::owner_read | std::filesystem::perms::group_read | std::filesystem::perms::others_read;
constexpr auto kEnterAll = kReadAll | std::filesystem::perms::owner_exec | std::filesystem::perms::group_exec |
                           std::filesystem::perms::others_exec;

shell::frmMain* MainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* main = qobject_cast<shell::frmMain*>(window))
            return main;
    return nullptr;
}

}  // namespace

// The program starts on a file that it cannot use, or not as it is: it says so and goes on.
class tst_StartTroubles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places_.path()); }
    void cleanup() { shell::EndProgram(); }

    void aMissingDatabase();
    void aReadOnlyDatabase();
    void aDatabaseThatAnotherProgramHasLocked();
    void aDamagedDatabase();
    void aDatabaseOfAnOlderLayout();
    void aFolderWithoutRightsForTheLog();

private:
    // Texts of the messages of a start without the splash, in their order.
    QStringList MessagesOfAStart();
    void SeeAMainWindowWith(std::size_t profiles);

    QTemporaryDir places_;
};

QStringList tst_StartTroubles::MessagesOfAStart() {
    MessageRecorder messages;
    const bool started = shell::SubMain("started by a test");
    QStringList texts;
    for (const MessageRecorder::Message& message : messages.messages())
        texts << QString::fromStdString(message.title + ": " + message.text);
    if (!started)
        texts << "not started";
    return texts;
}

void tst_StartTroubles::SeeAMainWindowWith(std::size_t profiles) {
    const shell::frmMain* main = MainWindow();
    QVERIFY(main && main->isVisible());
    QCOMPARE(model::gProfiles->Count(), profiles);
    QVERIFY(main->findChild<QPushButton*>("cmdNew")->isEnabled());
}

// The engine's error has an empty box; what follows fails one by one.
QStringList MessagesWithoutADatabase() {
    const QString program = "Vantreo Ledgix: ";
    const QString not_open =
        program + "General Errors...\r\n\r\n91 - Object variable or With block variable not set\r\n\r\n";
    const QStringList seeding{not_open, not_open, not_open, not_open};
    return QStringList{program} + seeding +
           QStringList{program + "The database was not updated successfully.  Try restarting this application.",
                       not_open};
}

void tst_StartTroubles::aMissingDatabase() {
    FixedClock clock(kMoment);
    HouseholdFile file(SampleContent("household-2000.mdb"));
    const DiagnosisRecorder diagnoses;
    std::filesystem::remove(file.path());
    QCOMPARE(MessagesOfAStart(), MessagesWithoutADatabase());
    QCOMPARE(diagnoses.Numbers(), std::vector<int>{3024});
    QVERIFY(!std::filesystem::exists(file.path()));
    QVERIFY(std::filesystem::exists(file.folder().File("errNov26.log")));
    SeeAMainWindowWith(0);
}

void tst_StartTroubles::aReadOnlyDatabase() {
    HouseholdFile file(SampleContent("household-2000.mdb"));
    const std::string content = file.bytes();
    DiagnosisRecorder diagnoses;
    {
        Allow(file.path(), kReadAll);
        Allow(file.folder().path(), kEnterAll);
        const OrdinaryUser user;
        QCOMPARE(MessagesOfAStart(), QStringList());
        SeeAMainWindowWith(3);
        MessageRecorder messages;
        model::clsProfile& profile = model::gProfiles->Item(1);
        profile.LoadProperties();
        QVERIFY(!profile.Property(1).Save());
        QCOMPARE(messages.messages().size(), std::size_t{1});
        QCOMPARE(diagnoses.Numbers(), std::vector<int>{3027});
    }
    QCOMPARE(file.bytes(), content);
}

void tst_StartTroubles::aDatabaseThatAnotherProgramHasLocked() {
    HouseholdFile file(SampleContent("household-2000.mdb"));
    const DiagnosisRecorder diagnoses;
    const std::unique_ptr<dao::Database> other = dao::DefaultWorkspace().OpenDatabase(file.path());
    dao::Transaction change(*other);
    other->Execute("update Profiles set IncSalary = 1");
    QCOMPARE(MessagesOfAStart(), MessagesWithoutADatabase());
    QCOMPARE(diagnoses.Numbers(), std::vector<int>{3260});
    SeeAMainWindowWith(0);
    change.Commit();
    QCOMPARE(file.Column("select ProfileNumber from Profiles where IncSalary = 1").size(), std::size_t{3});
}

void tst_StartTroubles::aDamagedDatabase() {
    std::string content = SampleContent("household-2000.mdb");
    content.replace(0, 64, std::string(64, '\xee'));
    HouseholdFile file(content);
    const DiagnosisRecorder diagnoses;
    QCOMPARE(MessagesOfAStart(), MessagesWithoutADatabase());
    QCOMPARE(diagnoses.Numbers(), std::vector<int>{3343});
    SeeAMainWindowWith(0);
    QCOMPARE(file.bytes(), content);
}

void tst_StartTroubles::aDatabaseOfAnOlderLayout() {
    HouseholdFile file(SampleContent("household-older.mdb"));
    const std::size_t profiles = file.Rows("select ProfileNumber from Profiles").size();
    QCOMPARE(MessagesOfAStart(), QStringList());
    SeeAMainWindowWith(profiles);
    QCOMPARE(file.Rows("select IncDividends from Profiles").size(), profiles);
}

void tst_StartTroubles::aFolderWithoutRightsForTheLog() {
    FixedClock clock(kMoment);
    HouseholdFile file(SampleContent("household-2000.mdb"));
    const DiagnosisRecorder diagnoses;
    std::filesystem::remove(file.path());
    Allow(file.folder().path(), kEnterAll);
    const OrdinaryUser user;
    QCOMPARE(MessagesOfAStart(), MessagesWithoutADatabase());
    QVERIFY(!std::filesystem::exists(file.folder().File("errNov26.log")));
    SeeAMainWindowWith(0);
}

QTEST_MAIN(tst_StartTroubles)
#include "tst_start_troubles.moc"
