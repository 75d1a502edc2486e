#include "page_painter.h"

#include <QByteArray>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "typeset.h"

namespace ledgix::zq {

namespace {

// Finer pictures are made coarser, so that files stay small.
constexpr double kPixelsPerPoint = 300.0 / 72;

QColor ToQt(Colour colour) {
    return {colour.red, colour.green, colour.blue};
}

// Draws in points, or, where the output has pixels that can be seen, in these: texts are then set at their true size,
// and edges and baselines lie on pixels, so that all is sharp at every scale.
class PagePainter {
public:
    PagePainter(QPainter& painter, const Document& document, GlyphFonts& fonts)
        : painter_(painter), document_(document), fonts_(fonts) {
        painter_.save();
        if (painter_.hasClipping())
            clip_ = painter_.clipBoundingRect();
        painter_.setRenderHints(QPainter::LosslessImageRendering | QPainter::SmoothPixmapTransform |
                                QPainter::TextAntialiasing);
        const QTransform to_device = painter_.deviceTransform();
        on_pixels_ = painter_.paintEngine()->type() == QPaintEngine::Raster && to_device.type() <= QTransform::TxScale;
        if (!on_pixels_)
            return;
        to_place_ = to_device;
        scale_ = to_device.m22();
        painter_.setWorldTransform(to_device.inverted() * painter_.worldTransform());
    }
    ~PagePainter() { painter_.restore(); }
    PagePainter(const PagePainter&) = delete;
    PagePainter& operator=(const PagePainter&) = delete;

    void Draw(const Drawing& page) {
        for (const PrintedBox& box : page.boxes)
            painter_.fillRect(Snapped(to_place_.mapRect(QRectF(box.left, box.top, box.width, box.height))),
                              ToQt(box.colour));
        for (const PrintedLine& line : page.lines)
            DrawLine(line);
        for (const PrintedPicture& picture : page.pictures)
            DrawPicture(picture);
        for (const PrintedText& text : page.texts)
            if (clip_.isNull() ||
                (text.baseline + text.size >= clip_.top() && text.baseline - text.size <= clip_.bottom()))
                DrawText(text);
    }

private:
    double Snapped(double place) const { return on_pixels_ ? qRound(place) : place; }

    QRectF Snapped(const QRectF& place) const {
        return {QPointF(Snapped(place.left()), Snapped(place.top())),
                QPointF(Snapped(place.right()), Snapped(place.bottom()))};
    }

    void DrawLine(const PrintedLine& line) {
        const double weight = on_pixels_ ? std::max(1, qRound(line.weight * scale_)) : line.weight;
        const QPointF from = to_place_.map(QPointF(line.x1, line.y1));
        const QPointF to = to_place_.map(QPointF(line.x2, line.y2));
        if (on_pixels_ && line.y1 == line.y2) {
            const double left = Snapped(from.x());
            painter_.fillRect(QRectF(left, Snapped(from.y() - weight / 2), Snapped(to.x()) - left, weight),
                              ToQt(line.colour));
            return;
        }
        painter_.setPen(QPen(ToQt(line.colour), weight, Qt::SolidLine, Qt::FlatCap));
        painter_.drawLine(from, to);
    }

    void DrawPicture(const PrintedPicture& picture) {
        QImage image =
            QImage::fromData(QByteArray::fromRawData(picture.content->data(), qsizetype(picture.content->size())));
        if (image.isNull())
            return;
        const QSizeF size = QSizeF(image.size()).scaled(QSizeF(picture.width, picture.height), Qt::KeepAspectRatio);
        const QPointF corner(picture.left + SpareBefore(picture.alignment, picture.width - size.width()),
                             picture.top + (picture.height - size.height()) / 2);
        const QRectF place = Snapped(to_place_.mapRect(QRectF(corner, size)));
        const QSize wanted = on_pixels_ ? place.size().toSize() : (size * kPixelsPerPoint).toSize();
        if (wanted.isEmpty())
            return;
        if (image.width() > wanted.width())
            image = image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter_.drawImage(place, image);
    }

    void DrawText(const PrintedText& text) {
        const QString content = FromUtf8(text.text);
        const QFont font = TypefaceOf(document_, text);
        const double size = text.size * scale_;
        const double natural = QFontMetricsF(font).horizontalAdvance(content) * size / kTypefacePixels;
        const TextFit fit = FitToWidth(text, natural, text.width * scale_);
        const QPointF start = to_place_.map(QPointF(text.left, text.baseline));
        painter_.save();
        painter_.translate(start.x() + fit.shift, Snapped(start.y()));
        painter_.scale(fit.stretch, 1);
        painter_.setPen(ToQt(text.colour));
        if (on_pixels_)
            DrawGlyphs(content, font, size);
        else
            DrawLetters(content, font, size);
        painter_.restore();
    }

    // As text, which programs can read from the output.
    void DrawLetters(const QString& content, const QFont& font, double size) {
        painter_.scale(size / kTypefacePixels, size / kTypefacePixels);
        painter_.setFont(font);
        painter_.drawText(QPointF(0, 0), content);
    }

    // Glyphs of exactly this size: text drawn as such would be set in whole pixels, and its lines too short or too
    // long.
    void DrawGlyphs(const QString& content, QFont font, double size) {
        // Sharper along the baseline; widths stay those of the typeface.
        font.setHintingPreference(QFont::PreferVerticalHinting);
        QTextLayout layout(content, font);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setNumColumns(static_cast<int>(content.size()));
        layout.endLayout();
        const double scale = size / kTypefacePixels;
        for (QGlyphRun& run : line.glyphRuns()) {
            QList<QPointF> positions = run.positions();
            for (QPointF& position : positions)
                position = QPointF(position.x(), position.y() - line.ascent()) * scale;
            run.setPositions(positions);
            run.setRawFont(Sized(run.rawFont(), size));
            painter_.drawGlyphRun(QPointF(), run);
        }
    }

    // Glyphs are made anew for every font; so one font serves all texts alike.
    const QRawFont& Sized(QRawFont font, double size) {
        QRawFont& sized = fonts_[{font.familyName(), font.weight(), qRound(size * 1000)}];
        if (!sized.isValid()) {
            font.setPixelSize(size);
            sized = font;
        }
        return sized;
    }

    QPainter& painter_;
    const Document& document_;
    bool on_pixels_ = false;
    QTransform to_place_;  // from points to the units drawn in
    double scale_ = 1;     // of these to a point
    GlyphFonts& fonts_;
    QRectF clip_;  // in points; null where there is none
};

}  // namespace

void PaintPage(QPainter& painter, const Document& document, const Drawing& page, GlyphFonts* fonts) {
    GlyphFonts own;
    PagePainter(painter, document, fonts ? *fonts : own).Draw(page);
}

}  // namespace ledgix::zq
