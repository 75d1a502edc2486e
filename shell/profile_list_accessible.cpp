#include "profile_list_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include "profile_list.h"

namespace ledgix::shell {

namespace {

QString OpenAction() {
    return QStringLiteral("Open");
}

class RowAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    RowAccessible(ProfileList* list, int index) : list_(list), index_(index) {}

    int index() const { return index_; }

    bool isValid() const override { return list_ && index_ < list_->rows().ShownCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent() ? parent()->window() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(list_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? QString::fromStdString(list_->rows().Caption(index_))
                                                      : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect place = list_->RowRect(index_);
        return {list_->mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.disabled = !list_->isEnabled();
        state.selectable = true;
        state.focusable = true;
        state.selected = index_ == list_->rows().iSelectMenu();
        state.focused = list_->hasFocus() && index_ == list_->CurrentRow();
        state.invisible = !list_->isVisible();
        state.offscreen = !list_->rect().intersects(list_->RowRect(index_));
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction(), OpenAction()}; }
    QString localizedActionName(const QString& name) const override {
        return name == OpenAction() ? ProfileList::tr("Open") : QAccessibleActionInterface::localizedActionName(name);
    }
    void doAction(const QString& action) override {
        if (!isValid() || !list_->isEnabled())
            return;
        if (action == pressAction()) {
            emit list_->RowClick(index_);
            list_->ShowRow(index_);
        } else if (action == OpenAction()) {
            emit list_->RowDblClick(index_);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<ProfileList> list_;
    int index_;
};

class ListAccessible : public QAccessibleWidget {
public:
    explicit ListAccessible(ProfileList* list) : QAccessibleWidget(list, QAccessible::List) {}
    ~ListAccessible() override {
        for (const QAccessible::Id id : std::as_const(rows_))
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return List()->rows().ShownCount(); }

    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        if (!rows_.contains(index))
            rows_[index] = QAccessible::registerAccessibleInterface(new RowAccessible(List(), index));
        return QAccessible::accessibleInterface(rows_[index]);
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* row = dynamic_cast<const RowAccessible*>(child);
        return row && row->isValid() && row->parent() == this ? row->index() : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        return child(List()->RowAt(List()->mapFromGlobal(QPoint(x, y))).value_or(-1));
    }

    QAccessibleInterface* focusChild() const override {
        return List()->hasFocus() ? child(List()->CurrentRow()) : nullptr;
    }

private:
    ProfileList* List() const { return static_cast<ProfileList*>(widget()); }

    mutable QHash<int, QAccessible::Id> rows_;  // by index; made when first asked for
};

QAccessibleInterface* MakeList(const QString&, QObject* object) {
    auto* list = qobject_cast<ProfileList*>(object);
    return list ? new ListAccessible(list) : nullptr;
}

}  // namespace

void InstallProfileListAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeList);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace ledgix::shell
