#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "form_windows.h"
#include "main_form.h"

using ledgix::runtime::MessageAnswer;
using ledgix::test::MainForm;

namespace model = ledgix::model;

namespace {

// A form of the multi-document area that counts how often it was closed.
class Document : public QWidget {
public:
    Document(const QString& name, const QSize& size, int* closed = nullptr) : closed_(closed) {
        setObjectName(name);
        setWindowTitle(name);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        auto* pane = new QScrollArea;
        auto* content = new QWidget;
        content->setMinimumSize(size);
        auto* field = new QLineEdit(content);
        field->setObjectName("field");
        pane->setWidget(content);
        column->addWidget(pane);
        size_ = size;
    }
    QSize sizeHint() const override { return size_; }

protected:
    void closeEvent(QCloseEvent* event) override {
        if (closed_)
            ++*closed_;
        QWidget::closeEvent(event);
    }

private:
    int* closed_;
    QSize size_;
};

QList<QMdiSubWindow*> Frames(const MainForm& main) {
    return main.form->area->subWindowList();
}

// The items of the window menu as they stand when it is opened.
QList<QAction*> WindowMenu(const MainForm& main) {
    auto* menu = main.form->findChild<QMenu*>("mnuWindow");
    emit menu->aboutToShow();
    return menu->actions();
}

// The real editors in place of the diary.
class RealEditors {
public:
    explicit RealEditors(MainForm& main) : main_(main), windows_(*main.form) { model::InstallRecordWindows(&windows_); }
    ~RealEditors() {
        model::gProfiles.reset();
        model::InstallRecordWindows(&main_.editors);
    }

private:
    MainForm& main_;
    ledgix::editors::FormWindows windows_;
};

}  // namespace

class tst_frmMainDocuments : public QObject {
    Q_OBJECT

private slots:
    void exitClosesAllAndEndsTheProgram();
    void closingTheWindowClosesEveryForm();
    void documentsAreFramed();
    void framesVanishWithTheirForms();
    void closingAFrameClosesTheForm();
    void framesAreCascaded();
    void documentsLargerThanTheAreaStayInIt();
    void raisingActivatesAndFocuses();
    void theWindowMenuListsTheDocuments();
    void theWindowMenuIsDisabledWithoutDocuments();
    void theWindowMenuArranges();
    void editorsOfProfilesAreDocuments();
    void closingTheFrameOfAnEditorUnloadsIt();
    void deletingAProfileTakesItsFrameAway();
    void exitTakesOpenEditorsWithIt();
};

void tst_frmMainDocuments::exitClosesAllAndEndsTheProgram() {
    MainForm main;
    QVERIFY(main.ShowActive());
    int closed = 0;
    main.form->AddDocument(*new Document("frmProfile", {300, 200}, &closed));
    QWidget preview;
    preview.show();
    QTimer::singleShot(0, main.Action("mnuFileExit"), &QAction::trigger);
    bool stuck = false;
    QTimer::singleShot(20000, qApp, [&] {
        stuck = true;
        QApplication::exit(1);
    });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!stuck);
    QCOMPARE(closed, 1);
    QVERIFY(!main.form->isVisible());
    QVERIFY(!preview.isVisible());
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMainDocuments::closingTheWindowClosesEveryForm() {
    MainForm main;
    QVERIFY(main.ShowActive());
    int closed = 0;
    main.form->AddDocument(*new Document("one", {300, 200}, &closed));
    main.form->AddDocument(*new Document("two", {300, 200}, &closed));
    QVERIFY(main.form->close());
    QCOMPARE(closed, 2);
    QVERIFY(Frames(main).isEmpty());
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMainDocuments::documentsAreFramed() {
    MainForm main;
    QVERIFY(main.ShowActive());
    auto* form = new Document("frmProfile", {300, 200});
    main.form->AddDocument(*form);
    QCOMPARE(Frames(main).size(), 1);
    QMdiSubWindow* frame = Frames(main)[0];
    QCOMPARE(frame->objectName(), "frmProfile");
    QCOMPARE(frame->widget(), form);
    QVERIFY(form->isVisible());
    QVERIFY(frame->testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(form->width() >= 300 && form->height() >= 200);
    QCOMPARE(main.form->area->activeSubWindow(), frame);
    form->setWindowTitle("Archer");
    QCOMPARE(frame->windowTitle(), "Archer");
}

void tst_frmMainDocuments::framesVanishWithTheirForms() {
    MainForm main;
    QVERIFY(main.ShowActive());
    auto* at_once = new Document("one", {300, 200});
    auto* later = new Document("two", {300, 200});
    main.form->AddDocument(*at_once);
    main.form->AddDocument(*later);
    delete at_once;
    QTRY_COMPARE(Frames(main).size(), 1);
    QCOMPARE(Frames(main)[0]->objectName(), "two");
    later->deleteLater();
    QTRY_COMPARE(Frames(main).size(), 0);
    QCOMPARE(main.form->findChildren<QMdiSubWindow*>().size(), 0);
}

void tst_frmMainDocuments::closingAFrameClosesTheForm() {
    MainForm main;
    QVERIFY(main.ShowActive());
    int closed = 0;
    const QPointer<QWidget> form = new Document("frmProfile", {300, 200}, &closed);
    main.form->AddDocument(*form);
    Frames(main)[0]->close();
    QCOMPARE(closed, 1);
    QTRY_VERIFY(!form);
    QCOMPARE(Frames(main).size(), 0);
}

void tst_frmMainDocuments::framesAreCascaded() {
    MainForm main;
    QVERIFY(main.ShowActive());
    QList<QPoint> corners;
    for (int i = 0; i < 5; ++i) {
        auto* form = new Document("frmProfile", {300, 200});
        main.form->AddDocument(*form);
        QMdiSubWindow* frame = Frames(main).last();
        QVERIFY(main.form->area->viewport()->rect().contains(frame->geometry()));
        QVERIFY(!corners.contains(frame->pos()));
        corners << frame->pos();
    }
}

void tst_frmMainDocuments::documentsLargerThanTheAreaStayInIt() {
    MainForm main;
    main.form->resize(800, 500);
    QVERIFY(main.ShowActive());
    main.form->AddDocument(*new Document("frmProfile", {2000, 1500}));
    QVERIFY(main.form->area->viewport()->rect().contains(Frames(main)[0]->geometry()));
    // One that can't be made smaller is scrolled to by the area.
    auto* stiff = new Document("stiff", {2000, 1500});
    stiff->setMinimumSize(1200, 900);
    main.form->AddDocument(*stiff);
    QVERIFY(stiff->width() >= 1200 && stiff->height() >= 900);
    QTRY_VERIFY(main.form->area->horizontalScrollBar()->isVisible());
}

void tst_frmMainDocuments::raisingActivatesAndFocuses() {
    MainForm main;
    QVERIFY(main.ShowActive());
    auto* one = new Document("one", {300, 200});
    auto* two = new Document("two", {300, 200});
    main.form->AddDocument(*one);
    main.form->AddDocument(*two);
    main.form->RaiseDocument(*one);
    QCOMPARE(main.form->area->activeSubWindow()->widget(), one);
    QVERIFY(one->isAncestorOf(QApplication::focusWidget()));
    main.list()->setFocus();
    main.form->RaiseDocument(*one);
    QWidget* focused = QApplication::focusWidget();
    QVERIFY(focused == one || one->isAncestorOf(focused));
    Frames(main)[0]->showMinimized();
    main.form->RaiseDocument(*one);
    QVERIFY(!Frames(main)[0]->isMinimized());
    QWidget stranger;
    main.form->RaiseDocument(stranger);
    QCOMPARE(main.form->area->activeSubWindow()->widget(), one);
}

void tst_frmMainDocuments::theWindowMenuListsTheDocuments() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.form->AddDocument(*new Document("Archer", {300, 200}));
    main.form->AddDocument(*new Document("Cole & Dunn", {300, 200}));
    const QList<QAction*> items = WindowMenu(main);
    QCOMPARE(items.size(), 7);
    QCOMPARE(items[5]->text(), "&1 Archer");
    QCOMPARE(items[6]->text(), "&2 Cole && Dunn");
    QVERIFY(!items[5]->isChecked());
    QVERIFY(items[6]->isChecked());
    items[5]->trigger();
    QCOMPARE(main.form->area->activeSubWindow(), Frames(main)[0]);
    QVERIFY(WindowMenu(main)[5]->isChecked());
}

void tst_frmMainDocuments::theWindowMenuIsDisabledWithoutDocuments() {
    MainForm main;
    QVERIFY(main.ShowActive());
    for (const QAction* item : WindowMenu(main))
        QVERIFY2(item->isSeparator() || !item->isEnabled(), qPrintable(item->text()));
}

void tst_frmMainDocuments::theWindowMenuArranges() {
    MainForm main;
    QVERIFY(main.ShowActive());
    main.form->AddDocument(*new Document("one", {300, 200}));
    main.form->AddDocument(*new Document("two", {300, 200}));
    WindowMenu(main);
    main.Action("mnuWindowTile")->trigger();
    QVERIFY(!Frames(main)[0]->geometry().intersects(Frames(main)[1]->geometry()));
    main.Action("mnuWindowCascade")->trigger();
    QVERIFY(Frames(main)[0]->geometry().intersects(Frames(main)[1]->geometry()));
    main.Action("mnuWindowCloseAll")->trigger();
    QVERIFY(Frames(main).isEmpty());
}

void tst_frmMainDocuments::editorsOfProfilesAreDocuments() {
    MainForm main;
    const RealEditors editors(main);
    QVERIFY(main.ShowActive());
    main.DoubleClick(0);
    QTest::mouseClick(main.form->cmdNew, Qt::LeftButton);
    QCOMPARE(Frames(main).size(), 2);
    QCOMPARE(Frames(main)[0]->objectName(), "frmProfile");
    QCOMPARE(main.form->area->activeSubWindow(), Frames(main)[1]);
    main.DoubleClick(0);
    QCOMPARE(Frames(main).size(), 2);
    QCOMPARE(main.form->area->activeSubWindow(), Frames(main)[0]);
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMainDocuments::closingTheFrameOfAnEditorUnloadsIt() {
    MainForm main;
    const RealEditors editors(main);
    QVERIFY(main.ShowActive());
    main.DoubleClick(0);
    Frames(main)[0]->close();
    QTRY_COMPARE(Frames(main).size(), 0);
    main.DoubleClick(0);
    QTRY_COMPARE(Frames(main).size(), 1);
    QVERIFY(Frames(main)[0]->widget() && Frames(main)[0]->widget()->isVisible());
    QVERIFY(main.messages.messages().empty());
}

void tst_frmMainDocuments::deletingAProfileTakesItsFrameAway() {
    MainForm main;
    const RealEditors editors(main);
    QVERIFY(main.ShowActive());
    main.DoubleClick(0);
    main.DoubleClick(1);
    QCOMPARE(Frames(main).size(), 2);
    main.messages.AnswerNext(MessageAnswer::kYes);
    QTest::mouseClick(main.form->cmdDelete, Qt::LeftButton);
    QTRY_COMPARE(Frames(main).size(), 1);
    QCOMPARE(main.rows().ShownCount(), 2);
}

void tst_frmMainDocuments::exitTakesOpenEditorsWithIt() {
    MainForm main;
    const RealEditors editors(main);
    QVERIFY(main.ShowActive());
    main.DoubleClick(0);
    main.DoubleClick(1);
    main.Action("mnuFileExit")->trigger();
    QVERIFY(!main.form->isVisible());
    QTRY_COMPARE(Frames(main).size(), 0);
    QVERIFY(main.messages.messages().empty());
    QCOMPARE(main.file.Rows("select * from Profiles").size(), 3U);
}

QTEST_MAIN(tst_frmMainDocuments)
#include "tst_frm_main_documents.moc"
