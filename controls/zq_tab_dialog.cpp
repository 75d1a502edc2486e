#include "zq_tab_dialog.h"

#include <QAccessible>
#include <QFrame>
#include <QGroupBox>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>
#include <QToolTip>
#include <algorithm>

#include "conversions.h"
#include "tab_list_accessible.h"
#include "tab_strip_painter.h"

namespace ledgix::controls {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr int kBodyMargin = 8;
constexpr int kMinimumTabWidth = 24;

int ToPixels(std::int16_t twips) {
    return qRound(twips / kTwipsPerPixel);
}

const QWidget* HostForm(const QWidget* control) {
    const QWidget* host = control;
    while (!host->isWindow() && qobject_cast<const QMdiSubWindow*>(host) == nullptr) {
        host = host->parentWidget();
    }
    return host;
}

void TakeBorder(QWidget& frame) {
    if (auto* plain = qobject_cast<QFrame*>(&frame)) {
        plain->setFrameShape(QFrame::NoFrame);
    } else if (auto* box = qobject_cast<QGroupBox*>(&frame)) {
        if (box->accessibleName().isEmpty()) {
            box->setAccessibleName(box->title());
        }
        box->setTitle({});
        box->setFlat(true);
    }
}

}  // namespace

zqTabDialog::zqTabDialog(QWidget* parent) : QWidget(parent) {
    InstallTabListAccessible();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setContentsMargins(kBodyMargin, kTabStripHeight + kBodyMargin, kBodyMargin, kBodyMargin);
    AddShortcuts(*this);
}

zqTabDialog::~zqTabDialog() {
    for (const QPointer<QShortcut>& shortcut : std::as_const(shortcuts_)) {
        delete shortcut;
    }
}

QString zqTabDialog::Tabs() const {
    return QString::fromStdString(table_.tabs());
}

void zqTabDialog::setTabs(const QString& tabs) {
    table_.SetTabs(tabs.toStdString());
    TableRebuilt();
}

QString zqTabDialog::Frames() const {
    return QString::fromStdString(table_.frames());
}

void zqTabDialog::setFrames(const QString& frames) {
    table_.SetFrames(frames.toStdString());
    TableRebuilt();
}

void zqTabDialog::TableRebuilt() {
    hovered_ = 0;
    updateGeometry();
    update();
    QAccessibleEvent reordered(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&reordered);
}

void zqTabDialog::setFrameTop(int top) {
    view_.frame_top = runtime::ToInt16(static_cast<double>(top));
}

void zqTabDialog::setFrameLeft(int left) {
    view_.frame_left = runtime::ToInt16(static_cast<double>(left));
}

void zqTabDialog::setCurrentTab(int tab) {
    if (table_.SetCurrentTab(runtime::ToInt16(static_cast<double>(tab)))) {
        SelectionMoved();
    }
}

void zqTabDialog::setTabEnabled(int iTab, bool bValue) {
    if (table_.SetTabEnabled(iTab, bValue)) {
        update();
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(this, changed);
        event.setChild(iTab - 1);
        QAccessible::updateAccessibility(&event);
    }
}

void zqTabDialog::ChooseTab(int tab) {
    const int previous = table_.Choose(tab);
    if (previous != 0) {
        SelectionMoved();
        emit Click(previous);
    }
}

void zqTabDialog::SelectionMoved() {
    update();
    ShowCurrentPage();
    for (const QAccessible::Event change : {QAccessible::Selection, QAccessible::Focus}) {
        if (change == QAccessible::Selection || hasFocus()) {
            QAccessibleEvent event(this, change);
            event.setChild(CurrentTab() - 1);
            QAccessible::updateAccessibility(&event);
        }
    }
}

void zqTabDialog::ShowCurrentPage() {
    for (const PageStep& step : PageSteps(table_, view_)) {
        if (QWidget* frame = FindFrame(step.frame_name)) {
            DoStep(*frame, step);
            AddShortcuts(*frame);
        }
    }
}

void zqTabDialog::DoStep(QWidget& frame, const PageStep& step) const {
    if (step.shown) {
        frame.raise();
        if (user_mode_) {
            TakeBorder(frame);
        }
        if (step.left || step.top) {
            frame.move(step.left ? ToPixels(*step.left) : frame.x(), step.top ? ToPixels(*step.top) : frame.y());
        }
    }
    frame.setVisible(step.shown);
}

QWidget* zqTabDialog::FindFrame(const std::string& name) const {
    const QString wanted = QString::fromStdString(name);
    for (QWidget* control : HostForm(this)->findChildren<QWidget*>()) {
        if (control->objectName().compare(wanted, Qt::CaseInsensitive) == 0) {
            return control;
        }
    }
    return nullptr;
}

// Frames outside the control get shortcuts of their own; those inside have the control's.
void zqTabDialog::AddShortcuts(QWidget& place) {
    const bool has_them =
        std::any_of(shortcuts_.cbegin(), shortcuts_.cend(),
                    [&place](const QPointer<QShortcut>& known) { return known && known->parent() == &place; });
    if (has_them || (&place != this && isAncestorOf(&place))) {
        return;
    }
    for (const int direction : {1, -1}) {
        const QKeySequence keys(direction > 0 ? "Ctrl+Tab" : "Ctrl+Shift+Tab");
        auto* shortcut = new QShortcut(keys, &place);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, direction] { Cycle(direction); });
        shortcuts_ << shortcut;
    }
}

// The focus goes along: from a field of a page to the first field of the next one.
void zqTabDialog::Cycle(int direction) {
    if (!isEnabled() || !isVisible()) {
        return;
    }
    const bool from_page = !hasFocus();
    setFocus(Qt::ShortcutFocusReason);
    ChooseTab(table_.NextInCircle(direction));
    if (from_page) {
        FocusFirstField();
    }
}

void zqTabDialog::FocusFirstField() {
    QWidget* page = FindFrame(table_.tab(CurrentTab()).frame_name);
    if (page == nullptr) {
        return;
    }
    for (QWidget* field = page->nextInFocusChain(); field != page; field = field->nextInFocusChain()) {
        if (page->isAncestorOf(field) && (field->focusPolicy() & Qt::TabFocus) != 0 && field->isVisible() &&
            field->isEnabled()) {
            field->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QRect zqTabDialog::TabRect(int tab) const {
    const int tab_width = TabWidth(width(), table_.count());
    return QRect((tab - 1) * tab_width, 0, tab_width, kTabStripHeight);
}

QSize zqTabDialog::sizeHint() const {
    int widest = kMinimumTabWidth;
    for (const TabTable::Tab& tab : table_.list()) {
        widest = qMax(widest, CaptionWidth(*this, QString::fromStdString(tab.caption)));
    }
    const QSize strip(widest * table_.count() + 1, contentsMargins().top() + contentsMargins().bottom());
    return strip.expandedTo(QWidget::sizeHint());
}

QSize zqTabDialog::minimumSizeHint() const {
    const QSize strip(kMinimumTabWidth * table_.count() + 1, kTabStripHeight + 1);
    return strip.expandedTo(QWidget::minimumSizeHint());
}

bool zqTabDialog::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && ShowToolTip(*static_cast<QHelpEvent*>(event))) {
        return true;
    }
    return QWidget::event(event);
}

// A caption that does not fit its tab is shown in full.
bool zqTabDialog::ShowToolTip(const QHelpEvent& event) {
    const int tab = TabAt(event.pos().x(), event.pos().y(), width(), table_.count());
    if (tab == 0) {
        return false;
    }
    const QString caption = QString::fromStdString(table_.tab(tab).caption);
    if (CaptionWidth(*this, caption) <= TabRect(tab).width()) {
        return false;
    }
    QToolTip::showText(event.globalPos(), caption.toHtmlEscaped(), this, TabRect(tab));
    return true;
}

// Windows that the desktop hides and shows again, as when minimized, keep their pages.
void zqTabDialog::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        view_.hidden = false;
        ShowCurrentPage();
    }
}

void zqTabDialog::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        view_.hidden = true;
    }
}

void zqTabDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    TabStripPainter(painter, *this, hovered_).Paint();
}

void zqTabDialog::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        ChooseTab(TabAt(event->position().x(), event->position().y(), width(), table_.count()));
    }
}

void zqTabDialog::mouseMoveEvent(QMouseEvent* event) {
    SetHovered(TabAt(event->position().x(), event->position().y(), width(), table_.count()));
}

void zqTabDialog::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    SetHovered(0);
}

void zqTabDialog::SetHovered(int tab) {
    if (tab != hovered_) {
        hovered_ = tab;
        update();
    }
}

void zqTabDialog::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() & ~Qt::KeypadModifier) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
        case Qt::Key_Left:
            ChooseTab(table_.NeighbourOf(CurrentTab(), -1));
            break;
        case Qt::Key_Right:
            ChooseTab(table_.NeighbourOf(CurrentTab(), 1));
            break;
        case Qt::Key_Home:
            ChooseTab(table_.FirstEnabled());
            break;
        case Qt::Key_End:
            ChooseTab(table_.LastEnabled());
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

void zqTabDialog::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    QAccessibleEvent focused(this, QAccessible::Focus);
    focused.setChild(CurrentTab() - 1);
    QAccessible::updateAccessibility(&focused);
}

void zqTabDialog::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

}  // namespace ledgix::controls
