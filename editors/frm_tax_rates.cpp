#include "frm_tax_rates.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "amount_form.h"
#include "content_area.h"
#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "event_trap.h"
#include "message_box.h"
#include "resume_next.h"
#include "tax_module.h"
#include "window_memory.h"
#include "zq_text_box.h"

namespace ledgix::editors {

using controls::Handler;
using controls::zqTextBox;

namespace {

constexpr int kBoundDigits = 12;
constexpr int kRateDigits = 8;
constexpr int kRateDecimals = 4;

zqTextBox* NewBox(const char* name, std::size_t row, int decimals, int digits) {
    auto* box = new zqTextBox;
    box->setObjectName(QString("%1_%2").arg(name).arg(row));
    box->setIsNumeric(true);
    box->setDecimalPlaces(decimals);
    box->setAllowNegative(false);
    box->setText("0");
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QString(digits, u'0')));
    return box;
}

QLabel* NewRowLabel(const char* name, std::size_t row, const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setObjectName(QString("%1_%2").arg(name).arg(row));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

// The rows of a statement in the order in which it gives them, behind those that are there.
void Append(std::vector<TaxRateRow>& brackets, std::string sql) {
    store::ClosingRecordset rows;
    store::DataCreateSet(rows.get(), sql, dao::kOpenDynaset, dao::kDenyWrite + dao::kDenyRead);
    for (; !store::DataEOF(rows.get()); store::DataMoveNext(rows.get()))
        brackets.push_back({runtime::ToText(rows["upper"]), runtime::ToText(store::NullToValue(rows["rate"], 0.0))});
}

}  // namespace

frmTaxRates::frmTaxRates(QWidget* parent) : QDialog(parent) {
    setObjectName("frmTaxRates");
    setWindowTitle("Tax Rates");
    LayOut();
    controls::RunHandler([this] { Form_Load(); });
    ShowRows();
    for (std::size_t row = 0; row < TaxRateRows::kCount; ++row) {
        connect(txtUpper[row], &zqTextBox::Change, this, [this, row] { txtUpper_Change(row); });
        connect(txtRate[row], &zqTextBox::Change, this, [this, row] { txtRate_Change(row); });
    }
    resize(InitialSize(*this));
    controls::KeepPlace(*this);
}

void frmTaxRates::LayOut() {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    page->setSpacing(kSpacing);
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kSpacing);
    for (std::size_t row = 0; row < TaxRateRows::kCount; ++row)
        AddRow(*grid, row);
    grid->setRowStretch(grid->rowCount(), 1);
    page->addWidget(new ContentArea(content), 1);
    page->addLayout(NewButtonRow());
}

void frmTaxRates::AddRow(QGridLayout& grid, std::size_t row) {
    txtUpper[row] = NewBox("txtUpper", row, 0, kBoundDigits);
    txtRate[row] = NewBox("txtRate", row, kRateDecimals, kRateDigits);
    Label1[row] = NewRowLabel("Label1", row, {}, txtUpper[row]);
    Label2[row] = NewRowLabel("Label2", row, "the income tax rate is", txtRate[row]);
    Label3[row] = NewRowLabel("Label3", row, "percent.", txtRate[row]);
    int column = 0;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{Label1[row], txtUpper[row], Label2[row], txtRate[row], Label3[row]})
        grid.addWidget(widget, static_cast<int>(row), column++);
}

QLayout* frmTaxRates::NewButtonRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addStretch(1);
    const auto add = [&](const char* name, const QString& caption, void (frmTaxRates::*handler)()) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        button->setAccessibleName(QString(caption).remove('&'));
        connect(button, &QPushButton::clicked, this, Handler(this, handler));
        row->addWidget(button);
        return button;
    };
    cmdCancel = add("cmdCancel", "&Cancel", &frmTaxRates::cmdCancel_Click);
    cmdSave = add("cmdSave", "&Save", &frmTaxRates::cmdSave_Click);
    cmdSave->setDefault(true);
    return row;
}

void frmTaxRates::Form_Load() {
    std::vector<TaxRateRow> brackets;
    Append(brackets, "select * from tax_rates where upper <> 0 order by upper");
    Append(brackets, "select * from tax_rates where upper = 0");
    for (std::size_t row = 0; row < std::min(brackets.size(), TaxRateRows::kCount); ++row) {
        txtUpper[row]->setText(ToScreen(brackets[row].upper));
        txtRate[row]->setText(ToScreen(brackets[row].rate));
        rows_.SetUpper(row, FromScreen(txtUpper[row]->Text()));
        rows_.SetRate(row, FromScreen(txtRate[row]->Text()));
    }
}

void frmTaxRates::Form_Activate() {
    if (!model::TaxRatesSeeded)
        return;
    // Cleared first: the box takes the activation away and gives it back.
    model::TaxRatesSeeded = false;
    runtime::MsgBox(
        "Confirm or enter the income tax rates applicable for your situation.  You may enter these values later from "
        "the Maintenance menu if you wish.");
}

void frmTaxRates::cmdSave_Click() {
    for (std::string& statement : rows_.SaveStatements())
        runtime::ResumeNext(
            [&] { store::ExecuteSQL(statement); },
            [](const runtime::RuntimeError& error) { runtime::ShowError(error, "frmTaxRates-cmdSave_Click"); });
    accept();
}

void frmTaxRates::cmdCancel_Click() {
    reject();
}

void frmTaxRates::txtUpper_Change(std::size_t row) {
    rows_.SetUpper(row, FromScreen(txtUpper[row]->Text()));
    ShowRows();
}

void frmTaxRates::txtRate_Change(std::size_t row) {
    rows_.SetRate(row, FromScreen(txtRate[row]->Text()));
}

void frmTaxRates::ShowRows() {
    for (std::size_t row = 0; row < TaxRateRows::kCount; ++row) {
        const QString label = ToScreen(rows_.Label(row));
        Label1[row]->setText(label);
        txtUpper[row]->setAccessibleName(label.trimmed());
        txtRate[row]->setAccessibleName(label.trimmed() + ": " + Label2[row]->text());
        const bool enabled = rows_.Enabled(row);
        for (QLabel* part : {Label1[row], Label2[row], Label3[row]})
            part->setEnabled(enabled);
        for (zqTextBox* box : {txtUpper[row], txtRate[row]})
            box->setTextBoxEnabled(enabled);
    }
}

// The prompt comes when the window is there to be seen.
bool frmTaxRates::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        QTimer::singleShot(0, this, Handler(this, &frmTaxRates::Form_Activate));
    return QDialog::event(event);
}

}  // namespace ledgix::editors
