#pragma once

#include <QWidget>

namespace ledgix::shell {

// A line of text that is cut in its middle where room is short, and then tells itself in a tool tip. Assistive
// technology knows the text as the widget's name.
class ElidedText : public QWidget {
    Q_OBJECT

public:
    explicit ElidedText(QWidget* parent);

    const QString& text() const { return text_; }
    void setText(const QString& text);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QString text_;
};

}  // namespace ledgix::shell
