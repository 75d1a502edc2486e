#include "tab_strip_painter.h"

#include <QFontMetrics>
#include <QPainter>

namespace ledgix::controls {

namespace {

constexpr int kCaptionMargin = 8;
constexpr int kUnselectedTop = 2;
constexpr int kAccentHeight = 2;
constexpr int kFocusInset = 3;
constexpr int kCaptionHeight = kTabStripHeight - 2 * kUnselectedTop;

QColor Mixed(const QColor& first, const QColor& second, double share_of_second) {
    const auto mix = [share_of_second](int a, int b) { return qRound(a + (b - a) * share_of_second); };
    return QColor(mix(first.red(), second.red()), mix(first.green(), second.green()), mix(first.blue(), second.blue()));
}

// The control's font, made smaller where it would not fit the strip.
QFont CaptionFont(const QWidget& control) {
    QFont font = control.font();
    for (int size = QFontInfo(font).pixelSize(); size > 1 && QFontMetrics(font).height() > kCaptionHeight; --size) {
        font.setPixelSize(size);
    }
    return font;
}

}  // namespace

int CaptionWidth(const QWidget& control, const QString& caption) {
    return QFontMetrics(CaptionFont(control)).horizontalAdvance(caption) + 2 * kCaptionMargin;
}

TabStripPainter::TabStripPainter(QPainter& painter, const zqTabDialog& control, int hovered_tab)
    : painter_(painter), control_(control), palette_(control.palette()), hovered_(hovered_tab), grid_(painter) {}

void TabStripPainter::Paint() const {
    painter_.setFont(CaptionFont(control_));
    PaintBody();
    for (int tab = 1; tab <= control_.table().count(); ++tab) {
        if (tab != control_.CurrentTab()) {
            PaintTab(tab);
        }
    }
    PaintTab(control_.CurrentTab());
}

void TabStripPainter::Fill(const QRectF& area, const QColor& colour) const {
    painter_.fillRect(grid_.Snap(area), colour);
}

void TabStripPainter::PaintOutline(const QRectF& area) const {
    const qreal line = grid_.line();
    const QColor lit = palette_.color(QPalette::Light);
    const QColor shaded = palette_.color(QPalette::Dark);
    Fill({area.left(), area.top() + line, line, area.height() - line}, lit);
    Fill({area.left() + line, area.top(), area.width() - 2 * line, line}, lit);
    Fill({area.right() - line, area.top() + line, line, area.height() - line}, shaded);
}

void TabStripPainter::PaintBody() const {
    const qreal line = grid_.line();
    const QRectF body(0, kTabStripHeight, control_.width(), control_.height() - kTabStripHeight);
    Fill(body, palette_.color(QPalette::Window));
    PaintOutline(body);
    Fill({0, body.bottom() - line, body.width(), line}, palette_.color(QPalette::Dark));
}

QColor TabStripPainter::FillOf(int tab) const {
    const QColor body = palette_.color(QPalette::Window);
    if (tab == control_.CurrentTab()) {
        return body;
    }
    if (!control_.table().tab(tab).enabled || !control_.isEnabled()) {
        return Mixed(body, palette_.color(QPalette::Dark), 0.1);
    }
    return Mixed(body, palette_.color(QPalette::Dark), tab == hovered_ ? 0.1 : 0.3);
}

void TabStripPainter::PaintTab(int tab) const {
    const bool selected = tab == control_.CurrentTab();
    const qreal line = grid_.line();
    QRectF area = control_.TabRect(tab);
    if (selected) {
        area.setBottom(kTabStripHeight + line);
    } else {
        area.setTop(kUnselectedTop);
    }
    Fill(area.adjusted(line, line, -line, 0), FillOf(tab));
    PaintOutline(area);
    if (selected) {
        PaintAccent(area);
    }
    PaintCaption(tab, control_.TabRect(tab).adjusted(0, kUnselectedTop, 0, 0));
    if (selected && control_.hasFocus()) {
        PaintFocus(area);
    }
}

void TabStripPainter::PaintAccent(const QRectF& area) const {
    const qreal line = grid_.line();
    const auto role = control_.isEnabled() ? QPalette::Highlight : QPalette::Mid;
    Fill({area.left() + line, area.top(), area.width() - 2 * line, kAccentHeight}, palette_.color(role));
}

void TabStripPainter::PaintCaption(int tab, const QRectF& area) const {
    const TabTable::Tab& shown = control_.table().tab(tab);
    const auto group = shown.enabled && control_.isEnabled() ? QPalette::Normal : QPalette::Disabled;
    const QRectF room = area.adjusted(kCaptionMargin, 0, -kCaptionMargin, 0);
    const QString caption = painter_.fontMetrics().elidedText(QString::fromStdString(shown.caption), Qt::ElideRight,
                                                              static_cast<int>(room.width()));
    painter_.setPen(palette_.color(group, QPalette::WindowText));
    painter_.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, caption);
}

void TabStripPainter::PaintFocus(const QRectF& area) const {
    const qreal line = grid_.line();
    const QColor colour = palette_.color(QPalette::Highlight);
    const QRectF ring(area.left() + kFocusInset, kFocusInset, area.width() - 2 * kFocusInset,
                      kTabStripHeight - kFocusInset - 1);
    Fill({ring.left(), ring.top(), ring.width(), line}, colour);
    Fill({ring.left(), ring.bottom() - line, ring.width(), line}, colour);
    Fill({ring.left(), ring.top(), line, ring.height()}, colour);
    Fill({ring.right() - line, ring.top(), line, ring.height()}, colour);
}

}  // namespace ledgix::controls
