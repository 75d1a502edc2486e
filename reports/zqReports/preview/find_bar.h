#pragma once

#include <QToolBar>

class QLabel;
class QLineEdit;

namespace ledgix::preview {

class PageView;

// Finds a text in the pages of a view as it is typed. Enter and F3 go on to the next place, with Shift to the one
// before; behind the last comes the first. Esc puts the bar away.
class FindBar : public QToolBar {
    Q_OBJECT

public:
    // The view lives as long as the bar.
    FindBar(PageView* view, QWidget* parent);

    QLineEdit* txtFind;
    QAction* cmdFindPrevious;
    QAction* cmdFindNext;
    QLabel* lblHits;  // "3 of 7"

public slots:
    // Shows the bar, with the selected text if it is of one line.
    void Begin();
    // Hides it, and its marks.
    void End();
    void txtFind_Change();
    void cmdFindNext_Click();
    void cmdFindPrevious_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* AddStep(const char* name, const char* help, const QKeySequence& key, Qt::ArrowType arrow);
    void Step(int by);
    void ShowHits(int current);

    PageView* view_;
};

}  // namespace ledgix::preview
