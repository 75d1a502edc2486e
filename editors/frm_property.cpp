#include "frm_property.h"

#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "cls_profiles.h"
#include "content_area.h"
#include "database.h"
#include "error_log.h"
#include "event_trap.h"
#include "help_topics.h"
#include "message_box.h"
#include "mortgage_limits.h"
#include "property_pages.h"
#include "resume_next.h"
#include "window_memory.h"
#include "zq_text_box.h"

namespace ledgix::editors {

using controls::Handler;
using controls::zqTextBox;
using model::clsProfile;
using model::clsProperty;

namespace {

clsProfile& ProfileOf(const clsProperty& property) {
    return model::gProfiles->Item(model::ProfileKey(property.ProfileNumber));
}

// A number that is still free and the row that bears it are one change of the file, so that of two programs neither
// writes over the other's new property.
bool SaveNew(clsProfile& profile, clsProperty& property) {
    const std::unique_ptr<dao::Transaction> change = store::BeginChange();
    profile.TakeFreeNumber(property);
    if (!property.Save())
        return false;
    const auto commit = [&] {
        if (change)
            change->Commit();
    };
    return runtime::ResumeNext(commit, [&](const runtime::RuntimeError& error) {
        property.Saved = false;
        services::DatabaseErrorHandler("frmProperty-cmdSave_Click", error);
    });
}

// The new text is selected, so that the next key replaces it.
void Replace(zqTextBox& box, const std::optional<std::string>& text) {
    if (!text)
        return;
    box.setText(ToScreen(*text));
    box.findChild<QLineEdit*>("TextBox")->selectAll();
}

}  // namespace

frmProperty::frmProperty(clsProperty& property, Desktop& desktop, QWidget* parent)
    : QDialog(parent), property_(property), desktop_(desktop), split_(property) {
    setObjectName("frmProperty");
    setModal(true);
    LayOut();
    Form_Load();
    Form_Activate();
    Listen();
    txtName->setFocus();
    resize(InitialSize(*this));
    controls::KeepPlace(*this);
}

void frmProperty::LayOut() {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    page->setSpacing(kSpacing);
    page->addWidget(NewContent(), 1);
    page->addLayout(NewButtonRow());
}

QWidget* frmProperty::NewContent() {
    auto* content = new QWidget;
    auto* page = new QVBoxLayout(content);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(kSpacing);
    page->addLayout(NewNameRow());
    auto* columns = new QHBoxLayout;
    columns->setSpacing(kMargin);
    page->addLayout(columns, 1);
    for (int column = 0; column < kPropertyColumns; ++column)
        columns->addLayout(NewColumn(column), 1);
    return new ContentArea(content, columns);
}

QLayout* frmProperty::NewColumn(int number) {
    auto* column = new QVBoxLayout;
    column->setSpacing(kSpacing);
    QList<QGridLayout*> grids;
    for (const PropertyFrame& frame : PropertyFrames()) {
        if (frame.column != number)
            continue;
        auto* box = new QGroupBox(frame.caption);
        box->setObjectName(frame.name);
        grids.append(new QGridLayout(box));
        Fill(*grids.last(), frame);
        column->addWidget(box);
    }
    AlignCaptions(grids);
    // The columns end on one line.
    column->setStretch(column->count() - 1, 1);
    grids.last()->setRowStretch(grids.last()->rowCount(), 1);
    return column;
}

void frmProperty::Fill(QGridLayout& grid, const PropertyFrame& frame) {
    grid.setContentsMargins(kMargin, kSpacing, kMargin, kSpacing);
    grid.setHorizontalSpacing(kSpacing);
    for (const PropertyRow& row : frame.rows)
        this->*row.box = AddAmountRow(grid, row.field);
    if (!frame.with_interest_only)
        return;
    chkInterestOnly = new QCheckBox("Interest Only Mortgage");
    chkInterestOnly->setObjectName("chkInterestOnly");
    chkInterestOnly->setAccessibleName(chkInterestOnly->text());
    grid.addWidget(chkInterestOnly, grid.rowCount(), kCaptionColumn, 1, -1);
    txtMortgageRate->setToolTipText("Percentage mortgage rate - assumed to be fixed.");
}

QLayout* frmProperty::NewNameRow() {
    txtName = new QLineEdit;
    txtName->setObjectName("txtName");
    txtName->setMaxLength(kLongestName);
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addWidget(NewLabel("lblName", "Property Name", txtName));
    row->addWidget(txtName, 1);
    return row;
}

QHBoxLayout* frmProperty::NewButtonRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    cmdAnalyse = AddButton(*row, "cmdAnalyse", "Analysis", &frmProperty::cmdAnalyse_Click);
    cmd10Year = AddButton(*row, "cmd10Year", "Outlook", &frmProperty::cmd10Year_Click);
    cmdHelp = AddButton(*row, "cmdHelp", "&Help", &frmProperty::cmdHelp_Click);
    row->addStretch(1);
    cmdCancel = AddButton(*row, "cmdCancel", "&Cancel", &frmProperty::cmdCancel_Click);
    cmdSave = AddButton(*row, "cmdSave", "&Save", &frmProperty::cmdSave_Click);
    cmdSave->setDefault(true);
    return row;
}

QPushButton* frmProperty::AddButton(QHBoxLayout& row, const char* name, const QString& caption,
                                    void (frmProperty::*handler)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove('&'));
    connect(button, &QPushButton::clicked, this, Handler(this, handler));
    row.addWidget(button);
    return button;
}

void frmProperty::Form_Load() {
    txtName->setText(ToScreen(property_.PropertyName));
    for (const PropertyFrame& frame : PropertyFrames())
        for (const PropertyRow& row : frame.rows)
            ShowRow(*this, row, property_);
    chkInterestOnly->setChecked(property_.InterestOnly);
}

void frmProperty::Form_Activate() {
    setWindowTitle(property_.PropertyName.empty() ? "Property" : ToScreen(property_.PropertyName));
}

// Begins only when the form is loaded: limits and split are for what the user changes.
void frmProperty::Listen() {
    const auto on_change = [this](zqTextBox* box, void (frmProperty::*handler)()) {
        connect(box, &zqTextBox::Change, this, Handler(this, handler));
    };
    on_change(txtPurchasePrice, &frmProperty::txtPurchasePrice_Change);
    on_change(txtMortgageRate, &frmProperty::txtMortgageRate_Change);
    on_change(txtMortgageTerm, &frmProperty::txtMortgageTerm_Change);
    on_change(txtHouse, &frmProperty::txtHouse_Change);
    on_change(txtChattel, &frmProperty::txtChattel_Change);
    txtPurchasePrice->focusProxy()->installEventFilter(this);
}

void frmProperty::CopyToProperty() {
    property_.PropertyName = FromScreen(txtName->text());
    for (const PropertyFrame& frame : PropertyFrames())
        for (const PropertyRow& row : frame.rows)
            TakeRow(*this, row, property_);
    property_.InterestOnly = chkInterestOnly->isChecked();
}

void frmProperty::cmdSave_Click() {
    if (txtName->text().isEmpty()) {
        txtName->setFocus();
        runtime::MsgBox("This profile requires a profile name.");
        return;
    }
    CopyToProperty();
    clsProperty& property = property_;
    clsProfile& profile = ProfileOf(property);
    if (!(property.Saved ? property.Save() : SaveNew(profile, property)))
        return;
    property.CloseForm();
    profile.RaiseReloadProperties();
}

void frmProperty::cmdCancel_Click() {
    clsProperty& property = property_;
    if (property.Saved)
        property.Reload();
    property.CloseForm();
}

void frmProperty::cmdAnalyse_Click() {
    CopyToProperty();
    property_.Analysis(ProfileOf(property_));
}

void frmProperty::cmd10Year_Click() {
    CopyToProperty();
    property_.Year10Analysis(ProfileOf(property_));
}

void frmProperty::cmdHelp_Click() {
    desktop_.ShowHelpTopic(kHelpProperty);
}

void frmProperty::txtPurchasePrice_Change() {
    if (split_.PriceChanged(txtPurchasePrice->Value())) {
        // The property keeps the split to the fraction of a cent.
        const QSignalBlocker house(txtHouse);
        const QSignalBlocker chattel(txtChattel);
        ShowAmount(*txtHouse, property_.HouseValue);
        ShowAmount(*txtChattel, property_.ChattelValue);
        ShowAmount(*txtHouseDepn, property_.HouseDepn);
        ShowAmount(*txtChattelDepn, property_.ChattelDepn);
    }
    // What comes from elsewhere than the keyboard is an entry by itself.
    if (!txtPurchasePrice->hasFocus())
        split_.EndEntry();
}

void frmProperty::txtMortgageRate_Change() {
    Replace(*txtMortgageRate, LimitedMortgageRate(FromScreen(txtMortgageRate->Text())));
}

void frmProperty::txtMortgageTerm_Change() {
    Replace(*txtMortgageTerm, LimitedMortgageTerm(FromScreen(txtMortgageTerm->Text())));
}

void frmProperty::txtHouse_Change() {
    property_.HouseValue = txtHouse->Value();
}

void frmProperty::txtChattel_Change() {
    property_.ChattelValue = txtChattel->Value();
}

void frmProperty::reject() {
    controls::RunHandler([this] { cmdCancel_Click(); });
}

bool frmProperty::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return QDialog::event(event);
}

// The entry of a price ends when the focus leaves its field, but not while another window or a menu has it.
bool frmProperty::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            split_.EndEntry();
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace ledgix::editors
