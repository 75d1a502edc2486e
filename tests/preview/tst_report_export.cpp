#include "report_export.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QTest>
#include <QTimer>
#include <memory>

#include "file_proposal.h"
#include "message_recorder.h"
#include "report_csv.h"
#include "report_pages.h"

using ledgix::preview::FileWish;
using ledgix::preview::frmPreview;
using ledgix::preview::ProposedFileName;
using ledgix::test::Click;
using ledgix::test::PdfPages;
using ledgix::test::ReportOf;

class tst_ReportExport : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { window_.reset(); }

    void savesThePagesAsPdf();
    void savesTheBandsAsCsv();
    void keysSaveToo();
    void proposesTheTitle();
    void proposesTheFolderUsedLast();
    void aFolderThatIsGoneIsNotProposed();
    void theUserMayDropTheSaving();
    void aFailureIsToldAndLeavesTheOldFile();
    void theDialogOffersTheProposal();
    void titlesBecomeFileNames_data();
    void titlesBecomeFileNames();
    void longTitlesAreCutBetweenLetters();

private:
    void Answer(const QString& path) {
        window_->ChooseFile = [this, path](QWidget* owner, const FileWish& wish) {
            owner_ = owner;
            wish_ = wish;
            return path;
        };
    }
    QString File(const QString& name) const { return folder_->filePath(name); }

    std::unique_ptr<ledgix::test::OwnSettings> settings_;
    std::unique_ptr<QTemporaryDir> folder_;
    ledgix::test::MessageRecorder messages_;
    std::unique_ptr<frmPreview> window_;
    QWidget* owner_ = nullptr;
    FileWish wish_;
};

namespace {

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ledgix::zq::Document Bands() {
    ledgix::zq::Document document = ReportOf(2, "Long Term Outlook  Profile : Tom");
    ledgix::zq::PrintedBand band;
    band.name = "Table";
    band.fields = {{"Caption", "Total, Income", false}, {"before", "11700", false}};
    document.bands.push_back(band);
    return document;
}

}  // namespace

void tst_ReportExport::init() {
    settings_ = std::make_unique<ledgix::test::OwnSettings>();
    folder_ = std::make_unique<QTemporaryDir>();
    window_ = std::make_unique<frmPreview>(
        Bands(), [] {}, nullptr);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    messages_.Clear();
    owner_ = nullptr;
}

void tst_ReportExport::savesThePagesAsPdf() {
    Answer(File("report.pdf"));
    Click(*window_, "cmdSavePdf");
    QCOMPARE(owner_, window_.get());
    QCOMPARE(wish_.suffix, "pdf");
    const QStringList pages = PdfPages(File("report.pdf"));
    QCOMPARE(pages.size(), 2);
    QVERIFY(pages[1].contains("Heading 2"));
    QVERIFY(messages_.messages().empty());
}

void tst_ReportExport::savesTheBandsAsCsv() {
    Answer(File("report.csv"));
    Click(*window_, "cmdSaveCsv");
    QCOMPARE(wish_.suffix, "csv");
    QCOMPARE(Content(File("report.csv")), "Table,\"Total, Income\",11700\r\n");
}

void tst_ReportExport::keysSaveToo() {
    Answer(File("report"));
    QTest::keyClick(window_->view, Qt::Key_S, Qt::ControlModifier);
    QVERIFY(Content(File("report")).startsWith("%PDF-"));
    QTest::keyClick(window_->view, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(Content(File("report")).startsWith("Table,"));
}

void tst_ReportExport::proposesTheTitle() {
    Answer("");
    Click(*window_, "cmdSavePdf");
    QCOMPARE(QFileInfo(wish_.proposal).fileName(), "Long Term Outlook Profile - Tom.pdf");
    Click(*window_, "cmdSaveCsv");
    QCOMPARE(QFileInfo(wish_.proposal).fileName(), "Long Term Outlook Profile - Tom.csv");
}

void tst_ReportExport::proposesTheFolderUsedLast() {
    Answer(File("report.pdf"));
    Click(*window_, "cmdSavePdf");
    QVERIFY(QFileInfo(wish_.proposal).absolutePath() != QFileInfo(File("x")).absolutePath());
    Click(*window_, "cmdSaveCsv");
    QCOMPARE(QFileInfo(wish_.proposal).absolutePath(), QFileInfo(File("x")).absolutePath());
}

void tst_ReportExport::aFolderThatIsGoneIsNotProposed() {
    QVERIFY(QDir(folder_->path()).mkdir("sub"));
    Answer(File("sub/report.pdf"));
    Click(*window_, "cmdSavePdf");
    QVERIFY(QDir(File("sub")).removeRecursively());
    Click(*window_, "cmdSaveCsv");
    QVERIFY(!wish_.proposal.contains("/sub/"));
}

void tst_ReportExport::theUserMayDropTheSaving() {
    Answer("");
    Click(*window_, "cmdSavePdf");
    QVERIFY(owner_);
    QVERIFY(QDir(folder_->path()).isEmpty());
    QVERIFY(messages_.messages().empty());
}

void tst_ReportExport::aFailureIsToldAndLeavesTheOldFile() {
    Answer(File("none/report.pdf"));
    Click(*window_, "cmdSavePdf");
    QCOMPARE(messages_.messages().size(), 1U);
    QVERIFY(messages_.messages()[0].text.starts_with("The report could not be saved.\n\n"));
    QCOMPARE(messages_.messages()[0].title, "Vantreo Ledgix");
    // A folder stands where the file is to be.
    QVERIFY(QDir(folder_->path()).mkdir("report.csv"));
    Answer(File("report.csv"));
    Click(*window_, "cmdSaveCsv");
    QCOMPARE(messages_.messages().size(), 2U);
    QCOMPARE(QDir(folder_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("report.csv"));
    QVERIFY(QFileInfo(File("report.csv")).isDir());
    QVERIFY(window_->isVisible());
}

void tst_ReportExport::theDialogOffersTheProposal() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QString chosen;
    QTimer::singleShot(0, this, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), "Save as PDF");
        QCOMPARE(dialog->selectedFiles().value(0), File("Outlook.pdf"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    chosen = ledgix::preview::AskForFile(window_.get(), {"Save as PDF", File("Outlook.pdf"), "pdf", "PDF files"});
    QCOMPARE(chosen, File("Outlook.pdf"));
    QTimer::singleShot(0, this, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    chosen = ledgix::preview::AskForFile(window_.get(), {"Save as PDF", File("Outlook.pdf"), "pdf", "PDF files"});
    QVERIFY(chosen.isEmpty());
}

void tst_ReportExport::titlesBecomeFileNames_data() {
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "Long Term Outlook"
                           << "Long Term Outlook";
    QTest::newRow("colon") << "Profile : Tom"
                           << "Profile - Tom";
    QTest::newRow("path") << "../a\\b/c"
                          << "a - b - c";
    QTest::newRow("signs") << "1 < 2 > 0? \"yes\" | *"
                           << "1 - 2 - 0 - yes";
    QTest::newRow("line break") << "one\r\ntwo"
                                << "one - two";
    QTest::newRow("dots") << ".. hidden ..."
                          << "hidden";
    QTest::newRow("empty") << ""
                           << "Report";
    QTest::newRow("nothing left") << " ??? "
                                  << "Report";
    QTest::newRow("device") << "Con"
                            << "Report Con";
    QTest::newRow("device with extension") << "lpt1.old"
                                           << "Report lpt1.old";
    QTest::newRow("no device") << "Contract"
                               << "Contract";
    QTest::newRow("letters") << QString::fromUtf8("Z\xC3\xBCrich & Co's \xE2\x82\xAC")
                             << QString::fromUtf8("Z\xC3\xBCrich & Co's \xE2\x82\xAC");
}

void tst_ReportExport::titlesBecomeFileNames() {
    QFETCH(QString, title);
    QTEST(ProposedFileName(title), "name");
}

void tst_ReportExport::longTitlesAreCutBetweenLetters() {
    const QString long_name = ProposedFileName(QString(300, 'x'));
    QVERIFY(long_name.size() >= 40 && long_name.size() < 100);
    const QString house = QString::fromUtf8("\xF0\x9F\x8F\xA0");
    for (const QString& start : {QString(), QString("x")}) {
        const QString houses = ProposedFileName(start + house.repeated(100));
        QVERIFY(!houses.back().isHighSurrogate());
        QVERIFY(houses.toUtf8().size() < 250);
    }
}

QTEST_MAIN(tst_ReportExport)
#include "tst_report_export.moc"
