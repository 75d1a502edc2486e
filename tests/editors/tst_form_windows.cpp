#include "form_windows.h"

#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include "cls_report.h"
#include "editor_fixture.h"

using namespace ledgix;
using namespace ledgix::test;
using editors::FormWindows;
using editors::frmProfile;

namespace {

QDialog* OpenDialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

// A multi-document area, as the main window has one.
class AreaDesktop : public FakeDesktop {
public:
    AreaDesktop() { area.show(); }
    void AddDocument(QWidget& form) override {
        documents << &form;
        frame = area.addSubWindow(&form);
        frame->setAttribute(Qt::WA_DeleteOnClose);
        frame->show();
    }

    QMdiArea area;
    QPointer<QMdiSubWindow> frame;
};

// Does something as soon as a dialog is open; closes the dialog if that does not.
void WhenDialogOpens(const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, [act] {
        QVERIFY(QTest::qWaitFor([] { return OpenDialog() != nullptr; }));
        const QPointer<QDialog> dialog(OpenDialog());
        act(*dialog);
        if (dialog && dialog->isVisible())
            dialog->done(0);
    });
}

}  // namespace

class tst_FormWindows : public QObject {
    Q_OBJECT

private slots:
    void profileIsADocument();
    void displayingAgainRaisesTheSameForm();
    void closingTheFormHidesItAndDeletesItLater();
    void reopenedFormIsAnotherOne();
    void formThatIsGoneIsNotTouched();
    void deletedProfileTakesItsFormAlong();
    void eventOfTheListReachesTheOpenFormOnly();
    void closingTheFrameOfADocumentAreaIsCancel();
    void closedFormHidesItsFrame();

    void propertyIsModal();
    void propertyMayGoWhileItsEditorIsOpen();
    void propertyMayCloseItsEditorWhileItIsOpen();
    void editorThatWasNeverShownIsDeleted();

    void reportWriterRunsReports();
};

void tst_FormWindows::profileIsADocument() {
    Household household;
    household.profile().Display();
    QCOMPARE(household.desktop.documents.size(), 1);
    QCOMPARE(household.desktop.documents.first()->objectName(), "frmProfile");
    QVERIFY(household.desktop.documents.first()->isVisible());
}

void tst_FormWindows::displayingAgainRaisesTheSameForm() {
    Household household;
    household.profile().Display();
    household.profile().Display();
    QCOMPARE(household.desktop.documents.size(), 1);
    QCOMPARE(household.desktop.raised, 2);
}

void tst_FormWindows::closingTheFormHidesItAndDeletesItLater() {
    Household household;
    const QPointer<QWidget> form = Open(household, household.profile());
    household.profile().CloseForm();
    QVERIFY(form);
    QVERIFY(!form->isVisible());
    QVERIFY(!household.profile().ReloadProperties);
    QTRY_VERIFY(!form);
}

void tst_FormWindows::reopenedFormIsAnotherOne() {
    Household household;
    household.profile().Display();
    household.profile().CloseForm();
    household.profile().Display();
    QCOMPARE(household.desktop.documents.size(), 2);
    QVERIFY(household.profile().ReloadProperties);
    // The first form goes, and takes nothing of the second one along.
    QTRY_VERIFY(!household.desktop.documents.first());
    QVERIFY(household.profile().ReloadProperties);
    QVERIFY(household.desktop.documents.last()->isVisible());
}

void tst_FormWindows::formThatIsGoneIsNotTouched() {
    Household household;
    household.profile().Display();
    delete household.desktop.documents.first();
    QVERIFY(!household.profile().ReloadProperties);
    household.profile().Display();
    household.profile().CloseForm();
    QCOMPARE(household.desktop.documents.size(), 1);
}

void tst_FormWindows::deletedProfileTakesItsFormAlong() {
    Household household;
    const QPointer<QWidget> form = Open(household, household.profile());
    model::gProfiles->Remove("P1");
    QVERIFY(!form->isVisible());
    QVERIFY(form->close());  // of no effect any more
    QTRY_VERIFY(!form);
    QVERIFY(household.messages.messages().empty());
}

void tst_FormWindows::eventOfTheListReachesTheOpenFormOnly() {
    Household household;
    frmProfile* first = Open(household, household.profile("P1"));
    frmProfile* second = Open(household, household.profile("P2"));
    household.profile("P1").Property("P1-1").PropertyName = "Renamed";
    household.profile("P2").Property("P2-1").PropertyName = "Renamed";
    household.profile("P2").RaiseReloadProperties();
    QCOMPARE(Lines(first->lstProperty).first(), "14 Harbour Terrace");
    QCOMPARE(Lines(second->lstProperty).first(), "Renamed");
}

void tst_FormWindows::closingTheFrameOfADocumentAreaIsCancel() {
    Household household;
    AreaDesktop desktop;
    TestWindows windows(desktop);
    model::clsProfile& profile = household.profile();
    profile.Display();
    profile.ProfileName = "Typed";
    QVERIFY(desktop.frame->close());
    QCOMPARE(profile.ProfileName, std::string("Hannah and Tom Whitaker"));
    QVERIFY(!profile.ReloadProperties);
    QTRY_VERIFY(!desktop.frame);
    QTRY_VERIFY(!desktop.documents.first());
    profile.Display();
    QVERIFY(desktop.frame->isVisible());
    profile.CloseForm();
}

void tst_FormWindows::closedFormHidesItsFrame() {
    Household household;
    AreaDesktop desktop;
    TestWindows windows(desktop);
    household.profile().Display();
    household.profile().CloseForm();
    QVERIFY(desktop.frame);
    QVERIFY(!desktop.frame->isVisible());
    QTRY_VERIFY(!desktop.documents.first());
}

void tst_FormWindows::propertyIsModal() {
    Household household;
    FormWindows windows(household.desktop);
    model::InstallRecordWindows(&windows);
    household.profile().LoadProperties();
    bool modal = false;
    WhenDialogOpens([&](const QDialog& dialog) { modal = dialog.objectName() == "frmProperty" && dialog.isModal(); });
    household.profile().Property("P1-1").Display();
    QVERIFY(modal);
    QVERIFY(!OpenDialog());
}

void tst_FormWindows::propertyMayGoWhileItsEditorIsOpen() {
    Household household;
    FormWindows windows(household.desktop);
    model::InstallRecordWindows(&windows);
    household.profile().LoadProperties();
    QPointer<QDialog> dialog;
    WhenDialogOpens([&](QDialog& open) {
        dialog = &open;
        household.profile().ForgetProperty("P1-1");
    });
    household.profile().Property("P1-1").Display();
    QVERIFY(!dialog || !dialog->isVisible());
    QTRY_VERIFY(!dialog);
}

void tst_FormWindows::propertyMayCloseItsEditorWhileItIsOpen() {
    Household household;
    FormWindows windows(household.desktop);
    model::InstallRecordWindows(&windows);
    household.profile().LoadProperties();
    model::clsProperty& property = household.profile().Property("P1-1");
    for (int i = 0; i < 2; ++i) {
        QPointer<QDialog> dialog;
        WhenDialogOpens([&](QDialog& open) {
            dialog = &open;
            property.CloseForm();
        });
        property.Display();
        QTRY_VERIFY(!dialog);
    }
}

void tst_FormWindows::editorThatWasNeverShownIsDeleted() {
    Household household;
    household.profile().LoadProperties();
    const int before = static_cast<int>(QApplication::topLevelWidgets().size());
    FormWindows windows(household.desktop);
    windows.EditorOf(household.profile()).reset();
    windows.EditorOf(household.profile().Property("P1-1")).reset();
    QTRY_COMPARE(static_cast<int>(QApplication::topLevelWidgets().size()), before);
}

void tst_FormWindows::reportWriterRunsReports() {
    Household household;
    FormWindows windows(household.desktop);
    QVERIFY(dynamic_cast<reports::clsReport*>(windows.NewReportWriter().get()));
}

QTEST_MAIN(tst_FormWindows)
#include "tst_form_windows.moc"
