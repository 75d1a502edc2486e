#pragma once

#include <QPixmap>
#include <QWidget>

#include "chart_sheet.h"

namespace ledgix::preview {

// The font that charts are drawn in, its size in pixels.
QFont ChartFont(const QFont& font);

// Draws a chart in its palette's colours and as large as it is. Where charts cannot be drawn, it says so.
class ChartView : public QWidget {
    Q_OBJECT

public:
    ChartView(chart::Sheet sheet, const QString& description, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void DrawPicture();

    chart::Sheet sheet_;
    QPixmap picture_;  // null when it has to be drawn anew
};

}  // namespace ledgix::preview
