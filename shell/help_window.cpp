#include "help_window.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWindow>
#include <map>

#include "application_folder.h"
#include "event_trap.h"
#include "files.h"
#include "help_window_page.h"
#include "window_memory.h"

namespace ledgix::shell {

namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8;
constexpr int kPageMargin = 16;
constexpr int kIndent = 20;
constexpr int kRowPadding = 8;
// In widths and heights of the font's letters.
constexpr int kListLetters = 34;
constexpr int kPageLetters = 100;
constexpr int kPageLines = 42;

// Takes its pages from the help file.
class TopicBrowser : public QTextBrowser {
public:
    TopicBrowser(const HelpFile& file, QWidget* parent) : QTextBrowser(parent), file_(file) {
        document()->setDocumentMargin(kPageMargin);
        document()->setIndentWidth(kIndent);
        document()->setDefaultStyleSheet(
            "h1 { font-size: x-large; margin-bottom: 12px; } h2 { font-size: large; margin-top: 18px; }");
    }

    QVariant loadResource(int type, const QUrl& name) override {
        const HelpPage* page = file_.Find(TopicOf(name));
        return TopicOf(name) != 0 && page ? PageText(file_, *page) : QTextBrowser::loadResource(type, name);
    }

private:
    const HelpFile& file_;
};

QPointer<HelpWindow>& SharedInstance() {
    static QPointer<HelpWindow> instance;
    return instance;
}

template <class Widget>
Widget* Named(Widget* widget, const char* name, const QString& accessible_name) {
    widget->setObjectName(name);
    widget->setAccessibleName(accessible_name);
    return widget;
}

QPushButton* MakeButton(HelpWindow* window, const char* name, const QString& caption) {
    auto* button = Named(new QPushButton(caption, window), name, QString(caption).remove('&'));
    button->setAutoDefault(false);
    return button;
}

QVBoxLayout* AddHalf(QSplitter* halves) {
    auto* column = new QVBoxLayout(new QWidget(halves));
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    return column;
}

}  // namespace

HelpWindow::HelpWindow(HelpFile file, QWidget* owner)
    : QDialog(owner, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint |
                         Qt::WindowCloseButtonHint),
      file_(std::move(file)),
      txtSearch(Named(new QLineEdit(this), "txtSearch", tr("Search"))),
      treTopics(Named(new QTreeWidget(this), "treTopics", tr("Topics"))),
      lblNothing(new QLabel(tr("No topic has these words."), this)),
      cmdBack(MakeButton(this, "cmdBack", tr("&Back"))),
      cmdForward(MakeButton(this, "cmdForward", tr("&Forward"))),
      cmdContents(MakeButton(this, "cmdContents", tr("&Contents"))),
      txtTopic(Named(new TopicBrowser(file_, this), "txtTopic", tr("Topic"))) {
    setObjectName("HelpWindow");
    setWindowTitle(tr("Vantreo Ledgix Help"));
    LayOut();
    Connect();
    ListTopics();
    controls::KeepPlace(*this);
}

HelpWindow* HelpWindow::Instance() {
    return SharedInstance();
}

void HelpWindow::LayOut() {
    txtSearch->setPlaceholderText(tr("Search"));
    txtSearch->setClearButtonEnabled(true);
    treTopics->setHeaderHidden(true);
    treTopics->setRootIsDecorated(false);
    treTopics->setItemsExpandable(false);
    lblNothing->setObjectName("lblNothing");
    lblNothing->setWordWrap(true);
    auto* halves = new QSplitter(this);
    QVBoxLayout* list = AddHalf(halves);
    list->addWidget(txtSearch);
    list->addWidget(lblNothing);
    list->addWidget(treTopics, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kSpacing);
    for (QPushButton* button : {cmdBack, cmdForward, cmdContents})
        buttons->addWidget(button);
    buttons->addStretch(1);
    QVBoxLayout* reading = AddHalf(halves);
    reading->addLayout(buttons);
    reading->addWidget(txtTopic, 1);
    halves->setChildrenCollapsible(false);
    halves->setHandleWidth(kSpacing);
    halves->setStretchFactor(1, 1);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    page->addWidget(halves);
    const int letter = fontMetrics().averageCharWidth();
    halves->setSizes({kListLetters * letter, kPageLetters * letter});
    resize((kListLetters + kPageLetters) * letter, kPageLines * fontMetrics().lineSpacing());
}

void HelpWindow::Connect() {
    using controls::Handler;
    connect(txtSearch, &QLineEdit::textChanged, this, Handler(this, &HelpWindow::txtSearch_Change));
    connect(txtSearch, &QLineEdit::returnPressed, this, Handler(this, &HelpWindow::txtSearch_Enter));
    connect(treTopics, &QTreeWidget::currentItemChanged, this, Handler(this, &HelpWindow::treTopics_Select));
    connect(txtTopic, &QTextBrowser::historyChanged, this, Handler(this, &HelpWindow::txtTopic_Change));
    connect(txtTopic, &QTextBrowser::backwardAvailable, cmdBack, &QPushButton::setEnabled);
    connect(txtTopic, &QTextBrowser::forwardAvailable, cmdForward, &QPushButton::setEnabled);
    connect(cmdBack, &QPushButton::clicked, txtTopic, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, txtTopic, &QTextBrowser::forward);
    connect(cmdContents, &QPushButton::clicked, this, Handler(this, &HelpWindow::cmdContents_Click));
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, txtSearch, [this] {
        txtSearch->setFocus(Qt::ShortcutFocusReason);
        txtSearch->selectAll();
    });
    cmdBack->setEnabled(false);
    cmdForward->setEnabled(false);
}

void HelpWindow::ListTopics() {
    const std::string words = txtSearch->text().toStdString();
    const std::vector<const HelpPage*> found = file_.Search(words);
    const bool searching = !SearchWords(words).empty();
    const QSignalBlocker quiet(treTopics);
    treTopics->clear();
    std::map<int, QTreeWidgetItem*> items;
    for (const HelpPage* page : found) {
        const auto parent = searching ? items.end() : items.find(page->within);
        auto* item = parent == items.end() ? new QTreeWidgetItem(treTopics) : new QTreeWidgetItem(parent->second);
        item->setText(0, QString::fromStdString(page->title));
        item->setData(0, Qt::UserRole, page->context);
        item->setSizeHint(0, QSize(0, fontMetrics().height() + kRowPadding));
        items[page->context] = item;
    }
    treTopics->expandAll();
    lblNothing->setVisible(found.empty());
    SelectTopic();
}

void HelpWindow::SelectTopic() {
    const QSignalBlocker quiet(treTopics);
    const int context = TopicOf(txtTopic->source());
    treTopics->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator item(treTopics); *item; ++item)
        if ((*item)->data(0, Qt::UserRole).toInt() == context)
            treTopics->setCurrentItem(*item);
}

void HelpWindow::ShowTopic(int context) {
    if (const HelpPage* page = file_.Find(context))
        txtTopic->setSource(TopicAddress(page->context));
}

void HelpWindow::txtSearch_Change() {
    ListTopics();
    MarkHits();
}

void HelpWindow::txtSearch_Enter() {
    if (const QTreeWidgetItem* first = treTopics->topLevelItem(0)) {
        ShowTopic(first->data(0, Qt::UserRole).toInt());
        treTopics->setFocus();
    }
}

void HelpWindow::treTopics_Select() {
    if (const QTreeWidgetItem* item = treTopics->currentItem())
        ShowTopic(item->data(0, Qt::UserRole).toInt());
}

void HelpWindow::txtTopic_Change() {
    SelectTopic();
    MarkHits();
}

void HelpWindow::cmdContents_Click() {
    if (!file_.pages().empty())
        ShowTopic(file_.pages().front().context);
}

void HelpWindow::MarkHits() {
    QList<QTextEdit::ExtraSelection> hits;
    for (const std::string& word : SearchWords(txtSearch->text().toStdString())) {
        QTextCursor cursor(txtTopic->document());
        while (!(cursor = txtTopic->document()->find(QString::fromStdString(word), cursor)).isNull()) {
            QTextEdit::ExtraSelection hit;
            hit.cursor = cursor;
            hit.format.setBackground(palette().highlight());
            hit.format.setForeground(palette().highlightedText());
            hits << hit;
        }
    }
    txtTopic->setExtraSelections(hits);
}

void HelpWindow::StayAboveModalWindow() {
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!modal || modal == this)
        return;
    winId();
    windowHandle()->setTransientParent(modal->windowHandle());
    connect(modal, &QDialog::finished, this, [this] {
        const QWidget* owner = parentWidget();
        windowHandle()->setTransientParent(owner ? owner->window()->windowHandle() : nullptr);
    });
}

void OpenHelp(int context, QWidget* owner) {
    QPointer<HelpWindow>& window = SharedInstance();
    if (!window) {
        HelpFile file;
        try {
            file = HelpFile(runtime::ReadFile(runtime::ApplicationFile("ledgix.hlp")));
        } catch (const runtime::RuntimeError&) {
            return;
        }
        window = new HelpWindow(std::move(file), owner);
        if (!owner)
            qAddPostRoutine([] { delete SharedInstance(); });
    }
    window->ShowTopic(context);
    window->StayAboveModalWindow();
    window->show();
    window->raise();
    window->activateWindow();
}

}  // namespace ledgix::shell
