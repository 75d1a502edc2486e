#include "amount_form.h"

#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <cmath>

#include "conversions.h"
#include "regional_settings.h"
#include "zq_text_box.h"

namespace ledgix::editors {

using controls::zqTextBox;

namespace {

constexpr int kMoneyDecimals = 2;
constexpr int kPercentDecimals = 4;

int DecimalsOf(Unit unit) {
    switch (unit) {
        case Unit::kMoneyAYear:
        case Unit::kMoney:
            return kMoneyDecimals;
        case Unit::kPercent:
        case Unit::kPercentAYear:
            return kPercentDecimals;
        case Unit::kYears:
            break;
    }
    return 0;
}

zqTextBox* NewBox(const AmountField& field) {
    auto* box = new zqTextBox;
    box->setObjectName(field.name);
    box->setAccessibleName(ToScreen(field.caption) + ", " + UnitText(field.unit));
    box->setIsNumeric(true);
    box->setDecimalPlaces(DecimalsOf(field.unit));
    box->setAllowNegative(false);
    box->setText("0");
    return box;
}

QLabel* NewBuddy(const QString& text, zqTextBox* box) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(box);
    return label;
}

}  // namespace

zqTextBox* AddAmountRow(QGridLayout& grid, const AmountField& field) {
    const int row = grid.count() == 0 ? 0 : grid.rowCount();
    zqTextBox* box = NewBox(field);
    grid.addWidget(NewBuddy(ToScreen(field.caption), box), row, kCaptionColumn);
    grid.addWidget(box, row, kBoxColumn);
    grid.addWidget(NewBuddy(UnitText(field.unit), box), row, kUnitColumn);
    grid.setColumnStretch(kSpareColumn, 1);
    // The widest box is one with its calculator.
    box->setShowCalc(true);
    grid.setColumnMinimumWidth(kBoxColumn, box->sizeHint().width());
    box->setShowCalc(field.unit == Unit::kMoneyAYear);
    return box;
}

QString UnitText(Unit unit) {
    const QString currency = ToScreen(runtime::Region().currency_symbol);
    switch (unit) {
        case Unit::kMoneyAYear:
            return currency + " a year";
        case Unit::kMoney:
            return currency;
        case Unit::kPercent:
            return "%";
        case Unit::kPercentAYear:
            return "% a year";
        case Unit::kYears:
            break;
    }
    return "years";
}

void AlignCaptions(const QList<QGridLayout*>& grids) {
    int widest = 0;
    for (const QGridLayout* grid : grids)
        for (int row = 0; row < grid->rowCount(); ++row)
            if (const QLayoutItem* caption = grid->itemAtPosition(row, kCaptionColumn))
                widest = std::max(widest, caption->sizeHint().width());
    for (QGridLayout* grid : grids)
        grid->setColumnMinimumWidth(kCaptionColumn, widest);
}

QLabel* NewLabel(const char* name, const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    if (buddy) {
        label->setBuddy(buddy);
        buddy->setAccessibleName(text);
    }
    return label;
}

void ShowAmount(zqTextBox& box, double value) {
    constexpr double kSmallestShown = 0.0001;
    if (!std::isfinite(value) || std::abs(value) < kSmallestShown)
        value = 0;
    const QString text = ToScreen(runtime::ToText(value));
    box.setText(text.contains('E') ? QString::number(value, 'f', 0) : text);
}

double AmountOf(const zqTextBox& box) {
    return runtime::LeadingNumber(FromScreen(box.Text()));
}

QString ToScreen(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string FromScreen(const QString& text) {
    return text.toStdString();
}

}  // namespace ledgix::editors
