#include <QAccessible>
#include <QSignalSpy>

#include "list_panel.h"

using ledgix::shell::PanelScrollBar;
using ledgix::shell::ProfileList;
using ledgix::test::Panel;

namespace {

// Keeps what assistive technology is told.
class TellingList : public ProfileList {
public:
    using ProfileList::ProfileList;

    QList<std::pair<QAccessible::Event, int>> told;

protected:
    void Tell(QAccessible::Event what, int row) override {
        told.append({what, row});
        ProfileList::Tell(what, row);
    }
};

}  // namespace

class tst_ProfileListAccessible : public QObject {
    Q_OBJECT

private slots:
    void isAListToAssistiveTechnology();
    void itemsTellTheirStates();
    void itemsCanBePressedAndOpened();
    void itemsOfAShorterListAreInvalid();
    void changesAreToldToAssistiveTechnology();
};

void tst_ProfileListAccessible::isAListToAssistiveTechnology() {
    Panel panel(10000);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&panel.list);
    QVERIFY(list);
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->childCount(), 10000);
    QAccessibleInterface* item = list->child(2);
    QVERIFY(item);
    QCOMPARE(item->role(), QAccessible::ListItem);
    QCOMPARE(item->text(QAccessible::Name), "Profile 3");
    QCOMPARE(item->parent(), list);
    QCOMPARE(list->indexOfChild(item), 2);
    QCOMPARE(list->child(9999)->text(QAccessible::Name), "Profile 10000");
    QVERIFY(!list->child(10000));
    QVERIFY(!list->child(-1));
    const QPoint middle = item->rect().center();
    QCOMPARE(middle, panel.list.mapToGlobal(panel.list.RowRect(2).center()));
    QCOMPARE(list->childAt(middle.x(), middle.y()), item);
}

void tst_ProfileListAccessible::itemsTellTheirStates() {
    Panel panel(100);
    panel.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel.window));
    panel.list.setFocus();
    panel.list.SelectProfile(1);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&panel.list);
    const QAccessible::State selected = list->child(1)->state();
    QVERIFY(selected.selected && selected.focused && selected.selectable && selected.focusable);
    QVERIFY(!selected.offscreen && !selected.disabled && !selected.invisible);
    QCOMPARE(list->focusChild(), list->child(1));
    const QAccessible::State other = list->child(99)->state();
    QVERIFY(!other.selected && !other.focused && other.offscreen);
}

void tst_ProfileListAccessible::itemsCanBePressedAndOpened() {
    Panel panel(100);
    const QSignalSpy clicks(&panel.list, &ProfileList::RowClick);
    const QSignalSpy opens(&panel.list, &ProfileList::RowDblClick);
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(&panel.list)->child(60);
    QAccessibleActionInterface* actions = item->actionInterface();
    QVERIFY(actions);
    QCOMPARE(actions->actionNames(), QStringList({QAccessibleActionInterface::pressAction(), "Open"}));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks[0][0].toInt(), 60);
    QVERIFY(panel.list.rect().contains(panel.list.RowRect(60)));
    actions->doAction("Open");
    QCOMPARE(opens.size(), 1);
    panel.list.setEnabled(false);
    actions->doAction("Open");
    QCOMPARE(opens.size(), 1);
    QVERIFY(item->state().disabled);
}

void tst_ProfileListAccessible::itemsOfAShorterListAreInvalid() {
    Panel panel(3);
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(&panel.list)->child(2);
    QVERIFY(item->isValid());
    panel.list.LoadProfiles(nullptr);
    QVERIFY(!item->isValid());
    QVERIFY(item->state().invalid);
    QCOMPARE(item->text(QAccessible::Name), QString());
}

void tst_ProfileListAccessible::changesAreToldToAssistiveTechnology() {
    using Told = QList<std::pair<QAccessible::Event, int>>;
    const Panel panel(5);
    QWidget window;
    PanelScrollBar bar(Qt::Vertical, &window);
    TellingList list(bar, &window);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    list.LoadProfiles(&panel.held);
    QCOMPARE(std::exchange(list.told, {}), Told({{QAccessible::ObjectReorder, -1}}));
    list.clearFocus();
    list.SelectProfile(3);
    QCOMPARE(std::exchange(list.told, {}), Told({{QAccessible::Selection, 3}}));
    list.setFocus();
    QCOMPARE(std::exchange(list.told, {}), Told({{QAccessible::Focus, 3}}));
    list.SelectProfile(4);
    QCOMPARE(std::exchange(list.told, {}), Told({{QAccessible::Selection, 4}, {QAccessible::Focus, 4}}));
    list.DeSelectProfile(4);
    QCOMPARE(list.told, Told({{QAccessible::Selection, -1}}));
}

QTEST_MAIN(tst_ProfileListAccessible)
#include "tst_profile_list_accessible.moc"
