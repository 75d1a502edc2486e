#include "form_windows.h"

#include <QEvent>
#include <QPointer>

#include "cls_report.h"
#include "frm_profile.h"
#include "frm_property.h"

namespace ledgix::editors {

namespace {

class ProfileWindow : public model::EditorWindow {
public:
    ProfileWindow(model::clsProfile& profile, Desktop& desktop)
        : desktop_(desktop), form_(new frmProfile(profile, desktop)) {}
    ~ProfileWindow() override {
        if (form_)
            form_->Unload();
    }

    void Show() override {
        if (!form_ || shown_)
            return;
        shown_ = true;
        desktop_.AddDocument(*form_);
    }
    void BringToFront() override {
        if (form_)
            desktop_.RaiseDocument(*form_);
    }

private:
    Desktop& desktop_;
    QPointer<frmProfile> form_;
    bool shown_ = false;
};

// Keeps a form that only waits for its deletion from hearing of anything else, such as its late activation.
class Silence : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject*, QEvent* event) override { return event->type() != QEvent::DeferredDelete; }
};

class PropertyWindow : public model::EditorWindow {
public:
    PropertyWindow(model::clsProperty& property, Desktop& desktop)
        : form_(new frmProperty(property, desktop, desktop.Owner())) {}
    // The form may be on the stack of whoever destroys its window.
    ~PropertyWindow() override {
        if (!form_)
            return;
        form_->done(QDialog::Rejected);
        form_->installEventFilter(new Silence(form_));
        form_->deleteLater();
    }

    // The property may close its editor meanwhile, and this object is gone then.
    void Show() override {
        const QPointer<frmProperty> form(form_);
        if (form && !form->isVisible())
            form->exec();
    }
    void BringToFront() override {
        if (form_) {
            form_->raise();
            form_->activateWindow();
        }
    }

private:
    QPointer<frmProperty> form_;
};

}  // namespace

std::unique_ptr<model::EditorWindow> FormWindows::EditorOf(model::clsProfile& profile) {
    return std::make_unique<ProfileWindow>(profile, desktop_);
}

std::unique_ptr<model::EditorWindow> FormWindows::EditorOf(model::clsProperty& property) {
    return std::make_unique<PropertyWindow>(property, desktop_);
}

std::unique_ptr<model::ReportWriter> FormWindows::NewReportWriter() {
    return std::make_unique<reports::clsReport>();
}

}  // namespace ledgix::editors
