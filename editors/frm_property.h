#pragma once

#include <QDialog>

#include "cls_property.h"
#include "desktop.h"
#include "price_split.h"

class QCheckBox;
class QGridLayout;
class QHBoxLayout;
class QLayout;
class QLineEdit;
class QPushButton;

namespace ledgix::controls {
class zqTextBox;
}

namespace ledgix::editors {

struct PropertyFrame;

// The editor of one candidate purchase. It closes through the property's CloseForm, whose window handle hides and
// destroys it. Esc and the window's frame are Cancel.
//
// The property takes the figures on Save and before a report; its price and the values of house and chattels it takes
// as they are typed, since the split of the price depends on them.
class frmProperty : public QDialog {
    Q_OBJECT

public:
    // The property and the desktop outlive the form.
    frmProperty(model::clsProperty& property, Desktop& desktop, QWidget* parent);

    QLineEdit* txtName = nullptr;
    controls::zqTextBox* txtPurchasePrice = nullptr;
    controls::zqTextBox* txtPurchaseCosts = nullptr;
    controls::zqTextBox* txtDepositValue = nullptr;
    controls::zqTextBox* txtMortgageRate = nullptr;
    controls::zqTextBox* txtMortgageTerm = nullptr;
    QCheckBox* chkInterestOnly = nullptr;
    controls::zqTextBox* txtIncRental = nullptr;
    controls::zqTextBox* txtExpRates = nullptr;
    controls::zqTextBox* txtExpInsurance = nullptr;
    controls::zqTextBox* txtExpRepair = nullptr;
    controls::zqTextBox* txtExpFee = nullptr;
    controls::zqTextBox* txtExpOther = nullptr;
    controls::zqTextBox* txtInflation = nullptr;
    controls::zqTextBox* txtPriceIncreases = nullptr;
    controls::zqTextBox* txtHouse = nullptr;
    controls::zqTextBox* txtChattel = nullptr;
    controls::zqTextBox* txtHouseDepn = nullptr;
    controls::zqTextBox* txtChattelDepn = nullptr;
    QPushButton* cmdHelp = nullptr;
    QPushButton* cmdAnalyse = nullptr;
    QPushButton* cmd10Year = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdSave = nullptr;

public slots:
    // Without a name it stays open and asks for one. So it does when the property could not be written.
    void cmdSave_Click();
    void cmdCancel_Click();
    void cmdAnalyse_Click();
    void cmd10Year_Click();
    void cmdHelp_Click();
    void txtPurchasePrice_Change();
    void txtMortgageRate_Change();
    void txtMortgageTerm_Change();
    void txtHouse_Change();
    void txtChattel_Change();
    void reject() override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LayOut();
    QWidget* NewContent();
    QLayout* NewNameRow();
    QLayout* NewColumn(int number);
    void Fill(QGridLayout& grid, const PropertyFrame& frame);
    QHBoxLayout* NewButtonRow();
    QPushButton* AddButton(QHBoxLayout& row, const char* name, const QString& caption, void (frmProperty::*handler)());
    void Form_Load();
    void Form_Activate();
    void Listen();
    void CopyToProperty();

    model::clsProperty& property_;
    Desktop& desktop_;
    PriceSplit split_;
};

}  // namespace ledgix::editors
