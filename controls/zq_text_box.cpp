#include "zq_text_box.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <algorithm>
#include <limits>

#include "amount_line_edit.h"
#include "calc_button.h"
#include "conversions.h"
#include "frm_calc.h"

namespace ledgix::controls {

namespace {

constexpr int kNoLimit = std::numeric_limits<std::int16_t>::max();

// "Per &Week" -> "Per Week", "R&&D" -> "R&D"
QString WithoutMnemonic(const QString& caption) {
    QString plain;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && ++i == caption.size())
            break;
        plain.append(caption[i]);
    }
    return plain;
}

// The caption of the label whose buddy the control or its line is.
QString LabelOf(const QWidget* control, const QWidget* line) {
    if (!control->parentWidget())
        return {};
    for (const QLabel* label : control->window()->findChildren<QLabel*>())
        if (label->buddy() && (label->buddy() == control || label->buddy() == line))
            return WithoutMnemonic(label->text());
    return {};
}

}  // namespace

zqTextBox::zqTextBox(QWidget* parent)
    : QWidget(parent), text_box_(new AmountLineEdit(this)), button_(new CalcButton(this)) {
    text_box_->setObjectName("TextBox");
    text_box_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    text_box_->setText("Text1");
    text_box_->installEventFilter(this);
    button_->setObjectName("cmdCalc");
    button_->setAccessibleName(tr("Period calculator"));
    button_->setToolTip(tr("Period calculator (F4)"));
    // One pixel stays free above and below.
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 1, 0, 1);
    row->setSpacing(0);
    row->addWidget(text_box_);
    row->addWidget(button_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(text_box_);
    setShowCalc(false);
    connect(text_box_, &AmountLineEdit::Changed, this, &zqTextBox::Change);
    connect(text_box_, &AmountLineEdit::CalculatorWanted, this, &zqTextBox::OpenCalculator);
    connect(button_, &QToolButton::pressed, this, &zqTextBox::OpenCalculator);
}

bool zqTextBox::Enabled() const {
    return text_box_->isEnabledTo(this);
}
void zqTextBox::setTextBoxEnabled(bool enabled) {
    text_box_->setEnabled(enabled);
}

int zqTextBox::Alignment() const {
    const Qt::Alignment side = text_box_->alignment();
    return side & Qt::AlignRight ? kRight : side & Qt::AlignHCenter ? kCenter : kLeft;
}
void zqTextBox::setAlignment(int alignment) {
    const Qt::Alignment side = alignment == kRight    ? Qt::AlignRight
                               : alignment == kCenter ? Qt::AlignHCenter
                                                      : Qt::AlignLeft;
    text_box_->setAlignment(side | Qt::AlignVCenter);
}

bool zqTextBox::Locked() const {
    return text_box_->isReadOnly();
}
void zqTextBox::setLocked(bool locked) {
    text_box_->setReadOnly(locked);
}

int zqTextBox::MaxLength() const {
    return text_box_->maxLength() == kNoLimit ? 0 : text_box_->maxLength();
}
void zqTextBox::setMaxLength(int length) {
    text_box_->setMaxLength(length > 0 ? std::min(length, kNoLimit) : kNoLimit);
}

QString zqTextBox::Text() const {
    return text_box_->Text();
}
void zqTextBox::setText(const QString& text) {
    text_box_->Assign(text);
}

bool zqTextBox::IsNumeric() const {
    return text_box_->numeric();
}
void zqTextBox::setIsNumeric(bool numeric) {
    text_box_->SetNumeric(numeric);
    if (numeric)
        setAlignment(kRight);
}

int zqTextBox::DecimalPlaces() const {
    return text_box_->limits().decimal_places;
}
void zqTextBox::setDecimalPlaces(int places) {
    text_box_->SetLimits({places, AllowNegative()});
}

bool zqTextBox::AllowNegative() const {
    return text_box_->limits().allow_negative;
}
void zqTextBox::setAllowNegative(bool allowed) {
    text_box_->SetLimits({DecimalPlaces(), allowed});
}

void zqTextBox::setShowCalc(bool shown) {
    show_calc_ = shown;
    button_->setVisible(shown);
    button_->setEnabled(shown);
    text_box_->OfferCalculator(shown);
}

QString zqTextBox::ToolTipText() const {
    return text_box_->toolTip();
}
void zqTextBox::setToolTipText(const QString& text) {
    text_box_->setToolTip(text);
}

double zqTextBox::Value() const {
    return text_box_->Value();
}

bool zqTextBox::event(QEvent* event) {
    if (event->type() == QEvent::Show)
        NameParts();
    return QWidget::event(event);
}

bool zqTextBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        NameParts();
    return QWidget::eventFilter(watched, event);
}

// What has the focus is the line, so the name of the control, or of its label, is the line's.
void zqTextBox::NameParts() {
    const QString name = accessibleName().isEmpty() ? LabelOf(this, text_box_) : accessibleName();
    if (!name.isEmpty() && name != text_box_->accessibleName())
        text_box_->setAccessibleName(name);
}

void zqTextBox::OpenCalculator() {
    button_->setDown(false);
    frmCalc& calculator = frmCalc::Instance();
    if (!text_box_->isEnabled() || Locked() || calculator.isVisible())
        return;
    const QPointer<zqTextBox> self(this);
    calculator.txtYear->setText(Text());
    calculator.ShowModalAt(*this);
    if (!self)
        return;
    text_box_->activateWindow();
    text_box_->setFocus();
    text_box_->selectAll();
    if (!calculator.bCancel)
        setText(
            QString::fromStdString(runtime::ToText(runtime::LeadingNumber(calculator.txtYear->Text().toStdString()))));
}

}  // namespace ledgix::controls
