#pragma once

#include <QFrame>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include "zq_tab_dialog.h"

namespace ledgix::test {

// A form with a tab dialog and frames, each with the two fields "<frame>_1" and "<frame>_2".
class Form : public QWidget {
public:
    explicit Form(const QStringList& frames = {"f1", "f2", "f3"}, int width = 301) {
        resize(900, 400);
        tabs = new controls::zqTabDialog(this);
        tabs->setGeometry(0, 0, width, 300);
        tabs->setTabs("A|B|C|");
        for (const QString& name : frames) {
            auto* frame = new QFrame(this);
            frame->setObjectName(name);
            frame->setFrameShape(QFrame::StyledPanel);
            frame->setGeometry(600, 60, 200, 100);
            auto* column = new QVBoxLayout(frame);
            for (const char* number : {"_1", "_2"}) {
                auto* field = new QLineEdit(frame);
                field->setObjectName(name + number);
                column->addWidget(field);
            }
        }
        other = new QLineEdit(this);
        other->setGeometry(600, 300, 200, 30);
    }

    void setFrames() { tabs->setFrames("f1|f2|f3|"); }
    QFrame* frame(const QString& name) const { return findChild<QFrame*>(name); }
    QLineEdit* field(const QString& name) const { return findChild<QLineEdit*>(name); }

    // "f2": the frames that are not hidden.
    QString shown() const {
        QStringList names;
        for (const char* name : {"f1", "f2", "f3"}) {
            if (!frame(name)->isHidden()) {
                names << name;
            }
        }
        return names.join(' ');
    }

    controls::zqTabDialog* tabs;
    QLineEdit* other;
};

inline void ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

}  // namespace ledgix::test
