#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "amount_form.h"
#include "event_trap.h"
#include "frm_profile.h"
#include "message_box.h"

// The handlers of the page of purchases.
namespace ledgix::editors {

namespace {

constexpr int kNumberRole = Qt::UserRole;  // of the property on a line

const QListWidgetItem* SelectedLine(const QListWidget& list) {
    const QList<QListWidgetItem*> selected = list.selectedItems();
    return selected.isEmpty() ? nullptr : selected.first();
}

}  // namespace

void frmProfile::LoadProperties() {
    const QListWidgetItem* const line = SelectedLine(*lstProperty);
    const QVariant selected = line ? line->data(kNumberRole) : QVariant();
    lstProperty->clear();
    for (std::size_t i = 1; i <= objProfile_->PropertyCount(); ++i) {
        const model::clsProperty& property = objProfile_->Property(i);
        auto* added = new QListWidgetItem(ToScreen(property.PropertyName), lstProperty);
        added->setData(kNumberRole, property.PropertyNumber);
        if (added->data(kNumberRole) == selected)
            lstProperty->setCurrentItem(added);
    }
}

std::int32_t frmProfile::SelPropertyNumber() const {
    const QListWidgetItem* const line = SelectedLine(*lstProperty);
    const int index = line ? lstProperty->row(line) : -1;
    return objProfile_->Property(static_cast<std::size_t>(index + 1)).PropertyNumber;
}

std::string frmProfile::AskSelectedKey() const {
    if (!SelectedLine(*lstProperty)) {
        runtime::MsgBox("Select a property");
        return {};
    }
    return model::PropertyKey(objProfile_->ProfileNumber, SelPropertyNumber());
}

void frmProfile::cmdAdd_Click() {
    const QPointer<frmProfile> self(this);
    model::clsProperty* const added = &objProfile_->AddProperty(objProfile_->ProfileNumber);
    controls::RunHandler([added] { added->Display(); });
    if (!self || !objProfile_)
        return;
    ForgetUnsaved(added);
    LoadProperties();
}

// The property may be gone, and its editor may have given it another number.
void frmProfile::ForgetUnsaved(const model::clsProperty* added) {
    for (std::size_t i = 1; i <= objProfile_->PropertyCount(); ++i) {
        const model::clsProperty& property = objProfile_->Property(i);
        if (&property == added && !property.Saved) {
            objProfile_->ForgetProperty(model::PropertyKey(property.ProfileNumber, property.PropertyNumber));
            return;
        }
    }
}

void frmProfile::cmdEdit_Click() {
    const std::string key = AskSelectedKey();
    if (!key.empty())
        objProfile_->Property(key).Display();
}

void frmProfile::cmdDelete_Click() {
    const std::string key = AskSelectedKey();
    if (key.empty())
        return;
    std::string question = "Delete property '";
    question += FromScreen(SelectedLine(*lstProperty)->text());
    question += "'?";
    constexpr int kStyle = runtime::kYesNo + runtime::kQuestion + runtime::kSecondButtonIsDefault;
    const QPointer<frmProfile> self(this);
    if (runtime::MsgBox(question, kStyle) != runtime::MessageAnswer::kYes || !self || !objProfile_)
        return;
    objProfile_->RemoveProperty(key);
    LoadProperties();
}

void frmProfile::lstProperty_DblClick() {
    if (cmdEdit->isEnabled())
        cmdEdit_Click();
}

}  // namespace ledgix::editors
