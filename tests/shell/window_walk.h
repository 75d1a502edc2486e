#pragma once

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSizeGrip>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionGroupBox>
#include <QToolBar>
#include <cmath>

// Walks a window and all that is in it, and tells what a user would stumble over.
namespace ledgix::test {

inline QString NameOf(const QWidget& widget) {
    return QString("%1 '%2'").arg(widget.metaObject()->className(), widget.objectName());
}

// What is shown in a window, the window itself first. Parts of Qt's own making are left out.
inline QList<QWidget*> ShownIn(QWidget& window) {
    QList<QWidget*> shown{&window};
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->isVisibleTo(&window) && !widget->objectName().startsWith("qt_") &&
            (!widget->isWindow() || widget == &window))
            shown << widget;
    return shown;
}

inline bool TakesKeys(const QWidget& widget) {
    // The pane behind a scroll area's content, and the frame of a document, hold controls and are none.
    const bool pane = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()) != nullptr ||
                      qobject_cast<const QMdiSubWindow*>(&widget) != nullptr || widget.isWindow();
    return widget.focusPolicy() != Qt::NoFocus && widget.isEnabled() && !pane;
}

// Controls that assistive technology would announce without a name.
inline QStringList ControlsWithoutNames(QWidget& window) {
    QStringList faults;
    for (QWidget* widget : ShownIn(window)) {
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        if (TakesKeys(*widget) && (!spoken || spoken->text(QAccessible::Name).trimmed().isEmpty()))
            faults << NameOf(*widget);
    }
    return faults;
}

// Labels that belong to no field.
inline QStringList LabelsWithoutBuddies(QWidget& window) {
    QStringList faults;
    for (QWidget* widget : ShownIn(window))
        if (const auto* label = qobject_cast<const QLabel*>(widget);
            label && !label->text().isEmpty() && !label->buddy())
            faults << NameOf(*widget) + " " + label->text();
    return faults;
}

inline void AddMnemonic(const QString& text, QMap<QString, QStringList>& users) {
    const QString key = QKeySequence::mnemonic(text).toString();
    if (!key.isEmpty())
        users[key] << text;
}

// Keys that two controls of one window, or two items of one menu, answer to.
inline QStringList SharedMnemonics(QWidget& window) {
    QList<QMap<QString, QStringList>> scopes(1);
    for (QWidget* widget : ShownIn(window)) {
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            AddMnemonic(button->text(), scopes[0]);
        if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy())
            AddMnemonic(label->text(), scopes[0]);
        if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            AddMnemonic(group->title(), scopes[0]);
        const auto* bar = qobject_cast<const QMenuBar*>(widget);
        for (const QAction* menu : bar ? bar->actions() : QList<QAction*>()) {
            AddMnemonic(menu->text(), scopes[0]);
            scopes << QMap<QString, QStringList>();
            for (const QAction* item : menu->menu() ? menu->menu()->actions() : QList<QAction*>())
                AddMnemonic(item->text(), scopes.last());
        }
    }
    QStringList faults;
    for (const auto& scope : scopes)
        for (auto users = scope.begin(); users != scope.end(); ++users)
            if (users->size() > 1)
                faults << users.key() + ": " + users->join(" | ");
    return faults;
}

inline bool FitsLabel(const QLabel& label) {
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height();
    return label.sizeHint().width() <= label.width() && label.sizeHint().height() <= label.height();
}

inline bool FitsTitle(const QGroupBox& group) {
    return group.fontMetrics().horizontalAdvance(group.title()) <= group.width();
}

// A line of a field is high enough for its text; its content may be longer than the field is wide.
inline bool FitsLine(const QLineEdit& line) {
    return line.fontMetrics().height() <= line.height();
}

inline bool TextFits(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return FitsLabel(*label);
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return FitsTitle(*group);
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return FitsLine(*line);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text().isEmpty() ||
               (button->sizeHint().width() <= button->width() && button->sizeHint().height() <= button->height());
    return true;
}

// Texts that are cut off, and controls that stand outside what holds them.
inline QStringList CutOffTexts(QWidget& window) {
    QStringList faults;
    for (QWidget* widget : ShownIn(window)) {
        if (!TextFits(*widget))
            faults << QString("%1 is %2x%3, wants %4x%5")
                          .arg(NameOf(*widget))
                          .arg(widget->width())
                          .arg(widget->height())
                          .arg(widget->sizeHint().width())
                          .arg(widget->sizeHint().height());
        const QWidget* holder = widget->parentWidget();
        const bool laid_out = holder && widget != &window && holder->layout() &&
                              holder->layout()->indexOf(widget) >= 0 && !qobject_cast<const QSizeGrip*>(widget);
        if (laid_out && !holder->rect().contains(widget->geometry()))
            faults << NameOf(*widget) + " stands outside " + NameOf(*holder);
    }
    return faults;
}

inline QString Longer(const QString& text) {
    return text + QString(int(std::ceil(double(text.size()) * 0.3)), u'w');
}

// Gives every label, button and title a text 30 % longer, as a translation may have, and lets the layouts settle.
inline void LengthenTexts(QWidget& window) {
    for (QWidget* widget : ShownIn(window)) {
        if (auto* label = qobject_cast<QLabel*>(widget); label && !label->text().isEmpty())
            label->setText(Longer(label->text()));
        else if (auto* button = qobject_cast<QAbstractButton*>(widget); button && !button->text().isEmpty())
            button->setText(Longer(button->text()));
        else if (auto* group = qobject_cast<QGroupBox*>(widget))
            group->setTitle(Longer(group->title()));
    }
    // Each round may move the need for room one level up.
    for (int round = 0; round < 5; ++round) {
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QApplication::processEvents();
    }
}

// Controls that Tab does not reach from the window's first one.
inline QStringList ControlsBeyondTheTabKey(QWidget& window) {
    QSet<QWidget*> reached;
    for (QWidget* next = window.nextInFocusChain(); next && next != &window; next = next->nextInFocusChain())
        if ((next->focusPolicy() & Qt::TabFocus) != 0)
            reached.insert(next);
    QStringList faults;
    for (QWidget* widget : ShownIn(window)) {
        const bool by_proxy = widget->focusProxy() && reached.contains(widget->focusProxy());
        const bool by_mouse_only = TakesKeys(*widget) && !reached.contains(widget) && !by_proxy;
        if (by_mouse_only)
            faults << NameOf(*widget);
    }
    return faults;
}

}  // namespace ledgix::test
