#pragma once

#include <QDialog>

#include "period_amounts.h"

class QPushButton;

namespace ledgix::controls {

class zqTextBox;

// The pop-up that turns an amount per week or per month into whole dollars a year. Enter saves, Esc cancels.
// The caller writes txtYear, shows it, then reads bCancel and, unless that is true, txtYear.
class frmCalc : public QDialog {
    Q_OBJECT

public:
    frmCalc();

    // The one instance that all fields share; made on first use, gone with the application. It is hidden between uses
    // and keeps its amounts.
    static frmCalc& Instance();

    // Opens just below the field, or above it near the bottom of its screen, and returns when the user is done.
    void ShowModalAt(const QWidget& field);

    bool bCancel = true;  // the user chose Cancel, or closed the window
    zqTextBox* txtWeek;
    QPushButton* cmdCancel;
    QPushButton* cmdSave;
    zqTextBox* txtMonth;
    zqTextBox* txtYear;

public slots:
    void cmdSave_Click();
    void cmdCancel_Click();
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void LayOut();
    void Changed(Period period);
    zqTextBox* Field(Period period) const;

    PeriodAmounts amounts_;
    bool busy_ = false;
};

}  // namespace ledgix::controls
