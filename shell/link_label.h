#pragma once

#include <QLabel>

namespace ledgix::shell {

// A caption that is clicked like a link: by the mouse, or by Enter or the space bar when it has the focus. Assistive
// technology knows it as a link.
class LinkLabel : public QLabel {
    Q_OBJECT

public:
    // Pixels between the caption and the frame that shows the focus.
    static constexpr int kFocusMargin = 3;

    explicit LinkLabel(const QString& caption, QWidget* parent = nullptr);

signals:
    void clicked();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool pressed_ = false;
};

}  // namespace ledgix::shell
