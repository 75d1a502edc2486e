#pragma once

#include <QAccessible>
#include <QScrollBar>
#include <QWidget>
#include <optional>

#include "profile_rows.h"

namespace ledgix::shell {

// The scroll bar of the profile list. Its range and its steps are twips; its slider is as long as the panel's share of
// the list.
class PanelScrollBar : public QScrollBar {
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

protected:
    void initStyleOption(QStyleOptionSlider* option) const override;
};

// The panel that draws the rows of the saved profiles. It shows rows as selected and underlined when it is told to, and
// says what the user did with them; only what lies in the panel is drawn, so the list may be of any length.
class ProfileList : public QWidget {
    Q_OBJECT

public:
    // The scroll bar stays the caller's and must outlive the list.
    ProfileList(QScrollBar& scroll_bar, QWidget* parent);

    const ProfileRows& rows() const { return rows_; }

    // Rebuilds the rows and scrolls to the top. No collection is an empty one.
    void LoadProfiles(const model::clsProfiles* profiles);
    void SelectProfile(int index);
    void DeSelectProfile(int index);
    void Underline(int index);
    void Unhighlight(int index);

    // The panel's height in twips; the widget's own is this in whole pixels.
    void SetPanelHeight(int twips);
    // Sets the scroll bar to the rows and the panel, and shows or hides it.
    void UpdateScrollBar();
    // Moves the rows to where the scroll bar stands.
    void FollowScrollBar();
    // Scrolls no further than needed to see a row.
    void ShowRow(int index);

    // The row that the keyboard acts on: the selected one, or else the one last selected. -1 in an empty list.
    int CurrentRow() const;
    // The pixels of a row in the panel, also where it lies outside.
    QRect RowRect(int index) const;
    // The shown row at a pixel of the panel.
    std::optional<int> RowAt(const QPoint& position) const;

    QSize sizeHint() const override;

signals:
    void RowMouseMove(int index);
    // The mouse is on none of the rows.
    void PanelMouseMove();
    // Also for a row that the keyboard moves to.
    void RowClick(int index);
    // Also for Enter.
    void RowDblClick(int index);
    void DeleteAsked();
    void ScrollBarShown(bool shown);

protected:
    // Tells assistive technology of a change of a row; -1 stands for the list.
    virtual void Tell(QAccessible::Event what, int row);

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    int RowHeight() const;
    void TellMouseMove(const QPoint& position);
    void TellFocus();
    std::optional<int> RowOfKey(int key) const;
    QRect TextRect(const QRect& row) const;
    bool ShowWholeName(const QPoint& position, const QPoint& global);
    void PaintRow(QPainter& painter, int index) const;
    void PaintHint(QPainter& painter) const;

    QScrollBar& scroll_bar_;
    ProfileRows rows_;
    int last_row_ = 0;
    std::optional<int> pressed_row_;
    std::optional<QPoint> mouse_;  // while it is in the panel
};

}  // namespace ledgix::shell
