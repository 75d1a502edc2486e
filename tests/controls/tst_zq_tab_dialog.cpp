#include <QGroupBox>
#include <QHelpEvent>
#include <QJsonArray>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <functional>

#include "case_list.h"
#include "runtime_error.h"
#include "tab_form.h"

using ledgix::controls::zqTabDialog;
using ledgix::test::Form;
using ledgix::test::ShowActive;

namespace {

int ErrorOf(const std::function<void()>& statement) {
    try {
        statement();
        return 0;
    } catch (const ledgix::runtime::RuntimeError& error) {
        return error.number();
    }
}

}  // namespace

class tst_zqTabDialog : public QObject {
    Q_OBJECT

private slots:
    void cases_data();
    void cases();

    void startsWithThreeTabs();
    void aFormFileKeepsTheStoredProperties();
    void propertiesAreSetByName();
    void numbersOfNoTabAreErrors();

    void thePageIsShownWhenClickIsRaised();
    void onlyTheLeftButtonSwitches();
    void aPressOnAFrameOverTheBodySwitchesNothing();
    void framesAreFoundInAnyCase();
    void aHiddenControlLeavesThePages();
    void aDesignerKeepsTheBorders();
    void aGroupBoxLosesItsBorderButKeepsItsName();
    void pagesMayBeChildrenOfTheControl();
    void twoFormsInOneWindowKeepTheirOwnPages();

    void arrowKeysGoToTheNextEnabledTab();
    void homeAndEndGoToTheOutermostEnabledTabs();
    void ctrlTabGoesRoundFromTheStrip();
    void ctrlTabTakesTheFocusToTheNextPage();
    void ctrlTabElsewhereDoesNothing();
    void ctrlTabDoesNothingForADisabledControl();
    void ctrlTabInADocumentWindowStaysInIt();

    void aCaptionThatDoesNotFitHasAToolTip();
};

void tst_zqTabDialog::cases_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray list = ledgix::test::CasesOf("tab_dialog.json").toArray();
    QVERIFY(!list.isEmpty());
    for (const QJsonValue& one : list) {
        QTest::newRow(qPrintable(one["name"].toString())) << one.toObject();
    }
}

static void DoStep(zqTabDialog& tabs, const QJsonObject& step) {
    QSignalSpy clicks(&tabs, &zqTabDialog::Click);
    if (step.contains("press")) {
        const QJsonArray point = step["press"].toArray();
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, QPoint(point[0].toInt(), point[1].toInt()));
    } else if (step.contains("CurrentTab")) {
        tabs.setCurrentTab(step["CurrentTab"].toInt());
    } else if (step.contains("Frames")) {
        tabs.setFrames(step["Frames"].toString());
    } else {
        tabs.setTabEnabled(step["TabEnabled"][0].toInt(), step["TabEnabled"][1].toBool());
    }
    if (step["Click"].isDouble()) {
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(clicks[0][0].toInt(), step["Click"].toInt());
    } else {
        QCOMPARE(clicks.count(), 0);
    }
    QCOMPARE(tabs.CurrentTab(), step["CurrentTabNow"].toInt());
}

static void CompareFrame(const Form& form, const QString& name, const QJsonObject& given) {
    const QFrame& frame = *form.frame(name);
    const QJsonObject placed = given["placed"][name].toObject();
    QCOMPARE(!frame.isHidden(), given["visible"][name].toBool(true));
    QCOMPARE(frame.frameShape(), placed.contains("BorderStyle") ? QFrame::NoFrame : QFrame::StyledPanel);
    QCOMPARE(frame.x(), placed.contains("Left") ? placed["Left"].toInt() / 15 : 600);
    QCOMPARE(frame.y(), placed.contains("Top") ? placed["Top"].toInt() / 15 : 60);
}

void tst_zqTabDialog::cases() {
    QFETCH(QJsonObject, given);
    const QStringList frames = given["hostFrames"].toVariant().toStringList();
    Form form(frames, given["width"].toInt());
    form.tabs->setFrameTop(given["FrameTop"].toInt());
    form.tabs->setFrameLeft(given["FrameLeft"].toInt());
    form.tabs->setTabs(given["Tabs"].toString());
    form.tabs->setFrames(given["Frames"].toString());
    form.show();
    for (const QJsonValue& step : given["steps"].toArray()) {
        DoStep(*form.tabs, step.toObject());
    }
    QJsonArray captions, frame_names, enabled;
    for (const auto& tab : form.tabs->table().list()) {
        captions << QString::fromStdString(tab.caption);
        frame_names << QString::fromStdString(tab.frame_name);
        enabled << tab.enabled;
    }
    QCOMPARE(form.tabs->Tabs(), given["TabsRead"].toString());
    QCOMPARE(captions, given["captions"].toArray());
    QCOMPARE(frame_names, given["frameNames"].toArray());
    QCOMPARE(enabled, given["enabled"].toArray());
    QCOMPARE(form.tabs->TabRect(1).width(), given["tabWidth"].toInt());
    for (const QString& name : frames) {
        CompareFrame(form, name, given);
    }
}

void tst_zqTabDialog::startsWithThreeTabs() {
    const zqTabDialog tabs;
    QCOMPARE(tabs.Tabs(), "Tab1|Tab2|Tab3|");
    QCOMPARE(tabs.Frames(), "");
    QCOMPARE(tabs.FrameTop(), -1);
    QCOMPARE(tabs.FrameLeft(), -1);
    QCOMPARE(tabs.CurrentTab(), 1);
    QVERIFY(tabs.TabEnabled(3));
}

void tst_zqTabDialog::aFormFileKeepsTheStoredProperties() {
    const QMetaObject& meta = zqTabDialog::staticMetaObject;
    QStringList stored;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        if (meta.property(i).isStored()) {
            stored << meta.property(i).name();
        }
    }
    QCOMPARE(stored, QStringList({"FramesList", "TabsList", "FrameTop", "FrameLeft"}));
}

void tst_zqTabDialog::propertiesAreSetByName() {
    zqTabDialog tabs;
    QVERIFY(tabs.setProperty("FramesList", "f1|"));
    QVERIFY(tabs.setProperty("TabsList", "A|B"));
    QVERIFY(tabs.setProperty("FrameTop", 480));
    QVERIFY(tabs.setProperty("FrameLeft", 240));
    QVERIFY(tabs.setProperty("CurrentTab", 2));
    QCOMPARE(tabs.property("Tabs").toString(), "A|B|");
    QCOMPARE(tabs.property("Frames").toString(), "f1|");
    QCOMPARE(tabs.FrameTop(), 480);
    QCOMPARE(tabs.FrameLeft(), 240);
    QCOMPARE(tabs.CurrentTab(), 2);
}

void tst_zqTabDialog::numbersOfNoTabAreErrors() {
    zqTabDialog tabs;
    QCOMPARE(ErrorOf([&] { tabs.setCurrentTab(4); }), 9);
    QCOMPARE(ErrorOf([&] { tabs.setCurrentTab(0); }), 9);
    QCOMPARE(ErrorOf([&] { tabs.setTabEnabled(4, true); }), 9);
    QCOMPARE(ErrorOf([&] { tabs.TabEnabled(-1); }), 9);
    QCOMPARE(ErrorOf([&] { tabs.setCurrentTab(40000); }), 6);
    QCOMPARE(ErrorOf([&] { tabs.setFrameTop(40000); }), 6);
    QCOMPARE(ErrorOf([&] { tabs.setFrameLeft(-40000); }), 6);
    QCOMPARE(tabs.CurrentTab(), 1);
    QCOMPARE(tabs.FrameTop(), -1);
}

void tst_zqTabDialog::thePageIsShownWhenClickIsRaised() {
    Form form;
    form.setFrames();
    form.show();
    QString shown_then;
    int current_then = 0;
    connect(form.tabs, &zqTabDialog::Click, this, [&] {
        shown_then = form.shown();
        current_then = form.tabs->CurrentTab();
    });
    QTest::mouseClick(form.tabs, Qt::LeftButton, {}, QPoint(150, 5));
    QCOMPARE(shown_then, "f2");
    QCOMPARE(current_then, 2);
}

void tst_zqTabDialog::onlyTheLeftButtonSwitches() {
    Form form;
    QTest::mouseClick(form.tabs, Qt::RightButton, {}, QPoint(150, 5));
    QCOMPARE(form.tabs->CurrentTab(), 1);
}

void tst_zqTabDialog::aPressOnAFrameOverTheBodySwitchesNothing() {
    Form form;
    form.setFrames();
    form.tabs->setFrameTop(360);
    form.tabs->setFrameLeft(120);
    ShowActive(form);
    QCOMPARE(form.frame("f1")->pos(), QPoint(8, 24));
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, {}, QPoint(150, 30));
    QCOMPARE(form.tabs->CurrentTab(), 1);
    QTest::mouseClick(form.windowHandle(), Qt::LeftButton, {}, QPoint(150, 10));
    QCOMPARE(form.tabs->CurrentTab(), 2);
    QCOMPARE(form.frame("f2")->pos(), QPoint(8, 24));
}

void tst_zqTabDialog::framesAreFoundInAnyCase() {
    Form form;
    form.tabs->setFrames("F1|F2|F3|");
    form.show();
    QCOMPARE(form.shown(), "f1");
}

void tst_zqTabDialog::aHiddenControlLeavesThePages() {
    Form form;
    form.setFrames();
    form.show();
    form.tabs->hide();
    form.tabs->setCurrentTab(2);
    QCOMPARE(form.tabs->CurrentTab(), 2);
    QCOMPARE(form.shown(), "f1");
    form.tabs->show();
    QCOMPARE(form.shown(), "f2");
}

void tst_zqTabDialog::aDesignerKeepsTheBorders() {
    Form form;
    form.setFrames();
    form.tabs->setUserMode(false);
    form.show();
    QCOMPARE(form.shown(), "f1");
    QCOMPARE(form.frame("f1")->frameShape(), QFrame::StyledPanel);
}

void tst_zqTabDialog::aGroupBoxLosesItsBorderButKeepsItsName() {
    QWidget window;
    zqTabDialog tabs(&window);
    QGroupBox box("Income", &window);
    box.setObjectName("frmIncome");
    tabs.setFrames("frmIncome|");
    window.show();
    QVERIFY(box.isFlat());
    QCOMPARE(box.title(), "");
    QCOMPARE(box.accessibleName(), "Income");
}

void tst_zqTabDialog::pagesMayBeChildrenOfTheControl() {
    QWidget window;
    window.resize(400, 300);
    zqTabDialog tabs(&window);
    tabs.resize(301, 200);
    auto* cell = new QGridLayout(&tabs);
    QLineEdit first, second;
    first.setObjectName("first");
    second.setObjectName("second");
    cell->addWidget(&first, 0, 0);
    cell->addWidget(&second, 0, 0);
    tabs.setFrames("first|second|");
    ShowActive(window);
    QVERIFY(first.isVisible() && !second.isVisible());
    QVERIFY(first.y() > ledgix::controls::kTabStripHeight);
    first.setFocus();
    QTest::keyClick(&first, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs.CurrentTab(), 2);
    QVERIFY(second.isVisible() && !first.isVisible());
}

void tst_zqTabDialog::twoFormsInOneWindowKeepTheirOwnPages() {
    QMdiArea area;
    auto* one = new Form;
    auto* two = new Form;
    area.addSubWindow(one);
    area.addSubWindow(two);
    one->setFrames();
    two->setFrames();
    area.show();
    one->show();
    two->show();
    QTest::mouseClick(two->tabs, Qt::LeftButton, {}, QPoint(150, 5));
    QCOMPARE(one->shown(), "f1");
    QCOMPARE(two->shown(), "f2");
}

void tst_zqTabDialog::arrowKeysGoToTheNextEnabledTab() {
    Form form;
    form.setFrames();
    form.tabs->setTabEnabled(2, false);
    ShowActive(form);
    form.tabs->setFocus();
    QSignalSpy clicks(form.tabs, &zqTabDialog::Click);
    QTest::keyClick(form.tabs, Qt::Key_Right);
    QCOMPARE(form.tabs->CurrentTab(), 3);
    QCOMPARE(form.shown(), "f3");
    QTest::keyClick(form.tabs, Qt::Key_Right);
    QCOMPARE(form.tabs->CurrentTab(), 3);
    QTest::keyClick(form.tabs, Qt::Key_Left);
    QCOMPARE(form.tabs->CurrentTab(), 1);
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(clicks[0][0].toInt(), 1);
    QCOMPARE(clicks[1][0].toInt(), 3);
}

void tst_zqTabDialog::homeAndEndGoToTheOutermostEnabledTabs() {
    Form form;
    form.tabs->setTabs("A|B|C|D|");
    form.tabs->setTabEnabled(4, false);
    QTest::keyClick(form.tabs, Qt::Key_End);
    QCOMPARE(form.tabs->CurrentTab(), 3);
    form.tabs->setTabEnabled(1, false);
    QTest::keyClick(form.tabs, Qt::Key_Home);
    QCOMPARE(form.tabs->CurrentTab(), 2);
}

void tst_zqTabDialog::ctrlTabGoesRoundFromTheStrip() {
    Form form;
    form.setFrames();
    ShowActive(form);
    form.tabs->setFocus();
    QSignalSpy clicks(form.tabs, &zqTabDialog::Click);
    QTest::keyClick(form.tabs, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(form.tabs->CurrentTab(), 3);
    QTest::keyClick(form.tabs, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.tabs->CurrentTab(), 1);
    QCOMPARE(clicks.count(), 2);
    QVERIFY(form.tabs->hasFocus());
}

void tst_zqTabDialog::ctrlTabTakesTheFocusToTheNextPage() {
    Form form;
    form.setFrames();
    ShowActive(form);
    form.field("f1_2")->setFocus();
    QTest::keyClick(form.field("f1_2"), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.shown(), "f2");
    QCOMPARE(form.focusWidget(), form.field("f2_1"));
    QTest::keyClick(form.field("f2_1"), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(form.shown(), "f1");
    QCOMPARE(form.focusWidget(), form.field("f1_1"));
}

void tst_zqTabDialog::ctrlTabElsewhereDoesNothing() {
    Form form;
    form.setFrames();
    ShowActive(form);
    form.other->setFocus();
    QTest::keyClick(form.other, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.tabs->CurrentTab(), 1);
}

void tst_zqTabDialog::ctrlTabDoesNothingForADisabledControl() {
    Form form;
    form.setFrames();
    form.tabs->setEnabled(false);
    ShowActive(form);
    form.field("f1_1")->setFocus();
    QTest::keyClick(form.field("f1_1"), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(form.tabs->CurrentTab(), 1);
    QCOMPARE(form.shown(), "f1");
}

void tst_zqTabDialog::ctrlTabInADocumentWindowStaysInIt() {
    QMdiArea area;
    area.resize(1000, 800);
    auto* one = new Form;
    auto* two = new Form;
    area.addSubWindow(one);
    QMdiSubWindow* second = area.addSubWindow(two);
    one->setFrames();
    two->setFrames();
    ShowActive(area);
    area.setActiveSubWindow(second);
    two->field("f1_1")->setFocus();
    QTest::keyClick(area.window()->windowHandle(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(area.activeSubWindow(), second);
    QCOMPARE(one->tabs->CurrentTab(), 1);
    QCOMPARE(two->tabs->CurrentTab(), 2);
}

void tst_zqTabDialog::aCaptionThatDoesNotFitHasAToolTip() {
    Form form;
    form.tabs->setTabs("Short|A caption much too long for its tab|C|");
    form.show();
    const auto tip_at = [&](int x) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(x, 5), form.tabs->mapToGlobal(QPoint(x, 5)));
        QCoreApplication::sendEvent(form.tabs, &help);
        return QToolTip::text();
    };
    QCOMPARE(tip_at(150), "A caption much too long for its tab");
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(tip_at(50), "");
}

QTEST_MAIN(tst_zqTabDialog)
#include "tst_zq_tab_dialog.moc"
