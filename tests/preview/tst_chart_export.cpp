#include "chart_export.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QXmlStreamReader>
#include <memory>

#include "chart_loader.h"
#include "chart_page.h"
#include "chart_report.h"
#include "message_recorder.h"
#include "scoped_region.h"

using ledgix::preview::FileWish;
using ledgix::preview::frmPreview;
using ledgix::test::Colours;
using ledgix::test::Dark;

class tst_ChartExport : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        if (!ledgix::preview::HasCharts())
            QSKIP("This build has no Qt Charts.");
    }
    void init();
    void cleanup() { window_.reset(); }

    void savesAPngOfTwiceTheSize();
    void savesAnSvgWithTheTexts();
    void theSavedPictureIsLightInTheDark();
    void proposesATitleAndBothKinds();
    void theDialogsNameFollowsTheKind();
    void theUserMayDropTheSaving();
    void aFailureIsToldAndLeavesNoHalfFile();
    void otherKindsAreRefused();

private:
    void Save(const QString& path);
    QString File(const QString& name) const { return folder_->filePath(name); }

    std::unique_ptr<ledgix::test::OwnSettings> settings_;
    std::unique_ptr<QTemporaryDir> folder_;
    ledgix::test::ScopedRegion region_;
    ledgix::test::MessageRecorder messages_;
    FileWish wish_;
    std::unique_ptr<frmPreview> window_;
};

namespace {

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

void tst_ChartExport::init() {
    settings_ = std::make_unique<ledgix::test::OwnSettings>();
    folder_ = std::make_unique<QTemporaryDir>();
    messages_.Clear();
    wish_ = {};
    window_ = std::make_unique<frmPreview>(
        ledgix::test::ReportWithChart(), [] {}, nullptr);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->resize(1100, 700);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    window_->pages->setCurrentIndex(1);
}

void tst_ChartExport::Save(const QString& path) {
    window_->chartPage->ChooseFile = [this, path](QWidget*, const FileWish& wish) {
        wish_ = wish;
        return path;
    };
    QTest::mouseClick(window_->chartPage->cmdSaveChart, Qt::LeftButton);
}

void tst_ChartExport::savesAPngOfTwiceTheSize() {
    Save(File("chart.PNG"));
    const QImage image(File("chart.PNG"));
    QCOMPARE(image.size(), QSize(2000, 1400));
    QVERIFY(Colours(image).contains(0xff0060a8));
    QVERIFY(messages_.messages().empty());
    QVERIFY(QFile::remove(File("chart.PNG")));
    QTest::keyClick(window_->chartPage->tblFigures, Qt::Key_T, Qt::AltModifier);
    QTRY_VERIFY(QFile::exists(File("chart.PNG")));
}

void tst_ChartExport::savesAnSvgWithTheTexts() {
    Save(File("chart.svg"));
    QXmlStreamReader reader(Content(File("chart.svg")));
    QStringList texts;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::Characters)
            texts += reader.text().toString().trimmed();
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    for (const char* text : {"Outlook: 12 Elm Street", "Value ($)", "Property Value", "Mortgage Value",
                             "Investment Value", "Cash Flow (after tax)", "300,000", "-3,000", "10", "Year"})
        QVERIFY2(texts.contains(text), text);
}

void tst_ChartExport::theSavedPictureIsLightInTheDark() {
    QApplication::setPalette(Dark());
    Save(File("chart.png"));
    QApplication::setPalette(QPalette());
    const QImage image(File("chart.png"));
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
    QVERIFY(Colours(image).contains(0xff0060a8));
}

void tst_ChartExport::proposesATitleAndBothKinds() {
    Save(File("chart.png"));
    QCOMPARE(QFileInfo(wish_.proposal).fileName(), "Long Term Outlook.png");
    QCOMPARE(wish_.suffix, "png");
    QCOMPARE(wish_.others.size(), 1);
    QCOMPARE(wish_.others[0].suffix, "svg");
    Save({});
    QCOMPARE(QFileInfo(wish_.proposal).absolutePath(), QFileInfo(File("x")).absolutePath());
}

void tst_ChartExport::theDialogsNameFollowsTheKind() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QTimer::singleShot(0, this, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->nameFilters(), QStringList({"PNG pictures (*.png)", "SVG drawings (*.svg)"}));
        dialog->setDirectory(folder_->path());
        auto* kinds = dialog->findChild<QComboBox*>("fileTypeCombo");
        QTest::keyClick(kinds, Qt::Key_Down);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::mouseClick(window_->chartPage->cmdSaveChart, Qt::LeftButton);
    QVERIFY(Content(File("Long Term Outlook.svg")).contains("<svg"));
}

void tst_ChartExport::theUserMayDropTheSaving() {
    Save({});
    QVERIFY(QDir(folder_->path()).isEmpty());
    QVERIFY(messages_.messages().empty());
}

void tst_ChartExport::aFailureIsToldAndLeavesNoHalfFile() {
    Save(File("none/chart.png"));
    QCOMPARE(messages_.messages().size(), 1U);
    QVERIFY(messages_.messages()[0].text.starts_with("The chart could not be saved.\n\n"));
    QVERIFY(QDir(folder_->path()).mkdir("chart.svg"));
    Save(File("chart.svg"));
    QCOMPARE(messages_.messages().size(), 2U);
    QCOMPARE(QDir(folder_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("chart.svg"));
    QVERIFY(QFileInfo(File("chart.svg")).isDir());
}

void tst_ChartExport::otherKindsAreRefused() {
    Save(File("chart.jpg"));
    QCOMPARE(messages_.messages().size(), 1U);
    QVERIFY(messages_.messages()[0].text.find(".png or .svg") != std::string::npos);
    QVERIFY(QDir(folder_->path()).isEmpty());
}

QTEST_MAIN(tst_ChartExport)
#include "tst_chart_export.moc"
