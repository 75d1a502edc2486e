#pragma once

#include <QToolButton>

namespace ledgix::controls {

// A narrow button with the picture of a pocket calculator, drawn in the colours of the palette at any scale.
class CalcButton : public QToolButton {
    Q_OBJECT

public:
    explicit CalcButton(QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ledgix::controls
