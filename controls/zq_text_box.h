#pragma once

#include <QWidget>

namespace ledgix::controls {

class AmountLineEdit;
class CalcButton;

// A one-line field for an amount, a rate or a count, or for free text. Holds the line `TextBox` and the button
// `cmdCalc`, which opens the period calculator on mouse down; so do F4 and Alt+Down. Getting the focus selects all.
//
// In numeric mode every change leaves a number in the box (see CleanAmount), and Text carries a decimal point whatever
// the locale; the screen shows the locale's separator, and a comma may be typed and pasted where it is that.
class zqTextBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool Enabled READ Enabled WRITE setTextBoxEnabled)
    Q_PROPERTY(int Alignment READ Alignment WRITE setAlignment)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(int MaxLength READ MaxLength WRITE setMaxLength)
    Q_PROPERTY(QString Text READ Text WRITE setText NOTIFY Change USER true)
    Q_PROPERTY(bool IsNumeric READ IsNumeric WRITE setIsNumeric)
    Q_PROPERTY(int DecimalPlaces READ DecimalPlaces WRITE setDecimalPlaces)
    Q_PROPERTY(bool AllowNegative READ AllowNegative WRITE setAllowNegative)
    Q_PROPERTY(bool ShowCalc READ ShowCalc WRITE setShowCalc)
    Q_PROPERTY(QString ToolTipText READ ToolTipText WRITE setToolTipText)
    Q_PROPERTY(double Value READ Value)

public:
    enum { kLeft = 0, kRight = 1, kCenter = 2 };  // Alignment

    explicit zqTextBox(QWidget* parent = nullptr);

    // Of the line alone; QWidget::setEnabled is for the whole control.
    bool Enabled() const;
    void setTextBoxEnabled(bool enabled);
    int Alignment() const;
    void setAlignment(int alignment);
    // A locked box cannot be edited, nor does it open the calculator. Code may still set its text.
    bool Locked() const;
    void setLocked(bool locked);
    // Characters; 0 = no limit.
    int MaxLength() const;
    void setMaxLength(int length);
    QString Text() const;
    // Change is sent unless the box has this text already.
    void setText(const QString& text);
    bool IsNumeric() const;
    // Numeric mode aligns right; leaving it does not undo that.
    void setIsNumeric(bool numeric);
    int DecimalPlaces() const;
    void setDecimalPlaces(int places);
    bool AllowNegative() const;
    void setAllowNegative(bool allowed);
    bool ShowCalc() const { return show_calc_; }
    void setShowCalc(bool shown);
    QString ToolTipText() const;
    void setToolTipText(const QString& text);

    // Text as a number of the locale; 0 if it is none.
    double Value() const;

signals:
    // Sent once for each change by user or code, after the cleaning. A handler that sets Text hears it again.
    void Change();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OpenCalculator();
    void NameParts();

    AmountLineEdit* text_box_;
    CalcButton* button_;
    bool show_calc_ = false;
};

}  // namespace ledgix::controls
