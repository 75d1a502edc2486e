#include <QClipboard>
#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <nlohmann/json.hpp>

#include "message_recorder.h"
#include "page_view.h"
#include "page_words.h"
#include "pdf_output.h"
#include "regional_settings.h"
#include "report_csv.h"
#include "report_sides.h"
#include "report_text.h"
#include "scoped_environment.h"

using namespace ledgix;
using test::WantedReport;

Q_DECLARE_METATYPE(WantedReport)

// The preview, the paper, the PDF and ledgix-cli show one and the same report.
class tst_ReportAgreement : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void ofHouseholds_data() { AddReportsOfHouseholds(kSamples); }
    void ofHouseholds();
    void ofSeveralPages_data() { AddReportsOfHouseholds({test::kLongestHousehold}); }
    void ofSeveralPages();
    void ofReferenceCases_data();
    void ofReferenceCases();
    void withADecimalComma_data() { AddReportsOfHouseholds({"household-2000.mdb"}); }
    void withADecimalComma();

private:
    // What one report is on every side.
    struct Sides {
        zq::Document document;
        QStringList page_texts;  // of the preview, as assistive technology is told
        QString copied;          // of all pages
        std::vector<test::PageWords> preview;
        std::vector<test::PageWords> pdf;
        std::vector<test::PageWords> printed;
        std::vector<test::PageWords> cli_pdf;
        std::string cli_text;
        std::string cli_csv;
        std::string cli_json;
    };

    void AddReportsOfHouseholds(const std::vector<std::string>& samples);
    void Check(const WantedReport& wanted);
    void Take(const WantedReport& wanted, Sides& sides);
    void TakeFromWindow(const WantedReport& wanted, Sides& sides);
    QString File(const QString& name) const { return folder_.filePath(name); }

    static inline const std::vector<std::string> kSamples{"household-2000.mdb", "household-clutter.mdb",
                                                          "household-nulls.mdb", "household-older.mdb"};
    QTemporaryDir folder_;
    test::MessageRecorder messages_;
    std::size_t pages_ = 0;  // of the report that was checked last
};

namespace {

QString WithoutBlanks(QString text) {
    return text.remove(' ').remove('\t').remove('\n');
}

// The printed bands, labels included, and their order.
QString TextOfBands(const zq::Document& document) {
    QString text;
    for (const zq::PrintedBand& band : document.bands)
        for (const zq::PrintedCell& cell : band.cells)
            text += zq::FromUtf8(cell.text);
    return WithoutBlanks(text);
}

// The pages' texts without the three of the footer.
QString TextOfPages(const zq::Document& document) {
    constexpr std::size_t kFooterTexts = 3;
    QString text;
    for (const zq::Drawing& page : document.pages)
        for (std::size_t i = 0; i + kFooterTexts < page.texts.size(); ++i)
            text += zq::FromUtf8(page.texts[i].text);
    return WithoutBlanks(text);
}

// As ledgix-cli lists the bands: fields that are not empty.
nlohmann::ordered_json BandList(const zq::Document& document) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const zq::PrintedBand& band : document.bands) {
        nlohmann::ordered_json fields = nlohmann::ordered_json::object();
        for (const zq::PrintedField& field : band.fields)
            if (!field.text.empty())
                fields[field.name] = field.text;
        list.push_back({{"band", band.name}, {"fields", fields}});
    }
    return list;
}

}  // namespace

void tst_ReportAgreement::initTestCase() {
    qputenv("LC_ALL", "C.UTF-8");
    runtime::InstallRegion(runtime::ReadUserSettings());
}

void tst_ReportAgreement::AddReportsOfHouseholds(const std::vector<std::string>& samples) {
    QTest::addColumn<WantedReport>("wanted");
    for (const std::string& sample : samples) {
        const test::CurrentHousehold household(sample);
        const std::string name = sample.substr(0, sample.find('.'));
        QVERIFY(model::gProfiles->Count() > 0);
        for (std::size_t i = 1; i <= model::gProfiles->Count(); ++i) {
            model::clsProfile& profile = model::gProfiles->Item(i);
            const std::int32_t number = profile.ProfileNumber;
            QTest::addRow("%s, profile %d", name.c_str(), number)
                << WantedReport{sample, reports::kProfileReport, number, 0};
            for (std::size_t k = 1; k <= profile.PropertyCount(); ++k) {
                // A row that could not be read leaves a property behind that ledgix-cli does not take.
                const model::clsProperty& property = profile.Property(k);
                if (!property.Saved)
                    continue;
                for (const auto kind : {reports::kAnalysisReport, reports::kOutlookReport})
                    QTest::addRow("%s, %s of property %d-%d", name.c_str(),
                                  kind == reports::kOutlookReport ? "outlook" : "analysis", number,
                                  property.PropertyNumber)
                        << WantedReport{sample, kind, number, property.PropertyNumber};
            }
        }
    }
    messages_.Clear();
}

void tst_ReportAgreement::ofHouseholds() {
    QFETCH(WantedReport, wanted);
    Check(wanted);
}

void tst_ReportAgreement::ofSeveralPages() {
    QFETCH(WantedReport, wanted);
    Check(wanted);
    if (wanted.kind == reports::kAnalysisReport)
        QVERIFY(pages_ > 1);
}

void tst_ReportAgreement::ofReferenceCases_data() {
    QTest::addColumn<WantedReport>("wanted");
    constexpr std::pair<const char*, std::int32_t> kFiles[] = {{"profile_report.json", reports::kProfileReport},
                                                               {"property_report.json", reports::kAnalysisReport},
                                                               {"outlook_report.json", reports::kOutlookReport}};
    for (const auto& [file, kind] : kFiles) {
        const test::Json cases = test::LoadCases(file);
        for (std::size_t i = 0; i < cases.size(); ++i)
            QTest::addRow("%s, %s", file, cases[i].at("name").get<std::string>().c_str())
                << WantedReport{std::string(file) + "/" + std::to_string(i), kind, 1, 1};
    }
}

void tst_ReportAgreement::ofReferenceCases() {
    QFETCH(WantedReport, wanted);
    Check(wanted);
}

void tst_ReportAgreement::withADecimalComma() {
    if (!QFile::exists(File("de_DE.UTF-8")) &&
        QProcess::execute("localedef", {"-i", "de_DE", "-f", "UTF-8", File("de_DE.UTF-8")}) != 0)
        QSKIP("The German locale cannot be made here.");
    const test::ScopedEnvironment place("LOCPATH", folder_.path().toStdString());
    const test::ScopedEnvironment language("LC_ALL", "de_DE.UTF-8");
    const runtime::RegionalSettings before = runtime::Region();
    runtime::InstallRegion(runtime::ReadUserSettings());
    QCOMPARE(runtime::Region().decimal_separator, ",");
    QFETCH(WantedReport, wanted);
    Check(wanted);
    runtime::InstallRegion(before);
}

// The footer bears the date: should the day end meanwhile, all sides are taken anew.
void tst_ReportAgreement::Check(const WantedReport& wanted) {
    Sides sides;
    QDate day;
    do {
        day = QDate::currentDate();
        sides = {};
        Take(wanted, sides);
        if (QTest::currentTestFailed())
            return;
    } while (day != QDate::currentDate());
    pages_ = sides.document.pages.size();
    QCOMPARE(test::DifferenceOf(sides.preview, sides.pdf), "");
    QCOMPARE(test::DifferenceOf(sides.preview, sides.printed), "");
    QCOMPARE(test::DifferenceOf(sides.preview, sides.cli_pdf), "");
    QCOMPARE(sides.page_texts.size(), qsizetype(sides.document.pages.size()));
    QCOMPARE(sides.copied, sides.page_texts.join('\n'));
    for (std::size_t page = 0; page < sides.document.pages.size(); ++page) {
        QString drawn;
        for (const zq::PrintedText& text : sides.document.pages[page].texts)
            drawn += zq::FromUtf8(text.text);
        QCOMPARE(WithoutBlanks(sides.page_texts[qsizetype(page)]), WithoutBlanks(drawn));
    }
    QCOMPARE(TextOfPages(sides.document), TextOfBands(sides.document));
    QCOMPARE(sides.cli_text, zq::ToText(sides.document));
    QCOMPARE(sides.cli_csv, zq::ToCsv(sides.document));
    QCOMPARE(nlohmann::ordered_json::parse(sides.cli_json).at("bands").dump(), BandList(sides.document).dump());
    QVERIFY(messages_.messages().empty());
}

void tst_ReportAgreement::Take(const WantedReport& wanted, Sides& sides) {
    const test::CurrentHousehold household(wanted.household);
    // A Null in a number is told while records are loaded.
    messages_.Clear();
    TakeFromWindow(wanted, sides);
    if (QTest::currentTestFailed())
        return;
    sides.preview = test::WordsOfPreview(sides.document);
    zq::WritePdf(sides.document, File("document.pdf").toStdString());
    sides.pdf = test::WordsOfPdf(File("document.pdf"));
    sides.printed = test::WordsOfPdf(File("printed.pdf"));
    const std::string report = test::CliArguments(wanted);
    const std::string cli_file = File("cli.pdf").toStdString();
    test::OutputOfSuccess(household.Cli(report + " --format pdf --output '" + cli_file + "'"));
    sides.cli_pdf = test::WordsOfPdf(File("cli.pdf"));
    sides.cli_text = test::OutputOfSuccess(household.Cli(report + " --format text"));
    sides.cli_csv = test::OutputOfSuccess(household.Cli(report + " --format csv"));
    sides.cli_json = test::OutputOfSuccess(household.Cli(report + " --format json"));
    for (const char* file : {"document.pdf", "printed.pdf", "cli.pdf"})
        QFile::remove(File(file));
}

// The reports end with the household's profiles, and this window with them.
void tst_ReportAgreement::TakeFromWindow(const WantedReport& wanted, Sides& sides) {
    test::ReportDesk desk(File("printed.pdf"));
    preview::frmPreview* window = desk.Open(wanted);
    QVERIFY(window);
    sides.document = desk.shown();
    for (int page = 0; page < window->view->Pages(); ++page) {
        window->view->GoToPage(page);
        sides.page_texts += window->view->accessibleDescription();
    }
    window->cmdSelectAll->trigger();
    window->cmdCopy->trigger();
    sides.copied = QGuiApplication::clipboard()->text();
    auto* button = window->findChild<QToolButton*>("cmdPrint");
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(QFile::exists(File("printed.pdf")));
    window->close();
}

QTEST_MAIN(tst_ReportAgreement)
#include "tst_report_agreement.moc"
