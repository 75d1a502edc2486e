#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include "database.h"
#include "help_topics.h"
#include "main_form.h"
#include "tax_module.h"

using ledgix::shell::frmMain;
using ledgix::test::MainForm;
using ledgix::test::NumberedProfiles;
using Message = ledgix::test::MessageRecorder::Message;

namespace model = ledgix::model;
namespace store = ledgix::store;
namespace test = ledgix::test;

namespace {

// Closes the modal window that comes up, and tells its class.
void CloseNextModal(QString& seen) {
    QTimer::singleShot(0, qApp, [&seen] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal ? modal->metaObject()->className() : "none";
        if (modal)
            modal->close();
    });
}

class FailingForm : public frmMain {
protected:
    void OpenDatabase() override { ledgix::runtime::RaiseError(ledgix::runtime::ErrorNumber::kTypeMismatch); }
};

class HelpedForm : public frmMain {
public:
    void ShowHelpTopic(int context) override { contexts << context; }
    QList<int> contexts;
};

}  // namespace

class tst_frmMain : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { model::TaxRatesSeeded = false; }

    void controlsBearTheirNamesAndCaptions();
    void menusBearTheirNamesAndCaptions();
    void tabsFollowThePage();
    void loadingOpensTheDatabase();
    void loadingWithoutADatabaseSaysSo();
    void anErrorOfLoadingIsShownUnderItsName();
    void theFirstActivationLoadsTheList();
    void laterActivationsDoNothing();
    void seededTaxRatesAreShownOnTheFirstActivation();
    void withoutACollectionTheListIsEmpty();
    void withoutProfilesEditAndDeleteAreDisabled();
    void unsavedProfilesHaveNoRow();
    void panelHeight_data();
    void panelHeight();
    void thePanelIsNeverLowerThan1000Twips();
    void theBarStandsBesideThePanel();
    void theWheelScrolls();
    void theMarginIsWideEnoughForItsButtons();
    void taxRatesOpenModally();
    void aboutOpensModally();
    void theHelpKeyOpensTheTopicOfTheWindow();
    void thePlaceOfTheWindowIsKept();
    void theFirstFocusIsWhereTheUserBegins();
    void coloursFollowThePalette();
};

void tst_frmMain::controlsBearTheirNamesAndCaptions() {
    const MainForm main;
    QCOMPARE(main.form->objectName(), "frmMain");
    QCOMPARE(main.form->windowTitle(), "Vantreo Ledgix");
    QCOMPARE(main.form->findChild<QPushButton*>("cmdNew")->text(), "&New Profile");
    QCOMPARE(main.form->findChild<QPushButton*>("cmdEdit")->text(), "&Edit Profile");
    QCOMPARE(main.form->findChild<QPushButton*>("cmdDelete")->text(), "&Delete Profile");
    for (const char* name : {"picMargin", "picMenu", "VScroll", "zqSkin1", "zqSkin2"})
        QVERIFY2(main.form->findChild<QWidget*>(name), name);
    QCOMPARE(main.form->zqSkin1->parent(), main.form->picMargin);
    QCOMPARE(main.form->zqSkin2->parent(), main.form->picMenu);
    QCOMPARE(main.form->picMenu->accessibleName(), "Profiles");
    QCOMPARE(main.form->findChild<QLabel*>("lblProfiles")->buddy(), main.form->picMenu);
    QCOMPARE(main.form->iSelectMenu(), -1);
    QCOMPARE(main.form->Owner(), main.form.get());
}

void tst_frmMain::menusBearTheirNamesAndCaptions() {
    const MainForm main;
    QStringList captions;
    for (const QAction* action : main.form->menuBar()->actions())
        captions << action->menu()->objectName() + " " + action->text();
    QCOMPARE(captions,
             QStringList({"mnuFile &File", "mnuMaintenance Maintenance", "mnuWindow Window", "mnuHelp Help"}));
    const auto items = [&](const char* menu) { return main.form->findChild<QMenu*>(menu)->actions(); };
    QCOMPARE(items("mnuFile"), QList<QAction*>{main.Action("mnuFileExit")});
    QCOMPARE(items("mnuMaintenance"), QList<QAction*>{main.Action("mnuTaxRates")});
    QCOMPARE(items("mnuHelp"), QList<QAction*>{main.Action("mnuHelpAbout")});
    QCOMPARE(main.Action("mnuFileExit")->text(), "&Exit");
    QCOMPARE(main.Action("mnuTaxRates")->text(), "&Tax Rates");
    QCOMPARE(main.Action("mnuHelpAbout")->text(), "&About");
}

void tst_frmMain::tabsFollowThePage() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(0);
    main.form->cmdNew->setFocus();
    QStringList order;
    for (int i = 0; i < 4; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({"cmdNew", "cmdEdit", "cmdDelete", "picMenu"}));
}

void tst_frmMain::loadingOpensTheDatabase() {
    const MainForm main;
    main.file.Close();
    main.form->MDIForm_Load();
    QVERIFY(store::gDatabase);
    QCOMPARE(store::gDatabase->path(), main.file.path());
    QVERIFY(main.messages.messages().empty());
    QVERIFY(model::TaxRatesSeeded);
    QCOMPARE(main.file.Rows("select * from Tax_Rates").size(), 3U);
    QCOMPARE(main.form->findChild<QWidget*>("lblDatabase")->accessibleName(), QString::fromStdString(main.file.path()));
}

void tst_frmMain::loadingWithoutADatabaseSaysSo() {
    const test::TemporaryFolder empty;
    const test::ScopedEnvironment folder("LEDGIX_FOLDER", empty.path());
    const test::WindowPlaces places;
    test::MessageRecorder messages;
    frmMain form;
    form.MDIForm_Load();
    QVERIFY(!messages.messages().empty());
    QVERIFY(!store::gDatabase);
    QCOMPARE(form.findChild<QWidget*>("lblDatabase")->accessibleName(), "No database is open.");
}

void tst_frmMain::anErrorOfLoadingIsShownUnderItsName() {
    const test::WindowPlaces places;
    const test::MessageRecorder messages;
    FailingForm form;
    form.MDIForm_Load();
    QVERIFY(messages.messages() == (std::vector<Message>{{"13 - Type mismatch", 0, "MDIForm_Load"}}));
    QCOMPARE(form.iSelectMenu(), -1);
}

void tst_frmMain::theFirstActivationLoadsTheList() {
    MainForm main;
    QCOMPARE(main.rows().ShownCount(), 0);
    QVERIFY(main.ShowActive());
    QCOMPARE(main.rows().ShownCount(), 3);
    QCOMPARE(main.rows().Caption(2), "Cole & Dunn");
    QCOMPARE(main.rows().Tag(2), "9");
}

void tst_frmMain::laterActivationsDoNothing() {
    MainForm main;
    QVERIFY(main.ShowActive());
    model::gProfiles->AddItem().Saved = true;
    model::TaxRatesSeeded = true;
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    main.form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(main.form.get()));
    QCoreApplication::processEvents();
    QCOMPARE(main.rows().ShownCount(), 3);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_frmMain::seededTaxRatesAreShownOnTheFirstActivation() {
    MainForm main;
    model::TaxRatesSeeded = true;
    QString seen;
    main.form->show();
    main.form->activateWindow();
    QTimer poll;
    connect(&poll, &QTimer::timeout, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            seen = modal->metaObject()->className();
            QCOMPARE(main.rows().ShownCount(), 3);
            modal->close();
        }
    });
    poll.start(5);
    QTRY_COMPARE(seen, "ledgix::editors::frmTaxRates");
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void tst_frmMain::withoutACollectionTheListIsEmpty() {
    MainForm main;
    model::gProfiles.reset();
    QVERIFY(main.ShowActive());
    QCOMPARE(main.rows().ShownCount(), 0);
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMain::withoutProfilesEditAndDeleteAreDisabled() {
    MainForm main(NumberedProfiles(0));
    QVERIFY(main.ShowActive());
    QVERIFY(!main.form->VScroll->isVisible());
    QVERIFY(!main.form->cmdEdit->isEnabled());
    QVERIFY(!main.form->cmdDelete->isEnabled());
    QVERIFY(main.form->cmdNew->isEnabled());
}

void tst_frmMain::unsavedProfilesHaveNoRow() {
    MainForm main;
    model::gProfiles->AddItem();
    QVERIFY(main.ShowActive());
    QCOMPARE(main.rows().ShownCount(), 3);
}

void tst_frmMain::panelHeight_data() {
    QTest::addColumn<int>("window");
    for (const int height : {320, 400, 555, 720, 900})
        QTest::addRow("%d pixels", height) << height;
}

void tst_frmMain::panelHeight() {
    QFETCH(int, window);
    MainForm main;
    QVERIFY(main.ShowActive());
    main.form->resize(900, window);
    QCoreApplication::processEvents();
    QCOMPARE(main.form->height(), window);
    const int top = main.list()->mapTo(main.form.get(), QPoint()).y();
    const int expected = std::max(1000, window * 15 - top * 15 - 1000);
    QCOMPARE(main.rows().panel_height(), expected);
    QCOMPARE(main.list()->height(), (expected + 14) / 15);
    QVERIFY(top > main.form->cmdNew->mapTo(main.form.get(), QPoint(0, main.form->cmdNew->height())).y());
}

void tst_frmMain::thePanelIsNeverLowerThan1000Twips() {
    MainForm main(NumberedProfiles(40));
    QVERIFY(main.ShowActive());
    main.form->resize(600, 1);
    QCoreApplication::processEvents();
    QCOMPARE(main.rows().panel_height(), 1000);
    QCOMPARE(main.list()->height(), 67);
    QVERIFY(main.form->picMargin->rect().contains(main.list()->geometry()));
    QCOMPARE(main.form->VScroll->minimum(), 1000);
}

void tst_frmMain::theBarStandsBesideThePanel() {
    MainForm main(NumberedProfiles(60));
    QVERIFY(main.ShowActive());
    const QScrollBar* bar = main.form->VScroll;
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->height(), main.list()->height());
    QCOMPARE(bar->geometry().left(), main.list()->geometry().right() + 1);
    QCOMPARE(bar->minimum(), main.rows().panel_height());
    QCOMPARE(bar->maximum(), 60 * (main.rows().row_height() + 120) + 120);
    const int right = bar->geometry().right();
    main.form->resize(900, 4000);
    QCoreApplication::processEvents();
    QVERIFY(!bar->isVisible());
    QCOMPARE(main.list()->geometry().right(), right);
}

void tst_frmMain::theWheelScrolls() {
    MainForm main(NumberedProfiles(60));
    QVERIFY(main.ShowActive());
    main.Wheel(-120);
    QVERIFY(main.rows().Top(0) < 0);
    main.Wheel(120);
    QCOMPARE(main.rows().Top(0), 120);
}

void tst_frmMain::theMarginIsWideEnoughForItsButtons() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QFont large = main.form->font();
    large.setPointSize(large.pointSize() * 2);
    main.form->setFont(large);
    QTRY_VERIFY(main.form->picMargin->width() > 340);
    for (const QPushButton* button : {main.form->cmdNew, main.form->cmdEdit, main.form->cmdDelete}) {
        QTRY_VERIFY(button->width() >= button->sizeHint().width());
        const QPoint corner = button->mapTo(main.form->picMargin, button->rect().bottomRight());
        QVERIFY(main.form->picMargin->rect().contains(corner));
        QVERIFY(corner.y() < main.list()->y());
    }
}

void tst_frmMain::taxRatesOpenModally() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QString seen;
    CloseNextModal(seen);
    main.Action("mnuTaxRates")->trigger();
    QCOMPARE(seen, "ledgix::editors::frmTaxRates");
}

void tst_frmMain::aboutOpensModally() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QString seen;
    CloseNextModal(seen);
    main.Action("mnuHelpAbout")->trigger();
    QCOMPARE(seen, "ledgix::shell::frmAbout");
}

void tst_frmMain::theHelpKeyOpensTheTopicOfTheWindow() {
    const test::WindowPlaces places;
    HelpedForm form;
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QTest::keyClick(form.picMenu, Qt::Key_F1);
    QTest::keyClick(form.cmdNew, Qt::Key_F1);
    QCOMPARE(form.contexts, QList<int>({ledgix::editors::kHelpMainWindow, ledgix::editors::kHelpMainWindow}));
    QTest::keyClick(form.picMenu, Qt::Key_F2);
    QCOMPARE(form.contexts.size(), 2);
}

void tst_frmMain::thePlaceOfTheWindowIsKept() {
    const test::WindowPlaces places;
    {
        frmMain form;
        QCOMPARE(form.size(), QSize(1100, 720));
        form.show();
        form.resize(777, 555);
        form.close();
    }
    frmMain again;
    again.show();
    QCOMPARE(again.size(), QSize(777, 555));
}

void tst_frmMain::theFirstFocusIsWhereTheUserBegins() {
    MainForm empty(NumberedProfiles(0));
    QVERIFY(empty.ShowActive());
    QCOMPARE(QApplication::focusWidget(), empty.form->cmdNew);
    MainForm some(NumberedProfiles(2));
    QVERIFY(some.ShowActive());
    QCOMPARE(QApplication::focusWidget(), some.list());
}

void tst_frmMain::coloursFollowThePalette() {
    MainForm main;
    QVERIFY(main.ShowActive());
    const int light = main.form->zqSkin1->StartColour();
    main.form->setPalette(QPalette(QColor(40, 44, 52)));
    QVERIFY(main.form->zqSkin1->StartColour() != light);
    QVERIFY((main.form->zqSkin1->StartColour() & 0xFF) < 128);
    QVERIFY((main.form->zqSkin2->EndColour() & 0xFF) < 128);
    main.form->setPalette(QPalette(QColor(240, 240, 240)));
    QCOMPARE(main.form->zqSkin1->StartColour(), light);
}

QTEST_MAIN(tst_frmMain)
#include "tst_frm_main.moc"
