#include "window_walk.h"

#include <QFormLayout>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace ledgix::test;

// The walk itself: what it must find, and what it must let pass.
class tst_WindowWalk : public QObject {
    Q_OBJECT

private slots:
    void findsControlsWithoutAName() {
        QWidget window;
        auto* column = new QVBoxLayout(&window);
        auto* field = new QLineEdit;
        field->setObjectName("txtName");
        column->addWidget(field);
        column->addWidget(new QPushButton("Close"));
        QCOMPARE(ControlsWithoutNames(window), QStringList{"QLineEdit 'txtName'"});
        field->setAccessibleName("Name");
        QCOMPARE(ControlsWithoutNames(window), QStringList());
    }

    void findsLabelsWithoutABuddy() {
        QWidget window;
        auto* form = new QFormLayout(&window);
        auto* lonely = new QLabel("Price");
        form->addRow(lonely, new QLabel());
        form->addRow("Rent", new QLineEdit);
        QCOMPARE(LabelsWithoutBuddies(window), QStringList{"QLabel '' Price"});
    }

    void findsMnemonicsThatAreShared() {
        QWidget window;
        auto* column = new QVBoxLayout(&window);
        column->addWidget(new QPushButton("&Save"));
        column->addWidget(new QPushButton("&Cancel"));
        QCOMPARE(SharedMnemonics(window), QStringList());
        column->addWidget(new QPushButton("&Search"));
        QCOMPARE(SharedMnemonics(window), QStringList{"Alt+S: &Save | &Search"});
    }

    void findsTextsThatAreCutOff() {
        QWidget window;
        auto* label = new QLabel("A caption that is rather long", &window);
        label->setObjectName("lbl");
        label->resize(label->sizeHint());
        window.show();
        QCOMPARE(CutOffTexts(window), QStringList());
        label->resize(30, label->height());
        QCOMPARE(CutOffTexts(window).size(), 1);
        QVERIFY(CutOffTexts(window)[0].startsWith("QLabel 'lbl' is 30x"));
    }

    void lengthensTexts() {
        QWidget window;
        auto* row = new QHBoxLayout(&window);
        auto* button = new QPushButton("Close it");
        row->addWidget(button);
        window.show();
        LengthenTexts(window);
        QCOMPARE(button->text(), "Close itwww");
        QCOMPARE(CutOffTexts(window), QStringList());
    }

    void findsControlsThatTabDoesNotReach() {
        QWidget window;
        auto* column = new QVBoxLayout(&window);
        column->addWidget(new QLineEdit);
        auto* mouse_only = new QLineEdit;
        mouse_only->setObjectName("txtMouse");
        mouse_only->setFocusPolicy(Qt::ClickFocus);
        column->addWidget(mouse_only);
        QCOMPARE(ControlsBeyondTheTabKey(window), QStringList{"QLineEdit 'txtMouse'"});
    }
};

QTEST_MAIN(tst_WindowWalk)
#include "tst_window_walk.moc"
