#include <QTest>
#include <algorithm>
#include <memory>

#include "example_household.h"
#include "files.h"
#include "help_topics.h"
#include "message_recorder.h"

using namespace ledgix;
using namespace ledgix::test;

namespace {

// Where a paragraph of a report tells a figure.
struct Memo {
    const char* name;
    const char* pattern;
};

constexpr Memo kProfileMemos[]{
    {"Tax on your salary/wages", "salary/wages was calculated at (\\d+)"},
    {"Each year", "each year of (-?[\\d.]+)\\. "},
    {"Each week", "equates to (-?\\d+) per week"},
    {"Each month", "per week and (-?\\d+) per month"},
    {"Net worth", "net worth\\) is (-?\\d+)"},
    {"Times as many assets", "you have ([\\d.]+) times as many assets"},
    {"Debt/equity ratio", "debt/equity ratio of ([\\d.]+)%"},
    {"Loan to Value Ratio (LVR)", "or LVR is ([\\d.]+)%"},
    {"Debt Service Ratio (DSR)", "is currently ([\\d.]+)%"},
};

constexpr Memo kAnalysisMemos[]{
    {"Mortgage cost", "new expenses is (\\d+) in additional"},
    {"Mortgage value", "mortgage value of ([\\d.]+), at 7.25% per year for 25 years"},
    {"Mortgage cost a month", "expenses of (\\d+) per month"},
    {"Mortgage cost a week", "expenses of \\d+ per month or (\\d+) per week"},
    {"Change a year", "better off by (\\d+) per year"},
    {"Change a month", "better off by \\d+ per year, or (\\d+) per month"},
    {"Change a week", "better off by \\d+ per year, or \\d+ per month or (\\d+) per week"},
    {"To spare", "covers your mortgage costs with (\\d+) to spare"},
    {"Net worth, after", "net worth\\) would be (-?\\d+)"},
    {"Debt/equity ratio, before", "debt/equity ratio would change from ([\\d.]+)%"},
    {"Debt/equity ratio, after", "debt/equity ratio would change from [\\d.]+% to ([\\d.]+)%"},
    {"LVR, before", "LVR changes from ([\\d.]+)%"},
    {"LVR, after", "LVR changes from [\\d.]+% to ([\\d.]+)%"},
    {"DSR, before", "\\(DSR\\) would change from ([\\d.]+)%"},
    {"DSR, after", "\\(DSR\\) would change from [\\d.]+% to ([\\d.]+)%"},
};

// The report that a topic tells of; the profile report for the topics of the profile's pages.
reports::ReportKind ReportOf(int topic) {
    switch (topic) {
        case editors::kHelpAnalysisReport:
            return reports::kAnalysisReport;
        case editors::kHelpOutlookReport:
            return reports::kOutlookReport;
        default:
            return reports::kProfileReport;
    }
}

// What no report prints, from the part of the program that works it out.
std::map<std::string, double> BehindTheReports(ExampleHousehold& household) {
    const model::clsProfile& profile = household.profile;
    model::clsProperty& property = household.property();
    const auto tax = model::CalculateIncomeTax;
    const double own_rent = profile.IncRentalIncome;
    model::clsProperty new_property;
    editors::PriceSplit(new_property).PriceChanged(property.PurchasePrice);
    model::clsProperty interest_only;
    interest_only.PurchasePrice = property.MortgageValue();
    interest_only.MortgageRate = property.MortgageRate;
    interest_only.MortgageTerm = property.MortgageTerm;
    interest_only.InterestOnly = true;
    controls::PeriodAmounts rent;
    rent.Enter(controls::Period::kWeek, "360");
    const model::TaxTable quarter{{}, 25};
    const model::TaxTable third{{}, 35};
    return {
        {"First bracket", tax(38000)},
        {"Second bracket", tax(60000) - tax(38000)},
        {"Top bracket", tax(profile.IncSalary) - tax(60000)},
        {"Tax before", tax(profile.IncSalary)},
        {"Gross income", profile.TotalIncome()},
        {"Free for debts", reports::ServicingIncome(profile, own_rent * 0.8)},
        {"Free for debts, after", reports::ServicingIncome(profile, property.RentIncome * 0.8 + own_rent)},
        {"Payments on debts", reports::DebtService(profile)},
        {"Rent a year", std::stod(rent.Text(controls::Period::kYear))},
        {"Rent a month", std::stod(rent.Text(controls::Period::kMonth))},
        {"House Value", new_property.HouseValue},
        {"Chattels Value", new_property.ChattelValue},
        {"Mortgage cost, interest only", interest_only.MortgageCost()},
        {"Tax of 25 % on 10 dollars", model::IncomeTax(10, quarter)},
        {"Tax of 35 % on 10 dollars", model::IncomeTax(10, third)},
    };
}

// The mortgage, of which the program tells the sums of years alone; unrounded.
std::map<std::string, double> Mortgage(model::clsProperty& property) {
    const int months = property.MortgageTerm * 12;
    const double rate = double(property.MortgageRate) / 100 / 12;
    const double payment = property.MortgageValue() * rate / (1 - std::pow(1 + rate, -months));
    const Schedule schedule(property.MortgageValue(), double(property.MortgageRate), months, payment);
    property.MortgageCost();
    const auto yearly = [&](std::size_t year, model::YearValue value) { return 0 - property.records[year][value]; };
    return {
        {"Monthly rate", rate},
        {"Months", months},
        {"Monthly payment", payment},
        {"Interest of month 1", schedule.interest[1]},
        {"Paid back in month 1", schedule.paid_back[1]},
        {"Interest of month 2", schedule.interest[2]},
        {"Owing after 12 months", schedule.owing[12]},
        {"Owing after 24 months", schedule.owing[24]},
        {"Paid back in year 1", yearly(1, model::YearValue::kPrincipal)},
        {"Interest of year 1", yearly(1, model::YearValue::kInterest)},
        {"Paid back in year 2", yearly(2, model::YearValue::kPrincipal)},
        {"Interest of year 2", yearly(2, model::YearValue::kInterest)},
    };
}

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

}  // namespace

// Every figure of the help is the program's own, and what its formula gives.
class tst_HelpExamples : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void everyNameStandsForOneFigure();
    void everyGivenFigureIsEnteredSomewhere();
    void everyFigureIsWhatItsFormulaGives_data() { listFigures(); }
    void everyFigureIsWhatItsFormulaGives();
    void everyFigureIsTheProgramsOwn_data() { listFigures(); }
    void everyFigureIsTheProgramsOwn();
    void aChangedFigureIsNoticed_data() { listFigures(); }
    void aChangedFigureIsNoticed();
    void everyLineOfAReportIsInItsTopic_data();
    void everyLineOfAReportIsInItsTopic();
    void theMortgageIsPaidBackAtItsEnd();
    void theGuideTellsTheSameFigures();
    void arithmeticIsAsWritten_data();
    void arithmeticIsAsWritten();

private:
    // All that are not given.
    void listFigures() const;
    const Figure& Current() const;
    std::optional<double> Programs(const Figure& figure) const;

    MessageRecorder messages_;
    shell::HelpFile file_{runtime::ReadFile(LEDGIX_SOURCE "/shell/help/ledgix.hlp")};
    WorkedExamples examples_{file_};
    std::unique_ptr<ExampleHousehold> household_;
    std::map<std::string, double> behind_;
};

void tst_HelpExamples::initTestCase() {
    household_ = std::make_unique<ExampleHousehold>(examples_);
    QVERIFY(messages_.messages().empty());
    behind_ = BehindTheReports(*household_);
    std::map<std::string, double> mortgage = Mortgage(household_->property());
    for (const Figure& figure : examples_.figures())
        if (const auto exact = mortgage.find(figure.name); exact != mortgage.end())
            exact->second = RoundedTo(exact->second, DecimalsOf(figure.value));
    behind_.merge(mortgage);
}

void tst_HelpExamples::listFigures() const {
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < examples_.figures().size(); ++i)
        if (!examples_.figures()[i].formula.empty())
            QTest::newRow(examples_.figures()[i].name.c_str()) << int(i);
}

const Figure& tst_HelpExamples::Current() const {
    QFETCH(const int, index);
    return examples_.figures()[std::size_t(index)];
}

std::optional<double> tst_HelpExamples::Programs(const Figure& figure) const {
    const ReportText& analysis = household_->Text(reports::kAnalysisReport);
    for (const Memo& memo : kProfileMemos)
        if (figure.name == memo.name)
            return household_->Text(reports::kProfileReport).InMemo(memo.pattern);
    for (const Memo& memo : kAnalysisMemos)
        if (figure.name == memo.name)
            return analysis.InMemo(memo.pattern);
    if (const auto found = behind_.find(figure.name); found != behind_.end())
        return found->second;
    return household_->Text(ReportOf(figure.topic)).Cell(figure.name);
}

void tst_HelpExamples::everyNameStandsForOneFigure() {
    std::map<std::string, int> count;
    for (const Figure& figure : examples_.figures())
        QVERIFY2(++count[figure.name] == 1, figure.name.c_str());
    QVERIFY(count.size() > 100);
}

void tst_HelpExamples::everyGivenFigureIsEnteredSomewhere() {
    for (const Figure& figure : examples_.figures())
        if (figure.formula.empty() && figure.name != "Rent a week")
            QVERIFY2(GivenFields().count(figure.name) == 1, figure.name.c_str());
    for (const auto& [name, field] : GivenFields())
        QVERIFY2(examples_.Has(name), name.c_str());
    QCOMPARE(examples_.Value("Rent a week"), 360.0);
}

void tst_HelpExamples::everyFigureIsWhatItsFormulaGives() {
    QCOMPARE(Text(examples_.Trouble(Current())), QString());
}

void tst_HelpExamples::everyFigureIsTheProgramsOwn() {
    const Figure& figure = Current();
    const std::optional<double> programs = Programs(figure);
    QVERIFY2(programs, "the program has nothing of that name");
    QCOMPARE(NumberOf(figure.value), *programs);
}

void tst_HelpExamples::aChangedFigureIsNoticed() {
    Figure figure = Current();
    char& digit = figure.value[figure.value.find_last_of("0123456789")];
    digit = digit == '9' ? '8' : char(digit + 1);
    QVERIFY(!examples_.Trouble(figure).empty());
    QVERIFY(NumberOf(figure.value) != *Programs(figure));
    figure = Current();
    figure.numbers += " + 1";
    QVERIFY(!examples_.Trouble(figure).empty());
}

void tst_HelpExamples::everyLineOfAReportIsInItsTopic_data() {
    QTest::addColumn<int>("topic");
    QTest::newRow("profile report") << int(editors::kHelpProfileReport);
    QTest::newRow("property analysis") << int(editors::kHelpAnalysisReport);
    QTest::newRow("outlook") << int(editors::kHelpOutlookReport);
}

void tst_HelpExamples::everyLineOfAReportIsInItsTopic() {
    QFETCH(const int, topic);
    const ReportText& report = household_->Text(ReportOf(topic));
    QVERIFY(report.captions().size() >= 4);
    for (const std::string& caption : report.captions()) {
        bool found = false;
        for (const Figure& figure : examples_.figures()) {
            // The totals of the profile report are worked out on the pages of the profile.
            const bool here = figure.topic == topic || (topic == editors::kHelpProfileReport && figure.topic < 40);
            found = found || (here && (figure.name == caption || figure.name.starts_with(caption + ", ")));
        }
        QVERIFY2(found, caption.c_str());
    }
}

void tst_HelpExamples::theMortgageIsPaidBackAtItsEnd() {
    const model::clsProperty& property = household_->property();
    const Schedule schedule(property.MortgageValue(), double(property.MortgageRate), property.MortgageTerm * 12,
                            examples_.Value("Monthly payment"));
    // A payment that is rounded to five places leaves next to nothing after 25 years.
    QVERIFY(std::abs(schedule.left_at_the_end) < 0.01);
}

void tst_HelpExamples::theGuideTellsTheSameFigures() {
    const std::string guide = runtime::ReadFile(LEDGIX_SOURCE "/docs/guide.md");
    const std::regex numbers("-?\\d{1,3}(?:,\\d{3})+|\\d+\\.\\d+");
    int count = 0;
    for (std::sregex_iterator number(guide.begin(), guide.end(), numbers), end; number != end; ++number) {
        ++count;
        const double value = NumberOf(number->str());
        const bool known = std::any_of(examples_.figures().begin(), examples_.figures().end(),
                                       [value](const Figure& figure) { return NumberOf(figure.value) == value; });
        QVERIFY2(known, number->str().c_str());
    }
    QVERIFY(count >= 12);
}

void tst_HelpExamples::arithmeticIsAsWritten_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("sum") << "1,000 - 200 + 5" << 805.0;
    QTest::newRow("products first") << "1 + 2 × 3 ÷ 4" << 2.5;
    QTest::newRow("powers first") << "2 × 3 ^ 2" << 18.0;
    QTest::newRow("parentheses") << "(1 + 2) × (-3)" << -9.0;
    QTest::newRow("percent") << "200 × 19.5 %" << 39.0;
    QTest::newRow("negative power") << "2 ^ (0 - 1)" << 0.5;
    QTest::newRow("tax") << "tax on (60,000 + 10,000)" << 18570.0;
    QTest::newRow("tax below zero") << "tax on (0 - 70,000)" << -18570.0;
}

void tst_HelpExamples::arithmeticIsAsWritten() {
    QFETCH(const QString, text);
    QFETCH(const double, value);
    QCOMPARE(Arithmetic::Value(text.toStdString()), value);
    QVERIFY_THROWS_EXCEPTION(std::invalid_argument, Arithmetic::Value(text.toStdString() + " rents"));
}

QTEST_MAIN(tst_HelpExamples)
#include "tst_help_examples.moc"
