#include "find_bar.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <memory>

#include "report_pages.h"
#include "text_places.h"

using ledgix::preview::FindBar;
using ledgix::preview::frmPreview;
using ledgix::preview::PageView;
using ledgix::preview::TextMarks;
using ledgix::test::Click;
using ledgix::test::ReportOf;

// Finding and selecting texts in the preview.
class tst_FindBar : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { window_.reset(); }

    void opensByKeyAndButton();
    void countsAsTheUserTypes();
    void goesOnAndBack();
    void enterGoesOnToo();
    void beginsAtThePageLookedAt();
    void staysAtItsPlaceWhileTheTextGrows();
    void bringsThePlaceIntoView();
    void marksThePlaces();
    void escapePutsItAwayAndThenTheWindow();
    void startsWithTheSelection();
    void theMouseSelectsAndCtrlCCopies();
    void shiftExtendsTheSelection();
    void aDoubleClickSelectsAWord();
    void everythingCanBeCopied();
    void copyingInTheFieldCopiesTheField();

private:
    FindBar* Bar() const { return window_->findBar; }
    QPoint PointOf(int page, double x, double y) const {
        const QRect sheet = window_->view->PlaceOfPage(page);
        return sheet.topLeft() + (QPointF(x, y) * sheet.width() / 595.28).toPoint();
    }
    void Type(const QString& text) {
        QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(Bar()->txtFind, text);
    }

    ledgix::test::OwnSettings settings_;
    std::unique_ptr<frmPreview> window_;
};

void tst_FindBar::init() {
    window_ = std::make_unique<frmPreview>(
        ReportOf(3), [] {}, nullptr);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->resize(700, 600);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QGuiApplication::clipboard()->clear();
}

void tst_FindBar::opensByKeyAndButton() {
    QVERIFY(!Bar()->isVisible());
    QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(Bar()->isVisible());
    QVERIFY(Bar()->txtFind->hasFocus());
    Bar()->End();
    QVERIFY(window_->view->hasFocus());
    Click(*window_, "cmdFind");
    QVERIFY(Bar()->txtFind->hasFocus());
    Bar()->End();
    QTest::keyClick(window_->view, Qt::Key_F3);
    QVERIFY(Bar()->txtFind->hasFocus());
}

void tst_FindBar::countsAsTheUserTypes() {
    Type("h");
    QCOMPARE(Bar()->lblHits->text(), "1 of 9");
    QTest::keyClicks(Bar()->txtFind, "eading");
    QCOMPARE(Bar()->lblHits->text(), "1 of 3");
    QTest::keyClicks(Bar()->txtFind, "x");
    QCOMPARE(Bar()->lblHits->text(), "Not found");
    QVERIFY(!Bar()->cmdFindNext->isEnabled());
    Bar()->txtFind->clear();
    QCOMPARE(Bar()->lblHits->text(), "");
}

void tst_FindBar::goesOnAndBack() {
    Type("heading");
    for (const char* text : {"2 of 3", "3 of 3", "1 of 3"}) {
        QTest::keyClick(Bar()->txtFind, Qt::Key_F3);
        QCOMPARE(Bar()->lblHits->text(), text);
    }
    QTest::keyClick(window_->view, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(Bar()->lblHits->text(), "3 of 3");
    Click(*window_, "cmdFindPrevious");
    QCOMPARE(Bar()->lblHits->text(), "2 of 3");
    Click(*window_, "cmdFindNext");
    QCOMPARE(Bar()->lblHits->text(), "3 of 3");
}

void tst_FindBar::enterGoesOnToo() {
    Type("heading");
    QTest::keyClick(Bar()->txtFind, Qt::Key_Return);
    QCOMPARE(Bar()->lblHits->text(), "2 of 3");
    QTest::keyClick(Bar()->txtFind, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(Bar()->lblHits->text(), "1 of 3");
}

void tst_FindBar::beginsAtThePageLookedAt() {
    window_->view->GoToPage(1);
    Type("heading");
    QCOMPARE(Bar()->lblHits->text(), "2 of 3");
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
}

void tst_FindBar::staysAtItsPlaceWhileTheTextGrows() {
    Type("tot");
    QTest::keyClick(Bar()->txtFind, Qt::Key_F3);
    QTest::keyClicks(Bar()->txtFind, "al income");
    QCOMPARE(Bar()->lblHits->text(), "2 of 3");
}

void tst_FindBar::bringsThePlaceIntoView() {
    window_->view->SetZoom(3);
    window_->view->horizontalScrollBar()->setValue(0);
    Type("$31,700");
    QCOMPARE(window_->lblPage->text(), "Page 3 of 3");
    QVERIFY(window_->view->viewport()->rect().contains(PointOf(2, 401, 164)));
    QVERIFY(window_->view->viewport()->rect().contains(PointOf(2, 430, 164)));
    const int before = window_->view->verticalScrollBar()->value();
    QTest::keyClicks(Bar()->txtFind, ".");
    QCOMPARE(window_->view->verticalScrollBar()->value(), before);
}

// The two hits of the first page, just above their letters: the current one is marked otherwise than the other.
void tst_FindBar::marksThePlaces() {
    window_->view->SetZoom(1);
    window_->view->GoToPage(0);
    const auto colour = [&](std::size_t hit) {
        const auto& text = window_->view->Text();
        const auto part = text.Parts(text.Find("income")[hit]).front();
        const QRectF place = ledgix::preview::PlaceOf(ReportOf(3), part);
        const QImage image = window_->view->viewport()->grab().toImage();
        return image.pixelColor(PointOf(0, place.center().x(), place.top() + 1) * image.devicePixelRatio());
    };
    const std::pair<QColor, QColor> plain{colour(0), colour(1)};
    Type("income");
    const std::pair<QColor, QColor> first{colour(0), colour(1)};
    QVERIFY(first.first != plain.first);
    QVERIFY(first.second != plain.second);
    QTest::keyClick(Bar()->txtFind, Qt::Key_F3);
    const std::pair<QColor, QColor> second{colour(0), colour(1)};
    QVERIFY(second.first != plain.first && second.first != first.first);
    QVERIFY(second.second != plain.second && second.second != first.second);
    Bar()->End();
    QCOMPARE(std::pair(colour(0), colour(1)), plain);
}

void tst_FindBar::escapePutsItAwayAndThenTheWindow() {
    Type("heading");
    QTest::keyClick(Bar()->txtFind, Qt::Key_Escape);
    QVERIFY(!Bar()->isVisible());
    QVERIFY(window_->isVisible());
    QVERIFY(window_->view->Marks().hits().empty());
    QTest::keyClick(window_->view, Qt::Key_Escape);
    QVERIFY(!window_->isVisible());
}

void tst_FindBar::startsWithTheSelection() {
    window_->view->Select({0, 7});
    QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(Bar()->txtFind->text(), "Heading");
    QCOMPARE(Bar()->lblHits->text(), "1 of 3");
    Bar()->End();
    window_->view->SelectAll();
    QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(Bar()->txtFind->text(), "Heading");
}

void tst_FindBar::theMouseSelectsAndCtrlCCopies() {
    QVERIFY(!window_->cmdCopy->isEnabled());
    QWidget* desk = window_->view->viewport();
    QTest::mousePress(desk, Qt::LeftButton, {}, PointOf(0, 58, 117));
    QTest::mouseMove(desk, PointOf(0, 100, 125));
    QTest::mouseMove(desk, PointOf(0, 300, 131));
    QTest::mouseRelease(desk, Qt::LeftButton, {}, PointOf(0, 300, 131));
    QTest::keyClick(window_->view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), "Your income means you have a\nsurplus each year.");
    QTest::mouseClick(desk, Qt::LeftButton, {}, PointOf(0, 300, 131));
    QCOMPARE(window_->view->SelectedText(), "");
    QVERIFY(!window_->cmdCopy->isEnabled());
}

void tst_FindBar::shiftExtendsTheSelection() {
    QWidget* desk = window_->view->viewport();
    QTest::mouseClick(desk, Qt::LeftButton, {}, PointOf(0, 300, 131));
    QTest::mouseClick(desk, Qt::LeftButton, Qt::ShiftModifier, PointOf(0, 58, 131));
    QCOMPARE(window_->view->SelectedText(), "surplus each year.");
}

void tst_FindBar::aDoubleClickSelectsAWord() {
    QTest::mouseDClick(window_->view->viewport(), Qt::LeftButton, {}, PointOf(0, 405, 161));
    QCOMPARE(window_->view->SelectedText(), "$11,700.00");
}

void tst_FindBar::everythingCanBeCopied() {
    QTest::keyClick(window_->view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(window_->view, Qt::Key_C, Qt::ControlModifier);
    const QString copied = QGuiApplication::clipboard()->text();
    QCOMPARE(copied, window_->view->Text().text());
    QVERIFY(copied.contains("Total Income\t$31,700.00"));
}

void tst_FindBar::copyingInTheFieldCopiesTheField() {
    window_->view->SelectAll();
    Type("means");
    QTest::keyClick(Bar()->txtFind, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Bar()->txtFind, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), "means");
}

QTEST_MAIN(tst_FindBar)
#include "tst_find_bar.moc"
