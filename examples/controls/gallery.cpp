#include "gallery.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "frm_calc.h"
#include "zq_skin.h"
#include "zq_tab_dialog.h"
#include "zq_text_box.h"

using ledgix::controls::frmCalc;
using ledgix::controls::zqSkin;
using ledgix::controls::zqTabDialog;
using ledgix::controls::zqTextBox;

namespace {

// A page of a tab dialog: labels with a field each.
QFrame* Page(const QString& name, const QStringList& labels) {
    auto* page = new QFrame;
    page->setObjectName(name);
    auto* form = new QFormLayout(page);
    for (const QString& label : labels) {
        form->addRow(label, new QLineEdit(page));
    }
    return page;
}

// A tab dialog whose pages lie in its body, all in the same place.
zqTabDialog* Pages(const QString& tabs, const QList<QFrame*>& pages) {
    auto* dialog = new zqTabDialog;
    auto* cell = new QGridLayout(dialog);
    cell->setContentsMargins(0, 0, 0, 0);
    QString frames;
    for (QFrame* page : pages) {
        cell->addWidget(page, 0, 0, Qt::AlignTop);
        frames += page->objectName() + "|";
    }
    dialog->setTabs(tabs);
    dialog->setFrames(frames);
    return dialog;
}

QWidget* Panel(const QString& caption, int style) {
    auto* panel = new QWidget;
    panel->setMinimumSize(90, 90);
    auto* column = new QVBoxLayout(panel);
    auto* label = new QLabel(caption, panel);
    label->setAlignment(Qt::AlignCenter);
    label->setStyleSheet("color: white");
    column->addWidget(label);
    auto* skin = new zqSkin(panel);
    skin->setStartColour(0x602000);
    skin->setEndColour(0xC09060);
    skin->setStyle(style);
    return panel;
}

zqTextBox* NumberBox(const QString& text) {
    auto* box = new zqTextBox;
    box->setIsNumeric(true);
    box->setDecimalPlaces(2);
    box->setText(text);
    return box;
}

zqTextBox* TextBox(const QString& text) {
    auto* box = new zqTextBox;
    box->setText(text);
    return box;
}

}  // namespace

Gallery::Gallery(QWidget* parent) : QWidget(parent) {
    setWindowTitle("Controls");
    auto* grid = new QGridLayout(this);
    grid->addWidget(TabDialogs(), 0, 0, 2, 1);
    grid->addWidget(TextBoxes(), 0, 1);
    grid->addWidget(Calculator(), 1, 1);
    grid->addWidget(Skins(), 2, 0, 1, 2);
    resize(sizeHint());
}

void Gallery::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    first_->setFocus(Qt::TabFocusReason);
}

QWidget* Gallery::TextBoxes() {
    auto* group = new QGroupBox("Text box");
    auto* form = new QFormLayout(group);
    form->addRow("Text", TextBox("12 Harbour Street"));
    auto* centred = TextBox("In the middle");
    centred->setAlignment(zqTextBox::kCenter);
    form->addRow("Centred", centred);
    form->addRow("Number", NumberBox("1234.5"));
    auto* negative = NumberBox("0");
    negative->setAllowNegative(true);
    negative->setText("-0.75");
    form->addRow("Below zero", negative);
    auto* calculated = NumberBox("5200");
    calculated->setShowCalc(true);
    form->addRow("Calculator", calculated);
    auto* locked = NumberBox("100");
    locked->setLocked(true);
    locked->setShowCalc(true);
    form->addRow("Locked", locked);
    auto* disabled = NumberBox("250000");
    disabled->setShowCalc(true);
    disabled->setEnabled(false);
    form->addRow("Disabled", disabled);
    return group;
}

QWidget* Gallery::Calculator() {
    auto* group = new QGroupBox("Period calculator");
    auto* column = new QVBoxLayout(group);
    auto* calculator = new frmCalc;
    calculator->setWindowFlags(Qt::Widget);
    calculator->txtYear->setText("5200");
    column->addWidget(calculator);
    return group;
}

QWidget* Gallery::TabDialogs() {
    auto* box = new QGroupBox("Tab dialog");
    auto* column = new QVBoxLayout(box);
    auto* pages = Pages("Income|Expenses|Assets|Liabilities|Profit & Loss|",
                        {Page("frmIncome", {"Salary", "Partner's salary"}), Page("frmExpense", {"Living", "Transport"}),
                         Page("frmAssets", {"House", "Savings"}), Page("frmLiabilities", {"Mortgage", "Credit card"}),
                         Page("frmPurchases", {"Purchase"})});
    pages->setCurrentTab(2);
    pages->setTabEnabled(4, false);
    first_ = pages;
    column->addWidget(pages);

    auto* narrow = Pages("A long caption among short ones|Notes|Photographs|", {Page("frmLong", {"Name"})});
    column->addWidget(narrow);

    auto* disabled = Pages("Disabled|as|a whole|", {Page("frmDisabled", {"Name"})});
    disabled->setEnabled(false);
    column->addWidget(disabled);
    return box;
}

QWidget* Gallery::Skins() {
    auto* box = new QGroupBox("Gradient skin");
    auto* row = new QHBoxLayout(box);
    for (int style = 0; style <= 4; ++style) {
        row->addWidget(Panel(style < 4 ? QString("Style %1").arg(style) : QString("Other"), style));
    }
    return box;
}
