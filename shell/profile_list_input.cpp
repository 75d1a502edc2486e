// What the mouse and the keyboard do in the profile list.

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "profile_list.h"

namespace ledgix::shell {

void ProfileList::TellMouseMove(const QPoint& position) {
    if (const std::optional<int> row = RowAt(position))
        emit RowMouseMove(*row);
    else
        emit PanelMouseMove();
}

void ProfileList::mouseMoveEvent(QMouseEvent* event) {
    mouse_ = event->position().toPoint();
    TellMouseMove(*mouse_);
}

void ProfileList::leaveEvent(QEvent*) {
    mouse_.reset();
    emit PanelMouseMove();
}

void ProfileList::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pressed_row_ = RowAt(event->position().toPoint());
}

void ProfileList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<int> pressed = std::exchange(pressed_row_, std::nullopt);
    if (pressed && RowAt(event->position().toPoint()) == pressed)
        emit RowClick(*pressed);
}

void ProfileList::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    pressed_row_.reset();
    if (const std::optional<int> row = RowAt(event->position().toPoint()))
        emit RowDblClick(*row);
}

void ProfileList::wheelEvent(QWheelEvent* event) {
    if (scroll_bar_.isVisible())
        QApplication::sendEvent(&scroll_bar_, event);
    else
        event->ignore();
}

void ProfileList::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (CurrentRow() >= 0 && event->reason() != Qt::MouseFocusReason)
        ShowRow(CurrentRow());
    TellFocus();
    update();
}

void ProfileList::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

std::optional<int> ProfileList::RowOfKey(int key) const {
    const int current = CurrentRow();
    const bool selected = rows_.iSelectMenu() >= 0;
    switch (key) {
        case Qt::Key_Up:
            return selected ? current - 1 : current;
        case Qt::Key_Down:
            return selected ? current + 1 : current;
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return rows_.ShownCount() - 1;
        case Qt::Key_PageUp:
            return current - rows_.RowsPerPage();
        case Qt::Key_PageDown:
            return current + rows_.RowsPerPage();
        case Qt::Key_Space:
            return current;
        default:
            return std::nullopt;
    }
}

void ProfileList::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const std::optional<int> target = RowOfKey(event->key());
    if (!plain || rows_.ShownCount() == 0 || !(opens || target || event->key() == Qt::Key_Delete)) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (opens) {
        emit RowDblClick(CurrentRow());
    } else if (event->key() == Qt::Key_Delete) {
        emit DeleteAsked();
    } else {
        const int row = std::clamp(*target, 0, rows_.ShownCount() - 1);
        emit RowClick(row);
        ShowRow(row);
    }
}

}  // namespace ledgix::shell
