#pragma once

#include <QDialog>

#include "help_file.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace ledgix::shell {

// Shows the topic of this number in the one help window, above `owner`, which may be null. An unknown number shows the
// contents. Without a readable help file nothing happens.
void OpenHelp(int context, QWidget* owner);

// Topics at the left, the one that is read at the right. The search field lists the topics that hold all its words, and
// marks them in the text. Esc closes the window.
class HelpWindow : public QDialog {
    Q_OBJECT

    HelpFile file_;

public:
    explicit HelpWindow(HelpFile file, QWidget* owner = nullptr);

    // The window that is open or was; nullptr before the first.
    static HelpWindow* Instance();

    void ShowTopic(int context);

    // Goes above the modal window that is open, so that it can be used beside it, and back to its owner when that one
    // closes.
    void StayAboveModalWindow();

    QLineEdit* const txtSearch;
    QTreeWidget* const treTopics;
    QLabel* const lblNothing;
    QPushButton* const cmdBack;
    QPushButton* const cmdForward;
    QPushButton* const cmdContents;
    QTextBrowser* const txtTopic;

public slots:
    void txtSearch_Change();
    void txtSearch_Enter();
    void treTopics_Select();
    void txtTopic_Change();
    void cmdContents_Click();

private:
    void LayOut();
    void Connect();
    void ListTopics();
    void SelectTopic();
    void MarkHits();
};

}  // namespace ledgix::shell
