#include "document_area.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "window_memory.h"

namespace ledgix::shell {

namespace {

// In pixels.
constexpr int kHintMargin = 24;

}  // namespace

DocumentArea::DocumentArea(QWidget* parent) : QMdiArea(parent) {
    setAccessibleName(tr("Open windows"));
    setFrameShape(QFrame::NoFrame);
    setActivationOrder(QMdiArea::CreationOrder);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    ChooseBackground();
}

void DocumentArea::ChooseBackground() {
    const QColor window = palette().color(QPalette::Window);
    setBackground(window.lightness() < 128 ? window.darker(125) : window.darker(106));
}

void DocumentArea::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ChooseBackground();
}

void DocumentArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    QColor quiet = palette().color(QPalette::WindowText);
    quiet.setAlphaF(0.6F);
    painter.setPen(quiet);
    painter.drawText(viewport()->rect().adjusted(kHintMargin, kHintMargin, -kHintMargin, -kHintMargin),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, tr("Profiles that you open appear here."));
}

void DocumentArea::AddDocument(QWidget& form) {
    auto* frame = new QMdiSubWindow;
    frame->setAttribute(Qt::WA_DeleteOnClose);
    frame->setObjectName(form.objectName());
    frame->setWidget(&form);
    if (form.windowIcon().isNull())
        frame->setWindowIcon(QApplication::windowIcon());
    addSubWindow(frame);
    // Hidden first, so that its place is kept; by then a frame that destroys the form itself is gone.
    connect(
        &form, &QObject::destroyed, frame,
        [frame] {
            frame->hide();
            frame->deleteLater();
        },
        Qt::QueuedConnection);
    form.show();
    frame->setGeometry(QRect(QPoint(), frame->sizeHint()));
    controls::KeepPlace(*frame);
    Place(*frame);
    frame->show();
    viewport()->update();
    RaiseDocument(form);
}

void DocumentArea::RaiseDocument(QWidget& form) {
    QMdiSubWindow* frame = FrameOf(form);
    if (!frame)
        return;
    if (frame->isMinimized() || frame->isShaded())
        frame->showNormal();
    setActiveSubWindow(frame);
    // An active frame does not take the focus back by itself.
    if (!frame->isAncestorOf(frame->window()->focusWidget()))
        (form.focusWidget() ? form.focusWidget() : &form)->setFocus();
}

QMdiSubWindow* DocumentArea::FrameOf(const QWidget& form) const {
    const QList<QMdiSubWindow*> frames = subWindowList();
    const auto found = std::find_if(frames.begin(), frames.end(),
                                    [&](const QMdiSubWindow* frame) { return frame->widget() == &form; });
    return found == frames.end() ? nullptr : *found;
}

bool DocumentArea::IsTaken(const QMdiSubWindow& frame, const QPoint& corner) const {
    const QList<QMdiSubWindow*> frames = subWindowList();
    return std::any_of(frames.begin(), frames.end(), [&](const QMdiSubWindow* other) {
        return other != &frame && other->isVisible() && other->pos() == corner;
    });
}

// A frame keeps the size that it has, as far as the area is large enough and its form can be made smaller; the area
// scrolls to what lies outside. Frames at the same place are cascaded.
void DocumentArea::Place(QMdiSubWindow& frame) const {
    const QSize room = viewport()->size();
    const QSize least = frame.minimumSizeHint().expandedTo(frame.minimumSize());
    frame.resize(frame.size().boundedTo(room).expandedTo(least));
    const QRect corners(QPoint(), (room - frame.size()).expandedTo(QSize(0, 0)) + QSize(1, 1));
    const int step = frame.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &frame);
    QPoint corner = corners.contains(frame.pos()) ? frame.pos() : QPoint();
    for (int i = 0; i < subWindowList().size() && IsTaken(frame, corner); ++i) {
        corner += QPoint(step, step);
        if (!corners.contains(corner))
            corner = QPoint(corner.x() > corners.right() ? 0 : corner.x(), 0);
    }
    frame.move(corner);
}

}  // namespace ledgix::shell
