// What the main window is made of, and where it stands.

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

#include "database.h"
#include "elided_text.h"
#include "event_trap.h"
#include "frm_main.h"
#include "message_box.h"
#include "window_arrangement.h"
#include "window_memory.h"

namespace ledgix::shell {

namespace {

// In pixels.
constexpr int kMargin = 12;
constexpr int kSpacing = 8;
constexpr int kMarginWidth = 340;
constexpr QSize kFirstSize(1100, 720);

constexpr double kHeadingSize = 1.35;  // of the window's own font

struct Gradient {
    QRgb from;
    QRgb to;
};

// Of the margin and of the list panel, where text is dark and where it is light.
constexpr Gradient kLightMargin{0xFFF8FAFC, 0xFFDFE7F0};
constexpr Gradient kLightPanel{0xFFECF1F7, 0xFFD3DDE9};
constexpr Gradient kDarkMargin{0xFF3A424C, 0xFF262C34};
constexpr Gradient kDarkPanel{0xFF2C333C, 0xFF1D2229};

void Colour(controls::zqSkin& skin, const Gradient& gradient) {
    const auto red_first = [](QRgb colour) { return qRed(colour) | qGreen(colour) << 8 | qBlue(colour) << 16; };
    skin.setStartColour(red_first(gradient.from));
    skin.setEndColour(red_first(gradient.to));
}

QAction* AddCommand(QMenu& menu, const char* name, const QString& caption) {
    QAction* action = menu.addAction(caption);
    action->setObjectName(QLatin1String(name));
    return action;
}

QMenu* AddMenu(QMenuBar& bar, const char* name, const QString& caption) {
    QMenu* menu = bar.addMenu(caption);
    menu->setObjectName(QLatin1String(name));
    return menu;
}

}  // namespace

frmMain::frmMain() {
    setObjectName("frmMain");
    setWindowTitle(QString::fromUtf8(runtime::kProgramTitle.data(), qsizetype(runtime::kProgramTitle.size())));
    MakeMargin();
    area = new DocumentArea(this);
    auto* page = new QWidget(this);
    auto* columns = new QHBoxLayout(page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(0);
    columns->addWidget(picMargin);
    columns->addWidget(area, 1);
    setCentralWidget(page);
    MakeMenus();
    MakeStatusBar();
    ConnectList();
    ChooseFonts();
    ChooseColours();
    EnableButtons(false);
    ShowCount();
    ShowDatabase();
    picMenu->setFocus();
    resize(kFirstSize);
    controls::KeepPlace(*this);
}

QPushButton* frmMain::MakeButton(const char* name, const QString& caption, void (frmMain::*handler)()) {
    auto* button = new QPushButton(caption, buttons_);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(QString(caption).remove('&'));
    connect(button, &QPushButton::clicked, this, controls::Handler(this, handler));
    buttons_->layout()->addWidget(button);
    return button;
}

void frmMain::MakeMargin() {
    picMargin = new QWidget(this);
    picMargin->setObjectName("picMargin");
    picMargin->setMouseTracking(true);
    picMargin->installEventFilter(this);
    zqSkin1 = new controls::zqSkin(picMargin);
    zqSkin1->setObjectName("zqSkin1");

    heading_ = new QLabel(tr("Profiles"), picMargin);
    heading_->setObjectName("lblProfiles");
    buttons_ = new QWidget(picMargin);
    auto* row = new QHBoxLayout(buttons_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    cmdNew = MakeButton("cmdNew", tr("&New Profile"), &frmMain::cmdNew_Click);
    cmdEdit = MakeButton("cmdEdit", tr("&Edit Profile"), &frmMain::cmdEdit_Click);
    cmdDelete = MakeButton("cmdDelete", tr("&Delete Profile"), &frmMain::cmdDelete_Click);

    VScroll = new PanelScrollBar(Qt::Vertical, picMargin);
    VScroll->setObjectName("VScroll");
    VScroll->setAccessibleName(tr("Scroll the profiles"));
    picMenu = new ProfileList(*VScroll, picMargin);
    picMenu->setObjectName("picMenu");
    picMenu->setAccessibleName(tr("Profiles"));
    heading_->setBuddy(picMenu);
    zqSkin2 = new controls::zqSkin(picMenu);
    zqSkin2->setObjectName("zqSkin2");
    count_ = new QLabel(picMargin);
    count_->setObjectName("lblCount");
    count_->setBuddy(picMenu);

    // The list's place is set by MDIForm_Resize; the layout only keeps room for it.
    auto* column = new QVBoxLayout(picMargin);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    column->addWidget(heading_);
    column->addWidget(buttons_);
    column->addSpacerItem(new QSpacerItem(0, kLeastPanelHeight / kTwipsPerPixel + 1, QSizePolicy::Minimum,
                                          QSizePolicy::MinimumExpanding));
    setTabOrder(cmdNew, cmdEdit);
    setTabOrder(cmdEdit, cmdDelete);
    setTabOrder(cmdDelete, picMenu);
}

void frmMain::MakeMenus() {
    QMenu* mnuFile = AddMenu(*menuBar(), "mnuFile", tr("&File"));
    connect(AddCommand(*mnuFile, "mnuFileExit", tr("&Exit")), &QAction::triggered, this,
            controls::Handler(this, &frmMain::mnuFileExit_Click));
    QMenu* mnuMaintenance = AddMenu(*menuBar(), "mnuMaintenance", tr("Maintenance"));
    connect(AddCommand(*mnuMaintenance, "mnuTaxRates", tr("&Tax Rates")), &QAction::triggered, this,
            controls::Handler(this, &frmMain::mnuTaxRates_Click));
    AddWindowArrangement(*AddMenu(*menuBar(), "mnuWindow", tr("Window")), *area);
    QMenu* mnuHelp = AddMenu(*menuBar(), "mnuHelp", tr("Help"));
    connect(AddCommand(*mnuHelp, "mnuHelpAbout", tr("&About")), &QAction::triggered, this,
            controls::Handler(this, &frmMain::mnuHelpAbout_Click));
}

void frmMain::MakeStatusBar() {
    database_ = new ElidedText(statusBar());
    database_->setObjectName("lblDatabase");
    statusBar()->addWidget(database_, 1);
}

void frmMain::ShowDatabase() {
    database_->setText(store::gDatabase ? QString::fromStdString(store::gDatabase->path())
                                        : tr("No database is open."));
}

void frmMain::ShowCount() {
    const int count = picMenu->rows().ShownCount();
    count_->setText(count == 0 ? QString() : count == 1 ? tr("1 profile") : tr("%L1 profiles").arg(count));
}

void frmMain::ConnectList() {
    const auto told = [this](void (frmMain::*handler)(int)) {
        return [this, handler](int index) { controls::RunHandler([&] { (this->*handler)(index); }); };
    };
    connect(picMenu, &ProfileList::RowMouseMove, this, told(&frmMain::lblMenu_MouseMove));
    connect(picMenu, &ProfileList::RowClick, this, told(&frmMain::lblMenu_Click));
    connect(picMenu, &ProfileList::RowDblClick, this, told(&frmMain::lblMenu_DblClick));
    connect(picMenu, &ProfileList::PanelMouseMove, this, controls::Handler(this, &frmMain::picMenu_MouseMove));
    connect(picMenu, &ProfileList::DeleteAsked, cmdDelete, &QPushButton::click);
    connect(picMenu, &ProfileList::ScrollBarShown, this, &frmMain::PlaceList);
    connect(VScroll, &QScrollBar::valueChanged, this, controls::Handler(this, &frmMain::VScroll_Change));
}

void frmMain::ChooseColours() {
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    Colour(*zqSkin1, dark ? kDarkMargin : kLightMargin);
    Colour(*zqSkin2, dark ? kDarkPanel : kLightPanel);
}

void frmMain::ChooseFonts() {
    QFont large = font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * kHeadingSize);
    heading_->setFont(large);
    FitMargin();
}

void frmMain::FitMargin() {
    picMargin->setFixedWidth(std::max(kMarginWidth, buttons_->sizeHint().width() + 2 * kMargin));
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ChooseColours();
    if (event->type() == QEvent::FontChange)
        ChooseFonts();
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picMargin && event->type() == QEvent::MouseMove)
        picMargin_MouseMove();
    if (watched == picMargin && event->type() == QEvent::LayoutRequest)
        FitMargin();
    if (watched == picMargin && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest))
        MDIForm_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::MDIForm_Resize() {
    picMargin->layout()->activate();
    const int top = picMargin->mapTo(this, buttons_->geometry().bottomLeft()).y() + 1 + kSpacing;
    picMenu->SetPanelHeight(PanelHeight(height() * kTwipsPerPixel, top * kTwipsPerPixel));
}

void frmMain::PlaceList() {
    const QPoint corner = buttons_->geometry().bottomLeft() + QPoint(0, 1 + kSpacing);
    const int bar = VScroll->isHidden() ? 0 : VScroll->sizeHint().width();
    const int width = picMargin->width() - 2 * kMargin;
    picMenu->setGeometry(QRect(corner, QSize(width - bar, picMenu->height())));
    VScroll->setGeometry(QRect(corner + QPoint(width - bar, 0), QSize(bar, picMenu->height())));
    const int below = picMenu->geometry().bottom() + 1;
    count_->setGeometry(kMargin, below, width, picMargin->height() - below);
    count_->setVisible(count_->height() >= count_->sizeHint().height());
}

}  // namespace ledgix::shell
