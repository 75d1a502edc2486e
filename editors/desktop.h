#pragma once

class QWidget;

namespace ledgix::editors {

// What the editors ask of the main window.
class Desktop {
public:
    virtual ~Desktop() = default;

    // Frames a form as a window of the multi-document area and shows it. The frame goes when the form is destroyed.
    virtual void AddDocument(QWidget& form) = 0;
    // Brings the frame of such a form to the front and gives it the focus.
    virtual void RaiseDocument(QWidget& form) = 0;

    // Rebuilds the list of profiles, and shows its selection again.
    virtual void ReloadProfileList() = 0;

    // Opens the help at a topic of help_topics.h.
    virtual void ShowHelpTopic(int context) = 0;

    // The parent of dialogs. May be null.
    virtual QWidget* Owner() = 0;
};

}  // namespace ledgix::editors
