#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>

namespace ledgix::shell {

// The multi-document area. Each form stands in a frame of its own; the frame goes when the form is destroyed, and
// closing the frame closes the form.
class DocumentArea : public QMdiArea {
    Q_OBJECT

public:
    explicit DocumentArea(QWidget* parent);

    // Frames a form and shows it. The frame takes over the form and its object name.
    void AddDocument(QWidget& form);
    // Nothing happens for a form without a frame here.
    void RaiseDocument(QWidget& form);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QMdiSubWindow* FrameOf(const QWidget& form) const;
    void Place(QMdiSubWindow& frame) const;
    bool IsTaken(const QMdiSubWindow& frame, const QPoint& corner) const;
    void ChooseBackground();
};

}  // namespace ledgix::shell
