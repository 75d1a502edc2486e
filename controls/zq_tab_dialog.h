#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

#include "tab_pages.h"
#include "tab_strip.h"
#include "tab_table.h"

class QHelpEvent;
class QShortcut;

namespace ledgix::controls {

// A strip of tabs above a body, which turns frames of the host form into pages. The host form is the window, or the
// document window, that the control stands in. A frame is found by its object name in any case, anywhere on the form;
// a name that nothing has is passed over. A form may lay its frames over the body, or make them children of the
// control and put them into one cell of a layout there: the contents margins leave the strip free.
//
// The user switches by the mouse, by Ctrl+Tab and Ctrl+Shift+Tab in the pages and the strip, and by Left, Right, Home
// and End in the strip. Captions are shown as they are, "&" too. To assistive technology it is a list of page tabs.
class zqTabDialog : public QWidget {
    Q_OBJECT
    // A form file keeps the first four, in this order.
    Q_PROPERTY(QString FramesList READ Frames WRITE setFrames DESIGNABLE false)
    Q_PROPERTY(QString TabsList READ Tabs WRITE setTabs DESIGNABLE false)
    Q_PROPERTY(int FrameTop READ FrameTop WRITE setFrameTop)
    Q_PROPERTY(int FrameLeft READ FrameLeft WRITE setFrameLeft)
    Q_PROPERTY(QString Tabs READ Tabs WRITE setTabs STORED false)
    Q_PROPERTY(QString Frames READ Frames WRITE setFrames STORED false)
    Q_PROPERTY(int CurrentTab READ CurrentTab WRITE setCurrentTab STORED false)
    Q_PROPERTY(bool UserMode READ UserMode WRITE setUserMode DESIGNABLE false STORED false)

public:
    explicit zqTabDialog(QWidget* parent = nullptr);
    ~zqTabDialog() override;

    // Captions of the tabs, and names of their frames: see TabTable. Setting either enables all tabs and makes the
    // first one current; pages stay as they are until the next switch.
    QString Tabs() const;
    void setTabs(const QString& tabs);
    QString Frames() const;
    void setFrames(const QString& frames);

    // Where the current page's frame goes, in twips (15 a pixel) of the frame's parent; -1 and 0 leave it where it is.
    // Error 6 beyond 16 bits.
    int FrameTop() const { return view_.frame_top; }
    void setFrameTop(int top);
    int FrameLeft() const { return view_.frame_left; }
    void setFrameLeft(int left);

    // Counted from 1. A disabled tab is not selected; error 9 for a number that no tab has. Click is not raised.
    int CurrentTab() const { return table_.current_tab(); }
    void setCurrentTab(int tab);

    // The current tab cannot be disabled. Error 9 for a number that no tab has.
    Q_INVOKABLE bool TabEnabled(int iTab) const { return table_.tab(iTab).enabled; }
    Q_INVOKABLE void setTabEnabled(int iTab, bool bValue);

    // False in a form designer, where frames keep their borders. True at first.
    bool UserMode() const { return user_mode_; }
    void setUserMode(bool on) { user_mode_ = on; }

    const TabTable& table() const { return table_; }
    // Place of a tab in the control.
    QRect TabRect(int tab) const;
    // What the user does by a press on a tab: switches, and raises Click. Nothing for a disabled tab and the current
    // one.
    void ChooseTab(int tab);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // The user has switched tabs; the page of CurrentTab is already shown.
    void Click(int iPreviousTab);

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void TableRebuilt();
    void SelectionMoved();
    void ShowCurrentPage();
    void DoStep(QWidget& frame, const PageStep& step) const;
    QWidget* FindFrame(const std::string& name) const;
    void AddShortcuts(QWidget& place);
    void Cycle(int direction);
    void FocusFirstField();
    void SetHovered(int tab);
    bool ShowToolTip(const QHelpEvent& event);

    TabTable table_;
    PageView view_;
    bool user_mode_ = true;
    int hovered_ = 0;
    QList<QPointer<QShortcut>> shortcuts_;  // of the control and of the pages outside it
};

}  // namespace ledgix::controls
