#pragma once

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "regional_settings.h"
#include "zq_text_box.h"

namespace ledgix::test {

using controls::zqTextBox;

inline runtime::RegionalSettings Germany() {
    runtime::RegionalSettings region = runtime::UnitedStates();
    region.decimal_separator = ",";
    region.group_separator = ".";
    region.currency_symbol = "€";
    return region;
}

// A window with one numeric box, another field before it, and the count of the box's changes.
class Form : public QWidget {
public:
    explicit Form(int decimals = 2, bool negative = false)
        : before(new QLineEdit(this)), box(new zqTextBox(this)), changes(box, &zqTextBox::Change) {
        auto* row = new QHBoxLayout(this);
        row->addWidget(before);
        row->addWidget(box);
        box->setIsNumeric(true);
        box->setDecimalPlaces(decimals);
        box->setAllowNegative(negative);
        box->setText("0");
        changes.clear();
    }

    bool ShowActive() {
        show();
        before->setFocus();
        return QTest::qWaitForWindowActive(this);
    }

    QLineEdit* line() const { return box->findChild<QLineEdit*>("TextBox"); }
    QToolButton* button() const { return box->findChild<QToolButton*>("cmdCalc"); }

    void Start(const QString& text) {
        box->setText(text);
        line()->end(false);
        changes.clear();
    }
    void Paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        QTest::keySequence(line(), QKeySequence::Paste);
    }
    bool Drop(const QString& text) {
        QMimeData dragged;
        dragged.setText(text);
        QDragEnterEvent enter(QPoint(4, 4), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(line(), &enter);
        QDropEvent drop(QPointF(4, 4), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        drop.ignore();
        QApplication::sendEvent(line(), &drop);
        return drop.isAccepted();
    }
    void Compose(const QString& preedit, const QString& commit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(line(), &event);
    }
    void Undo() { QTest::keySequence(line(), QKeySequence::Undo); }
    void Redo() { QTest::keySequence(line(), QKeySequence::Redo); }

    QLineEdit* before;
    zqTextBox* box;
    QSignalSpy changes;
};

inline void Press(QWidget* line, const QString& keys) {
    for (const QChar key : keys) {
        if (key == u'\b')
            QTest::keyClick(line, Qt::Key_Backspace);
        else
            QTest::keyClick(line, key.toLatin1());
    }
}

}  // namespace ledgix::test
