#include <QJsonArray>
#include <QSignalSpy>
#include <QStyleOptionSlider>
#include <QToolTip>

#include "list_panel.h"

using ledgix::shell::PanelScrollBar;
using ledgix::shell::ProfileList;
using ledgix::shell::ProfileRow;
using ledgix::test::Panel;

namespace model = ledgix::model;

namespace {

bool HasBlackText(const QImage& image, const QRect& row) {
    const QRect inside = row.adjusted(4, 4, -4, -4);
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            if (qGray(image.pixel(x, y)) < 64)
                return true;
    return false;
}

}  // namespace

class tst_ProfileList : public QObject {
    Q_OBJECT

private slots:
    void rows_data();
    void rows();
    void rowsLieAtTheirTwips();
    void rowsAreWhiteAndTheSelectedOneIsYellow();
    void textIsBlackInADarkPaletteToo();
    void onlyTheUnderlinedRowIsUnderlined();
    void ampersandsAreShown();
    void longNamesAreElidedWithATip();
    void namesThatLookLikeMarkupStayText();
    void shortNamesHaveNoTip();
    void anEmptyListSaysSo();
    void onlyVisibleRowsAreDrawn();
    void tenThousandRowsScrollToTheEnd();
    void theBarHasTheTwipsOfTheRule();
    void theBarIsHiddenWhileAllRowsFit();
    void theSliderIsAsLongAsThePanelsShare();
    void theBarMovesTheRows();
    void aGrowingPanelKeepsTheRowsInRange();
    void aLargerFontMakesHigherRows();
    void aClickIsPressAndReleaseOnOneRow();
    void otherButtonsDoNothing();
    void keysMoveTheSelection_data();
    void keysMoveTheSelection();
    void withoutASelectionArrowsTakeTheCurrentRow();
    void enterOpensAndDeleteAsks();
    void keysInAnEmptyListDoNothing();
    void theCurrentRowShowsTheFocus();
};

void tst_ProfileList::rows_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray list = ledgix::test::CasesOf("main_window.json")["rows"].toArray();
    QVERIFY(!list.isEmpty());
    for (const QJsonValue& one : list)
        QTest::addRow("%d profiles", int(one["profiles"].toArray().size())) << one.toObject();
}

void tst_ProfileList::rows() {
    QFETCH(QJsonObject, given);
    Panel panel(0);
    for (const QJsonValue& one : given["profiles"].toArray()) {
        std::int32_t number = one["ProfileNumber"].toInt();
        model::clsProfile& profile = panel.held.AddItem(number);
        profile.ProfileName = one["ProfileName"].toString().toStdString();
        profile.Saved = one["Saved"].toBool();
    }
    panel.list.LoadProfiles(&panel.held);
    const QJsonArray expected = given["rows"].toArray();
    QCOMPARE(panel.list.rows().ShownCount(), int(expected.size()));
    const int own = panel.list.rows().row_height() - given["rowHeight"].toInt();
    for (int k = 0; k < int(expected.size()); ++k) {
        const ProfileRow row = panel.list.rows().Row(k);
        QCOMPARE(QString::fromStdString(row.Caption), expected[k]["Caption"].toString());
        QCOMPARE(QString::fromStdString(row.Tag), expected[k]["Tag"].toString());
        QCOMPARE(row.Top, expected[k]["Top"].toInt() + k * own);
        QCOMPARE(panel.Fill(k), QColor(255, 255, 255));
        QVERIFY(HasBlackText(panel.Picture(), panel.list.RowRect(k)));
    }
}

void tst_ProfileList::rowsLieAtTheirTwips() {
    Panel panel(3);
    const int height = panel.list.rows().row_height();
    QCOMPARE(height % 15, 0);
    QCOMPARE(panel.list.RowRect(0), QRect(8, 8, 300 - 16, height / 15));
    QCOMPARE(panel.list.RowRect(2).top(), 3 * 8 + 2 * height / 15);
}

void tst_ProfileList::rowsAreWhiteAndTheSelectedOneIsYellow() {
    Panel panel(3);
    panel.list.SelectProfile(1);
    QCOMPARE(panel.Fill(0), QColor(255, 255, 255));
    QCOMPARE(panel.Fill(1), QColor(255, 255, 128));
    panel.list.DeSelectProfile(1);
    QCOMPARE(panel.Fill(1), QColor(255, 255, 255));
}

void tst_ProfileList::textIsBlackInADarkPaletteToo() {
    Panel panel(2);
    QPalette dark(QColor(40, 44, 52));
    dark.setColor(QPalette::WindowText, Qt::white);
    panel.window.setPalette(dark);
    panel.list.SelectProfile(1);
    QCOMPARE(panel.Fill(0), QColor(255, 255, 255));
    QCOMPARE(panel.Fill(1), QColor(255, 255, 128));
    QVERIFY(HasBlackText(panel.Picture(), panel.list.RowRect(0)));
    QVERIFY(HasBlackText(panel.Picture(), panel.list.RowRect(1)));
}

void tst_ProfileList::onlyTheUnderlinedRowIsUnderlined() {
    Panel panel(3);
    const QImage plain = panel.Picture();
    panel.list.Underline(1);
    const QImage underlined = panel.Picture();
    QCOMPARE(underlined.copy(panel.list.RowRect(0)), plain.copy(panel.list.RowRect(0)));
    QVERIFY(underlined.copy(panel.list.RowRect(1)) != plain.copy(panel.list.RowRect(1)));
    panel.list.Unhighlight(-1);
    QCOMPARE(panel.Picture(), plain);
}

void tst_ProfileList::ampersandsAreShown() {
    Panel with(std::vector<ledgix::test::NamedProfile>{{1, "A&B"}});
    Panel without(std::vector<ledgix::test::NamedProfile>{{1, "AB"}});
    QVERIFY(with.Picture() != without.Picture());
    Panel doubled(std::vector<ledgix::test::NamedProfile>{{1, "A&&B"}});
    QVERIFY(with.Picture() != doubled.Picture());
}

void tst_ProfileList::longNamesAreElidedWithATip() {
    const std::string name(50, 'W');
    Panel panel(std::vector<ledgix::test::NamedProfile>{{1, name}});
    const QRect row = panel.list.RowRect(0);
    const QImage image = panel.Picture();
    for (int y = row.top() + 1; y < row.bottom(); ++y)
        QCOMPARE(image.pixelColor(row.right() - 2, y), QColor(255, 255, 255));
    QHelpEvent help(QEvent::ToolTip, row.center(), panel.list.mapToGlobal(row.center()));
    QApplication::sendEvent(&panel.list, &help);
    QVERIFY(QToolTip::text().contains(QString::fromStdString(name)));
    QToolTip::hideText();
}

void tst_ProfileList::namesThatLookLikeMarkupStayText() {
    Panel panel(std::vector<ledgix::test::NamedProfile>{{1, "<b>" + std::string(45, 'W')}});
    const QPoint middle = panel.list.RowRect(0).center();
    QHelpEvent help(QEvent::ToolTip, middle, panel.list.mapToGlobal(middle));
    QApplication::sendEvent(&panel.list, &help);
    QVERIFY(QToolTip::text().contains("&lt;b&gt;WWW"));
    QToolTip::hideText();
}

void tst_ProfileList::shortNamesHaveNoTip() {
    Panel panel(1);
    for (const QPoint& position : {panel.list.RowRect(0).center(), QPoint(100, 180)}) {
        QHelpEvent help(QEvent::ToolTip, position, panel.list.mapToGlobal(position));
        QApplication::sendEvent(&panel.list, &help);
        QVERIFY(!help.isAccepted());
        QCOMPARE(QToolTip::text(), QString());
    }
}

void tst_ProfileList::anEmptyListSaysSo() {
    Panel panel(0);
    QVERIFY(panel.bar.isHidden());
    QCOMPARE(panel.list.CurrentRow(), -1);
    QCOMPARE(panel.list.accessibleDescription(), "No profiles yet.\nChoose New Profile to begin.");
    const QImage empty = panel.Picture();
    std::int32_t number = 1;
    panel.held.AddItem(number).Saved = true;
    panel.list.LoadProfiles(&panel.held);
    QCOMPARE(panel.list.accessibleDescription(), QString());
    QVERIFY(panel.Picture() != empty);
}

void tst_ProfileList::onlyVisibleRowsAreDrawn() {
    Panel panel(10000);
    // Rows outside of the panel have no pixel in it; the last visible one has.
    panel.bar.setValue(panel.bar.minimum() + 1234567);
    const int first = panel.list.rows().FirstRowBelow(0);
    QVERIFY(first > 1000);
    QVERIFY(!panel.list.rect().intersects(panel.list.RowRect(first - 1)));
    const int last = panel.list.rows().FirstRowBelow(3000);
    QVERIFY(panel.list.rect().intersects(panel.list.RowRect(last - 1)));
    QVERIFY(!panel.list.rect().intersects(panel.list.RowRect(last + 1)));
    QCOMPARE(panel.Fill(first + 1), QColor(255, 255, 255));
    QCOMPARE(panel.Fill(last - 1), QColor(255, 255, 255));
}

void tst_ProfileList::tenThousandRowsScrollToTheEnd() {
    Panel panel(10000);
    QCOMPARE(panel.list.rows().ShownCount(), 10000);
    panel.bar.setValue(panel.bar.maximum());
    const QRect last = panel.list.RowRect(9999);
    QVERIFY(panel.list.rect().contains(last));
    QCOMPARE(panel.list.RowAt(last.center()), std::optional<int>(9999));
    panel.list.ShowRow(0);
    QCOMPARE(panel.bar.value(), panel.bar.minimum());
    panel.list.ShowRow(5000);
    QVERIFY(panel.list.rect().contains(panel.list.RowRect(5000)));
}

void tst_ProfileList::theBarHasTheTwipsOfTheRule() {
    Panel panel(20);
    const int height = panel.list.rows().row_height();
    QVERIFY(!panel.bar.isHidden());
    QCOMPARE(panel.bar.minimum(), 3000);
    QCOMPARE(panel.bar.maximum(), 20 * (height + 120) + 120);
    QCOMPARE(panel.bar.singleStep(), height);
    QCOMPARE(panel.bar.pageStep(), height);
    QCOMPARE(panel.bar.height(), panel.list.height());
    QCOMPARE(panel.bar.value(), 3000);
}

void tst_ProfileList::theBarIsHiddenWhileAllRowsFit() {
    Panel panel(4);
    const int filled = 4 * (panel.list.rows().row_height() + 120);
    panel.list.SetPanelHeight(filled);
    QVERIFY(panel.bar.isHidden());
    panel.list.SetPanelHeight(filled - 1);
    QVERIFY(!panel.bar.isHidden());
}

void tst_ProfileList::theSliderIsAsLongAsThePanelsShare() {
    Panel panel(12);
    QStyleOptionSlider option;
    struct Open : PanelScrollBar {
        using PanelScrollBar::initStyleOption;
    };
    (panel.bar.*&Open::initStyleOption)(&option);
    QCOMPARE(option.pageStep, 3000);
    QCOMPARE(option.minimum, panel.bar.minimum());
    QCOMPARE(option.maximum, panel.bar.maximum());
}

void tst_ProfileList::theBarMovesTheRows() {
    Panel panel(20);
    panel.bar.setValue(panel.bar.minimum() + 150);
    QCOMPARE(panel.list.rows().Top(0), 120 - 150);
    QCOMPARE(panel.list.RowRect(0).top(), 8 - 10);
    QCOMPARE(panel.list.RowAt(QPoint(50, 0)), std::optional<int>(0));
}

void tst_ProfileList::aGrowingPanelKeepsTheRowsInRange() {
    Panel panel(20);
    panel.bar.setValue(panel.bar.maximum());
    panel.list.SetPanelHeight(4500);
    QCOMPARE(panel.bar.value(), panel.bar.maximum());
    QCOMPARE(panel.list.rows().Top(19) + panel.list.rows().row_height() + 120, 4500);
    panel.list.SetPanelHeight(60000);
    QVERIFY(panel.bar.isHidden());
    QCOMPARE(panel.list.rows().Top(0), 120);
}

void tst_ProfileList::aLargerFontMakesHigherRows() {
    Panel panel(20);
    const int before = panel.list.rows().row_height();
    QFont large = panel.list.font();
    large.setPointSize(large.pointSize() * 2);
    panel.list.setFont(large);
    const int after = panel.list.rows().row_height();
    QVERIFY(after > before);
    QCOMPARE(panel.bar.maximum(), 20 * (after + 120) + 120);
    QVERIFY(panel.list.RowRect(0).height() > panel.list.fontMetrics().height());
}

void tst_ProfileList::aClickIsPressAndReleaseOnOneRow() {
    Panel panel(3);
    const QSignalSpy clicks(&panel.list, &ProfileList::RowClick);
    const auto middle = [&](int row) { return panel.list.RowRect(row).center(); };
    QTest::mouseClick(&panel.list, Qt::LeftButton, {}, middle(1));
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(clicks[0][0].toInt(), 1);
    QTest::mousePress(&panel.list, Qt::LeftButton, {}, middle(0));
    QTest::mouseRelease(&panel.list, Qt::LeftButton, {}, middle(2));
    QTest::mouseClick(&panel.list, Qt::LeftButton, {}, QPoint(100, panel.list.RowRect(0).bottom() + 3));
    QTest::mouseClick(&panel.list, Qt::LeftButton, {}, QPoint(3, middle(0).y()));
    QTest::mouseClick(&panel.list, Qt::LeftButton, {}, QPoint(100, 190));
    QCOMPARE(clicks.size(), 1);
}

void tst_ProfileList::otherButtonsDoNothing() {
    Panel panel(3);
    const QSignalSpy clicks(&panel.list, &ProfileList::RowClick);
    const QSignalSpy opens(&panel.list, &ProfileList::RowDblClick);
    QTest::mouseClick(&panel.list, Qt::RightButton, {}, panel.list.RowRect(1).center());
    QTest::mouseDClick(&panel.list, Qt::RightButton, {}, panel.list.RowRect(1).center());
    QCOMPARE(clicks.size() + opens.size(), 0);
}

void tst_ProfileList::keysMoveTheSelection_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("down") << int(Qt::Key_Down) << 3 << 4;
    QTest::newRow("up") << int(Qt::Key_Up) << 3 << 2;
    QTest::newRow("down at the end") << int(Qt::Key_Down) << 99 << 99;
    QTest::newRow("up at the start") << int(Qt::Key_Up) << 0 << 0;
    QTest::newRow("home") << int(Qt::Key_Home) << 50 << 0;
    QTest::newRow("end") << int(Qt::Key_End) << 50 << 99;
    QTest::newRow("page up at the start") << int(Qt::Key_PageUp) << 1 << 0;
    QTest::newRow("page down at the end") << int(Qt::Key_PageDown) << 98 << 99;
}

void tst_ProfileList::keysMoveTheSelection() {
    QFETCH(int, key);
    QFETCH(int, from);
    QFETCH(int, to);
    Panel panel(100);
    QObject::connect(&panel.list, &ProfileList::RowClick, &panel.list, &ProfileList::SelectProfile);
    panel.list.SelectProfile(from);
    panel.list.ShowRow(from);
    QTest::keyClick(&panel.list, Qt::Key(key));
    QCOMPARE(panel.list.rows().iSelectMenu(), to);
    QVERIFY(panel.list.rect().contains(panel.list.RowRect(to)));
    const int page = panel.list.rows().RowsPerPage();
    panel.list.SelectProfile(50);
    QTest::keyClick(&panel.list, Qt::Key_PageDown);
    QCOMPARE(panel.list.rows().iSelectMenu(), 50 + page);
    QTest::keyClick(&panel.list, Qt::Key_PageUp);
    QCOMPARE(panel.list.rows().iSelectMenu(), 50);
}

void tst_ProfileList::withoutASelectionArrowsTakeTheCurrentRow() {
    Panel panel(5);
    QObject::connect(&panel.list, &ProfileList::RowClick, &panel.list, &ProfileList::SelectProfile);
    QTest::keyClick(&panel.list, Qt::Key_Down);
    QCOMPARE(panel.list.rows().iSelectMenu(), 0);
    panel.list.SelectProfile(3);
    panel.list.DeSelectProfile(3);
    QCOMPARE(panel.list.CurrentRow(), 3);
    QTest::keyClick(&panel.list, Qt::Key_Space);
    QCOMPARE(panel.list.rows().iSelectMenu(), 3);
}

void tst_ProfileList::enterOpensAndDeleteAsks() {
    Panel panel(5);
    const QSignalSpy opens(&panel.list, &ProfileList::RowDblClick);
    const QSignalSpy deletes(&panel.list, &ProfileList::DeleteAsked);
    panel.list.SelectProfile(2);
    QTest::keyClick(&panel.list, Qt::Key_Return);
    QTest::keyClick(&panel.list, Qt::Key_Enter);
    QCOMPARE(opens.size(), 2);
    QCOMPARE(opens[0][0].toInt(), 2);
    QTest::keyClick(&panel.list, Qt::Key_Delete);
    QCOMPARE(deletes.size(), 1);
    QTest::keyClick(&panel.list, Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(deletes.size(), 1);
}

void tst_ProfileList::keysInAnEmptyListDoNothing() {
    Panel panel(0);
    const QSignalSpy clicks(&panel.list, &ProfileList::RowClick);
    const QSignalSpy opens(&panel.list, &ProfileList::RowDblClick);
    const QSignalSpy deletes(&panel.list, &ProfileList::DeleteAsked);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Delete, Qt::Key_End, Qt::Key_PageDown})
        QTest::keyClick(&panel.list, key);
    QCOMPARE(clicks.size() + opens.size() + deletes.size(), 0);
}

void tst_ProfileList::theCurrentRowShowsTheFocus() {
    Panel panel(3);
    panel.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel.window));
    panel.list.clearFocus();
    const QImage without = panel.Picture();
    panel.list.setFocus();
    const QRect frame = panel.list.RowRect(0).adjusted(-2, -2, 2, 2);
    const QImage with = panel.Picture();
    QVERIFY(with.copy(frame) != without.copy(frame));
    QCOMPARE(with.copy(panel.list.RowRect(2)), without.copy(panel.list.RowRect(2)));
}

QTEST_MAIN(tst_ProfileList)
#include "tst_profile_list.moc"
