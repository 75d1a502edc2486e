#include "zq_skin.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

#include "conversions.h"
#include "pixel_grid.h"

namespace ledgix::controls {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr int kLabelMargin = 6;

QColor ToColor(std::int32_t colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

QRectF ToPixels(const BandStrip& strip) {
    return QRectF(strip.left / kTwipsPerPixel, strip.top / kTwipsPerPixel, strip.width / kTwipsPerPixel,
                  strip.height / kTwipsPerPixel);
}

}  // namespace

zqSkin::zqSkin(QWidget* container) : QWidget(container) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    resize(0, 0);
    Attach();
}

zqSkin::~zqSkin() {
    Detach();
}

void zqSkin::setStartColour(int newValue) {
    gradient_.SetStartColour(newValue);
    RepaintContainer();
}

void zqSkin::setEndColour(int newValue) {
    gradient_.SetEndColour(newValue);
    RepaintContainer();
}

void zqSkin::setStyle(int newValue) {
    style_ = newValue;
    RepaintContainer();
}

void zqSkin::setColourBandCount(int newValue) {
    band_count_ = runtime::ToInt16(static_cast<double>(newValue));
    RepaintContainer();
}

void zqSkin::setUserMode(bool on) {
    user_mode_ = on;
    updateGeometry();
    resize(sizeHint());
    update();
}

int zqSkin::BitsPerPixel() const {
    return container_ ? container_->depth() : 0;
}

int zqSkin::ColourPlanes() const {
    return 1;
}

int zqSkin::ColourDepth() const {
    return controls::ColourDepth(BitsPerPixel(), ColourPlanes());
}

QString zqSkin::Label() const {
    return objectName().isEmpty() ? QStringLiteral("zqSkin") : objectName();
}

QSize zqSkin::sizeHint() const {
    if (user_mode_) {
        return {0, 0};
    }
    return fontMetrics().size(Qt::TextSingleLine, Label()) + QSize(2 * kLabelMargin, 2 * kLabelMargin);
}

void zqSkin::Attach() {
    container_ = parentWidget();
    if (container_) {
        container_was_opaque_ = container_->testAttribute(Qt::WA_OpaquePaintEvent);
        container_->installEventFilter(this);
        RepaintContainer();
    }
}

void zqSkin::Detach() {
    if (container_) {
        container_->removeEventFilter(this);
        container_->setAttribute(Qt::WA_OpaquePaintEvent, container_was_opaque_);
        container_->update();
    }
    container_ = nullptr;
}

bool zqSkin::CoversContainer() const {
    return container_ && isVisibleTo(container_) && band_count_ >= 1 && PaintsGradient(ColourDepth());
}

// A container that the gradient covers is not erased before: nothing flickers.
void zqSkin::RepaintContainer() {
    if (container_) {
        container_->setAttribute(Qt::WA_OpaquePaintEvent, container_was_opaque_ || CoversContainer());
        container_->update();
    }
}

bool zqSkin::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    switch (event->type()) {
        case QEvent::ParentAboutToChange:
            Detach();
            break;
        case QEvent::ParentChange:
            Attach();
            break;
        case QEvent::Show:
        case QEvent::ShowToParent:
        case QEvent::HideToParent:
        case QEvent::Resize:
            RepaintContainer();
            break;
        default:
            break;
    }
    return handled;
}

bool zqSkin::eventFilter(QObject* watched, QEvent* event) {
    if (watched == container_) {
        if (event->type() == QEvent::Resize) {
            RepaintContainer();
        } else if (event->type() == QEvent::Paint && CoversContainer()) {
            PaintGradient(static_cast<QPaintEvent*>(event)->rect());
        }
    }
    return QWidget::eventFilter(watched, event);
}

void zqSkin::PaintGradient(const QRect& exposed) {
    QPainter painter(container_);
    const PixelGrid grid(painter);
    for (const BandStrip& strip : BandStrips(DirectionOf(style_), container_->width() * kTwipsPerPixel,
                                             container_->height() * kTwipsPerPixel, band_count_)) {
        const QRectF area = grid.Snap(ToPixels(strip));
        if (area.intersects(exposed)) {
            painter.fillRect(area, ToColor(gradient_.BandColour(strip.band, band_count_)));
        }
    }
}

void zqSkin::paintEvent(QPaintEvent*) {
    if (user_mode_) {
        return;
    }
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::ToolTipBase));
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, Label());
}

}  // namespace ledgix::controls
