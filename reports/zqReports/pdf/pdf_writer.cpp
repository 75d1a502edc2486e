#include <QBuffer>
#include <QByteArray>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cstdio>
#include <optional>

#include "document.h"
#include "pdf_library.h"

#ifdef _WIN32
#define LEDGIX_EXPORT __declspec(dllexport)
#else
#define LEDGIX_EXPORT __attribute__((visibility("default")))
#endif

namespace ledgix::zq {

namespace {

constexpr int kUnitsPerInch = 1200;
constexpr double kPointsPerInch = 72;
constexpr double kUnitsPerPoint = kUnitsPerInch / kPointsPerInch;
// Qt rounds sizes of typefaces to whole pixels; texts are therefore set at this one and scaled.
constexpr int kTypefacePixels = 1000;
// Finer pictures are made coarser, so that files stay small.
constexpr double kPixelsPerPoint = 300 / kPointsPerInch;
// Widths that differ by less are the same typeface, set with kerning.
constexpr double kKerning = 0.06;
constexpr double kRounding = 0.001;

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

QColor ToQt(Colour colour) {
    return {colour.red, colour.green, colour.blue};
}

double Units(double points) {
    return points * kUnitsPerPoint;
}

// Qt ends the program behind a fatal message, so that one must be seen.
void DropRemarks(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

// Qt draws text only in the presence of an application. A program without windows has none, and gets one without a
// screen for as long as this object lives; its remarks about the missing desktop are of no use to anyone.
class ApplicationForDrawing {
public:
    ApplicationForDrawing() {
        if (QCoreApplication::instance())
            return;
        handler_ = qInstallMessageHandler(DropRemarks);
        application_.emplace(count_, arguments_);
    }
    ~ApplicationForDrawing() {
        if (!application_)
            return;
        application_.reset();
        qInstallMessageHandler(handler_);
    }
    ApplicationForDrawing(const ApplicationForDrawing&) = delete;
    ApplicationForDrawing& operator=(const ApplicationForDrawing&) = delete;

private:
    // Qt takes what it understands out of the arguments, and keeps referring to them.
    char name_[7] = "ledgix";
    char option_[10] = "-platform";
    char platform_[10] = "offscreen";
    char* arguments_[4] = {name_, option_, platform_, nullptr};
    int count_ = 3;
    QtMessageHandler handler_ = nullptr;
    std::optional<QGuiApplication> application_;
};

class PdfPainter {
public:
    PdfPainter(const Document& document, QPdfWriter& writer) : document_(document), writer_(writer) {}

    bool Draw() {
        if (!painter_.begin(&writer_))
            return false;
        painter_.setRenderHint(QPainter::LosslessImageRendering);
        for (std::size_t page = 0; page < document_.pages.size(); ++page) {
            if (page > 0 && !writer_.newPage())
                return false;
            DrawPage(document_.pages[page]);
        }
        return painter_.end();
    }

private:
    void DrawPage(const Drawing& page) {
        for (const PrintedBox& box : page.boxes)
            painter_.fillRect(QRectF(Units(box.left), Units(box.top), Units(box.width), Units(box.height)),
                              ToQt(box.colour));
        for (const PrintedLine& line : page.lines) {
            painter_.setPen(QPen(ToQt(line.colour), Units(line.weight), Qt::SolidLine, Qt::FlatCap));
            painter_.drawLine(QPointF(Units(line.x1), Units(line.y1)), QPointF(Units(line.x2), Units(line.y2)));
        }
        for (const PrintedPicture& picture : page.pictures)
            DrawPicture(picture);
        for (const PrintedText& text : page.texts)
            DrawText(text);
    }

    void DrawPicture(const PrintedPicture& picture) {
        QImage image =
            QImage::fromData(QByteArray::fromRawData(picture.content->data(), qsizetype(picture.content->size())));
        if (image.isNull())
            return;
        const QSizeF place(picture.width, picture.height);
        const QSizeF size = QSizeF(image.size()).scaled(place, Qt::KeepAspectRatio);
        if (image.width() > size.width() * kPixelsPerPoint)
            image = image.scaled((size * kPixelsPerPoint).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const double spare = place.width() - size.width();
        const double left = picture.left + (picture.alignment == Alignment::kLeft     ? 0
                                            : picture.alignment == Alignment::kCenter ? spare / 2
                                                                                      : spare);
        const double top = picture.top + (place.height() - size.height()) / 2;
        painter_.drawImage(QRectF(Units(left), Units(top), Units(size.width()), Units(size.height())), image);
    }

    QFont FontOf(const PrintedText& text) const {
        QFont font({FromUtf8(document_.typeface), "Liberation Sans", "Arial", "Helvetica"});
        font.setPixelSize(kTypefacePixels);
        font.setBold(text.bold);
        font.setHintingPreference(QFont::PreferNoHinting);
        // Figures stay in their columns.
        font.setKerning(text.alignment != Alignment::kRight);
        return font;
    }

    void DrawText(const PrintedText& text) {
        const QString content = FromUtf8(text.text);
        const QFont font = FontOf(text);
        const double size = Units(text.size) / kTypefacePixels;
        const double natural = QFontMetricsF(font, &writer_).horizontalAdvance(content) * size;
        const double wanted = Units(text.width);
        const bool fits = natural <= wanted * (1 + kRounding) && natural >= wanted * (1 - kKerning);
        const double stretch = fits || natural <= 0 ? 1 : wanted / natural;
        const double spare = wanted - natural * stretch;
        const double shift = text.alignment == Alignment::kLeft     ? 0
                             : text.alignment == Alignment::kCenter ? spare / 2
                                                                    : spare;
        painter_.save();
        painter_.translate(Units(text.left) + shift, Units(text.baseline));
        painter_.scale(size * stretch, size);
        painter_.setFont(font);
        painter_.setPen(ToQt(text.colour));
        painter_.drawText(QPointF(0, 0), content);
        painter_.restore();
    }

    const Document& document_;
    QPdfWriter& writer_;
    QPainter painter_;
};

QByteArray Render(const Document& document) {
    const ApplicationForDrawing application;
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kUnitsPerInch);
    writer.setTitle(FromUtf8(document.title));
    writer.setCreator("Vantreo Ledgix");
    // Qt names sizes in portrait and turns them.
    const bool landscape = document.page_width > document.page_height;
    const QSizeF size(std::min(document.page_width, document.page_height),
                      std::max(document.page_width, document.page_height));
    writer.setPageLayout(QPageLayout(QPageSize(size, QPageSize::Point, QString(), QPageSize::FuzzyMatch),
                                     landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    return PdfPainter(document, writer).Draw() ? content : QByteArray();
}

}  // namespace

}  // namespace ledgix::zq

extern "C" LEDGIX_EXPORT bool LedgixRenderPdf(const ledgix::zq::Document* document, ledgix::zq::PdfSink sink,
                                              void* context) {
    try {
        const QByteArray content = ledgix::zq::Render(*document);
        if (content.isEmpty())
            return false;
        sink(context, content.constData(), static_cast<std::size_t>(content.size()));
        return true;
    } catch (...) {
        return false;
    }
}
