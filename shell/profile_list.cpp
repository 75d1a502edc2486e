#include "profile_list.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>
#include <algorithm>

#include "profile_list_accessible.h"

namespace ledgix::shell {

namespace {

// In pixels.
constexpr int kRowInset = 8;
constexpr int kTextInset = 8;
constexpr int kTextMargin = 5;  // above and below
constexpr int kFocusFrame = 2;

const QColor kRowText(Qt::black);
const QColor kRowBorder(0, 0, 0, 48);

// Red is in the low byte.
QColor ColourOf(std::int32_t colour) {
    return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

QString Hint() {
    return ProfileList::tr("No profiles yet.\nChoose New Profile to begin.");
}

// The number of whole pixels that hold as many twips.
int PixelsFor(int twips) {
    return (twips + kTwipsPerPixel - 1) / kTwipsPerPixel;
}

// A border inside of a rectangle, as crisp at any scale as the rectangle itself.
void PaintBorder(QPainter& painter, const QRect& outer, int thickness, const QColor& colour) {
    const QRect inner = outer.adjusted(thickness, thickness, -thickness, -thickness);
    for (const QRect& strip : QRegion(outer).subtracted(inner))
        painter.fillRect(strip, colour);
}

}  // namespace

void PanelScrollBar::initStyleOption(QStyleOptionSlider* option) const {
    QScrollBar::initStyleOption(option);
    option->pageStep = std::max(minimum(), pageStep());
}

ProfileList::ProfileList(QScrollBar& scroll_bar, QWidget* parent)
    : QWidget(parent), scroll_bar_(scroll_bar), rows_(RowHeight(), kLeastPanelHeight) {
    InstallProfileListAccessible();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleDescription(Hint());
    scroll_bar_.hide();
}

int ProfileList::RowHeight() const {
    return (fontMetrics().height() + 2 * kTextMargin) * kTwipsPerPixel;
}

QSize ProfileList::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, PixelsFor(rows_.panel_height())};
}

void ProfileList::LoadProfiles(const model::clsProfiles* profiles) {
    rows_.LoadProfiles(profiles);
    setAccessibleDescription(rows_.ShownCount() == 0 ? Hint() : QString());
    UpdateScrollBar();
    update();
    Tell(QAccessible::ObjectReorder, -1);
}

void ProfileList::SelectProfile(int index) {
    rows_.SelectProfile(index);
    last_row_ = index;
    update();
    Tell(QAccessible::Selection, rows_.iSelectMenu());
    TellFocus();
}

void ProfileList::DeSelectProfile(int index) {
    rows_.DeSelectProfile(index);
    update();
    Tell(QAccessible::Selection, rows_.iSelectMenu());
}

void ProfileList::Underline(int index) {
    rows_.Underline(index);
    update();
}

void ProfileList::Unhighlight(int index) {
    rows_.Unhighlight(index);
    update();
}

void ProfileList::SetPanelHeight(int twips) {
    rows_.SetPanelHeight(twips);
    setFixedHeight(PixelsFor(twips));
    UpdateScrollBar();
}

void ProfileList::UpdateScrollBar() {
    const ScrollRange range = rows_.ScrollBar();
    if (range.visible) {
        const QSignalBlocker silent(&scroll_bar_);
        scroll_bar_.setRange(range.min, range.max);
        scroll_bar_.setSingleStep(range.small_change);
        scroll_bar_.setPageStep(range.large_change);
        scroll_bar_.setFixedHeight(PixelsFor(range.height));
        scroll_bar_.setValue(range.min + rows_.offset());
        rows_.ScrollTo(scroll_bar_.value(), range.min);
    } else {
        rows_.ScrollTo(0, 0);
    }
    scroll_bar_.setVisible(range.visible);
    update();
    emit ScrollBarShown(range.visible);
}

void ProfileList::FollowScrollBar() {
    rows_.ScrollTo(scroll_bar_.value(), scroll_bar_.minimum());
    update();
    if (mouse_)
        TellMouseMove(*mouse_);
}

void ProfileList::ShowRow(int index) {
    if (!scroll_bar_.isHidden())
        scroll_bar_.setValue(scroll_bar_.minimum() + rows_.OffsetShowing(index));
}

int ProfileList::CurrentRow() const {
    const int row = rows_.iSelectMenu() >= 0 ? rows_.iSelectMenu() : last_row_;
    return std::min(row, rows_.ShownCount() - 1);
}

QRect ProfileList::RowRect(int index) const {
    const int top = qRound(rows_.Top(index) / double(kTwipsPerPixel));
    return {kRowInset, top, std::max(0, width() - 2 * kRowInset), rows_.row_height() / kTwipsPerPixel};
}

std::optional<int> ProfileList::RowAt(const QPoint& position) const {
    if (!rect().contains(position))
        return std::nullopt;
    // Rows are drawn at whole pixels, up to half a pixel away from their twips.
    const int first = rows_.FirstRowBelow((position.y() - 1) * kTwipsPerPixel);
    for (int row = first; row < std::min(first + 2, rows_.ShownCount()); ++row) {
        if (RowRect(row).contains(position))
            return row;
    }
    return std::nullopt;
}

void ProfileList::Tell(QAccessible::Event what, int row) {
    QAccessibleEvent told(this, what);
    told.setChild(row);
    QAccessible::updateAccessibility(&told);
}

void ProfileList::TellFocus() {
    if (hasFocus() && CurrentRow() >= 0)
        Tell(QAccessible::Focus, CurrentRow());
}

bool ProfileList::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (!ShowWholeName(help->pos(), help->globalPos())) {
        QToolTip::hideText();
        event->ignore();
    }
    return true;
}

bool ProfileList::ShowWholeName(const QPoint& position, const QPoint& global) {
    const std::optional<int> row = RowAt(position);
    if (!row)
        return false;
    const QString name = QString::fromStdString(rows_.Caption(*row));
    if (fontMetrics().horizontalAdvance(name) <= TextRect(RowRect(*row)).width())
        return false;
    // A name that looks like markup must not be taken for it.
    QToolTip::showText(global, "<span>" + name.toHtmlEscaped() + "</span>", this, RowRect(*row));
    return true;
}

void ProfileList::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        rows_.SetRowHeight(RowHeight());
        UpdateScrollBar();
    }
}

QRect ProfileList::TextRect(const QRect& row) const {
    return row.adjusted(kTextInset, 0, -kTextInset, 0);
}

void ProfileList::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (rows_.ShownCount() == 0)
        PaintHint(painter);
    const QRect exposed = event->rect();
    for (int row = rows_.FirstRowBelow((exposed.top() - kFocusFrame - 1) * kTwipsPerPixel); row < rows_.ShownCount();
         ++row) {
        if (RowRect(row).top() - kFocusFrame - 1 > exposed.bottom())
            break;
        PaintRow(painter, row);
    }
}

void ProfileList::PaintRow(QPainter& painter, int index) const {
    const ProfileRow row = rows_.Row(index);
    const QRect place = RowRect(index);
    painter.fillRect(place, ColourOf(row.BackColor));
    PaintBorder(painter, place, 1, kRowBorder);
    if (hasFocus() && index == CurrentRow())
        PaintBorder(painter, place.adjusted(-kFocusFrame, -kFocusFrame, kFocusFrame, kFocusFrame), kFocusFrame,
                    palette().color(QPalette::Highlight));
    QFont text_font = font();
    text_font.setUnderline(row.FontUnderline);
    painter.setFont(text_font);
    painter.setPen(kRowText);
    const QRect text = TextRect(place);
    const QString caption =
        QFontMetrics(text_font).elidedText(QString::fromStdString(row.Caption), Qt::ElideRight, text.width());
    const Qt::Alignment left = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(text, int(left) | Qt::TextSingleLine, caption);
}

void ProfileList::PaintHint(QPainter& painter) const {
    QColor quiet = palette().color(QPalette::WindowText);
    quiet.setAlphaF(0.75F);
    painter.setPen(quiet);
    painter.setFont(font());
    painter.drawText(rect().adjusted(kRowInset, kRowInset, -kRowInset, -kRowInset),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, Hint());
    if (hasFocus())
        PaintBorder(painter, rect(), kFocusFrame, palette().color(QPalette::Highlight));
}

}  // namespace ledgix::shell
