#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <algorithm>
#include <cctype>
#include <functional>

#include "application_files.h"
#include "cls_profiles.h"
#include "files.h"
#include "frm_calc.h"
#include "frm_main.h"
#include "frm_preview.h"
#include "frm_profile.h"
#include "frm_property.h"
#include "frm_tax_rates.h"
#include "help_topics.h"
#include "help_window.h"
#include "help_window_page.h"
#include "household_file.h"
#include "profile_fields.h"
#include "sub_main.h"
#include "zq_tab_dialog.h"

using namespace ledgix;
using namespace ledgix::test;

namespace {

template <class Window>
Window* Open() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* found = qobject_cast<Window*>(window); found && found->isVisible())
            return found;
    return nullptr;
}

// The number of the topic that the help window shows; 0 when it is not open.
int ShownTopic() {
    const shell::HelpWindow* window = shell::HelpWindow::Instance();
    return window && window->isVisible() ? shell::TopicOf(window->txtTopic->source()) : 0;
}

void CloseHelp() {
    if (shell::HelpWindow* window = shell::HelpWindow::Instance())
        window->close();
}

// Presses F1 in a part of a window that has the focus.
int TopicAt(QWidget* part) {
    CloseHelp();
    part->window()->activateWindow();
    if (!QTest::qWaitForWindowActive(part->window()))
        return -1;
    part->setFocus();
    QWidget* focused = QApplication::focusWidget();
    if (!focused)
        return -2;
    QTest::keyClick(focused, Qt::Key_F1);
    return ShownTopic();
}

editors::frmProfile* OpenProfile() {
    model::gProfiles->Item(1).Display();
    return Open<shell::frmMain>()->findChild<editors::frmProfile*>();
}

QList<QWidget*> FieldsOf(const QWidget* window) {
    QList<QWidget*> fields;
    for (QWidget* part : window->findChildren<QWidget*>())
        if (part->isVisible() && part->isEnabled() && (part->focusPolicy() & Qt::TabFocus) && !part->focusProxy())
            fields << part;
    return fields;
}

// Does something in a modal window while it is open, and closes it.
template <class Window>
void InModal(const std::function<void(Window&)>& act, const std::function<void()>& open) {
    bool acted = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (!window)
            return;
        acted = true;
        act(*window);
        window->close();
    });
    open();
    QVERIFY(acted);
}

}  // namespace

// F1 in a window opens the help at the topic of that window, in the running program.
class tst_HelpKeys : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void opensTheTopicOfTheMainWindow();
    void opensTheTopicOfEveryPageOfAProfile_data();
    void opensTheTopicOfEveryPageOfAProfile();
    void opensTheTopicOfAProperty();
    void opensTheTopicOfTheTaxRates();
    void opensTheTopicOfTheCalculator();
    void opensTheTopicOfTheReportThatIsShown();
    void opensThePreviewsOwnTopicForAnyOtherReport();
    void leavesOtherKeysAlone();
    void endsWithTheProgram();
    void theHelpFindsEveryCaption();

private:
    QTemporaryDir places_;
    HouseholdFile file_{SampleContent("household-2000.mdb")};
};

void tst_HelpKeys::initTestCase() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, places_.path());
    AddApplicationFiles(file_.folder().path());
    file_.Close();
}

void tst_HelpKeys::init() {
    QVERIFY(shell::SubMain("started by a test"));
}

void tst_HelpKeys::cleanup() {
    shell::EndProgram();
}

void tst_HelpKeys::opensTheTopicOfTheMainWindow() {
    auto* main = Open<shell::frmMain>();
    for (QWidget* part : std::initializer_list<QWidget*>{main->picMenu, main->cmdNew})
        QCOMPARE(TopicAt(part), int(editors::kHelpMainWindow));
}

void tst_HelpKeys::opensTheTopicOfEveryPageOfAProfile_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("topic");
    QTest::newRow("Income") << 1 << int(editors::kHelpIncome);
    QTest::newRow("Expenses") << 2 << int(editors::kHelpExpenses);
    QTest::newRow("Assets") << 3 << int(editors::kHelpAssets);
    QTest::newRow("Liabilities") << 4 << int(editors::kHelpLiabilities);
    QTest::newRow("Purchases") << 5 << int(editors::kHelpPurchases);
}

void tst_HelpKeys::opensTheTopicOfEveryPageOfAProfile() {
    QFETCH(const int, page);
    QFETCH(const int, topic);
    const editors::frmProfile* form = OpenProfile();
    QVERIFY(form);
    form->zqTabDialog1->setCurrentTab(page);
    const QList<QWidget*> fields = FieldsOf(form);
    QVERIFY(fields.size() >= 8);
    for (QWidget* field : fields)
        QVERIFY2(TopicAt(field) == topic, qPrintable(field->objectName()));
}

void tst_HelpKeys::opensTheTopicOfAProperty() {
    model::clsProfile& profile = model::gProfiles->Item(1);
    OpenProfile();
    InModal<editors::frmProperty>(
        [](const editors::frmProperty& form) {
            const QList<QWidget*> fields = FieldsOf(&form);
            QVERIFY(fields.size() >= 20);
            for (QWidget* field : fields)
                QVERIFY2(TopicAt(field) == editors::kHelpProperty, qPrintable(field->objectName()));
        },
        [&profile] { profile.Property(1).Display(); });
}

void tst_HelpKeys::opensTheTopicOfTheTaxRates() {
    InModal<editors::frmTaxRates>(
        [](const editors::frmTaxRates& form) {
            for (QWidget* field : FieldsOf(&form))
                QVERIFY2(TopicAt(field) == editors::kHelpTaxRates, qPrintable(field->objectName()));
        },
        [] { Open<shell::frmMain>()->mnuTaxRates_Click(); });
}

void tst_HelpKeys::opensTheTopicOfTheCalculator() {
    const editors::frmProfile* form = OpenProfile();
    InModal<controls::frmCalc>(
        [](const controls::frmCalc& calculator) {
            for (QWidget* field : FieldsOf(&calculator))
                QVERIFY2(TopicAt(field) == editors::kHelpCalculator, qPrintable(field->objectName()));
        },
        [form] { controls::frmCalc::Instance().ShowModalAt(*form); });
}

void tst_HelpKeys::opensTheTopicOfTheReportThatIsShown() {
    model::clsProfile& profile = model::gProfiles->Item(1);
    profile.LoadProperties();
    const std::pair<editors::HelpTopic, std::function<void()>> reports[]{
        {editors::kHelpProfileReport, [&] { profile.Analyse(); }},
        {editors::kHelpAnalysisReport, [&] { profile.Property(1).Analysis(profile); }},
        {editors::kHelpOutlookReport, [&] { profile.Property(1).Year10Analysis(profile); }},
    };
    for (const auto& [topic, run] : reports) {
        run();
        auto* window = Open<preview::frmPreview>();
        QVERIFY(window);
        QCOMPARE(TopicAt(window->centralWidget()), int(topic));
        window->close();
        QTRY_VERIFY(!Open<preview::frmPreview>());
    }
}

void tst_HelpKeys::opensThePreviewsOwnTopicForAnyOtherReport() {
    zq::Document document;
    document.title = "Something else";
    document.pages.emplace_back();
    auto* window = new preview::frmPreview(
        document, [] {}, nullptr);
    window->show();
    QCOMPARE(TopicAt(window->centralWidget()), int(editors::kHelpPreview));
    window->close();
}

void tst_HelpKeys::leavesOtherKeysAlone() {
    controls::frmCalc& calculator = controls::frmCalc::Instance();
    calculator.show();
    QTest::keyClick(&calculator, Qt::Key_F2);
    QCOMPARE(ShownTopic(), 0);
    calculator.close();
}

void tst_HelpKeys::endsWithTheProgram() {
    shell::EndProgram();
    controls::frmCalc& calculator = controls::frmCalc::Instance();
    calculator.show();
    QTest::keyClick(&calculator, Qt::Key_F1);
    QVERIFY(!shell::HelpWindow::Instance());
    calculator.close();
}

// Every label of an editor leads to its topic by the search.
void tst_HelpKeys::theHelpFindsEveryCaption() {
    const shell::HelpFile help(runtime::ReadFile(LEDGIX_SOURCE "/shell/help/ledgix.hlp"));
    const auto finds = [&help](const std::string& caption, int topic) {
        for (const shell::HelpPage* page : help.Search(caption))
            if (page->context == topic)
                return true;
        return false;
    };
    const int topics[]{editors::kHelpIncome, editors::kHelpExpenses, editors::kHelpAssets, editors::kHelpLiabilities};
    for (std::size_t page = 0; page < std::size(topics); ++page)
        for (const editors::ProfileField& field : editors::ProfilePages()[page].fields)
            QVERIFY2(finds(field.caption, topics[page]), field.caption);
    model::clsProfile& profile = model::gProfiles->Item(1);
    profile.LoadProperties();
    const editors::frmProperty form(profile.Property(1), *Open<shell::frmMain>(), nullptr);
    int captions = 0;
    for (const QLabel* label : form.findChildren<QLabel*>()) {
        const std::string caption = label->text().remove('&').toStdString();
        if (!label->buddy() || label->text().startsWith('$') || label->text() == "%" || caption.empty())
            continue;
        ++captions;
        QVERIFY2(finds(caption, editors::kHelpProperty), caption.c_str());
    }
    QVERIFY(captions >= 18);
    const auto finds_buttons = [&finds](const QWidget& window, int topic) {
        for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
            const std::string caption = button->text().remove('&').toStdString();
            // Signs and the zoom itself are not words.
            if (std::any_of(caption.begin(), caption.end(), [](unsigned char c) { return std::isalpha(c) != 0; }))
                QVERIFY2(finds(caption, topic), caption.c_str());
        }
    };
    finds_buttons(form, editors::kHelpProperty);
    finds_buttons(*Open<shell::frmMain>(), editors::kHelpMainWindow);
    finds_buttons(editors::frmTaxRates(), editors::kHelpTaxRates);
    finds_buttons(controls::frmCalc::Instance(), editors::kHelpCalculator);
    profile.Property(1).Year10Analysis(profile);
    finds_buttons(*Open<preview::frmPreview>(), editors::kHelpPreview);
}

QTEST_MAIN(tst_HelpKeys)
#include "tst_help_keys.moc"
