#include <QJsonArray>
#include <QLabel>
#include <QPushButton>

#include "database.h"
#include "main_form.h"

using ledgix::runtime::MessageAnswer;
using ledgix::test::MainForm;
using ledgix::test::NumberedProfiles;
using Message = ledgix::test::MessageRecorder::Message;

namespace model = ledgix::model;
namespace store = ledgix::store;
namespace test = ledgix::test;

// What the user does with the list of profiles and its buttons.
class tst_frmMainProfiles : public QObject {
    Q_OBJECT

private slots:
    void theRowUnderTheMouseIsUnderlined();
    void theMouseOnThePanelOrTheMarginTakesTheUnderline();
    void scrollingUnderlinesTheRowThatComesUnderTheMouse();
    void aClickSelects();
    void aClickOnTheSelectedRowLeavesItSelected();
    void aDoubleClickOnAnUnselectedRowSelectsAndOpens();
    void aDoubleClickOnTheSelectedRowOpens();
    void keysWorkLikeTheMouse();
    void newOpensAnUnsavedProfile();
    void newWithoutACollectionIsAnError();
    void editOpensTheSelectedProfile();
    void deleteQuestion_data();
    void deleteQuestion();
    void noDeletesNothing();
    void yesDeletesTheProfileAndItsRow();
    void deletingClosesTheEditor();
    void deletingLeavesThePropertyRows();
    void deletingByTheKeyAsks();
    void theDeleteKeyWithoutASelectionDoesNothing();
    void deletingKeepsTheListWhereItIs();
    void reloadingKeepsTheSelectedProfileSelected();
    void reloadingWithoutTheSelectedProfileSelectsNone();
    void reloadingKeepsTheListWhereItIs();
    void tenThousandProfilesAreListed();
};

void tst_frmMainProfiles::theRowUnderTheMouseIsUnderlined() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Move(main.list(), main.Middle(0));
    QVERIFY(main.rows().Row(0).FontUnderline);
    main.Move(main.list(), main.Middle(2));
    QVERIFY(!main.rows().Row(0).FontUnderline);
    QVERIFY(main.rows().Row(2).FontUnderline);
    main.Move(main.list(), main.Middle(2) + QPoint(1, 1));
    QVERIFY(main.rows().Row(2).FontUnderline);
}

void tst_frmMainProfiles::theMouseOnThePanelOrTheMarginTakesTheUnderline() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Move(main.list(), main.Middle(1));
    main.Move(main.list(), QPoint(50, main.list()->RowRect(2).bottom() + 20));
    QCOMPARE(main.rows().UnderlinedRow(), -1);
    main.Move(main.list(), main.Middle(1));
    QCOMPARE(main.rows().UnderlinedRow(), 1);
    main.Move(main.form->picMargin, QPoint(3, 3));
    QCOMPARE(main.rows().UnderlinedRow(), -1);
    main.Move(main.list(), main.Middle(1));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(main.list(), &leave);
    QCOMPARE(main.rows().UnderlinedRow(), -1);
}

void tst_frmMainProfiles::scrollingUnderlinesTheRowThatComesUnderTheMouse() {
    MainForm main(NumberedProfiles(60));
    QVERIFY(main.ShowActive());
    main.Move(main.list(), main.Middle(1));
    main.form->VScroll->setValue(main.form->VScroll->minimum() + main.rows().row_height() + 120);
    QCOMPARE(main.rows().UnderlinedRow(), 2);
}

void tst_frmMainProfiles::aClickSelects() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(1);
    QCOMPARE(main.form->iSelectMenu(), 1);
    QCOMPARE(main.rows().Row(1).BackColor, 0x80FFFF);
    QVERIFY(main.form->cmdEdit->isEnabled());
    QVERIFY(main.form->cmdDelete->isEnabled());
    main.Click(2);
    QCOMPARE(main.form->iSelectMenu(), 2);
    QCOMPARE(main.rows().Row(1).BackColor, 0xFFFFFF);
    QCOMPARE(main.editors.entries, QStringList());
}

void tst_frmMainProfiles::aClickOnTheSelectedRowLeavesItSelected() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(1);
    main.Click(1);
    QCOMPARE(main.form->iSelectMenu(), 1);
    QVERIFY(main.form->cmdEdit->isEnabled());
}

void tst_frmMainProfiles::aDoubleClickOnAnUnselectedRowSelectsAndOpens() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(0);
    QTest::mouseDClick(main.list(), Qt::LeftButton, {}, main.Middle(2));
    QCOMPARE(main.form->iSelectMenu(), 2);
    QCOMPARE(main.rows().Row(0).BackColor, 0xFFFFFF);
    QCOMPARE(main.editors.entries, QStringList({"open 9", "show 9", "front 9"}));
}

void tst_frmMainProfiles::aDoubleClickOnTheSelectedRowOpens() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.DoubleClick(1);
    QCOMPARE(main.form->iSelectMenu(), 1);
    QCOMPARE(main.editors.entries, QStringList({"open 5", "show 5", "front 5"}));
    main.DoubleClick(1);
    QCOMPARE(main.editors.entries.mid(3), QStringList({"show 5", "front 5"}));
}

void tst_frmMainProfiles::keysWorkLikeTheMouse() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QCOMPARE(QApplication::focusWidget(), main.list());
    main.Press(Qt::Key_Down);
    QCOMPARE(main.form->iSelectMenu(), 0);
    main.Press(Qt::Key_Down);
    QCOMPARE(main.form->iSelectMenu(), 1);
    QVERIFY(main.form->cmdEdit->isEnabled());
    main.Press(Qt::Key_Return);
    QCOMPARE(main.editors.entries, QStringList({"open 5", "show 5", "front 5"}));
}

void tst_frmMainProfiles::newOpensAnUnsavedProfile() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QTest::mouseClick(main.form->cmdNew, Qt::LeftButton);
    QCOMPARE(main.editors.entries, QStringList({"open 10", "show 10", "front 10"}));
    QCOMPARE(model::gProfiles->Count(), 4U);
    QVERIFY(!model::gProfiles->Item("P10").Saved);
    QCOMPARE(main.rows().ShownCount(), 3);
}

void tst_frmMainProfiles::newWithoutACollectionIsAnError() {
    MainForm main;
    model::gProfiles.reset();
    QVERIFY(main.ShowActive());
    QTest::mouseClick(main.form->cmdNew, Qt::LeftButton);
    QCOMPARE(main.messages.messages().size(), 1U);
    QCOMPARE(main.messages.messages()[0].text.substr(0, 5), "91 - ");
    QCOMPARE(main.messages.messages()[0].title, "Vantreo Ledgix");
}

void tst_frmMainProfiles::editOpensTheSelectedProfile() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(2);
    QTest::mouseClick(main.form->cmdEdit, Qt::LeftButton);
    QCOMPARE(main.editors.entries, QStringList({"open 9", "show 9", "front 9"}));
}

void tst_frmMainProfiles::deleteQuestion_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("style");
    const QJsonArray list = test::CasesOf("main_window.json")["deleteQuestion"].toArray();
    QVERIFY(!list.isEmpty());
    for (const QJsonValue& one : list)
        QTest::newRow(qPrintable("'" + one["name"].toString() + "'"))
            << one["name"].toString() << one["text"].toString() << one["style"].toInt();
}

void tst_frmMainProfiles::deleteQuestion() {
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(int, style);
    MainForm main({{4, name.toStdString()}});
    QVERIFY(main.ShowActive());
    main.Click(0);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QVERIFY(main.messages.messages() == (std::vector<Message>{{text.toStdString(), style, "Vantreo Ledgix"}}));
}

void tst_frmMainProfiles::noDeletesNothing() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.DoubleClick(1);
    main.messages.AnswerNext(MessageAnswer::kNo);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QCOMPARE(main.messages.messages().size(), 1U);
    QCOMPARE(main.rows().ShownCount(), 3);
    QCOMPARE(main.form->iSelectMenu(), 1);
    QVERIFY(!main.editors.entries.contains("close 5"));
    QCOMPARE(main.file.Column("select ProfileNumber from Profiles").size(), 3U);
}

void tst_frmMainProfiles::yesDeletesTheProfileAndItsRow() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(1);
    main.messages.AnswerNext(MessageAnswer::kYes);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QCOMPARE(main.rows().ShownCount(), 2);
    QCOMPARE(main.rows().Caption(1), "Cole & Dunn");
    QCOMPARE(main.form->iSelectMenu(), -1);
    QVERIFY(!main.form->cmdEdit->isEnabled());
    QVERIFY(!main.form->cmdDelete->isEnabled());
    QVERIFY(!model::gProfiles->Profiles().Contains("P5"));
    QCOMPARE(main.file.Rows("select * from Profiles where ProfileNumber = 5").size(), 0U);
    QCOMPARE(main.file.Rows("select * from Profiles").size(), 2U);
}

void tst_frmMainProfiles::deletingClosesTheEditor() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.DoubleClick(0);
    main.messages.AnswerNext(MessageAnswer::kYes);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QCOMPARE(main.editors.entries.last(), "close 2");
    QCOMPARE(main.rows().ShownCount(), 2);
}

void tst_frmMainProfiles::deletingLeavesThePropertyRows() {
    test::HouseholdBuilder builder;
    builder.AddProfile(3, {{"ProfileName", "Archer"}}).AddProperty(3, 1, {{"PropertyName", "House"}});
    const std::vector<std::uint8_t> content = builder.Finish();
    const test::HouseholdFile file(content);
    MainForm main(NumberedProfiles(0));
    store::gDatabase.reset();
    file.Open();
    model::gProfiles->Load();
    QVERIFY(main.ShowActive());
    main.Click(0);
    main.messages.AnswerNext(MessageAnswer::kYes);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QCOMPARE(file.Rows("select * from Profiles").size(), 0U);
    QCOMPARE(file.Rows("select * from ProfileProperty").size(), 1U);
}

void tst_frmMainProfiles::deletingByTheKeyAsks() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(2);
    main.messages.AnswerNext(MessageAnswer::kYes);
    main.Press(Qt::Key_Delete);
    QCOMPARE(main.messages.messages()[0].text, "Delete profile 'Cole & Dunn'?");
    QCOMPARE(main.rows().ShownCount(), 2);
    QCOMPARE(main.list()->CurrentRow(), 1);
}

void tst_frmMainProfiles::theDeleteKeyWithoutASelectionDoesNothing() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Press(Qt::Key_Delete);
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMainProfiles::deletingKeepsTheListWhereItIs() {
    MainForm main(NumberedProfiles(200));
    QVERIFY(main.ShowActive());
    main.form->VScroll->setValue(main.form->VScroll->minimum() + 9000);
    main.Click(main.rows().FirstRowBelow(3000));
    main.messages.AnswerNext(MessageAnswer::kYes);
    main.Press(Qt::Key_Delete);
    QCOMPARE(main.rows().ShownCount(), 199);
    QCOMPARE(main.rows().Top(0), 120 - 9000);
}

void tst_frmMainProfiles::reloadingKeepsTheSelectedProfileSelected() {
    MainForm main;
    model::gProfiles->Item("P5").Saved = false;
    QVERIFY(main.ShowActive());
    main.Click(1);
    QCOMPARE(main.rows().Tag(main.form->iSelectMenu()), "9");
    model::gProfiles->Item("P5").Saved = true;
    model::gProfiles->Item("P5").ProfileName = "Renamed";
    main.form->ReloadProfileList();
    QCOMPARE(main.rows().Caption(1), "Renamed");
    QCOMPARE(main.form->iSelectMenu(), 2);
    QVERIFY(main.form->cmdEdit->isEnabled());
}

void tst_frmMainProfiles::reloadingWithoutTheSelectedProfileSelectsNone() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.Click(1);
    model::gProfiles->Remove("P5");
    main.form->ReloadProfileList();
    QCOMPARE(main.form->iSelectMenu(), -1);
    QVERIFY(!main.form->cmdEdit->isEnabled());
    QVERIFY(!main.form->cmdDelete->isEnabled());
}

void tst_frmMainProfiles::reloadingKeepsTheListWhereItIs() {
    MainForm main(NumberedProfiles(200));
    QVERIFY(main.ShowActive());
    main.form->VScroll->setValue(main.form->VScroll->minimum() + 9000);
    main.form->ReloadProfileList();
    QCOMPARE(main.rows().Top(0), 120 - 9000);
    main.form->LoadProfiles();
    QCOMPARE(main.rows().Top(0), 120);
}

void tst_frmMainProfiles::tenThousandProfilesAreListed() {
    MainForm main(NumberedProfiles(0));
    for (int i = 0; i < 10000; ++i)
        model::gProfiles->AddItem().Saved = true;
    QVERIFY(main.ShowActive());
    QCOMPARE(main.rows().ShownCount(), 10000);
    main.Press(Qt::Key_End);
    QCOMPARE(main.form->iSelectMenu(), 9999);
    QVERIFY(main.list()->rect().contains(main.list()->RowRect(9999)));
    QCOMPARE(main.form->VScroll->value(), main.form->VScroll->maximum());
    main.Press(Qt::Key_Return);
    QCOMPARE(main.editors.entries, QStringList({"open 10000", "show 10000", "front 10000"}));
    QCOMPARE(main.form->findChild<QLabel*>("lblCount")->text(), "10,000 profiles");
}

QTEST_MAIN(tst_frmMainProfiles)
#include "tst_frm_main_profiles.moc"
