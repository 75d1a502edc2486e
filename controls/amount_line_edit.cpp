#include "amount_line_edit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>

#include "amount_keys.h"
#include "conversions.h"
#include "pasted_amount.h"

namespace ledgix::controls {

namespace {

// The character that a key press types; 0 for shortcuts and keys that type nothing.
char32_t TypedCharacter(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool shortcut = held == Qt::ControlModifier || held == Qt::MetaModifier;
    const auto characters = event.text().toUcs4();
    if (shortcut || characters.size() != 1 || !QChar::isPrint(characters.front()))
        return 0;
    return characters.front();
}

// A menu, or another window, has the focus for a while; for the user the box never lost it.
bool IsLent(Qt::FocusReason reason) {
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
}

bool IsPlain(const std::string& text) {
    return text.find_first_not_of("0123456789.-") == std::string::npos;
}

}  // namespace

AmountLineEdit::AmountLineEdit(QWidget* parent)
    : QLineEdit(parent), decimal_separator_(DecimalSeparator(runtime::Region())) {
    connect(this, &QLineEdit::textChanged, this, &AmountLineEdit::TakeForeignEdit);
}

QString AmountLineEdit::Text() const {
    return numeric_ ? Shown(settled_.toStdString()) : text();
}

void AmountLineEdit::Assign(const QString& text) {
    const QString given = text.left(maxLength());
    const QString cleaned =
        numeric_ ? QString::fromStdString(CleanAssignedAmount(given.toStdString(), decimal_separator_, limits_))
                 : given;
    if (given == Text() && cleaned == given)
        return;
    {
        const QScopedValueRollback<bool> busy(busy_, true);
        setText(numeric_ ? Shown(cleaned.toStdString()) : cleaned);
        settled_ = this->text();
    }
    emit Changed();
}

double AmountLineEdit::Value() const {
    const std::string text = Text().toStdString();
    return AmountValue(numeric_ ? text : ExchangeSeparators(text, decimal_separator_));
}

void AmountLineEdit::SetNumeric(bool numeric) {
    if (numeric == numeric_)
        return;
    const QString text = Text();
    numeric_ = numeric;
    setInputMethodHints(numeric ? Qt::ImhFormattedNumbersOnly : Qt::ImhNone);
    const QScopedValueRollback<bool> busy(busy_, true);
    setText(numeric ? Shown(text.toStdString()) : text);
    settled_ = this->text();
}

bool AmountLineEdit::AsksForCalculator(const QKeyEvent& event) const {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    return calculator_offered_ && ((event.key() == Qt::Key_F4 && held == Qt::NoModifier) ||
                                   (event.key() == Qt::Key_Down && held == Qt::AltModifier));
}

EditPoint AmountLineEdit::Point() const {
    const auto part = [this](const QString& shown) {
        return ExchangeSeparators(shown.toStdString(), decimal_separator_);
    };
    const QString all = text();
    const int from = hasSelectedText() ? selectionStart() : cursorPosition();
    const int to = hasSelectedText() ? selectionEnd() : from;
    return {part(all.left(from)), part(all.mid(from, to - from)), part(all.mid(to))};
}

AmountRules AmountLineEdit::Rules() const {
    return {limits_, static_cast<std::size_t>(maxLength())};
}

QString AmountLineEdit::Shown(std::string_view text) const {
    return QString::fromStdString(ExchangeSeparators(text, decimal_separator_));
}

void AmountLineEdit::Type(char32_t key, bool number_pad) {
    const char typed = AmountKey(key, number_pad, decimal_separator_);
    if (typed)
        Apply(TypeKey(Point(), typed, Rules()), Shown(std::string(1, typed)));
}

void AmountLineEdit::Paste(const QString& text) {
    Apply(PasteText(Point(), text.toStdString(), Rules(), runtime::Region()), QString());
}

void AmountLineEdit::PasteClipboard() {
    Paste(QApplication::clipboard()->text());
}

// Makes a change of the user's, as one step for undo: `typed` alone where nothing is left to clean.
bool AmountLineEdit::Apply(const std::optional<std::string>& text, const QString& typed) {
    if (!text)
        return false;
    {
        const QScopedValueRollback<bool> busy(busy_, true);
        const QString shown = Shown(*text);
        const EditPoint at = Point();
        if (shown == Shown(at.before) + typed + Shown(at.after))
            insert(typed);
        else
            Restate(shown);
        end(false);
        settled_ = this->text();
    }
    emit Changed();
    return true;
}

void AmountLineEdit::Restate(const QString& shown) {
    if (shown == text())
        return;
    selectAll();
    insert(shown);
}

// An edit that the line has made by itself: a deletion, undo and redo, an assistive program's text. Where it leaves
// something to clean, it is taken back first, so that undo does not lead to the unclean text.
void AmountLineEdit::TakeForeignEdit() {
    if (busy_)
        return;
    if (!numeric_) {
        emit Changed();
        return;
    }
    const std::optional<std::string> cleaned = ReadForeignEdit();
    {
        const QScopedValueRollback<bool> busy(busy_, true);
        const QString wanted = cleaned ? Shown(*cleaned) : settled_;
        if (wanted != text() && isUndoAvailable())
            undo();
        Restate(wanted);
        end(false);
        settled_ = text();
    }
    if (cleaned)
        emit Changed();
}

std::optional<std::string> AmountLineEdit::ReadForeignEdit() const {
    const std::string shown = text().toStdString();
    const std::string plain = ExchangeSeparators(shown, decimal_separator_);
    if (IsPlain(plain) || !IsPlain(Text().toStdString()))
        return CleanAmount(plain, limits_);
    return DropText(shown, Rules(), runtime::Region());
}

bool AmountLineEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && AsksForCalculator(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void AmountLineEdit::keyPressEvent(QKeyEvent* event) {
    if (AsksForCalculator(*event)) {
        emit CalculatorWanted();
        return;
    }
    if (Guarded() && event->matches(QKeySequence::Paste)) {
        PasteClipboard();
        return;
    }
    const char32_t character = TypedCharacter(*event);
    if (!Guarded() || !character) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->modifiers() & Qt::AltModifier && !(event->modifiers() & Qt::ControlModifier)) {
        event->ignore();
        return;
    }
    Type(character, event->modifiers().testFlag(Qt::KeypadModifier));
}

// The composed text is shown as the input method wants it; only what it commits is an edit.
void AmountLineEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (!Guarded()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    const QString committed = event->commitString();
    const QString preedit = event->preeditString();
    const auto compose = [this](QInputMethodEvent shown) {
        const QScopedValueRollback<bool> busy(busy_, true);
        QLineEdit::inputMethodEvent(&shown);
    };
    if (committed.isEmpty() && event->replacementLength() == 0) {
        compose(QInputMethodEvent(preedit, event->attributes()));
    } else {
        compose(QInputMethodEvent());
        if (event->replacementLength() > 0)
            setSelection(cursorPosition() + event->replacementStart(), event->replacementLength());
        Compose(committed);
        if (!preedit.isEmpty())
            compose(QInputMethodEvent(preedit, event->attributes()));
    }
    if (preedit.isEmpty() && text() != settled_) {
        const QScopedValueRollback<bool> busy(busy_, true);
        Restate(settled_);
    }
    event->accept();
}

void AmountLineEdit::Compose(const QString& committed) {
    const auto characters = committed.toUcs4();
    if (characters.size() == 1)
        Type(characters.front(), false);
    else if (!characters.isEmpty())
        Paste(committed);
    else
        del();
}

void AmountLineEdit::dropEvent(QDropEvent* event) {
    if (!Guarded()) {
        QLineEdit::dropEvent(event);
        return;
    }
    QDragLeaveEvent leave;
    dragLeaveEvent(&leave);
    // Digits moved about inside their own amount are no amount.
    const bool own = event->source() == this;
    if (!own && Apply(DropText(event->mimeData()->text().toStdString(), Rules(), runtime::Region()), QString()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void AmountLineEdit::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : menu->actions()) {
        if (!numeric_ || !action->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        action->disconnect(this);
        connect(action, &QAction::triggered, this, &AmountLineEdit::PasteClipboard);
    }
    menu->popup(event->globalPos());
}

void AmountLineEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const bool comes_back = lent_focus_ && IsLent(event->reason());
    lent_focus_ = false;
    if (comes_back)
        return;
    selectAll();
    focused_by_press_ = event->reason() == Qt::MouseFocusReason;
}

void AmountLineEdit::focusOutEvent(QFocusEvent* event) {
    lent_focus_ = IsLent(event->reason());
    QLineEdit::focusOutEvent(event);
}

void AmountLineEdit::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    press_at_ = event->pos();
    if (focused_by_press_)
        selectAll();
}

// The press that gave the focus keeps everything selected unless the mouse is drawn over a part of the text.
void AmountLineEdit::mouseMoveEvent(QMouseEvent* event) {
    if (focused_by_press_) {
        if ((event->pos() - press_at_).manhattanLength() < QApplication::startDragDistance())
            return;
        focused_by_press_ = false;
        setCursorPosition(cursorPositionAt(press_at_));
    }
    QLineEdit::mouseMoveEvent(event);
}

void AmountLineEdit::mouseReleaseEvent(QMouseEvent* event) {
    focused_by_press_ = false;
    const QClipboard* clipboard = QApplication::clipboard();
    if (Guarded() && event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        Paste(clipboard->text(QClipboard::Selection));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

}  // namespace ledgix::controls
