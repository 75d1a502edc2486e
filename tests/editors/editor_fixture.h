#pragma once

#include <QApplication>
#include <QFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cls_profiles.h"
#include "conversions.h"
#include "form_windows.h"
#include "frm_profile.h"
#include "household_file.h"
#include "message_recorder.h"
#include "scoped_region.h"
#include "zq_tab_dialog.h"
#include "zq_text_box.h"

// What tests of the editors share: a desktop without a main window, record windows that tell what was asked of them,
// and a household in a file.
namespace ledgix::test {

// Shows forms as windows of their own, and counts.
class FakeDesktop : public editors::Desktop {
public:
    void AddDocument(QWidget& form) override {
        documents << &form;
        form.show();
        form.activateWindow();
    }
    void RaiseDocument(QWidget& form) override {
        ++raised;
        form.raise();
    }
    void ReloadProfileList() override {
        ++list_reloads;
        if (OnReload)
            OnReload();
    }
    void ShowHelpTopic(int context) override { help_contexts << context; }
    QWidget* Owner() override { return nullptr; }

    std::function<void()> OnReload;
    QList<QPointer<QWidget>> documents;
    QList<int> help_contexts;
    int raised = 0;
    int list_reloads = 0;
};

// The real editor of profiles; in place of the modal editor of properties runs EditProperty.
class TestWindows : public editors::FormWindows {
public:
    // A report run, by its kind and the salary at that moment.
    using Report = std::pair<std::int32_t, double>;

    explicit TestWindows(editors::Desktop& desktop) : FormWindows(desktop) { model::InstallRecordWindows(this); }
    ~TestWindows() override { model::InstallRecordWindows(nullptr); }
    TestWindows(const TestWindows&) = delete;
    TestWindows& operator=(const TestWindows&) = delete;

    using FormWindows::EditorOf;
    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProperty& property) override {
        return std::make_unique<PropertyWindow>([this, &property] {
            edited.push_back(property.PropertyName);
            if (EditProperty)
                EditProperty(property);
        });
    }
    std::unique_ptr<model::ReportWriter> NewReportWriter() override { return std::make_unique<Writer>(reports); }

    std::function<void(model::clsProperty&)> EditProperty;
    std::vector<std::string> edited;  // names of the properties whose editors were opened
    std::vector<Report> reports;

private:
    class PropertyWindow : public model::EditorWindow {
    public:
        explicit PropertyWindow(std::function<void()> run) : run_(std::move(run)) {}
        void Show() override {
            const std::function<void()> run = run_;  // may destroy this window
            run();
        }
        void BringToFront() override {}

    private:
        std::function<void()> run_;
    };

    class Writer : public model::ReportWriter {
    public:
        explicit Writer(std::vector<Report>& runs) : runs_(runs) {}
        void Profile(model::clsProfile& objProfile) override { profile_ = &objProfile; }
        void Property(model::clsProperty&) override {}
        void ReportType(std::int32_t kind) override { kind_ = kind; }
        void PrintReport() override { runs_.emplace_back(kind_, profile_->IncSalary); }
        bool InUse() const override { return false; }

    private:
        std::vector<Report>& runs_;
        model::clsProfile* profile_ = nullptr;
        std::int32_t kind_ = -1;
    };
};

// The sample household, which the program has open, with all its profiles.
class Household {
public:
    Household() : file(SampleContent("household-2000.mdb")) {
        file.Open();
        model::gProfiles = std::make_unique<model::clsProfiles>();
        model::gProfiles->Load();
    }
    ~Household() {
        model::gProfiles.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    Household(const Household&) = delete;
    Household& operator=(const Household&) = delete;

    model::clsProfile& profile(const char* key = "P1") const { return model::gProfiles->Item(key); }

    // Values of the first row that a statement gives, as text; empty when there is none.
    std::vector<std::string> Row(const std::string& sql) const {
        std::vector<std::string> texts;
        const auto rows = file.Rows(sql);
        if (!rows.empty())
            for (const runtime::Variant& value : rows.front())
                texts.push_back(runtime::ToText(value));
        return texts;
    }

    ScopedRegion region;
    HouseholdFile file;
    MessageRecorder messages;
    FakeDesktop desktop;
    TestWindows windows{desktop};
};

// The editor that a profile's Display opened, ready for keys and clicks.
inline editors::frmProfile* Open(Household& household, model::clsProfile& profile) {
    profile.Display();
    auto* form = qobject_cast<editors::frmProfile*>(household.desktop.documents.last());
    return form && QTest::qWaitForWindowActive(form) ? form : nullptr;
}

inline void Click(QWidget* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

inline controls::zqTextBox* BoxOf(const QWidget* form, const QString& name) {
    return form->findChild<controls::zqTextBox*>(name);
}

inline QLineEdit* LineOf(const QWidget* form, const QString& name) {
    return BoxOf(form, name)->findChild<QLineEdit*>("TextBox");
}

// Types over what a field holds.
inline void TypeOver(QLineEdit* line, const QString& text) {
    line->selectAll();
    QTest::keyClicks(line, text);
}

inline void ChooseTab(const editors::frmProfile* form, int tab) {
    QTest::mouseClick(form->zqTabDialog1, Qt::LeftButton, Qt::NoModifier, form->zqTabDialog1->TabRect(tab).center());
}

inline QStringList Lines(const QListWidget* list) {
    QStringList lines;
    for (int row = 0; row < list->count(); ++row)
        lines << list->item(row)->text();
    return lines;
}

// Object names of the pages that can be seen.
inline QStringList VisiblePages(const editors::frmProfile* form) {
    QStringList visible;
    for (const editors::ProfilePage& page : editors::ProfilePages())
        if (form->findChild<QFrame*>(page.frame)->isVisible())
            visible << page.frame;
    return visible;
}

}  // namespace ledgix::test

// Compares what the message boxes have shown so far.
#define COMPARE_MESSAGES(household, ...) \
    QVERIFY((household).messages.messages() == (std::vector<ledgix::test::MessageRecorder::Message>{__VA_ARGS__}))
