#include "frm_preview.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QEvent>
#include <QLabel>
#include <QScreen>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <utility>

#include "chart_loader.h"
#include "chart_page.h"
#include "chart_view.h"
#include "event_trap.h"
#include "find_bar.h"
#include "page_list.h"
#include "page_view.h"
#include "window_memory.h"
#include "zoom_steps.h"

namespace ledgix::preview {

namespace {

// A command of the tool bar; one without a member is a gap.
struct Command {
    QAction* frmPreview::*action = nullptr;
    const char* name = nullptr;
    const char* text = nullptr;
    const char* help = nullptr;
    QList<QKeySequence> keys = {};
    void (frmPreview::*handler)() = nullptr;
    Qt::ArrowType arrow = Qt::NoArrow;
    bool is_switch = false;
};

const QList<Command>& Commands() {
    using Form = frmPreview;
    static const Command gap;
    static const QList<Command> commands{
        {&Form::cmdPrint, "cmdPrint", "&Print...", "Print the report", {QKeySequence::Print}, &Form::cmdPrint_Click},
        {&Form::cmdSavePdf,
         "cmdSavePdf",
         "&Save as PDF...",
         "Save the pages in a PDF file",
         {QKeySequence::Save},
         &Form::cmdSavePdf_Click},
        {&Form::cmdSaveCsv,
         "cmdSaveCsv",
         "Save as CS&V...",
         "Save the figures for a spreadsheet",
         {Qt::CTRL | Qt::SHIFT | Qt::Key_S},
         &Form::cmdSaveCsv_Click},
        gap,
        {&Form::cmdPages, "cmdPages", "Pa&ges", "List of pages", {Qt::Key_F4}, nullptr, Qt::NoArrow, true},
        {&Form::cmdPageBack,
         "cmdPageBack",
         "Page back",
         "The page before",
         {Qt::CTRL | Qt::Key_PageUp},
         &Form::cmdPageBack_Click,
         Qt::UpArrow},
        {&Form::cmdPageForward,
         "cmdPageForward",
         "Page forward",
         "The next page",
         {Qt::CTRL | Qt::Key_PageDown},
         &Form::cmdPageForward_Click,
         Qt::DownArrow},
        gap,
        {&Form::cmdZoomOut, "cmdZoomOut", "\u2212", "Zoom out", {Qt::CTRL | Qt::Key_Minus}, &Form::cmdZoomOut_Click},
        {&Form::cmdActualSize,
         "cmdActualSize",
         "100%",
         "As large as on paper",
         {Qt::CTRL | Qt::Key_0},
         &Form::cmdActualSize_Click},
        {&Form::cmdZoomIn,
         "cmdZoomIn",
         "+",
         "Zoom in",
         {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
         &Form::cmdZoomIn_Click},
        {&Form::cmdFitWidth,
         "cmdFitWidth",
         "Fit &Width",
         "As wide as the window",
         {Qt::CTRL | Qt::Key_1},
         &Form::cmdFitWidth_Click,
         Qt::NoArrow,
         true},
        {&Form::cmdFitPage,
         "cmdFitPage",
         "Fit P&age",
         "A whole page",
         {Qt::CTRL | Qt::Key_2},
         &Form::cmdFitPage_Click,
         Qt::NoArrow,
         true},
        gap,
        {&Form::cmdFind, "cmdFind", "&Find", "Find a text in the report", {QKeySequence::Find}, &Form::cmdFind_Click},
        {&Form::cmdClose, "cmdClose", "&Close", "Close the preview", {Qt::CTRL | Qt::Key_W}, &Form::cmdClose_Click},
    };
    return commands;
}

QString WithKey(const QString& help, const QKeySequence& key) {
    return help + " (" + key.toString(QKeySequence::NativeText) + ")";
}

}  // namespace

frmPreview::frmPreview(const zq::Document& document, std::function<void()> print_button, QWidget* owner)
    : QMainWindow(owner, Qt::Window),
      document_(document),
      print_button_(std::move(print_button)),
      owner_(owner ? owner->window() : nullptr) {
    setObjectName("frmPreview");
    setAttribute(Qt::WA_DeleteOnClose);
    // Nobody is to lose the bars by a menu.
    setContextMenuPolicy(Qt::NoContextMenu);
    setWindowTitle(QString::fromStdString(document_.title) + " - Preview");
    view = new PageView(document_, this);
    view->setObjectName("view");
    setCentralWidget(MakePages());
    QToolBar* commands = MakeToolBar();
    addToolBar(commands);
    findBar = new FindBar(view, this);
    addToolBarBreak();
    addToolBar(findBar);
    MakePageList();
    AddViewCommands();
    MakeReportCommands();
    connect(view, &PageView::PageChanged, this, &frmPreview::ShowPage);
    connect(view, &PageView::ZoomChanged, this, &frmPreview::ShowZoom);
    ShowPage();
    ShowZoom();
    view->setFocus();
    if (owner_)
        owner_->installEventFilter(this);
    resize(sizeHint().expandedTo(QSize(commands->sizeHint().width(), 0)).boundedTo(screen()->availableSize() * 0.9));
    controls::KeepPlace(*this);
}

QWidget* frmPreview::MakePages() {
    if (!document_.chart || !HasCharts())
        return view;
    pages = new QTabWidget(this);
    pages->setObjectName("tabs");
    pages->setAccessibleName("Report and chart");
    pages->setDocumentMode(true);
    chartPage = new ChartPage(document_, pages);
    chartPage->setObjectName("chartPage");
    pages->addTab(view, "&Report");
    pages->addTab(chartPage, "C&hart");
    connect(pages, &QTabWidget::currentChanged, this, &frmPreview::ShowTab);
    return pages;
}

QToolBar* frmPreview::MakeToolBar() {
    auto* bar = new QToolBar("Commands", this);
    bar->setObjectName("commands");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const Command& command : Commands()) {
        if (!command.action) {
            bar->addSeparator();
            continue;
        }
        QAction* action = bar->addAction(QString::fromUtf8(command.text));
        this->*command.action = action;
        // Otherwise the button drops the dots and the mnemonic.
        action->setIconText(action->text());
        action->setObjectName(command.name);
        action->setShortcuts(command.keys);
        action->setToolTip(WithKey(command.help, command.keys.front()));
        action->setCheckable(command.is_switch);
        if (command.handler)
            connect(action, &QAction::triggered, this, controls::Handler(this, command.handler));
        auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
        button->setObjectName(command.name);
        button->setAccessibleName(command.help);
        button->setArrowType(command.arrow);
        if (command.arrow != Qt::NoArrow)
            button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    lblPage = new QLabel(bar);
    lblPage->setObjectName("lblPage");
    lblPage->setAccessibleName("Page");
    lblPage->setMargin(4);
    lblPage->setBuddy(view);
    bar->insertWidget(cmdPageForward, lblPage);
    return bar;
}

void frmPreview::MakePageList() {
    lstPages = new PageList(document_, this);
    lstPages->setObjectName("lstPages");
    auto* dock = new QDockWidget("Pages", this);
    dock->setObjectName("pages");
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    dock->setWidget(lstPages);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    dock->hide();
    connect(cmdPages, &QAction::toggled, dock, &QDockWidget::setVisible);
    connect(dock->toggleViewAction(), &QAction::toggled, cmdPages, &QAction::setChecked);
    connect(lstPages, &PageList::currentRowChanged, view, &PageView::GoToPage);
}

QAction* frmPreview::AddToView(const char* name, const QString& text, const QKeySequence& key) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    view->addAction(action);
    return action;
}

void frmPreview::AddViewCommands() {
    cmdCopy = AddToView("cmdCopy", "&Copy", QKeySequence::Copy);
    cmdSelectAll = AddToView("cmdSelectAll", "Select &All", QKeySequence::SelectAll);
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    cmdCopy->setEnabled(false);
    connect(cmdCopy, &QAction::triggered, this, controls::Handler(view, &PageView::Copy));
    connect(cmdSelectAll, &QAction::triggered, this, controls::Handler(view, &PageView::SelectAll));
    connect(view, &PageView::SelectionChanged, this,
            [this] { cmdCopy->setEnabled(view->Marks().selection().length > 0); });
    auto* escape = new QAction(this);
    escape->setShortcut(Qt::Key_Escape);
    connect(escape, &QAction::triggered, this, controls::Handler(this, &frmPreview::Escape));
    // Actions of a hidden bar would not hear their keys.
    addActions({escape, findBar->cmdFindNext, findBar->cmdFindPrevious});
}

void frmPreview::MakeReportCommands() {
    report_commands_ = new QActionGroup(this);
    report_commands_->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    for (QAction* action : {cmdPages, cmdPageBack, cmdPageForward, cmdZoomOut, cmdActualSize, cmdZoomIn, cmdFitWidth,
                            cmdFitPage, cmdFind, findBar->cmdFindNext, findBar->cmdFindPrevious})
        report_commands_->addAction(action);
}

void frmPreview::ShowTab() {
    const bool is_report = pages->currentWidget() == view;
    if (!is_report) {
        had_page_list_ = cmdPages->isChecked();
        if (findBar->isVisible()) {
            findBar->End();
            chartPage->chart->setFocus();
        }
    }
    cmdPages->setChecked(is_report && had_page_list_);
    report_commands_->setEnabled(is_report);
    lblPage->setEnabled(is_report);
}

void frmPreview::ShowPage() {
    lblPage->setText(QString("Page %1 of %2").arg(view->Page() + 1).arg(view->Pages()));
    cmdPageBack->setEnabled(view->Page() > 0);
    cmdPageForward->setEnabled(view->Page() + 1 < view->Pages());
    const QSignalBlocker quiet(lstPages);
    lstPages->setCurrentRow(view->Page());
}

void frmPreview::ShowZoom() {
    cmdActualSize->setIconText(QString("%1%").arg(qRound(view->Zoom() * 100)));
    cmdFitWidth->setChecked(view->FitMode() == PageView::Fit::kWidth);
    cmdFitPage->setChecked(view->FitMode() == PageView::Fit::kPage);
    cmdZoomOut->setEnabled(view->Zoom() > kLeastZoom);
    cmdZoomIn->setEnabled(view->Zoom() < kMostZoom);
}

void frmPreview::cmdPrint_Click() {
    print_button_();
}

void frmPreview::cmdSavePdf_Click() {
    SaveAsPdf(document_, this, ChooseFile);
}

void frmPreview::cmdSaveCsv_Click() {
    SaveAsCsv(document_, this, ChooseFile);
}

void frmPreview::cmdPageBack_Click() {
    view->GoToPage(view->Page() - 1);
}

void frmPreview::cmdPageForward_Click() {
    view->GoToPage(view->Page() + 1);
}

void frmPreview::cmdZoomOut_Click() {
    view->SetZoom(PreviousZoom(view->Zoom()));
}

void frmPreview::cmdActualSize_Click() {
    view->SetZoom(1);
}

void frmPreview::cmdZoomIn_Click() {
    view->SetZoom(NextZoom(view->Zoom()));
}

void frmPreview::cmdFitWidth_Click() {
    view->SetFit(PageView::Fit::kWidth);
}

void frmPreview::cmdFitPage_Click() {
    view->SetFit(PageView::Fit::kPage);
}

void frmPreview::cmdFind_Click() {
    findBar->Begin();
}

void frmPreview::cmdClose_Click() {
    close();
}

void frmPreview::Escape() {
    if (findBar->isVisible())
        findBar->End();
    else
        close();
}

bool frmPreview::eventFilter(QObject* watched, QEvent* event) {
    if (watched == owner_ && event->type() == QEvent::Hide && !event->spontaneous())
        close();
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace ledgix::preview
