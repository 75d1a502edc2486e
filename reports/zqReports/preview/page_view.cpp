#include "page_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "text_places.h"
#include "zoom_steps.h"

namespace ledgix::preview {

namespace {

constexpr int kLine = 48;  // pixels that an arrow key scrolls
constexpr int kWheelStep = 120;
constexpr int kShadow = 6;

// A little darker than the window's ground, so that sheets stand out in light and in dark colours.
QColor DeskColour(const QPalette& palette) {
    return palette.color(QPalette::Window).darker(118);
}

void DrawShadow(QPainter& painter, const QRect& sheet) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = kShadow; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 4 + 2 * (kShadow - i)));
        painter.drawRoundedRect(sheet.adjusted(-i, -i + 2, i, i + 2), i, i);
    }
    painter.restore();
}

}  // namespace

PageView::PageView(const zq::Document& document, QWidget* parent)
    : QAbstractScrollArea(parent),
      document_(document),
      text_(document),
      marks_(document, text_),
      flow_(static_cast<int>(document.pages.size()), QSizeF(document.page_width, document.page_height)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(kLine);
    horizontalScrollBar()->setSingleStep(kLine);
    verticalScrollBar()->setAccessibleName("Up and down");
    horizontalScrollBar()->setAccessibleName("Left and right");
    setAccessibleName("Pages of the report");
    flow_.Arrange(PaperScale(), QSize());
    LookAt(0);
}

QSize PageView::sizeHint() const {
    PageFlow paper = flow_;
    paper.Arrange(PaperScale(), QSize());
    const int bar = verticalScrollBar()->sizeHint().width();
    return {paper.Size().width() + bar, paper.Page(0).bottom() + paper.Page(0).top()};
}

QSize PageView::Room() const {
    return maximumViewportSize() - QSize(verticalScrollBar()->sizeHint().width(), 0);
}

QRect PageView::ShownPart() const {
    return {QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value()), viewport()->size()};
}

QRect PageView::PlaceOfPage(int page) const {
    return flow_.Page(page).translated(-ShownPart().topLeft());
}

void PageView::SetZoom(double zoom) {
    Zoom(zoom, viewport()->rect().center());
}

void PageView::Zoom(double zoom, QPoint anchor) {
    fit_ = Fit::kNone;
    Rearrange(std::clamp(zoom, kLeastZoom, kMostZoom) * PaperScale(), anchor);
}

void PageView::SetFit(Fit fit) {
    fit_ = fit;
    const int page = page_;
    FitAgain();
    if (fit == Fit::kPage)
        GoToPage(page);
}

void PageView::FitAgain() {
    const double width = flow_.ToFitWidth(Room());
    const double scale = fit_ == Fit::kNone    ? flow_.scale()
                         : fit_ == Fit::kPaper ? std::min(width, PaperScale())
                         : fit_ == Fit::kWidth ? width
                                               : flow_.ToFitPage(Room());
    Rearrange(scale, QPoint(viewport()->width() / 2, 0));
}

// What lies at the anchor, a place in the viewport, stays there. The room around a page has one size at all scales.
void PageView::Rearrange(double scale, QPoint anchor) {
    const int page = std::max(page_, 0);
    const QRect before = PlaceOfPage(page);
    const QPoint held(std::clamp(anchor.x(), before.left(), before.right()),
                      std::clamp(anchor.y(), before.top(), before.bottom()));
    const QPointF point = QPointF(held - before.topLeft()) / flow_.scale();
    if (scale != flow_.scale())
        fonts_.clear();
    flow_.Arrange(scale, viewport()->size());
    UpdateScrollBars();
    const QPoint corner = flow_.Page(page).topLeft() + (point * scale).toPoint() - held;
    horizontalScrollBar()->setValue(corner.x());
    verticalScrollBar()->setValue(corner.y());
    LookAt(flow_.Foremost(ShownPart()));
    viewport()->update();
    emit ZoomChanged();
}

void PageView::UpdateScrollBars() {
    const QSize shown = viewport()->size();
    const QSize hidden = flow_.Size() - shown;
    verticalScrollBar()->setPageStep(shown.height());
    verticalScrollBar()->setRange(0, hidden.height());
    horizontalScrollBar()->setPageStep(shown.width());
    horizontalScrollBar()->setRange(0, hidden.width());
}

void PageView::GoToPage(int page) {
    page = std::clamp(page, 0, Pages() - 1);
    verticalScrollBar()->setValue(flow_.Page(page).top() - flow_.Page(0).top());
    LookAt(page);
}

void PageView::LookAt(int page) {
    if (page == page_)
        return;
    page_ = page;
    setAccessibleDescription(text_.PageText(page));
    emit PageChanged();
}

void PageView::scrollContentsBy(int, int) {
    LookAt(flow_.Foremost(ShownPart()));
    viewport()->update();
}

void PageView::resizeEvent(QResizeEvent*) {
    FitAgain();
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    wheel_ += event->angleDelta().y();
    for (; std::abs(wheel_) >= kWheelStep; wheel_ -= wheel_ > 0 ? kWheelStep : -kWheelStep)
        Zoom(wheel_ > 0 ? NextZoom(Zoom()) : PreviousZoom(Zoom()), event->position().toPoint());
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    const bool whole = flow_.Page(0).height() <= viewport()->height();
    if (event->matches(QKeySequence::MoveToStartOfLine) || event->matches(QKeySequence::MoveToStartOfDocument))
        GoToPage(0);
    else if (event->matches(QKeySequence::MoveToEndOfLine) || event->matches(QKeySequence::MoveToEndOfDocument))
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    else if (whole && event->key() == Qt::Key_PageDown)
        GoToPage(page_ + 1);
    else if (whole && event->key() == Qt::Key_PageUp)
        GoToPage(page_ - 1);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void PageView::ShowHits(std::vector<TextRange> hits, int current) {
    marks_.SetHits(std::move(hits), current);
    BringIntoView(marks_.CurrentPlace());
    viewport()->update();
}

// Where it cannot be seen, it comes to the middle.
void PageView::BringIntoView(const TextMarks::Place& place) {
    if (place.page < 0)
        return;
    const QRectF seen = QRectF(PlaceOfPage(place.page).topLeft() + place.place.topLeft() * flow_.scale(),
                               place.place.size() * flow_.scale());
    if (QRectF(viewport()->rect()).contains(seen))
        return;
    const QPoint away = (seen.center() - QRectF(viewport()->rect()).center()).toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + away.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + away.y());
}

QString PageView::SelectedText() const {
    return text_.text().mid(marks_.selection().start, marks_.selection().length);
}

void PageView::Select(TextRange range) {
    marks_.SetSelection(range);
    viewport()->update();
    emit SelectionChanged();
}

void PageView::SelectAll() {
    Select({0, text_.text().size()});
}

void PageView::Copy() {
    if (marks_.selection().length > 0)
        QGuiApplication::clipboard()->setText(SelectedText());
}

int PageView::PageNear(QPoint place) const {
    int page = 0;
    while (page + 1 < Pages() && PlaceOfPage(page + 1).top() <= place.y())
        ++page;
    return page;
}

QPointF PageView::OnPage(int page, QPoint place) const {
    return QPointF(place - PlaceOfPage(page).topLeft()) / flow_.scale();
}

qsizetype PageView::PositionAt(QPoint place) const {
    const int page = PageNear(place);
    const TextSpot spot = SpotAt(document_, page, OnPage(page, place));
    return spot.character < 0 ? 0 : text_.Position(page, spot.index, spot.character);
}

void PageView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (!event->modifiers().testFlag(Qt::ShiftModifier))
        selected_from_ = PositionAt(event->pos());
    const qsizetype to = PositionAt(event->pos());
    Select({std::min(selected_from_, to), std::abs(to - selected_from_)});
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->pos();
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        const int page = PageNear(place);
        viewport()->setCursor(IsOnText(document_, page, OnPage(page, place)) ? Qt::IBeamCursor : Qt::ArrowCursor);
        return;
    }
    const QRect inside = viewport()->rect();
    const int beyond = place.y() - std::clamp(place.y(), inside.top(), inside.bottom());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
    const qsizetype to = PositionAt(place);
    Select({std::min(selected_from_, to), std::abs(to - selected_from_)});
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const TextRange word = text_.WordAt(PositionAt(event->pos()));
    selected_from_ = word.start;
    Select(word);
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), DeskColour(palette()));
    const QPoint shown = ShownPart().topLeft();
    const PageFlow::Range pages = flow_.Visible(event->rect().translated(shown).adjusted(0, -kShadow, 0, kShadow));
    for (int page = pages.first; page <= pages.last; ++page)
        DrawSheet(painter, PlaceOfPage(page), page);
}

void PageView::DrawSheet(QPainter& painter, const QRect& sheet, int page) {
    DrawShadow(painter, sheet);
    painter.fillRect(sheet, Qt::white);  // paper, whatever the colours of the screen
    painter.save();
    painter.setClipRect(sheet.intersected(viewport()->rect()));
    painter.translate(sheet.topLeft());
    painter.scale(flow_.scale(), flow_.scale());
    zq::PaintPage(painter, document_, document_.pages[static_cast<std::size_t>(page)], &fonts_);
    marks_.Paint(painter, page, palette());
    painter.restore();
}

}  // namespace ledgix::preview
