#include "chart_page.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QtMath>
#include <memory>
#include <set>

#include "chart_loader.h"
#include "chart_report.h"
#include "chart_view.h"
#include "find_bar.h"
#include "page_list.h"
#include "scoped_region.h"

using ledgix::preview::frmPreview;
using ledgix::test::Colours;
using ledgix::test::Dark;
using ledgix::test::OutlookChart;
using ledgix::test::ReportWithChart;

class tst_ChartPage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        if (!ledgix::preview::HasCharts())
            QSKIP("This build has no Qt Charts.");
    }
    void init();
    void cleanup() { window_.reset(); }

    void aReportWithoutChartHasNoTabs();
    void theReportIsShownFirst();
    void aTabShowsTheChart();
    void keysChangeBetweenReportAndChart();
    void mnemonicsShowTheTabs();
    void commandsOfTheReportRestWhileTheChartIsShown();
    void theListOfPagesComesBack();
    void printingStaysPossible();
    void escapeClosesTheWindow();
    void noMnemonicIsThereTwice();
    void theTableHasTheFigures();
    void theTableIsWideEnough();
    void arrowsWalkThroughTheTable();
    void tabLeavesTheTable();
    void theTableIsCopied();
    void theChartIsTold();
    void theChartHasTheSeriesColours();
    void theChartFollowsThePalette();
    void theChartFillsEveryScale();
    void oddFiguresAreDrawn_data();
    void oddFiguresAreDrawn();
    void aMissingLibraryIsNoChart();

private:
    void Open(const ledgix::zq::Document& document);
    void ShowChart() { window_->pages->setCurrentIndex(1); }
    QString File(const QString& name) const { return folder_->filePath(name); }
    QImage Picture() const { return window_->chartPage->chart->grab().toImage(); }

    std::unique_ptr<ledgix::test::OwnSettings> settings_;
    std::unique_ptr<QTemporaryDir> folder_;
    ledgix::test::ScopedRegion region_;
    int printed_ = 0;
    std::unique_ptr<frmPreview> window_;
};

void tst_ChartPage::init() {
    settings_ = std::make_unique<ledgix::test::OwnSettings>();
    folder_ = std::make_unique<QTemporaryDir>();
    printed_ = 0;
    Open(ReportWithChart());
}

void tst_ChartPage::Open(const ledgix::zq::Document& document) {
    window_ = std::make_unique<frmPreview>(
        document, [this] { ++printed_; }, nullptr);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->resize(1100, 700);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_ChartPage::aReportWithoutChartHasNoTabs() {
    Open(ledgix::test::ReportOf(2));
    QVERIFY(!window_->pages);
    QVERIFY(!window_->chartPage);
    QVERIFY(!window_->findChild<QTabWidget*>());
    QVERIFY(window_->view->hasFocus());
}

void tst_ChartPage::theReportIsShownFirst() {
    QCOMPARE(window_->pages->count(), 2);
    QVERIFY(window_->view->isVisible());
    QVERIFY(window_->view->hasFocus());
    QVERIFY(!window_->chartPage->isVisible());
}

void tst_ChartPage::aTabShowsTheChart() {
    QTabBar* bar = window_->pages->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QVERIFY(window_->chartPage->chart->isVisible());
    QVERIFY(!window_->view->isVisible());
}

void tst_ChartPage::keysChangeBetweenReportAndChart() {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(window_->chartPage->isVisible());
    QVERIFY(window_->chartPage->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(window_->view->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    window_->chartPage->tblFigures->setFocus();
    QTest::keyClick(window_->chartPage->tblFigures, Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(window_->view->isVisible());
    QVERIFY(window_->view->hasFocus());
}

void tst_ChartPage::mnemonicsShowTheTabs() {
    QTest::keyClick(window_->view, Qt::Key_H, Qt::AltModifier);
    QVERIFY(window_->chartPage->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::AltModifier);
    QVERIFY(window_->view->isVisible());
}

void tst_ChartPage::commandsOfTheReportRestWhileTheChartIsShown() {
    QTest::keyClick(window_->view, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(window_->findBar->isVisible());
    ShowChart();
    QVERIFY(!window_->findBar->isVisible());
    QVERIFY(window_->chartPage->isAncestorOf(QApplication::focusWidget()));
    for (const QAction* action : {window_->cmdPages, window_->cmdPageBack, window_->cmdPageForward, window_->cmdZoomIn,
                                  window_->cmdFitPage, window_->cmdFind})
        QVERIFY2(!action->isEnabled(), qPrintable(action->objectName()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
    QVERIFY(!window_->findBar->isVisible());
    window_->pages->setCurrentIndex(0);
    QCOMPARE(window_->view->Page(), 0);
    QVERIFY(!window_->cmdPageBack->isEnabled());
    QVERIFY(window_->cmdPageForward->isEnabled());
    QVERIFY(window_->cmdFind->isEnabled());
}

void tst_ChartPage::theListOfPagesComesBack() {
    QTest::keyClick(window_->view, Qt::Key_F4);
    QVERIFY(window_->lstPages->isVisible());
    ShowChart();
    QVERIFY(!window_->lstPages->isVisible());
    window_->pages->setCurrentIndex(0);
    QVERIFY(window_->lstPages->isVisible());
    QVERIFY(window_->cmdPages->isChecked());
}

void tst_ChartPage::printingStaysPossible() {
    ShowChart();
    QTest::keyClick(window_->chartPage->tblFigures, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(printed_, 1);
}

void tst_ChartPage::escapeClosesTheWindow() {
    ShowChart();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!window_->isVisible());
}

void tst_ChartPage::noMnemonicIsThereTwice() {
    ShowChart();
    QStringList mnemonics;
    const auto add = [&](const QString& text) {
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            mnemonics += key.toString();
    };
    for (const QAbstractButton* button : window_->findChildren<QAbstractButton*>())
        add(button->text());
    for (const QLabel* label : window_->findChildren<QLabel*>())
        add(label->text());
    for (int i = 0; i < window_->pages->count(); ++i)
        add(window_->pages->tabText(i));
    QVERIFY(mnemonics.size() >= 12);
    QCOMPARE(mnemonics.removeDuplicates(), 0);
}

void tst_ChartPage::theTableHasTheFigures() {
    const QTableWidget* table = window_->chartPage->tblFigures;
    QCOMPARE(table->rowCount(), 11);
    QCOMPARE(table->columnCount(), 4);
    QCOMPARE(table->verticalHeaderItem(10)->text(), "Year 10");
    QCOMPARE(table->horizontalHeaderItem(0)->text().simplified(), "Property Value");
    QCOMPARE(table->horizontalHeaderItem(3)->text(), "Cash Flow\n(after tax)");
    QCOMPARE(table->item(10, 0)->text(), "282,121");
    QCOMPARE(table->item(6, 3)->text(), "-2,100");
    QVERIFY(table->item(6, 3)->textAlignment() & Qt::AlignRight);
    QVERIFY(!(table->editTriggers() & QAbstractItemView::DoubleClicked));
}

void tst_ChartPage::theTableIsWideEnough() {
    ShowChart();
    const QTableWidget* table = window_->chartPage->tblFigures;
    QVERIFY(table->viewport()->width() >= table->horizontalHeader()->length());
    QVERIFY(window_->chartPage->chart->width() > table->width());
}

void tst_ChartPage::arrowsWalkThroughTheTable() {
    ShowChart();
    QTableWidget* table = window_->chartPage->tblFigures;
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Down);
    QTest::keyClick(table, Qt::Key_Right);
    QCOMPARE(table->currentRow(), 1);
    QCOMPARE(table->currentColumn(), 1);
}

void tst_ChartPage::tabLeavesTheTable() {
    ShowChart();
    window_->chartPage->chart->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(window_->chartPage->tblFigures->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(window_->chartPage->cmdSaveChart->hasFocus());
}

void tst_ChartPage::theTableIsCopied() {
    // A selection in the report is not what is copied here.
    window_->view->SelectAll();
    ShowChart();
    window_->chartPage->tblFigures->setFocus();
    QTest::keyClick(window_->chartPage->tblFigures, Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    QCOMPARE(lines[0], "\tProperty Value\tMortgage Value\tInvestment Value\tCash Flow (after tax)");
    QCOMPARE(lines[7], "Year 6\t245,852\t168,957\t76,895\t-2,100");
    QCOMPARE(lines.size(), 13);
}

void tst_ChartPage::theChartIsTold() {
    ShowChart();
    const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(window_->chartPage->chart);
    QCOMPARE(told->text(QAccessible::Name), "Chart");
    QVERIFY(told->text(QAccessible::Description).startsWith("Outlook: 12 Elm Street. Property Value: lowest 200,000"));
    QVERIFY(told->text(QAccessible::Description).contains("-2,100 in Year 6"));
    QCOMPARE(window_->chartPage->tblFigures->accessibleName(), "Figures of the chart");
}

// Property line, mortgage line and bars.
void tst_ChartPage::theChartHasTheSeriesColours() {
    ShowChart();
    const std::set<QRgb> colours = Colours(Picture());
    for (const QRgb colour : {0xff0060a8U, 0xffc85000U, 0xff00805cU})
        QVERIFY2(colours.contains(colour), qPrintable(QColor(colour).name()));
}

void tst_ChartPage::theChartFollowsThePalette() {
    ShowChart();
    QVERIFY(Colours(Picture()).contains(0xff0060a8));
    QApplication::setPalette(Dark());
    QCoreApplication::processEvents();
    const QImage dark = Picture();
    QApplication::setPalette(QPalette());
    QCOMPARE(dark.pixelColor(2, dark.height() - 3), QColor(30, 30, 32));
    const std::set<QRgb> colours = Colours(dark);
    for (const QRgb colour : {0xff6cbcf2U, 0xfff2a33cU, 0xff3fc79aU})
        QVERIFY2(colours.contains(colour), qPrintable(QColor(colour).name()));
    QVERIFY(!colours.contains(0xff0060a8));
}

// As sharp as the screen: the picture has a dot for each of the screen's.
void tst_ChartPage::theChartFillsEveryScale() {
    ShowChart();
    for (const double ratio : {1.0, 1.5, 2.0}) {
        const QSize size = window_->chartPage->chart->size();
        QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        const ledgix::chart::Sheet sheet = ledgix::chart::ToSheet(OutlookChart(), ledgix::runtime::UnitedStates());
        ledgix::preview::Charts()->Draw(sheet, QPalette(), ledgix::preview::ChartFont(QApplication::font()), painter,
                                        QRectF(QPointF(0, 0), size));
        painter.end();
        // The zero line of the bars is one unit high and black from edge to edge.
        int rows = 0;
        const int x = image.width() - qRound(14 * ratio);
        for (int y = image.height() * 7 / 10; y < image.height(); ++y)
            rows += image.pixelColor(x, y).lightness() < 100 ? 1 : 0;
        QVERIFY2(rows >= 1 && rows <= qCeil(ratio) + 1, qPrintable(QString("%1 at %2").arg(rows).arg(ratio)));
    }
}

void tst_ChartPage::oddFiguresAreDrawn_data() {
    QTest::addColumn<double>("factor");
    QTest::newRow("zeros") << 0.0;
    QTest::newRow("trillions") << 5e9;
    QTest::newRow("the end of the numbers") << 1e302;
    QTest::newRow("cents") << 1e-6;
    QTest::newRow("upside down") << -1.0;
}

void tst_ChartPage::oddFiguresAreDrawn() {
    QFETCH(double, factor);
    ledgix::zq::Chart chart = OutlookChart();
    for (ledgix::zq::ChartSeries& series : chart.series)
        for (double& value : series.values)
            value *= factor;
    Open(ReportWithChart(chart));
    ShowChart();
    QVERIFY(Colours(Picture()).contains(0xffc85000));
}

void tst_ChartPage::aMissingLibraryIsNoChart() {
    QVERIFY(ledgix::preview::HasCharts());
    QCOMPARE(ledgix::preview::FindChartLibrary({folder_->path(), File("none")}), "");
    QVERIFY(!ledgix::preview::LoadCharts({}));
    QFile file(File("libledgix_charts.so"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no library") > 0);
    file.close();
    QCOMPARE(ledgix::preview::FindChartLibrary({File("none"), folder_->path()}), File("libledgix_charts.so"));
    QVERIFY(!ledgix::preview::LoadCharts(File("libledgix_charts.so")));
}

QTEST_MAIN(tst_ChartPage)
#include "tst_chart_page.moc"
