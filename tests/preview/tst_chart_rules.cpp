#include <QTest>
#include <cmath>

#include "chart_figures.h"
#include "chart_report.h"
#include "chart_scale.h"
#include "chart_sheet.h"

using ledgix::chart::FigureText;
using ledgix::chart::Panel;
using ledgix::chart::Scale;
using ledgix::chart::ScaleFor;
using ledgix::chart::Sheet;
using ledgix::chart::Table;
using ledgix::chart::ToSheet;
using ledgix::chart::ToTable;
using ledgix::chart::UnitFor;
using ledgix::runtime::RegionalSettings;
using ledgix::runtime::UnitedStates;
using ledgix::test::OutlookChart;

class tst_ChartRules : public QObject {
    Q_OBJECT

private slots:
    void scalesCoverTheirAmountsAndZero_data();
    void scalesCoverTheirAmountsAndZero();
    void nothingToMeasureHasNoSteps();
    void unitsKeepLabelsShort();
    void figuresAreGroupedByTheRegion();
    void minusStandsInFrontWhateverTheRegion();
    void hugeFiguresAreWrittenAsInReports();
    void theTableHasYearsDownAndSeriesAcross();
    void centsAreShownWhereAnyFigureHasThem();
    void theTableIsCopiedWithTabs();
    void theDescriptionTellsTheRanges();
    void linesAndBarsHaveScalesOfTheirOwn();
    void ticksAreEvenAndLabelled();
    void hugeAmountsAreDrawnInAUnit();
    void zerosHaveOneTick();
    void chartsWithoutBarsHaveOnePanel();
};

namespace {

RegionalSettings Germany() {
    RegionalSettings region = UnitedStates();
    region.currency_symbol = "\xE2\x82\xAC";
    region.symbol_first = false;
    region.space_between = true;
    region.decimal_separator = ",";
    region.group_separator = ".";
    return region;
}

ledgix::zq::Chart Multiplied(double factor) {
    ledgix::zq::Chart chart = OutlookChart();
    for (ledgix::zq::ChartSeries& series : chart.series)
        for (double& value : series.values)
            value *= factor;
    return chart;
}

}  // namespace

void tst_ChartRules::scalesCoverTheirAmountsAndZero_data() {
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("step");
    QTest::newRow("values") << 137092.0 << 282121.0 << 0.0 << 300000.0 << 50000.0;
    QTest::newRow("both signs") << -2100.0 << 1974.0 << -3000.0 << 2000.0 << 1000.0;
    QTest::newRow("negative") << -15831.0 << -5.0 << -20000.0 << 0.0 << 5000.0;
    QTest::newRow("at a step") << 0.0 << 500.0 << 0.0 << 500.0 << 100.0;
    QTest::newRow("cents") << 0.0 << 0.02 << 0.0 << 0.02 << 0.01;
    QTest::newRow("small") << 0.0 << 1.7 << 0.0 << 2.0 << 0.5;
}

void tst_ChartRules::scalesCoverTheirAmountsAndZero() {
    QFETCH(double, least);
    QFETCH(double, most);
    const Scale scale = ScaleFor(least, most, 6);
    QTEST(scale.least, "bottom");
    QTEST(scale.most, "top");
    QTEST(scale.step, "step");
}

void tst_ChartRules::nothingToMeasureHasNoSteps() {
    QCOMPARE(ScaleFor(0, 0, 6).step, 0);
    QCOMPARE(ScaleFor(0, 0.001, 6).step, 0);
    QVERIFY(ScaleFor(0, 0, 6).most > ScaleFor(0, 0, 6).least);
}

void tst_ChartRules::unitsKeepLabelsShort() {
    QCOMPARE(UnitFor(0).size, 1.0);
    QCOMPARE(UnitFor(9999999).name, "");
    QCOMPARE(UnitFor(1e7).name, "million");
    QCOMPARE(UnitFor(1e10).name, "billion");
    QCOMPARE(UnitFor(1e15).name, "trillion");
    QCOMPARE(UnitFor(3e300).name, "\u00D7 10^300");
}

void tst_ChartRules::figuresAreGroupedByTheRegion() {
    QCOMPARE(FigureText(1234567, 0, UnitedStates()), "1,234,567");
    QCOMPARE(FigureText(1234567.5, 2, UnitedStates()), "1,234,567.50");
    QCOMPARE(FigureText(0.5, 1, UnitedStates()), "0.5");
    QCOMPARE(FigureText(1234567.5, 2, Germany()), "1.234.567,50");
    QCOMPARE(FigureText(1234567, 0, Germany()), "1.234.567");
}

void tst_ChartRules::minusStandsInFrontWhateverTheRegion() {
    RegionalSettings region = UnitedStates();
    for (const auto minus : {RegionalSettings::Minus::kParentheses, RegionalSettings::Minus::kAfterAll,
                             RegionalSettings::Minus::kBeforeSymbol, RegionalSettings::Minus::kAfterSymbol}) {
        region.minus = minus;
        QCOMPARE(FigureText(-1560, 0, region), "-1,560");
    }
    QCOMPARE(FigureText(-0.001, 2, UnitedStates()), "0.00");
}

void tst_ChartRules::hugeFiguresAreWrittenAsInReports() {
    QCOMPARE(FigureText(999999999999999, 0, UnitedStates()), "999,999,999,999,999");
    QCOMPARE(FigureText(1e15, 0, UnitedStates()), "1E+15");
    QCOMPARE(FigureText(-2.5e300, 2, UnitedStates()), "-2.5E+300");
}

void tst_ChartRules::theTableHasYearsDownAndSeriesAcross() {
    const Table table = ToTable(OutlookChart(), UnitedStates());
    QCOMPARE(table.columns.size(), 4U);
    QCOMPARE(table.columns[3], "Cash Flow (after tax)");
    QCOMPARE(table.rows.size(), 11U);
    QCOMPARE(table.rows[10], "Year 10");
    QCOMPARE(table.cells[10], (std::vector<std::string>{"282,121", "137,092", "145,029", "1,974"}));
    QCOMPARE(table.cells[0], (std::vector<std::string>{"200,000", "202,000", "-2,000", "0"}));
}

void tst_ChartRules::centsAreShownWhereAnyFigureHasThem() {
    const Table table = ToTable(OutlookChart({1000, 1100}, {500, 450.5}, {0, -20}), UnitedStates());
    QCOMPARE(table.cells[1], (std::vector<std::string>{"1,100.00", "450.50", "649.50", "-20.00"}));
}

void tst_ChartRules::theTableIsCopiedWithTabs() {
    const Table table = ToTable(OutlookChart({1000, 1100}, {500, 450}, {0, -20}), UnitedStates());
    QCOMPARE(ToTabbed(table),
             "\tProperty Value\tMortgage Value\tInvestment Value\tCash Flow (after tax)\n"
             "Year 0\t1,000\t500\t500\t0\n"
             "Year 1\t1,100\t450\t650\t-20\n");
}

void tst_ChartRules::theDescriptionTellsTheRanges() {
    const std::string text = ledgix::chart::Describe(OutlookChart(), UnitedStates());
    QVERIFY(text.starts_with("Property Value: lowest 200,000 in Year 0, highest 282,121 in Year 10. "));
    QVERIFY(text.ends_with("Cash Flow (after tax): lowest -2,100 in Year 6, highest 1,974 in Year 10."));
}

void tst_ChartRules::linesAndBarsHaveScalesOfTheirOwn() {
    const Sheet sheet = ToSheet(OutlookChart(), UnitedStates());
    QCOMPARE(sheet.title, "Outlook: 12 Elm Street");
    QCOMPARE(sheet.panels.size(), 2U);
    const Panel& lines = sheet.panels[0];
    QCOMPARE(lines.heading, "Value ($)");
    QCOMPARE(lines.series.size(), 3U);
    QCOMPARE(lines.least, 0.0);
    QCOMPARE(lines.most, 300000.0);
    QCOMPARE(lines.series[1].values[10], 137092.0);
    const Panel& bars = sheet.panels[1];
    QCOMPARE(bars.heading, "Each year ($)");
    QCOMPARE(bars.least, -3000.0);
    QCOMPARE(bars.most, 2000.0);
}

void tst_ChartRules::ticksAreEvenAndLabelled() {
    const Sheet sheet = ToSheet(OutlookChart(), Germany());
    const std::vector<ledgix::chart::Tick>& ticks = sheet.panels[0].ticks;
    QCOMPARE(ticks.size(), 7U);
    QCOMPARE(ticks.front().label, "0");
    QCOMPARE(ticks.back().label, "300.000");
    for (std::size_t i = 1; i < ticks.size(); ++i)
        QCOMPARE(ticks[i].place - ticks[i - 1].place, 50000.0);
    QCOMPARE(sheet.panels[1].ticks.front().label, "-3.000");
    QCOMPARE(sheet.panels[0].heading, "Value (\xE2\x82\xAC)");
}

void tst_ChartRules::hugeAmountsAreDrawnInAUnit() {
    const Sheet sheet = ToSheet(Multiplied(5e9), UnitedStates());
    QCOMPARE(sheet.panels[0].heading, "Value ($ trillion)");
    QCOMPARE(sheet.panels[0].ticks.back().label, "1,500");
    QCOMPARE(sheet.panels[0].series[0].values[0], 1000.0);
    const Sheet endless = ToSheet(Multiplied(1e300), UnitedStates());
    QCOMPARE(endless.panels[0].heading, "Value ($ \u00D7 10^305)");
    QCOMPARE(endless.panels[0].ticks.back().label, "3.0");
    for (const Panel& panel : endless.panels)
        for (const ledgix::zq::ChartSeries& series : panel.series)
            for (const double value : series.values)
                QVERIFY(std::abs(value) < 1e9);
}

void tst_ChartRules::zerosHaveOneTick() {
    const Sheet sheet = ToSheet(Multiplied(0), UnitedStates());
    for (const Panel& panel : sheet.panels) {
        QCOMPARE(panel.ticks.size(), 1U);
        QCOMPARE(panel.ticks[0].label, "0");
        QVERIFY(panel.least < panel.most);
    }
}

void tst_ChartRules::chartsWithoutBarsHaveOnePanel() {
    ledgix::zq::Chart chart = OutlookChart();
    chart.series.pop_back();
    QCOMPARE(ToSheet(chart, UnitedStates()).panels.size(), 1U);
}

QTEST_MAIN(tst_ChartRules)
#include "tst_chart_rules.moc"
