#include <QAccessible>
#include <QMenu>
#include <QRandomGenerator>
#include <QRegularExpression>

#include "numeric_form.h"

using ledgix::test::Form;
using ledgix::test::Germany;
using ledgix::test::Press;
namespace runtime = ledgix::runtime;

class tst_zqTextBoxEdits : public QObject {
    Q_OBJECT

private slots:
    void init() { runtime::InstallRegion(runtime::UnitedStates()); }

    void paste_data();
    void paste();
    void pasteFromTheContextMenuIsReadAlike();
    void pasteAtACaretInsertsDigits();
    void dropReplacesTheAmount();
    void dropOfOtherTextIsRefused();
    void inputMethodCommitsAnAmount();
    void inputMethodNonsenseLeavesTheAmount();
    void freeTextComposesFreely();
    void undoTakesBackACleanedKey();
    void undoTakesBackAPaste();
    void undoAndRedoWalkThroughBackspaces();
    void everyUndoLeavesANumber();
    void cutLeavesZero();
    void lockedBoxRefusesEverything();
    void maxLengthRefusesRatherThanCuts();
    void accessibleValueIsReadLikeAPaste();
    void anyKeysAndPastesLeaveANumber_data();
    void anyKeysAndPastesLeaveANumber();
};

void tst_zqTextBoxEdits::paste_data() {
    QTest::addColumn<bool>("german");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::newRow("grouped") << false << "1,234.50"
                             << "1234.50";
    QTest::newRow("grouped the other way") << false << "1.234,50"
                                           << "1234.50";
    QTest::newRow("currency") << false << "$1,234.50"
                              << "1234.50";
    QTest::newRow("narrow blank") << false << "1\u202F234.50"
                                  << "1234.50";
    QTest::newRow("group only") << false << "1,234"
                                << "1234";
    QTest::newRow("ambiguous") << false << "12,34"
                               << "99";
    QTest::newRow("word") << false << "apple"
                          << "99";
    QTest::newRow("nothing") << false << ""
                             << "99";
    QTest::newRow("minus is dropped") << false << "-5"
                                      << "5";
    QTest::newRow("parentheses") << false << "(5)"
                                 << "99";
    QTest::newRow("German") << true << "1.234,50 €"
                            << "1234.50";
    QTest::newRow("German group only") << true << "1.234"
                                       << "1234";
    QTest::newRow("German ambiguous") << true << "12.34"
                                      << "99";
}

void tst_zqTextBoxEdits::paste() {
    QFETCH(bool, german);
    QFETCH(QString, pasted);
    QFETCH(QString, text);
    if (german)
        runtime::InstallRegion(Germany());
    Form form;
    form.Start("99");
    form.line()->selectAll();
    form.Paste(pasted);
    QCOMPARE(form.box->Text(), text);
    QCOMPARE(form.changes.count(), text == "99" ? 0 : 1);
}

void tst_zqTextBoxEdits::pasteFromTheContextMenuIsReadAlike() {
    Form form;
    QVERIFY(form.ShowActive());
    QApplication::clipboard()->setText("$1,234.50");
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(3, 3), form.line()->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(form.line(), &asked);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    for (QAction* action : menu->actions())
        if (action->text().startsWith("&Paste"))
            action->trigger();
    menu->close();
    QCOMPARE(form.box->Text(), "1234.50");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::pasteAtACaretInsertsDigits() {
    Form form;
    form.Start("15");
    form.line()->setCursorPosition(1);
    form.Paste("23");
    QCOMPARE(form.box->Text(), "1235");
    form.Paste("1,234");
    QCOMPARE(form.box->Text(), "1235");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::dropReplacesTheAmount() {
    Form form;
    form.Start("15");
    QVERIFY(form.Drop("1,234.50"));
    QCOMPARE(form.box->Text(), "1234.50");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::dropOfOtherTextIsRefused() {
    Form form;
    form.Start("15");
    QVERIFY(!form.Drop("12,34"));
    QCOMPARE(form.box->Text(), "15");
    QCOMPARE(form.changes.count(), 0);
}

void tst_zqTextBoxEdits::inputMethodCommitsAnAmount() {
    Form form;
    form.Start("99");
    form.line()->selectAll();
    form.Compose("12");
    QCOMPARE(form.box->Text(), "99");
    form.Compose("", "\uFF11\uFF12.5");
    QCOMPARE(form.box->Text(), "12.5");
    form.Compose("", "7");
    QCOMPARE(form.box->Text(), "12.57");
    QCOMPARE(form.changes.count(), 2);
}

void tst_zqTextBoxEdits::inputMethodNonsenseLeavesTheAmount() {
    Form form;
    form.Start("99");
    form.line()->selectAll();
    form.Compose("ni");
    form.Compose("", "你好");
    QCOMPARE(form.box->Text(), "99");
    QCOMPARE(form.line()->text(), "99");
    QCOMPARE(form.changes.count(), 0);
}

void tst_zqTextBoxEdits::freeTextComposesFreely() {
    Form form;
    form.box->setIsNumeric(false);
    form.Start("");
    form.Compose("", "你好");
    QCOMPARE(form.box->Text(), "你好");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::undoTakesBackACleanedKey() {
    Form form;
    Press(form.line(), "7");
    form.Undo();
    QCOMPARE(form.box->Text(), "0");
    form.Redo();
    QCOMPARE(form.box->Text(), "7");
    QCOMPARE(form.changes.count(), 3);
}

void tst_zqTextBoxEdits::undoTakesBackAPaste() {
    Form form;
    form.Start("15");
    form.line()->selectAll();
    form.Paste("$1,234.50");
    form.Undo();
    QCOMPARE(form.box->Text(), "15");
    form.Redo();
    QCOMPARE(form.box->Text(), "1234.50");
}

void tst_zqTextBoxEdits::undoAndRedoWalkThroughBackspaces() {
    Form form;
    form.Start("12");
    Press(form.line(), "\b\b");
    QCOMPARE(form.box->Text(), "0");
    form.Undo();
    QCOMPARE(form.box->Text(), "12");
    form.Redo();
    QCOMPARE(form.box->Text(), "0");
}

void tst_zqTextBoxEdits::everyUndoLeavesANumber() {
    Form form(2, true);
    Press(form.line(), "5-12.345\b\b\b\b\b\b8.x-\b\b07");
    const QString last = form.box->Text();
    QStringList seen;
    while (form.line()->isUndoAvailable() && seen.size() < 100) {
        form.Undo();
        seen << form.box->Text();
        QVERIFY2(QRegularExpression("^-?\\d*\\.?\\d{0,2}$").match(seen.last()).hasMatch(), qPrintable(seen.last()));
    }
    QCOMPARE(seen.last(), "0");
    while (form.line()->isRedoAvailable())
        form.Redo();
    QCOMPARE(form.box->Text(), last);
}

void tst_zqTextBoxEdits::cutLeavesZero() {
    Form form;
    form.Start("12");
    form.line()->selectAll();
    QTest::keySequence(form.line(), QKeySequence::Cut);
    QCOMPARE(form.box->Text(), "0");
    QCOMPARE(QApplication::clipboard()->text(), "12");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::lockedBoxRefusesEverything() {
    Form form;
    form.Start("12");
    form.box->setLocked(true);
    Press(form.line(), "3\b");
    form.Paste("4");
    QVERIFY(!form.Drop("5"));
    QCOMPARE(form.box->Text(), "12");
    QCOMPARE(form.changes.count(), 0);
}

void tst_zqTextBoxEdits::maxLengthRefusesRatherThanCuts() {
    Form form;
    form.box->setMaxLength(4);
    Press(form.line(), "123456");
    QCOMPARE(form.box->Text(), "1234");
    form.line()->selectAll();
    form.Paste("98765");
    QCOMPARE(form.box->Text(), "1234");
}

void tst_zqTextBoxEdits::accessibleValueIsReadLikeAPaste() {
    Form form;
    form.Start("12");
    QAccessibleInterface* line = QAccessible::queryAccessibleInterface(form.line());
    line->setText(QAccessible::Value, "1,234.50");
    QCOMPARE(form.box->Text(), "1234.50");
    line->setText(QAccessible::Value, "apple");
    QCOMPARE(form.box->Text(), "1234.50");
    QCOMPARE(form.line()->text(), "1234.50");
    QCOMPARE(form.changes.count(), 1);
}

void tst_zqTextBoxEdits::anyKeysAndPastesLeaveANumber_data() {
    QTest::addColumn<bool>("german");
    QTest::newRow("point") << false;
    QTest::newRow("comma") << true;
}

// Random edits from fixed seeds; after each one the text is a number of the allowed form and the screen shows it.
void tst_zqTextBoxEdits::anyKeysAndPastesLeaveANumber() {
    QFETCH(bool, german);
    if (german)
        runtime::InstallRegion(Germany());
    constexpr quint32 kSeed = 4711;
    QRandomGenerator random(kSeed);
    const QRegularExpression number("^-?\\d*\\.?\\d{0,2}$");
    const QString characters = "01234567890123456789.,.,-\b\b x$()";
    Form form(2, true);
    for (int step = 0; step < 1500; ++step) {
        QString some;
        for (int i = random.bounded(8); i > 0; --i)
            some += characters[random.bounded(int(characters.size()))];
        switch (random.bounded(8)) {
            case 0:
                form.line()->setCursorPosition(random.bounded(int(form.line()->text().size()) + 1));
                break;
            case 1:
                form.line()->selectAll();
                break;
            case 2:
                form.Paste(some);
                break;
            case 3:
                form.Undo();
                break;
            case 4:
                form.Redo();
                break;
            case 5:
                form.Compose("", some);
                break;
            case 6:
                form.line()->insert(some);
                break;
            default:
                Press(form.line(), some);
        }
        const QString text = form.box->Text();
        QVERIFY2(!text.isEmpty() && number.match(text).hasMatch(),
                 qPrintable(QString("seed %1, step %2: %3").arg(kSeed).arg(step).arg(text)));
        QCOMPARE(form.line()->text(), german ? QString(text).replace('.', ',') : text);
        QCOMPARE(form.box->Value(), text.toDouble());
        if (text.size() > 12)
            form.Start("0");
    }
}

QTEST_MAIN(tst_zqTextBoxEdits)
#include "tst_zq_text_box_edits.moc"
