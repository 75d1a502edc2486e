#include "frm_splash.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "application_icon.h"
#include "message_box.h"
#include "program_version.h"
#include "runtime_error.h"

namespace ledgix::shell {

namespace {

constexpr int kMargin = 24;
constexpr int kRightMargin = 40;
constexpr int kSpacing = 12;
// The column left of the title, 1800 twips, holds the icon.
constexpr int kTitleLeft = 120;
constexpr int kIconSize = 72;
constexpr Qt::Edges kAllEdges = Qt::TopEdge | Qt::BottomEdge | Qt::LeftEdge | Qt::RightEdge;

}  // namespace

frmSplash::frmSplash(const FontTest& is_installed)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), lblVersion(new QLabel(this)) {
    setObjectName("frmSplash");
    const QString product = QString::fromUtf8(runtime::kProgramTitle.data(), runtime::kProgramTitle.size());
    setWindowTitle(product);
    setAccessibleName(product);
    lblVersion->setObjectName("lblVersion");
    QPalette on_ground = lblVersion->palette();
    on_ground.setColor(QPalette::WindowText, GroundFaintText());
    lblVersion->setPalette(on_ground);
    try {
        Form_Load(is_installed);
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "frmSplash-Form_Load");
    }
    LayOut();
}

void frmSplash::Form_Load(const FontTest& is_installed) {
    title_ = TitleDrawing(SplashTitle(is_installed));
    lblVersion->setText(QString::fromStdString(ShortVersionText(kProgramVersion)));
    lblVersion->setAccessibleName(lblVersion->text());
}

void frmSplash::LayOut() {
    const QSizeF title = title_.extent();
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, kRightMargin, kMargin);
    page->setSpacing(kSpacing);
    page->addItem(new QSpacerItem(qCeil(title.width()), qMax(qCeil(title.height()), kMargin + kIconSize)));
    auto* line = new QHBoxLayout;
    line->addSpacing(kTitleLeft);
    line->addWidget(lblVersion, 1);
    page->addLayout(line);
    page->setSizeConstraint(QLayout::SetFixedSize);
    const QSize size = sizeHint();
    resize(size);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - QRect(QPoint(), size).center());
}

bool frmSplash::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return handled;
}

void frmSplash::Form_Activate() {
    repaint();
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintTitleGround(painter, rect(), kAllEdges);
    const int middle = qMax(lblVersion->y() / 2, kMargin + kIconSize / 2);
    ApplicationIcon().paint(&painter, QRect(kMargin, middle - kIconSize / 2, kIconSize, kIconSize));
    title_.Paint(painter);
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    Dismiss();
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    Dismiss();
}

void frmSplash::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    Dismiss();
}

void frmSplash::Dismiss() {
    dismissed_ = true;
    emit Dismissed();
}

}  // namespace ledgix::shell
