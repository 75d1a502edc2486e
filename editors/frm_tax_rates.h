#pragma once

#include <QDialog>
#include <array>

#include "tax_rate_rows.h"

class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;

namespace ledgix::controls {
class zqTextBox;
}

namespace ledgix::editors {

// The editor of the income tax brackets, one in each of ten rows. It reads the table when it is made. Enter saves, Esc
// and the window's frame cancel; all of them close it.
class frmTaxRates : public QDialog {
    Q_OBJECT

public:
    explicit frmTaxRates(QWidget* parent = nullptr);

    std::array<QLabel*, TaxRateRows::kCount> Label1{};
    std::array<controls::zqTextBox*, TaxRateRows::kCount> txtUpper{};
    std::array<QLabel*, TaxRateRows::kCount> Label2{};
    std::array<controls::zqTextBox*, TaxRateRows::kCount> txtRate{};
    std::array<QLabel*, TaxRateRows::kCount> Label3{};
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdSave = nullptr;

    // The rows as they are on the screen.
    const TaxRateRows& rows() const { return rows_; }

public slots:
    // Each statement stands for itself: one that fails shows a message box, and the next one follows.
    void cmdSave_Click();
    void cmdCancel_Click();

protected:
    bool event(QEvent* event) override;

private:
    void LayOut();
    void AddRow(QGridLayout& grid, std::size_t row);
    QLayout* NewButtonRow();
    void Form_Load();
    // Asks the user to look at brackets that the program has filled in, once.
    void Form_Activate();
    void txtUpper_Change(std::size_t row);
    void txtRate_Change(std::size_t row);
    void ShowRows();

    TaxRateRows rows_;
};

}  // namespace ledgix::editors
