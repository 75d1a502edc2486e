#include "tab_list_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include "zq_tab_dialog.h"

namespace ledgix::controls {

namespace {

class TabAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    TabAccessible(zqTabDialog* control, int number) : control_(control), number_(number) {}

    bool isValid() const override { return control_ && number_ <= control_->table().count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent() ? parent()->window() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(control_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override { return QAccessible::PageTab; }

    QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? QString::fromStdString(Tab().caption) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        if (!isValid()) {
            return {};
        }
        const QRect place = control_->TabRect(number_);
        return {control_->mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.disabled = !Tab().enabled || !control_->isEnabled();
        state.selectable = !state.disabled;
        state.focusable = !state.disabled;
        state.selected = Tab().selected;
        state.focused = Tab().selected && control_->hasFocus();
        state.invisible = !control_->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        if (isValid() && control_->isEnabled() && action == pressAction()) {
            control_->ChooseTab(number_);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    const TabTable::Tab& Tab() const { return control_->table().tab(number_); }

    QPointer<zqTabDialog> control_;
    int number_;
};

class TabListAccessible : public QAccessibleWidget {
public:
    explicit TabListAccessible(zqTabDialog* control) : QAccessibleWidget(control, QAccessible::PageTabList) {}
    ~TabListAccessible() override {
        for (const QAccessible::Id id : std::as_const(tabs_)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override { return TabCount() + QAccessibleWidget::childCount(); }

    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= TabCount()) {
            return QAccessibleWidget::child(index - TabCount());
        }
        if (!tabs_.contains(index)) {
            tabs_[index] = QAccessible::registerAccessibleInterface(new TabAccessible(Control(), index + 1));
        }
        return QAccessible::accessibleInterface(tabs_[index]);
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int index = 0; index < TabCount(); ++index) {
            if (tabs_.contains(index) && QAccessible::accessibleInterface(tabs_[index]) == child) {
                return index;
            }
        }
        const int index = QAccessibleWidget::indexOfChild(child);
        return index < 0 ? index : index + TabCount();
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < TabCount(); ++index) {
            if (child(index)->rect().contains(x, y)) {
                return child(index);
            }
        }
        return QAccessibleWidget::childAt(x, y);
    }

    QAccessibleInterface* focusChild() const override {
        return Control()->hasFocus() ? child(Control()->CurrentTab() - 1) : QAccessibleWidget::focusChild();
    }

private:
    zqTabDialog* Control() const { return static_cast<zqTabDialog*>(widget()); }
    int TabCount() const { return Control()->table().count(); }

    mutable QHash<int, QAccessible::Id> tabs_;  // by index; made when first asked for
};

QAccessibleInterface* MakeTabList(const QString&, QObject* object) {
    auto* control = qobject_cast<zqTabDialog*>(object);
    return control == nullptr ? nullptr : new TabListAccessible(control);
}

}  // namespace

void InstallTabListAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeTabList);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace ledgix::controls
