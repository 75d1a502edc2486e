#include "report_windows.h"

#include <QDialog>
#include <QFile>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "frm_preview.h"
#include "message_recorder.h"
#include "page_view.h"
#include "pdf_output.h"
#include "report_pages.h"
#include "zq_reports.h"

using ledgix::preview::frmPreview;
using ledgix::preview::ReportWindows;
using ledgix::test::PdfPages;
using ledgix::test::ReportOf;
using ledgix::zq::Document;

namespace {

frmPreview* OpenPreview() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<frmPreview*>(widget); window && window->isVisible())
            return window;
    return nullptr;
}

}  // namespace

class tst_ReportWindows : public QObject {
    Q_OBJECT

private slots:
    void showsAWindow();
    void theUserClosesIt();
    void theReportClosesIt();
    void canBeUsedOverAModalDialog();
    void closesWithItsOwner();
    void goesWithItsOwner();
    void printsWhatThePdfShows();
    void printsLandscapeReports();
    void printsTheChosenPages();
    void aPrinterOfAnotherPaperTakesTheWholePage();
    void theUserMayDropThePrinting();
    void asksForThePrinterBeforeTheActiveWindow();
    void asksByTheSystemsDialog();
    void aFailureIsTold();
    void theEnginePrintsByThePrintButton();

private:
    // Prints into a file, with settings that a user might choose.
    ReportWindows Into(
        const QString& path, std::function<void(QPrinter&)> choose = [](QPrinter&) {}) {
        return ReportWindows([path, choose](QPrinter& printer, QWidget*) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(path);
            choose(printer);
            return true;
        });
    }
    QString File(const QString& name) const { return folder_.filePath(name); }
    QStringList PagesOf(const Document& document) const {
        ledgix::zq::WritePdf(document, File("wanted.pdf").toStdString());
        return PdfPages(File("wanted.pdf"));
    }
    QString PageSize(const QString& path) const;

    ledgix::test::OwnSettings settings_;
    QTemporaryDir folder_;
    ledgix::test::MessageRecorder messages_;
};

void tst_ReportWindows::showsAWindow() {
    ReportWindows windows;
    const auto handle = windows.Show(ReportOf(2), [] {});
    QVERIFY(handle->IsOpen());
    QVERIFY(OpenPreview());
    QCOMPARE(OpenPreview()->windowTitle(), "Profile : Tom - Preview");
    OpenPreview()->showMinimized();
    QVERIFY(handle->IsOpen());
}

void tst_ReportWindows::theUserClosesIt() {
    ReportWindows windows;
    const auto handle = windows.Show(ReportOf(2), [] {});
    QPointer<frmPreview> window = OpenPreview();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window->view, Qt::Key_Escape);
    QVERIFY(!handle->IsOpen());
    QTRY_VERIFY(!window);
    QVERIFY(!handle->IsOpen());
}

void tst_ReportWindows::theReportClosesIt() {
    ReportWindows windows;
    auto handle = windows.Show(ReportOf(2), [] {});
    QVERIFY(OpenPreview());
    handle.reset();
    QVERIFY(!OpenPreview());
}

void tst_ReportWindows::canBeUsedOverAModalDialog() {
    ReportWindows windows;
    int printed = 0;
    std::unique_ptr<ledgix::zq::PreviewWindow> handle;
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        handle = windows.Show(ReportOf(2), [&] { ++printed; });
        frmPreview* window = OpenPreview();
        QVERIFY(window);
        QCOMPARE(window->parentWidget(), &dialog);
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto* button = window->findChild<QToolButton*>("cmdPrint");
        // Through the window system, which keeps clicks from blocked windows.
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, button->mapTo(window, button->rect().center()));
        dialog.reject();
    });
    dialog.exec();
    QCOMPARE(printed, 1);
    QVERIFY(!handle->IsOpen());
}

void tst_ReportWindows::closesWithItsOwner() {
    ReportWindows windows;
    QWidget owner;
    owner.show();
    QVERIFY(QTest::qWaitForWindowActive(&owner));
    const auto handle = windows.Show(ReportOf(1), [] {});
    QVERIFY(handle->IsOpen());
    owner.hide();
    QVERIFY(!handle->IsOpen());
}

void tst_ReportWindows::goesWithItsOwner() {
    ReportWindows windows;
    auto owner = std::make_unique<QWidget>();
    owner->show();
    QVERIFY(QTest::qWaitForWindowActive(owner.get()));
    const auto handle = windows.Show(ReportOf(1), [] {});
    QVERIFY(handle->IsOpen());
    owner.reset();
    QVERIFY(!handle->IsOpen());
}

void tst_ReportWindows::printsWhatThePdfShows() {
    const Document document = ReportOf(3);
    Into(File("printed.pdf")).Print(document);
    const QStringList pages = PdfPages(File("printed.pdf"));
    QCOMPARE(pages.size(), 3);
    QVERIFY(pages[2].contains("Heading 3"));
    QCOMPARE(pages, PagesOf(document));
    QVERIFY(messages_.messages().empty());
}

QString tst_ReportWindows::PageSize(const QString& path) const {
    QProcess reader;
    reader.start("pdfinfo", {path});
    reader.waitForFinished();
    for (const QString& line : QString::fromUtf8(reader.readAllStandardOutput()).split('\n'))
        if (line.startsWith("Page size:"))
            return line.mid(10).trimmed();
    return {};
}

void tst_ReportWindows::printsLandscapeReports() {
    Document document = ReportOf(2);
    std::swap(document.page_width, document.page_height);
    Into(File("printed.pdf")).Print(document);
    QVERIFY2(PageSize(File("printed.pdf")).startsWith("842 x 595 pts"), qPrintable(PageSize(File("printed.pdf"))));
    QCOMPARE(PdfPages(File("printed.pdf")), PagesOf(document));
}

void tst_ReportWindows::printsTheChosenPages() {
    Into(File("printed.pdf"), [](QPrinter& printer) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
    }).Print(ReportOf(4));
    const QStringList pages = PdfPages(File("printed.pdf"));
    QCOMPARE(pages.size(), 2);
    QVERIFY(pages[0].contains("Heading 2"));
    QVERIFY(pages[1].contains("Heading 3"));
}

void tst_ReportWindows::aPrinterOfAnotherPaperTakesTheWholePage() {
    Into(File("printed.pdf"), [](QPrinter& printer) {
        printer.setPageSize(QPageSize(QPageSize::A5));
    }).Print(ReportOf(1));
    QVERIFY2(PageSize(File("printed.pdf")).startsWith("420 x 595 pts"), qPrintable(PageSize(File("printed.pdf"))));
    QProcess reader;
    reader.start("pdftotext", {"-bbox", File("printed.pdf"), "-"});
    reader.waitForFinished();
    const QString boxes = QString::fromUtf8(reader.readAllStandardOutput());
    const auto amount = QRegularExpression("xMin=\"([0-9.]+)\" [^>]*>\\$11,700.00").match(boxes);
    QVERIFY(amount.hasMatch());
    QVERIFY(std::abs(amount.captured(1).toDouble() - 400 * 420 / 595.28) < 1);
}

void tst_ReportWindows::theUserMayDropThePrinting() {
    ReportWindows windows([this](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(File("dropped.pdf"));
        return false;
    });
    windows.Print(ReportOf(1));
    QVERIFY(!QFile::exists(File("dropped.pdf")));
    QVERIFY(messages_.messages().empty());
}

void tst_ReportWindows::asksForThePrinterBeforeTheActiveWindow() {
    QWidget active;
    active.show();
    QVERIFY(QTest::qWaitForWindowActive(&active));
    QWidget* asked = nullptr;
    ReportWindows windows([&](QPrinter& printer, QWidget* owner) {
        asked = owner;
        return printer.fromPage() != 1 || printer.toPage() != 5;
    });
    windows.Print(ReportOf(5));
    QCOMPARE(asked, &active);
    QVERIFY(messages_.messages().empty());
}

void tst_ReportWindows::asksByTheSystemsDialog() {
    QWidget active;
    active.show();
    QVERIFY(QTest::qWaitForWindowActive(&active));
    bool asked = false;
    QTimer::singleShot(0, this, [&] {
        auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        asked = dialog->testOption(QAbstractPrintDialog::PrintPageRange) && dialog->parentWidget() == &active;
        dialog->reject();
    });
    ReportWindows().Print(ReportOf(2));
    QVERIFY(asked);
    QVERIFY(messages_.messages().empty());
}

void tst_ReportWindows::aFailureIsTold() {
    Into(File("no such folder/printed.pdf")).Print(ReportOf(1));
    QCOMPARE(messages_.messages().size(), 1U);
    QCOMPARE(messages_.messages()[0].text, "The report could not be printed.");
    messages_.Clear();
}

// The product's own templates, from the engine to the paper.
void tst_ReportWindows::theEnginePrintsByThePrintButton() {
    ReportWindows windows = Into(File("printed.pdf"));
    ledgix::zq::InstallPreview(&windows);
    ledgix::zq::zqReports engine;
    const auto run = [&] {
        QVERIFY(engine.OpenTemplate(LEDGIX_TEST_DATA "/../../reports/templates/profile.rdn"));
        engine.band("Heading").field("caption").SetText("Income vs Expenses");
        engine.PrintBand("Heading");
        engine.Show();
    };
    engine.PrintToPrinterButton = [&] {
        engine.SetDestination(ledgix::zq::kToPrinter);
        run();
    };
    run();
    QVERIFY(engine.PreviewOpen());
    ledgix::test::Click(*OpenPreview(), "cmdPrint");
    ledgix::zq::InstallPreview(nullptr);
    QVERIFY(engine.PreviewOpen());
    QVERIFY(PdfPages(File("printed.pdf")).value(0).contains("Income vs Expenses"));
    QCOMPARE(PdfPages(File("printed.pdf")), PagesOf(engine.document()));
}

QTEST_MAIN(tst_ReportWindows)
#include "tst_report_windows.moc"
