#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "tab_form.h"

using ledgix::controls::zqTabDialog;
using ledgix::test::Form;
using ledgix::test::ShowActive;

class tst_TabListAccessible : public QObject {
    Q_OBJECT

private slots:
    void isAListOfPageTabs();
    void tabsTellTheirState();
    void aTabCanBePressedByAssistiveTechnology();
    void theListFollowsItsTabs();
};

void tst_TabListAccessible::isAListOfPageTabs() {
    Form form;
    form.tabs->setTabs("Income|Profit & Loss|");
    form.show();
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(form.tabs);
    QVERIFY(list != nullptr);
    QCOMPARE(list->role(), QAccessible::PageTabList);
    QCOMPARE(list->childCount(), 2);
    QCOMPARE(list->child(0)->role(), QAccessible::PageTab);
    QCOMPARE(list->child(0)->text(QAccessible::Name), "Income");
    QCOMPARE(list->child(1)->text(QAccessible::Name), "Profit & Loss");
    QCOMPARE(list->child(1)->parent(), list);
    QCOMPARE(list->indexOfChild(list->child(1)), 1);
    const QRect second = list->child(1)->rect();
    QCOMPARE(second, QRect(form.tabs->mapToGlobal(QPoint(150, 0)), QSize(150, 20)));
    QCOMPARE(list->childAt(second.center().x(), second.center().y()), list->child(1));
    QVERIFY(list->child(2) == nullptr);
}

void tst_TabListAccessible::tabsTellTheirState() {
    Form form;
    form.tabs->setTabEnabled(3, false);
    ShowActive(form);
    form.tabs->setFocus();
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(form.tabs);
    QVERIFY(list->child(0)->state().selected && list->child(0)->state().focused);
    QVERIFY(!list->child(1)->state().selected && list->child(1)->state().selectable);
    QVERIFY(list->child(2)->state().disabled && !list->child(2)->state().selectable);
    QCOMPARE(list->focusChild(), list->child(0));
    form.tabs->setEnabled(false);
    QVERIFY(list->child(1)->state().disabled);
}

void tst_TabListAccessible::aTabCanBePressedByAssistiveTechnology() {
    Form form;
    form.setFrames();
    form.show();
    QSignalSpy clicks(form.tabs, &zqTabDialog::Click);
    QAccessibleInterface* second = QAccessible::queryAccessibleInterface(form.tabs)->child(1);
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(form.shown(), "f2");
    QCOMPARE(clicks.count(), 1);
    QVERIFY(second->state().selected);
}

void tst_TabListAccessible::theListFollowsItsTabs() {
    Form form;
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(form.tabs);
    QAccessibleInterface* third = list->child(2);
    QVERIFY(third->isValid());
    form.tabs->setTabs("One|");
    QCOMPARE(list->childCount(), 1);
    QVERIFY(!third->isValid());
    QVERIFY(third->state().invalid);
    QCOMPARE(third->text(QAccessible::Name), "");
    QCOMPARE(list->child(0)->text(QAccessible::Name), "One");
}

QTEST_MAIN(tst_TabListAccessible)
#include "tst_tab_list_accessible.moc"
