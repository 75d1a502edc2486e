#include "content_area.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QScreen>
#include <QStyle>

namespace ledgix::editors {

namespace {

const QSize kTitleAndTaskBar(16, 72);
// Sizes in pixels of the device are rounded.
const QSize kRounding(2, 2);
constexpr int kFocusMargin = 8;

}  // namespace

ContentArea::ContentArea(QWidget* content, QBoxLayout* columns) : columns_(columns) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(content);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && widget()->isAncestorOf(now))
            ensureWidgetVisible(now, kFocusMargin, kFocusMargin);
    });
}

QSize ContentArea::sizeHint() const {
    return widget()->sizeHint();
}

void ContentArea::resizeEvent(QResizeEvent* event) {
    if (columns_) {
        columns_->setDirection(QBoxLayout::LeftToRight);
        const int width = widget()->minimumSizeHint().width();
        if (width > maximumViewportSize().width())
            columns_->setDirection(QBoxLayout::TopToBottom);
    }
    QScrollArea::resizeEvent(event);
}

// A dialog that is cut leaves room for the bar that scrolls its content.
QSize InitialSize(const QDialog& form) {
    const QSize room = form.screen()->availableSize() - kTitleAndTaskBar;
    QSize size = form.sizeHint() + kRounding;
    if (size.width() > room.width())
        size.setHeight(room.height());
    if (size.height() > room.height())
        size.rwidth() += form.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return size.boundedTo(room);
}

}  // namespace ledgix::editors
