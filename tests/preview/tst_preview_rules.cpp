#include <QTest>

#include "page_flow.h"
#include "page_sequence.h"
#include "print_job.h"
#include "zoom_steps.h"

using ledgix::preview::NextZoom;
using ledgix::preview::OntoSheet;
using ledgix::preview::PageFlow;
using ledgix::preview::PageSequence;
using ledgix::preview::PreviousZoom;
using ledgix::preview::PrintWish;
using Pages = std::vector<int>;

class tst_PreviewRules : public QObject {
    Q_OBJECT

private slots:
    void pagesLieBelowEachOther();
    void pagesAreCentredOnALargerDesk();
    void visiblePagesAreThoseThatShow();
    void theForemostPageTakesTheMost();
    void fitsLeaveRoomAround();
    void fitsStayAboveZero();
    void zoomsStep();
    void zoomsBetweenStepsReachTheNext();
    void allPagesArePrintedWithoutAWish();
    void rangesChoosePages();
    void copiesAreCollatedOrNot();
    void theLastPageMayComeFirst();
    void paperOfItsOwnSizeTakesThePageAsItIs();
    void smallerPaperTakesASmallerPage();
    void largerPaperTakesThePageInItsMiddle();
};

void tst_PreviewRules::pagesLieBelowEachOther() {
    PageFlow flow(3, {100, 200});
    flow.Arrange(2, {50, 50});
    QCOMPARE(flow.Page(0).size(), QSize(200, 400));
    QCOMPARE(flow.Page(1).left(), flow.Page(0).left());
    QVERIFY(flow.Page(1).top() > flow.Page(0).bottom());
    QCOMPARE(flow.Page(2).top() - flow.Page(1).top(), flow.Page(1).top() - flow.Page(0).top());
    QVERIFY(QRect(QPoint(), flow.Size()).contains(flow.Page(2)));
    QCOMPARE(flow.Size().height() - flow.Page(2).bottom() - 1, flow.Page(0).top());
}

void tst_PreviewRules::pagesAreCentredOnALargerDesk() {
    PageFlow flow(1, {100, 200});
    flow.Arrange(1, {1100, 1200});
    QCOMPARE(flow.Size(), QSize(1100, 1200));
    QCOMPARE(flow.Page(0), QRect(500, 500, 100, 200));
}

void tst_PreviewRules::visiblePagesAreThoseThatShow() {
    PageFlow flow(4, {100, 100});
    flow.Arrange(1, {100, 100});
    QCOMPARE(flow.Visible(flow.Page(1)), (PageFlow::Range{1, 1}));
    QCOMPARE(flow.Visible(flow.Page(1).united(flow.Page(3))), (PageFlow::Range{1, 3}));
    const QRect gap(flow.Page(0).left(), flow.Page(0).bottom() + 1, 10, 1);
    QVERIFY(flow.Visible(gap).last < flow.Visible(gap).first);
}

void tst_PreviewRules::theForemostPageTakesTheMost() {
    PageFlow flow(3, {100, 100});
    flow.Arrange(1, {132, 120});
    QCOMPARE(flow.Foremost({0, 0, 132, 120}), 0);
    QCOMPARE(flow.Foremost({0, flow.Page(0).top() + 60, 132, 120}), 1);
    QCOMPARE(flow.Foremost({QPoint(), flow.Size()}), 0);
}

void tst_PreviewRules::fitsLeaveRoomAround() {
    PageFlow flow(2, {100, 200});
    const QSize viewport(500, 600);
    flow.Arrange(flow.ToFitWidth(viewport), viewport);
    QVERIFY(flow.Page(0).left() > 0);
    QVERIFY(flow.Page(0).right() > 470);
    QCOMPARE(flow.Size().width(), 500);
    flow.Arrange(flow.ToFitPage(viewport), viewport);
    QVERIFY(flow.Page(0).top() > 0);
    QVERIFY(flow.Page(0).bottom() > 570 && flow.Page(0).bottom() < 600);
    QCOMPARE(flow.ToFitPage({500, 6000}), flow.ToFitWidth({500, 6000}));
}

void tst_PreviewRules::fitsStayAboveZero() {
    const PageFlow flow(1, {100, 200});
    QVERIFY(flow.ToFitWidth({10, 10}) > 0);
    QVERIFY(flow.ToFitPage({500, 0}) > 0);
    QVERIFY(PageFlow(1, {0, 0}).ToFitPage({500, 500}) > 0);
}

void tst_PreviewRules::zoomsStep() {
    QCOMPARE(NextZoom(1), 1.1);
    QCOMPARE(PreviousZoom(1), 0.9);
    QCOMPARE(NextZoom(4), 4.0);
    QCOMPARE(PreviousZoom(0.25), 0.25);
    double zoom = 0.25;
    int steps = 0;
    for (; zoom < 4; ++steps) {
        QVERIFY(NextZoom(zoom) > zoom);
        QCOMPARE(PreviousZoom(NextZoom(zoom)), zoom);
        zoom = NextZoom(zoom);
    }
    QCOMPARE(steps, 14);
}

void tst_PreviewRules::zoomsBetweenStepsReachTheNext() {
    QCOMPARE(NextZoom(0.87), 0.9);
    QCOMPARE(PreviousZoom(0.87), 0.75);
    QCOMPARE(NextZoom(0.999), 1.1);
    QCOMPARE(PreviousZoom(1.001), 0.9);
    QCOMPARE(NextZoom(0.05), 0.25);
    QCOMPARE(PreviousZoom(9), 4.0);
}

void tst_PreviewRules::allPagesArePrintedWithoutAWish() {
    QCOMPARE(PageSequence(3, {}), (Pages{0, 1, 2}));
    QCOMPARE(PageSequence(0, {}), Pages());
}

void tst_PreviewRules::rangesChoosePages() {
    PrintWish wish;
    wish.ranges = {{2, 3}, {3, 3}, {5, 9}};
    QCOMPARE(PageSequence(6, wish), (Pages{1, 2, 4, 5}));
    wish.ranges = {{8, 9}};
    QCOMPARE(PageSequence(6, wish), Pages());
}

void tst_PreviewRules::copiesAreCollatedOrNot() {
    PrintWish wish;
    wish.copies = 2;
    QCOMPARE(PageSequence(3, wish), (Pages{0, 1, 2, 0, 1, 2}));
    wish.collated = false;
    QCOMPARE(PageSequence(3, wish), (Pages{0, 0, 1, 1, 2, 2}));
    wish.copies = 0;
    QCOMPARE(PageSequence(2, wish), (Pages{0, 1}));
}

void tst_PreviewRules::theLastPageMayComeFirst() {
    PrintWish wish;
    wish.copies = 2;
    wish.last_first = true;
    QCOMPARE(PageSequence(2, wish), (Pages{1, 0, 1, 0}));
    wish.collated = false;
    QCOMPARE(PageSequence(2, wish), (Pages{1, 1, 0, 0}));
}

namespace {

ledgix::zq::Document Paper(double width, double height) {
    ledgix::zq::Document document;
    document.page_width = width;
    document.page_height = height;
    return document;
}

}  // namespace

void tst_PreviewRules::paperOfItsOwnSizeTakesThePageAsItIs() {
    QVERIFY(OntoSheet(Paper(595.28, 841.89), {595, 842}).isIdentity());
}

void tst_PreviewRules::smallerPaperTakesASmallerPage() {
    const QTransform onto = OntoSheet(Paper(600, 800), {300, 500});
    QCOMPARE(onto.mapRect(QRectF(0, 0, 600, 800)), QRectF(0, 50, 300, 400));
}

void tst_PreviewRules::largerPaperTakesThePageInItsMiddle() {
    const QTransform onto = OntoSheet(Paper(300, 400), {500, 500});
    QCOMPARE(onto.mapRect(QRectF(0, 0, 300, 400)), QRectF(100, 50, 300, 400));
}

QTEST_APPLESS_MAIN(tst_PreviewRules)
#include "tst_preview_rules.moc"
