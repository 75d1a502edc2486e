#include <QBuffer>
#include <QByteArray>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cstdio>
#include <optional>

#include "document.h"
#include "page_painter.h"
#include "pdf_library.h"
#include "typeset.h"

#ifdef _WIN32
#define LEDGIX_EXPORT __declspec(dllexport)
#else
#define LEDGIX_EXPORT __attribute__((visibility("default")))
#endif

namespace ledgix::zq {

namespace {

constexpr int kUnitsPerInch = 1200;
constexpr double kUnitsPerPoint = kUnitsPerInch / 72.0;

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

bool Draw(const Document& document, QPdfWriter& writer) {
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    painter.scale(kUnitsPerPoint, kUnitsPerPoint);
    for (std::size_t page = 0; page < document.pages.size(); ++page) {
        if (page > 0 && !writer.newPage())
            return false;
        PaintPage(painter, document, document.pages[page]);
    }
    return painter.end();
}

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
    return Draw(document, writer) ? content : QByteArray();
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
