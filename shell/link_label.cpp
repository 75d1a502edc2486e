#include "link_label.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ledgix::shell {

namespace {

class AccessibleLink : public QAccessibleWidget {
public:
    explicit AccessibleLink(LinkLabel* link) : QAccessibleWidget(link, QAccessible::Link), link_(link) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? link_->text() : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.linked = true;
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction())
            emit link_->clicked();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    LinkLabel* link_;
};

QAccessibleInterface* MakeLink(const QString&, QObject* object) {
    auto* link = qobject_cast<LinkLabel*>(object);
    return link ? new AccessibleLink(link) : nullptr;
}

}  // namespace

LinkLabel::LinkLabel(const QString& caption, QWidget* parent) : QLabel(caption, parent) {
    [[maybe_unused]] static const bool known = [] {
        QAccessible::installFactory(MakeLink);
        return true;
    }();
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::Link);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setMargin(kFocusMargin);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void LinkLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        setCursor(isEnabled() ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            event->accept();
            emit clicked();
            return;
        default:
            QLabel::keyPressEvent(event);
    }
}

void LinkLabel::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    const bool click = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    pressed_ = false;
    if (click)
        emit clicked();
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void LinkLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

void LinkLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
}

}  // namespace ledgix::shell
