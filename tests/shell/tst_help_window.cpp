#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>
#include <memory>

#include "files.h"
#include "help_topics.h"
#include "help_window.h"
#include "help_window_page.h"
#include "message_recorder.h"
#include "scoped_environment.h"
#include "temporary_folder.h"

using namespace ledgix::shell;
using namespace ledgix::test;

namespace {

const char* const kText =
    "topic 1 Contents\n"
    "Rent & <income>.\n"
    "see 31 50\n"
    "topic 31 Income\n"
    "within 1\n"
    "Salary :: what you earn\n"
    "see 50\n"
    "topic 50 Reports\n"
    "Reports show the income of a year.\n";

QString Shown(const HelpWindow& window) {
    return window.txtTopic->toPlainText();
}

// The listed topics in order, those within another behind a ">".
QStringList Listed(const HelpWindow& window) {
    QStringList titles;
    for (QTreeWidgetItemIterator item(window.treTopics); *item; ++item)
        titles << ((*item)->parent() ? ">" : "") + (*item)->text(0);
    return titles;
}

QString Current(const HelpWindow& window) {
    const QTreeWidgetItem* item = window.treTopics->currentItem();
    return item ? item->text(0) : QString();
}

QStringList Marked(const HelpWindow& window) {
    QStringList hits;
    for (const QTextEdit::ExtraSelection& hit : window.txtTopic->extraSelections())
        hits << hit.cursor.selectedText();
    return hits;
}

}  // namespace

class tst_HelpWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places_.path()); }
    void init();
    void cleanup();

    void opensTheTopicAskedFor();
    void showsTheContentsForAnUnknownTopic();
    void isOneWindowAboveItsOwner();
    void doesNothingWithoutAFile();
    void doesNothingWithADamagedFile();
    void aTextIsShownAsItIs();
    void figuresShowTheirFormulaAndValue();
    void listsTopicsUnderTheirTopics();
    void theListFollowsTheTopicAndLeadsToIt();
    void linksLeadOnAndBackAndForward();
    void theContentsAreOneClickAway();
    void searchingListsAndMarks();
    void enterOpensTheFirstHit();
    void noHitIsSaid();
    void findGoesToTheSearchField();
    void escapeClosesIt();
    void worksBesideAModalWindow();
    void theFileOfTheProgramHasEveryTopic_data();
    void theFileOfTheProgramHasEveryTopic();

private:
    QTemporaryDir places_;  // of windows
    std::unique_ptr<TemporaryFolder> folder_;
    std::unique_ptr<ScopedEnvironment> place_;
    std::unique_ptr<QWidget> owner_;
};

void tst_HelpWindow::init() {
    folder_ = std::make_unique<TemporaryFolder>();
    place_ = std::make_unique<ScopedEnvironment>("LEDGIX_FOLDER", folder_->path());
    folder_->Write("ledgix.hlp", kText);
    owner_ = std::make_unique<QWidget>();
    owner_->show();
}

void tst_HelpWindow::cleanup() {
    owner_.reset();
    place_.reset();
    folder_.reset();
    QVERIFY(!HelpWindow::Instance());
}

void tst_HelpWindow::opensTheTopicAskedFor() {
    OpenHelp(31, owner_.get());
    const HelpWindow* window = HelpWindow::Instance();
    QVERIFY(window);
    QVERIFY(window->isVisible());
    QVERIFY(!window->isModal());
    QCOMPARE(window->windowTitle(), "Vantreo Ledgix Help");
    QVERIFY(Shown(*window).contains("what you earn"));
    OpenHelp(50, owner_.get());
    QVERIFY(Shown(*window).contains("of a year"));
}

void tst_HelpWindow::showsTheContentsForAnUnknownTopic() {
    OpenHelp(99, owner_.get());
    QVERIFY(Shown(*HelpWindow::Instance()).startsWith("Contents"));
}

void tst_HelpWindow::isOneWindowAboveItsOwner() {
    OpenHelp(1, owner_.get());
    const HelpWindow* first = HelpWindow::Instance();
    QCOMPARE(first->parentWidget(), owner_.get());
    OpenHelp(50, owner_.get());
    QCOMPARE(HelpWindow::Instance(), first);
    QCOMPARE(owner_->findChildren<HelpWindow*>().size(), 1);
}

void tst_HelpWindow::doesNothingWithoutAFile() {
    const MessageRecorder messages;
    QFile::remove(QString::fromStdString(folder_->File("ledgix.hlp")));
    OpenHelp(1, owner_.get());
    QVERIFY(!HelpWindow::Instance());
    QVERIFY(messages.messages().empty());
}

void tst_HelpWindow::doesNothingWithADamagedFile() {
    const MessageRecorder messages;
    folder_->Write("ledgix.hlp", "text without a topic");
    OpenHelp(1, owner_.get());
    QVERIFY(!HelpWindow::Instance());
    QVERIFY(messages.messages().empty());
}

void tst_HelpWindow::aTextIsShownAsItIs() {
    QCOMPARE(TopicOf(TopicAddress(31)), 31);
    QCOMPARE(TopicOf(QUrl("https://example.org/31")), 0);
    HelpWindow shown{HelpFile(kText)};
    shown.ShowTopic(1);
    QVERIFY(Shown(shown).contains("Rent & <income>."));
}

void tst_HelpWindow::figuresShowTheirFormulaAndValue() {
    HelpWindow window{
        HelpFile("topic 1 Rent\nfigure Rent = 18,720\nfigure Left\n = Rent - 20\n = 18,720 - 20\n = 18,700\n")};
    window.ShowTopic(1);
    QString text = Shown(window);
    text.replace(QRegularExpression("\\s+"), " ");
    QVERIFY2(text.contains("Rent 18,720 Left = Rent - 20 = 18,720 - 20 18,700"), qPrintable(text));
}

void tst_HelpWindow::listsTopicsUnderTheirTopics() {
    const HelpWindow window{HelpFile(kText)};
    QCOMPARE(Listed(window), QStringList({"Contents", ">Income", "Reports"}));
    QVERIFY(window.treTopics->topLevelItem(0)->isExpanded());
}

void tst_HelpWindow::theListFollowsTheTopicAndLeadsToIt() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    window.ShowTopic(31);
    QCOMPARE(Current(window), "Income");
    window.treTopics->setFocus();
    QTest::keyClick(window.treTopics, Qt::Key_Down);
    QVERIFY(Shown(window).startsWith("Reports"));
    QCOMPARE(Current(window), "Reports");
}

void tst_HelpWindow::linksLeadOnAndBackAndForward() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    window.ShowTopic(31);
    QVERIFY(!window.cmdBack->isEnabled());
    window.txtTopic->setFocus();
    QTest::keyClick(window.txtTopic, Qt::Key_Tab);
    QTest::keyClick(window.txtTopic, Qt::Key_Return);
    QVERIFY(Shown(window).startsWith("Reports"));
    QCOMPARE(Current(window), "Reports");
    QTest::mouseClick(window.cmdBack, Qt::LeftButton);
    QVERIFY(Shown(window).startsWith("Income"));
    QCOMPARE(Current(window), "Income");
    QVERIFY(!window.cmdBack->isEnabled());
    QTest::mouseClick(window.cmdForward, Qt::LeftButton);
    QVERIFY(Shown(window).startsWith("Reports"));
    QVERIFY(!window.cmdForward->isEnabled());
}

void tst_HelpWindow::theContentsAreOneClickAway() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    window.ShowTopic(50);
    QTest::mouseClick(window.cmdContents, Qt::LeftButton);
    QVERIFY(Shown(window).startsWith("Contents"));
}

void tst_HelpWindow::searchingListsAndMarks() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    window.ShowTopic(1);
    QTest::keyClicks(window.txtSearch, "Income");
    QCOMPARE(Listed(window), QStringList({"Income", "Contents", "Reports"}));
    QCOMPARE(Marked(window), QStringList({"income", "Income"}));
    QCOMPARE(Current(window), "Contents");
    window.txtSearch->clear();
    QCOMPARE(Listed(window), QStringList({"Contents", ">Income", "Reports"}));
    QVERIFY(Marked(window).isEmpty());
}

void tst_HelpWindow::enterOpensTheFirstHit() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    window.ShowTopic(1);
    QTest::keyClicks(window.txtSearch, "income year");
    QTest::keyClick(window.txtSearch, Qt::Key_Return);
    QVERIFY(window.isVisible());
    QVERIFY(Shown(window).startsWith("Reports"));
    QCOMPARE(Marked(window), QStringList({"income", "year"}));
    QCOMPARE(Current(window), "Reports");
}

void tst_HelpWindow::noHitIsSaid() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    QVERIFY(!window.lblNothing->isVisible());
    QTest::keyClicks(window.txtSearch, "zebra");
    QVERIFY(window.lblNothing->isVisible());
    QVERIFY(Listed(window).isEmpty());
    QTest::keyClick(window.txtSearch, Qt::Key_Return);
    QVERIFY(window.isVisible());
}

void tst_HelpWindow::findGoesToTheSearchField() {
    HelpWindow window{HelpFile(kText)};
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.treTopics->setFocus();
    QTest::keySequence(&window, QKeySequence::Find);
    QVERIFY(window.txtSearch->hasFocus());
}

void tst_HelpWindow::escapeClosesIt() {
    HelpWindow window{HelpFile(kText)};
    for (QWidget* part : QList<QWidget*>{window.txtSearch, window.treTopics, window.txtTopic, window.cmdContents}) {
        window.show();
        QTest::keyClick(part, Qt::Key_Escape);
        QVERIFY2(!window.isVisible(), qPrintable(part->objectName()));
    }
}

void tst_HelpWindow::worksBesideAModalWindow() {
    QDialog dialog(owner_.get());
    QTimer::singleShot(0, &dialog, [&dialog, this] {
        OpenHelp(50, owner_.get());
        HelpWindow* window = HelpWindow::Instance();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                          window->cmdContents->mapTo(window, window->cmdContents->rect().center()));
        QCoreApplication::processEvents();
        dialog.accept();
    });
    dialog.exec();
    const HelpWindow* window = HelpWindow::Instance();
    QVERIFY(window);
    QVERIFY(Shown(*window).startsWith("Contents"));
    QVERIFY(window->isVisible());
    QCOMPARE(window->windowHandle()->transientParent(), owner_->windowHandle());
}

void tst_HelpWindow::theFileOfTheProgramHasEveryTopic_data() {
    using namespace ledgix::editors;
    QTest::addColumn<int>("context");
    QTest::addColumn<QString>("title");
    QTest::newRow("contents") << int(kHelpContents) << "Contents";
    QTest::newRow("main window") << int(kHelpMainWindow) << "Main window";
    QTest::newRow("tax rates") << int(kHelpTaxRates) << "Income tax rates";
    QTest::newRow("profile") << int(kHelpProfile) << "Profile";
    QTest::newRow("income") << int(kHelpIncome) << "Income";
    QTest::newRow("expenses") << int(kHelpExpenses) << "Expenses";
    QTest::newRow("assets") << int(kHelpAssets) << "Assets";
    QTest::newRow("liabilities") << int(kHelpLiabilities) << "Liabilities";
    QTest::newRow("purchases") << int(kHelpPurchases) << "Purchases";
    QTest::newRow("calculator") << int(kHelpCalculator) << "Period calculator";
    QTest::newRow("property") << int(kHelpProperty) << "Property";
    QTest::newRow("profile report") << int(kHelpProfileReport) << "Profile report";
    QTest::newRow("analysis report") << int(kHelpAnalysisReport) << "Property analysis";
    QTest::newRow("outlook report") << int(kHelpOutlookReport) << "Long term outlook";
    QTest::newRow("preview") << int(kHelpPreview) << "Report preview";
    QTest::newRow("example") << int(kHelpExample) << "The example in figures";
    QTest::newRow("mortgage") << int(kHelpMortgage) << "Mortgage cost";
    QTest::newRow("left out") << int(kHelpLeftOut) << "What the reports leave out";
}

void tst_HelpWindow::theFileOfTheProgramHasEveryTopic() {
    QFETCH(int, context);
    QFETCH(QString, title);
    const HelpFile file(ledgix::runtime::ReadFile(LEDGIX_SOURCE "/shell/help/ledgix.hlp"));
    QCOMPARE(file.Find(context)->context, context);
    QCOMPARE(QString::fromStdString(file.Find(context)->title), title);
}

QTEST_MAIN(tst_HelpWindow)
#include "tst_help_window.moc"
