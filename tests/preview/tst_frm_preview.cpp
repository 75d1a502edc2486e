#include "frm_preview.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <memory>

#include "page_list.h"
#include "page_view.h"
#include "report_pages.h"

using ledgix::preview::frmPreview;
using ledgix::preview::PageView;
using ledgix::test::Click;
using ledgix::test::ReportOf;

class tst_frmPreview : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { window_.reset(); }

    void bearsTheDocumentsTitle();
    void keepsItsDocument();
    void printButtonIsTheCallersAffair();
    void printButtonWorksByKeyboard();
    void showsTheFirstPageFirst();
    void buttonsTurnPages();
    void keysTurnPages();
    void homeAndEndReachTheEnds();
    void pageKeysTurnWholePagesWhereTheyFit();
    void arrowsAndWheelScroll();
    void scrollingShowsThePageLookedAt();
    void buttonsZoom();
    void keysZoom();
    void zoomStopsAtItsEnds();
    void wheelZoomsAtThePointer();
    void fitsHoldWhileTheWindowChanges();
    void aZoomEndsAFit();
    void theListOfPagesTurnsThem();
    void theListOfPagesFollows();
    void escapeAndTheButtonClose();
    void keepsItsSize();
    void everyControlIsNamed();
    void noMnemonicIsThereTwice();
    void theTextOfThePageIsTold();
    void pagesAreDrawnInEveryScale();

private:
    QScrollBar* Bar() const { return window_->view->verticalScrollBar(); }

    ledgix::test::OwnSettings settings_;
    int printed_ = 0;
    std::unique_ptr<frmPreview> window_;
};

void tst_frmPreview::init() {
    printed_ = 0;
    window_ = std::make_unique<frmPreview>(
        ReportOf(3), [this] { ++printed_; }, nullptr);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->resize(700, 600);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_frmPreview::bearsTheDocumentsTitle() {
    QCOMPARE(window_->windowTitle(), "Profile : Tom - Preview");
    QCOMPARE(window_->objectName(), "frmPreview");
    QVERIFY(window_->isWindow());
}

void tst_frmPreview::keepsItsDocument() {
    auto document = std::make_unique<ledgix::zq::Document>(ReportOf(1));
    frmPreview other(
        *document, [] {}, nullptr);
    document.reset();
    other.show();
    QVERIFY(!other.grab().isNull());
    QVERIFY(other.view->accessibleDescription().contains("Heading 1"));
}

void tst_frmPreview::printButtonIsTheCallersAffair() {
    Click(*window_, "cmdPrint");
    QCOMPARE(printed_, 1);
    QVERIFY(window_->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_frmPreview::printButtonWorksByKeyboard() {
    QTest::keyClick(window_->view, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(printed_, 1);
    QTest::keyClick(window_->view, Qt::Key_P, Qt::AltModifier);
    QTRY_COMPARE(printed_, 2);
}

void tst_frmPreview::showsTheFirstPageFirst() {
    QCOMPARE(window_->lblPage->text(), "Page 1 of 3");
    QVERIFY(!window_->cmdPageBack->isEnabled());
    QVERIFY(window_->cmdPageForward->isEnabled());
    QVERIFY(window_->view->hasFocus());
    QCOMPARE(Bar()->value(), 0);
}

void tst_frmPreview::buttonsTurnPages() {
    Click(*window_, "cmdPageForward");
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
    QVERIFY(window_->view->PlaceOfPage(1).top() >= 0);
    QVERIFY(window_->view->PlaceOfPage(1).top() < 40);
    Click(*window_, "cmdPageForward");
    QCOMPARE(window_->lblPage->text(), "Page 3 of 3");
    QVERIFY(!window_->cmdPageForward->isEnabled());
    Click(*window_, "cmdPageBack");
    Click(*window_, "cmdPageBack");
    QCOMPARE(window_->lblPage->text(), "Page 1 of 3");
    QCOMPARE(Bar()->value(), 0);
}

void tst_frmPreview::keysTurnPages() {
    QTest::keyClick(window_->view, Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
    QTest::keyClick(window_->view, Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(window_->lblPage->text(), "Page 1 of 3");
}

void tst_frmPreview::homeAndEndReachTheEnds() {
    QTest::keyClick(window_->view, Qt::Key_End);
    QCOMPARE(Bar()->value(), Bar()->maximum());
    QCOMPARE(window_->lblPage->text(), "Page 3 of 3");
    QTest::keyClick(window_->view, Qt::Key_Home);
    QCOMPARE(Bar()->value(), 0);
    QCOMPARE(window_->lblPage->text(), "Page 1 of 3");
}

void tst_frmPreview::pageKeysTurnWholePagesWhereTheyFit() {
    window_->view->SetFit(PageView::Fit::kPage);
    for (int page : {2, 3}) {
        QTest::keyClick(window_->view, Qt::Key_PageDown);
        QCOMPARE(window_->lblPage->text(), QString("Page %1 of 3").arg(page));
        QVERIFY(window_->view->viewport()->rect().contains(window_->view->PlaceOfPage(page - 1)));
    }
    QTest::keyClick(window_->view, Qt::Key_PageUp);
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
}

void tst_frmPreview::arrowsAndWheelScroll() {
    QTest::keyClick(window_->view, Qt::Key_Down);
    const int line = Bar()->value();
    QVERIFY(line > 0);
    QTest::keyClick(window_->view, Qt::Key_Up);
    QCOMPARE(Bar()->value(), 0);
    QTest::keyClick(window_->view, Qt::Key_PageDown);
    QCOMPARE(Bar()->value(), window_->view->viewport()->height());
    Bar()->setValue(0);
    ledgix::test::TurnWheel(window_->view->viewport(), {50, 50}, -120);
    QVERIFY(Bar()->value() >= line);
    window_->view->SetZoom(2);
    QScrollBar* across = window_->view->horizontalScrollBar();
    const int before = across->value();
    QTest::keyClick(window_->view, Qt::Key_Right);
    QVERIFY(across->value() > before);
    QTest::keyClick(window_->view, Qt::Key_Left);
    QCOMPARE(across->value(), before);
}

void tst_frmPreview::scrollingShowsThePageLookedAt() {
    Bar()->setValue(window_->view->PlaceOfPage(1).top());
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
    QVERIFY(window_->view->accessibleDescription().contains("Heading 2"));
}

void tst_frmPreview::buttonsZoom() {
    Click(*window_, "cmdActualSize");
    QCOMPARE(window_->cmdActualSize->iconText(), "100%");
    Click(*window_, "cmdZoomIn");
    QCOMPARE(window_->cmdActualSize->iconText(), "110%");
    Click(*window_, "cmdZoomOut");
    Click(*window_, "cmdZoomOut");
    QCOMPARE(window_->cmdActualSize->iconText(), "90%");
    QCOMPARE(window_->view->Zoom(), 0.9);
}

void tst_frmPreview::keysZoom() {
    QTest::keyClick(window_->view, Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.0);
    QTest::keyClick(window_->view, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.1);
    QTest::keyClick(window_->view, Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.25);
    QTest::keyClick(window_->view, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.1);
}

void tst_frmPreview::zoomStopsAtItsEnds() {
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(window_->view, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 4.0);
    QVERIFY(!window_->cmdZoomIn->isEnabled());
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(window_->view, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 0.25);
    QVERIFY(!window_->cmdZoomOut->isEnabled());
}

void tst_frmPreview::wheelZoomsAtThePointer() {
    window_->view->SetZoom(1);
    const QPoint pointer(200, 150);
    const QPointF before = QPointF(pointer - window_->view->PlaceOfPage(0).topLeft()) / window_->view->Zoom();
    ledgix::test::TurnWheel(window_->view->viewport(), pointer, 60, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.0);
    for (int turn = 0; turn < 4; ++turn)
        ledgix::test::TurnWheel(window_->view->viewport(), pointer, turn == 0 ? 60 : 120, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.75);
    const QPointF after = QPointF(pointer - window_->view->PlaceOfPage(0).topLeft()) / window_->view->Zoom();
    QVERIFY((after - before).manhattanLength() < 2);
    ledgix::test::TurnWheel(window_->view->viewport(), pointer, -120, Qt::ControlModifier);
    QCOMPARE(window_->view->Zoom(), 1.5);
}

void tst_frmPreview::fitsHoldWhileTheWindowChanges() {
    Click(*window_, "cmdFitWidth");
    QVERIFY(window_->cmdFitWidth->isChecked());
    for (int width : {800, 500}) {
        window_->resize(width, 600);
        QTRY_COMPARE(window_->width(), width);
        const QRect page = window_->view->PlaceOfPage(0);
        QVERIFY(page.left() > 0 && page.left() < 25);
        QVERIFY(!window_->view->horizontalScrollBar()->isVisible());
    }
    QTest::keyClick(window_->view, Qt::Key_2, Qt::ControlModifier);
    QVERIFY(window_->cmdFitPage->isChecked());
    QVERIFY(!window_->cmdFitWidth->isChecked());
    QVERIFY(window_->view->viewport()->rect().contains(window_->view->PlaceOfPage(0)));
    QTest::keyClick(window_->view, Qt::Key_1, Qt::ControlModifier);
    QVERIFY(window_->cmdFitWidth->isChecked());
}

void tst_frmPreview::aZoomEndsAFit() {
    Click(*window_, "cmdFitWidth");
    const double fitted = window_->view->Zoom();
    Click(*window_, "cmdZoomIn");
    QVERIFY(!window_->cmdFitWidth->isChecked());
    const double zoom = window_->view->Zoom();
    QVERIFY(zoom > fitted);
    window_->resize(900, 600);
    QTRY_COMPARE(window_->width(), 900);
    QCOMPARE(window_->view->Zoom(), zoom);
}

void tst_frmPreview::theListOfPagesTurnsThem() {
    QVERIFY(!window_->lstPages->isVisible());
    Click(*window_, "cmdPages");
    QVERIFY(window_->lstPages->isVisible());
    QCOMPARE(window_->lstPages->count(), 3);
    window_->lstPages->scrollToItem(window_->lstPages->item(1));
    QTest::mouseClick(window_->lstPages->viewport(), Qt::LeftButton, {},
                      window_->lstPages->visualItemRect(window_->lstPages->item(1)).center());
    QCOMPARE(window_->lblPage->text(), "Page 2 of 3");
    QTest::keyClick(window_->lstPages, Qt::Key_Down);
    QCOMPARE(window_->lblPage->text(), "Page 3 of 3");
    QTest::keyClick(window_->lstPages, Qt::Key_F4);
    QVERIFY(!window_->lstPages->isVisible());
    QVERIFY(!window_->cmdPages->isChecked());
}

void tst_frmPreview::theListOfPagesFollows() {
    QTest::keyClick(window_->view, Qt::Key_F4);
    QVERIFY(window_->lstPages->isVisible());
    QCOMPARE(window_->lstPages->currentRow(), 0);
    QTest::keyClick(window_->view, Qt::Key_End);
    QCOMPARE(window_->lstPages->currentRow(), 2);
    QVERIFY(!window_->lstPages->item(2)->icon().isNull());
    QCOMPARE(window_->lstPages->item(1)->data(Qt::AccessibleTextRole).toString(), "Page 2");
}

void tst_frmPreview::escapeAndTheButtonClose() {
    QTest::keyClick(window_->view, Qt::Key_Escape);
    QVERIFY(!window_->isVisible());
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    Click(*window_, "cmdClose");
    QVERIFY(!window_->isVisible());
    QPointer<frmPreview> own = new frmPreview(
        ReportOf(1), [] {}, nullptr);
    own->show();
    own->close();
    QTRY_VERIFY(!own);
}

void tst_frmPreview::keepsItsSize() {
    window_->resize(640, 480);
    QTRY_COMPARE(window_->size(), QSize(640, 480));
    window_->close();
    frmPreview next(
        ReportOf(1), [] {}, nullptr);
    QCOMPARE(next.size(), QSize(640, 480));
}

void tst_frmPreview::everyControlIsNamed() {
    for (QToolButton* button : window_->findChildren<QToolButton*>()) {
        // Qt's own: the button behind a bar that is too narrow, and the frame's of the list.
        if (!button->isVisible() || button->objectName().startsWith("qt_"))
            continue;
        const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(button);
        QVERIFY2(told->text(QAccessible::Name).size() > 3, qPrintable(button->objectName()));
    }
    QCOMPARE(window_->view->accessibleName(), "Pages of the report");
    QCOMPARE(window_->lblPage->accessibleName(), "Page");
}

void tst_frmPreview::noMnemonicIsThereTwice() {
    QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
    QStringList mnemonics;
    for (const QToolButton* button : window_->findChildren<QToolButton*>())
        if (const QKeySequence key = QKeySequence::mnemonic(button->text()); !key.isEmpty())
            mnemonics += key.toString();
    for (const QLabel* label : window_->findChildren<QLabel*>())
        if (const QKeySequence key = QKeySequence::mnemonic(label->text()); !key.isEmpty())
            mnemonics += key.toString();
    QVERIFY(mnemonics.size() >= 9);
    QCOMPARE(mnemonics.removeDuplicates(), 0);
}

void tst_frmPreview::theTextOfThePageIsTold() {
    QCOMPARE(QAccessible::queryAccessibleInterface(window_->view)->text(QAccessible::Description),
             "Heading 1\nYour income means you have a\nsurplus each year.\nTotal Income\t$11,700.00");
}

// The box of each page lies where its points say, in its colour up to the edge pixels, at any zoom.
void tst_frmPreview::pagesAreDrawnInEveryScale() {
    for (double zoom : {0.5, 0.9, 1.0, 1.25}) {
        window_->view->SetZoom(zoom);
        window_->view->GoToPage(0);
        window_->view->horizontalScrollBar()->setValue(0);
        const QRect page = window_->view->PlaceOfPage(0);
        const QImage image = window_->view->viewport()->grab().toImage();
        const double pixels = image.devicePixelRatio();
        const double points = page.width() / 595.28;
        const auto at = [&](double x, double y) {
            return image.pixelColor(((QPointF(page.topLeft()) + QPointF(x, y) * points) * pixels).toPoint());
        };
        QCOMPARE(at(300, 155), QColor(200, 210, 220));
        QCOMPARE(at(62, 168), QColor(200, 210, 220));
        QCOMPARE(at(300, 145), QColor(Qt::white));
        QCOMPARE(at(300, 174), QColor(Qt::white));
        QVERIFY(image.pixelColor(2, 2) != QColor(Qt::white));
    }
}

QTEST_MAIN(tst_frmPreview)
#include "tst_frm_preview.moc"
