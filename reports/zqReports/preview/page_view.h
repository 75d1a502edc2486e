#pragma once

#include <QAbstractScrollArea>

#include <vector>

#include "document.h"
#include "document_text.h"
#include "page_flow.h"
#include "page_painter.h"
#include "text_marks.h"

namespace ledgix::preview {

// The pages of a report on a desk, to be scrolled and zoomed, with texts to be found and selected. Zoom 1 is the size
// on paper, pages count from 0.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    // A fit holds while the window changes its size. kPaper is the width, but not larger than on paper.
    enum class Fit { kNone, kPaper, kWidth, kPage };

    // The document lives longer than the view.
    PageView(const zq::Document& document, QWidget* parent);

    double Zoom() const { return flow_.scale() / PaperScale(); }
    void SetZoom(double zoom);
    Fit FitMode() const { return fit_; }
    void SetFit(Fit fit);

    int Pages() const { return flow_.pages(); }
    // The page that is looked at.
    int Page() const { return page_; }
    void GoToPage(int page);

    // Where a page lies in the viewport, in its pixels.
    QRect PlaceOfPage(int page) const;

    const DocumentText& Text() const { return text_; }
    // Marks the hits and brings the current one into view; -1 is none.
    void ShowHits(std::vector<TextRange> hits, int current);
    const TextMarks& Marks() const { return marks_; }

    QString SelectedText() const;
    void Select(TextRange range);

    QSize sizeHint() const override;

public slots:
    void SelectAll();
    // Puts the selected text, if any, on the clipboard.
    void Copy();

signals:
    void PageChanged();
    void ZoomChanged();
    void SelectionChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // Pixels to a point at zoom 1.
    double PaperScale() const { return logicalDpiX() / 72.0; }
    // What the pages can take when the scroll bar stands beside them.
    QSize Room() const;
    QRect ShownPart() const;
    void Zoom(double zoom, QPoint anchor);
    void Rearrange(double scale, QPoint anchor);
    void FitAgain();
    void UpdateScrollBars();
    void LookAt(int page);
    int PageNear(QPoint place) const;
    QPointF OnPage(int page, QPoint place) const;
    qsizetype PositionAt(QPoint place) const;
    void BringIntoView(const TextMarks::Place& place);
    void DrawSheet(QPainter& painter, const QRect& sheet, int page);

    const zq::Document& document_;
    DocumentText text_;
    TextMarks marks_;
    PageFlow flow_;
    zq::GlyphFonts fonts_;  // of the scale in force
    Fit fit_ = Fit::kPaper;
    int page_ = -1;
    qsizetype selected_from_ = 0;
    int wheel_ = 0;  // turns that have not yet made a step
};

}  // namespace ledgix::preview
