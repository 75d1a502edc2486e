#include "frm_profile.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "amount_form.h"
#include "cls_profiles.h"
#include "database.h"
#include "event_trap.h"
#include "help_topics.h"
#include "message_box.h"
#include "zq_tab_dialog.h"
#include "zq_text_box.h"

namespace ledgix::editors {

using controls::Handler;
using controls::zqTabDialog;

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kFrameTop = 360;   // twips below the top of the tab dialog
constexpr int kFrameLeft = 120;  // twips right of its left
constexpr const char* kAddCaption = "&Add";
constexpr const char* kSaveCaption = "&Save";

constexpr HelpTopic kPageTopics[kProfilePageCount]{kHelpIncome, kHelpExpenses, kHelpAssets, kHelpLiabilities,
                                                   kHelpPurchases};

// Another program may have stored a new profile under the same number meanwhile.
void TakeFreeNumber(model::clsProfile& profile) {
    if (!model::gProfiles)
        return;
    for (std::size_t i = 1; i <= model::gProfiles->Count(); ++i) {
        if (&model::gProfiles->Item(i) == &profile) {
            model::gProfiles->TakeFreeNumber(profile);
            return;
        }
    }
}

QPushButton* NewButton(QBoxLayout& row, const char* name, const char* caption, const char* spoken) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(spoken);
    row.addWidget(button);
    return button;
}

}  // namespace

frmProfile::frmProfile(model::clsProfile& profile, Desktop& desktop) : objProfile_(&profile), desktop_(desktop) {
    setObjectName("frmProfile");
    setWindowTitle("Vantreo Profile");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    column->addLayout(NewHeader());
    AddPages();
    Label32->setBuddy(zqTabDialog1);
    column->addWidget(zqTabDialog1, 1);
    column->addLayout(NewButtons());
    OrderFields();
    Form_Load();
    ConnectHandlers();
    txtName->setFocus();
}

frmProfile::~frmProfile() {
    if (objProfile_)
        objProfile_->ReloadProperties = nullptr;
}

void frmProfile::Unload() {
    objProfile_->ReloadProperties = nullptr;
    objProfile_ = nullptr;
    // A button that an Alt key pressed is clicked a moment later.
    for (QPushButton* button : findChildren<QPushButton*>())
        button->blockSignals(true);
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->hide();
    hide();
    deleteLater();
}

QGridLayout* frmProfile::NewHeader() {
    auto* grid = new QGridLayout;
    grid->setSpacing(kSpacing);
    txtName = new QLineEdit;
    txtName->setObjectName("txtName");
    txtName->setMaxLength(kLongestName);
    txtLastModified = new QLineEdit;
    txtLastModified->setObjectName("txtLastModified");
    txtLastModified->setReadOnly(true);
    txtLastModified->setStyleSheet("QLineEdit { background: palette(window) }");
    txtLastModified->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Label5 = NewLabel("Label5", "Profile Name", txtName);
    Label6 = NewLabel("Label6", "Last Updated", txtLastModified);
    Label32 = NewLabel("Label32", "All values are yearly, before tax.");
    grid->addWidget(Label5, 0, 0);
    grid->addWidget(txtName, 0, 1);
    grid->addWidget(Label6, 1, 0);
    grid->addWidget(txtLastModified, 1, 1, Qt::AlignLeft);
    grid->addWidget(Label32, 2, 0, 1, 2);
    return grid;
}

// The frames lie in the tab dialog, whose own top and left are 0 to them. Its layout gives them the same place.
void frmProfile::AddPages() {
    zqTabDialog1 = new zqTabDialog;
    zqTabDialog1->setObjectName("zqTabDialog1");
    zqTabDialog1->setAccessibleName("Pages");
    constexpr int kSide = kFrameLeft / kTwipsPerPixel;
    zqTabDialog1->setContentsMargins(kSide, kFrameTop / kTwipsPerPixel, kSide, kSide);
    auto* cell = new QGridLayout(zqTabDialog1);
    cell->setContentsMargins(0, 0, 0, 0);
    QList<QGridLayout*> grids;
    for (const ProfilePage& page : ProfilePages()) {
        if (page.fields.empty())
            continue;
        auto* amounts = new AmountPage(page);
        cell->addWidget(amounts, 0, 0);
        boxes_.insert(boxes_.end(), amounts->boxes().begin(), amounts->boxes().end());
        grids << amounts->grid();
    }
    AlignCaptions(grids);
    auto* purchases = new PurchasesPage(ProfilePages()[kPurchasesTab - 1]);
    cell->addWidget(purchases, 0, 0);
    lstProperty = purchases->lstProperty;
    cmdAdd = purchases->cmdAdd;
    cmdEdit = purchases->cmdEdit;
    cmdDelete = purchases->cmdDelete;
    zqTabDialog1->setTabs(ToScreen(ProfileTabs()));
    zqTabDialog1->setFrames(ToScreen(ProfileFrames()));
}

QBoxLayout* frmProfile::NewButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    cmdAnalyse = NewButton(*row, "cmdAnalyse", "Analysis", "Analysis");
    cmdHelp = NewButton(*row, "cmdHelp", "&Help", "Help");
    row->addStretch();
    cmdCancel = NewButton(*row, "cmdCancel", "&Cancel", "Cancel");
    cmdSave = NewButton(*row, "cmdSave", kSaveCaption, "");
    cmdSave->setDefault(true);
    return row;
}

void frmProfile::OrderFields() {
    QList<QWidget*> fields{txtName, txtLastModified, zqTabDialog1};
    for (const ProfileBox& amount : boxes_)
        fields << amount.box;
    fields << lstProperty << cmdAdd << cmdEdit << cmdDelete << cmdAnalyse << cmdHelp << cmdCancel << cmdSave;
    for (qsizetype i = 1; i < fields.size(); ++i)
        setTabOrder(fields[i - 1], fields[i]);
}

void frmProfile::ConnectHandlers() {
    connect(txtName, &QLineEdit::textChanged, this, Handler(this, &frmProfile::txtName_Change));
    connect(zqTabDialog1, &zqTabDialog::Click, this, Handler(this, &frmProfile::zqTabDialog1_Click));
    connect(lstProperty, &QListWidget::itemDoubleClicked, this, Handler(this, &frmProfile::lstProperty_DblClick));
    const std::pair<QPushButton*, void (frmProfile::*)()> buttons[]{
        {cmdAnalyse, &frmProfile::cmdAnalyse_Click}, {cmdHelp, &frmProfile::cmdHelp_Click},
        {cmdCancel, &frmProfile::cmdCancel_Click},   {cmdSave, &frmProfile::cmdSave_Click},
        {cmdAdd, &frmProfile::cmdAdd_Click},         {cmdEdit, &frmProfile::cmdEdit_Click},
        {cmdDelete, &frmProfile::cmdDelete_Click},
    };
    for (const auto& [button, handler] : buttons)
        connect(button, &QPushButton::clicked, this, Handler(this, handler));
    objProfile_->ReloadProperties = Handler(this, &frmProfile::LoadProperties);
}

void frmProfile::Form_Load() {
    zqTabDialog1->setFrameTop(kFrameTop);
    zqTabDialog1->setFrameLeft(kFrameLeft);
    txtName->setText(ToScreen(objProfile_->ProfileName));
    txtLastModified->setText(ToScreen(LastUpdatedText(*objProfile_)));
    for (const ProfileBox& amount : boxes_)
        ShowAmount(*amount.box, objProfile_->*amount.member);
    if (!objProfile_->Saved) {
        zqTabDialog1->setTabEnabled(kPurchasesTab, false);
        cmdSave->setText(kAddCaption);
    }
    LoadProperties();
}

void frmProfile::Form_Activate() {
    // A title's own "[*]" is written twice.
    setWindowTitle(ToScreen(objProfile_->ProfileName).replace("[*]", "[*][*]"));
}

void frmProfile::txtName_Change() {
    const std::string name = FromScreen(txtName->text());
    if (objProfile_->ProfileName != name)
        objProfile_->ProfileName = name;
}

void frmProfile::CopyAmounts() {
    for (const ProfileBox& amount : boxes_)
        objProfile_->*amount.member = AmountOf(*amount.box);
}

void frmProfile::cmdSave_Click() {
    if (txtName->text().isEmpty()) {
        txtName->setFocus();
        runtime::MsgBox("This profile requires a profile name.");
        return;
    }
    CopyAmounts();
    SaveProfile();
    Desktop& desktop = desktop_;
    if (cmdSave->text() == kAddCaption)
        FirstSaveDone();
    else
        objProfile_->CloseForm();
    desktop.ReloadProfileList();
}

// A number that is still free and the row that bears it are one change of the file, so that of two programs neither
// writes over the other's new profile.
void frmProfile::SaveProfile() {
    if (objProfile_->Saved)
        return objProfile_->Save();
    const std::unique_ptr<dao::Transaction> change = store::BeginChange();
    TakeFreeNumber(*objProfile_);
    objProfile_->Save();
    try {
        if (change)
            change->Commit();
    } catch (const runtime::RuntimeError&) {
        objProfile_->Saved = false;
        throw;
    }
}

void frmProfile::FirstSaveDone() {
    txtLastModified->setText(ToScreen(LastUpdatedText(*objProfile_)));
    zqTabDialog1->setTabEnabled(kPurchasesTab, true);
    zqTabDialog1->setCurrentTab(kPurchasesTab);
    cmdSave->setText(kSaveCaption);
    runtime::MsgBox("Choose 'Add Purchase' to analyse your property puchasing capabilities.");
}

void frmProfile::cmdCancel_Click() {
    objProfile_->ReloadProfile();
    objProfile_->CloseForm();
}

void frmProfile::cmdAnalyse_Click() {
    CopyAmounts();
    objProfile_->Analyse();
}

void frmProfile::cmdHelp_Click() {
    desktop_.ShowHelpTopic(kPageTopics[zqTabDialog1->CurrentTab() - 1]);
}

void frmProfile::zqTabDialog1_Click() {
    if (zqTabDialog1->CurrentTab() == kPurchasesTab)
        LoadProperties();
}

bool frmProfile::event(QEvent* event) {
    if (objProfile_ && event->type() == QEvent::WindowActivate)
        Form_Activate();
    if (event->type() == QEvent::ParentChange)
        FollowFrame();
    return QWidget::event(event);
}

// A frame that becomes the active one among others says so itself.
void frmProfile::FollowFrame() {
    const auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!frame)
        return;
    connect(frame, &QMdiSubWindow::windowStateChanged, this, [this](Qt::WindowStates before, Qt::WindowStates now) {
        if (objProfile_ && (now & ~before & Qt::WindowActive))
            Form_Activate();
    });
}

void frmProfile::closeEvent(QCloseEvent* event) {
    if (objProfile_)
        Handler(this, &frmProfile::cmdCancel_Click)();
    event->accept();
}

void frmProfile::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() & ~Qt::KeypadModifier) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: {
            auto* button = qobject_cast<QPushButton*>(focusWidget());
            (button ? button : cmdSave)->click();
            break;
        }
        case Qt::Key_Escape:
            cmdCancel->click();
            break;
        case Qt::Key_F1:
            cmdHelp->click();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace ledgix::editors
