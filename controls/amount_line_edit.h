#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

#include "amount_edit.h"

class QClipboard;

namespace ledgix::controls {

// The one-line editor inside a zqTextBox. Free text as any other line; in numeric mode whatever a user does to it, by
// keys, clipboard, mouse or input method, leaves a clean amount or the text as it was. Every edit can be undone.
class AmountLineEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit AmountLineEdit(QWidget* parent);

    // In numeric mode with a decimal point whatever the screen shows, and always a clean text, also while an input
    // method composes.
    QString Text() const;
    // Takes a text from code; it is cleaned in numeric mode. Changed is sent unless the text is there already.
    void Assign(const QString& text);
    // Text as a number of the locale, 0 if it is none.
    double Value() const;

    bool numeric() const { return numeric_; }
    void SetNumeric(bool numeric);
    const AmountLimits& limits() const { return limits_; }
    // For edits to come; the present text stays.
    void SetLimits(const AmountLimits& limits) { limits_ = limits; }
    // Whether F4 and Alt+Down ask for the calculator.
    void OfferCalculator(bool offered) { calculator_offered_ = offered; }

signals:
    // Once for each change, after the cleaning; also where the cleaning gave the old text again.
    void Changed();
    void CalculatorWanted();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool AsksForCalculator(const QKeyEvent& event) const;
    bool Guarded() const { return numeric_ && !isReadOnly(); }
    EditPoint Point() const;
    AmountRules Rules() const;
    QString Shown(std::string_view text) const;

    void Type(char32_t key, bool number_pad);
    void Compose(const QString& committed);
    void Paste(const QString& text);
    void PasteClipboard();
    bool Apply(const std::optional<std::string>& text, const QString& typed);
    void Restate(const QString& shown);
    void TakeForeignEdit();
    std::optional<std::string> ReadForeignEdit() const;

    AmountLimits limits_;
    char decimal_separator_;
    QString settled_;  // what the screen shows after the last change
    QPoint press_at_;
    bool numeric_ = false;
    bool busy_ = false;
    bool calculator_offered_ = false;
    bool focused_by_press_ = false;
    bool lent_focus_ = false;
};

}  // namespace ledgix::controls
