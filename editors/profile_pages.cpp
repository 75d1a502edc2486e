#include "profile_pages.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include "amount_form.h"
#include "content_area.h"
#include "zq_text_box.h"

namespace ledgix::editors {

namespace {

// As wide as its content at least: its scroll bar hides nothing.
class ScrollingPage : public ContentArea {
public:
    using ContentArea::ContentArea;
    QSize sizeHint() const override {
        return ContentArea::sizeHint() + QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0);
    }
    QSize minimumSizeHint() const override { return {sizeHint().width(), ContentArea::minimumSizeHint().height()}; }
};

void NamePage(QFrame& frame, const ProfilePage& page) {
    frame.setObjectName(page.frame);
    frame.setAccessibleName(page.caption);
    // All pages keep the size of the largest one.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    policy.setRetainSizeWhenHidden(true);
    frame.setSizePolicy(policy);
}

QPushButton* NewButton(QVBoxLayout& column, const char* name, const char* caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    column.addWidget(button);
    return button;
}

void PressByKey(QPushButton& button, QWidget& place, std::initializer_list<Qt::Key> keys) {
    for (const Qt::Key key : keys) {
        auto* shortcut = new QShortcut(key, &place);
        shortcut->setContext(Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, &button, [&button] { button.click(); });
    }
}

}  // namespace

AmountPage::AmountPage(const ProfilePage& page) {
    NamePage(*this, page);
    auto* content = new QWidget;
    grid_ = new QGridLayout(content);
    grid_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid_->setSpacing(kSpacing);
    for (const ProfileField& field : page.fields) {
        const Unit unit = page.yearly ? Unit::kMoneyAYear : Unit::kMoney;
        boxes_.push_back({AddAmountRow(*grid_, {field.name, field.caption, unit}), field.member});
    }
    grid_->setRowStretch(grid_->rowCount(), 1);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new ScrollingPage(content));
}

PurchasesPage::PurchasesPage(const ProfilePage& page) : lstProperty(new QListWidget) {
    NamePage(*this, page);
    lstProperty->setObjectName("lstProperty");
    lstProperty->setAccessibleName(page.caption);
    lstProperty->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    row->setSpacing(kSpacing);
    row->addWidget(lstProperty, 1);
    auto* buttons = new QVBoxLayout;
    row->addLayout(buttons);
    cmdAdd = NewButton(*buttons, "cmdAdd", "Add Property");
    cmdEdit = NewButton(*buttons, "cmdEdit", "Edit Property");
    cmdDelete = NewButton(*buttons, "cmdDelete", "Delete Property");
    buttons->addStretch();
    PressByKey(*cmdEdit, *lstProperty, {Qt::Key_Return, Qt::Key_Enter});
    PressByKey(*cmdDelete, *lstProperty, {Qt::Key_Delete});
}

}  // namespace ledgix::editors
