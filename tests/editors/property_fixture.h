#pragma once

#include <QCheckBox>
#include <QSettings>
#include <QTemporaryDir>

#include "editor_fixture.h"
#include "frm_property.h"

// What tests of the property editor share.
namespace ledgix::test {

// Shows the real editor of a property, but does not wait until the user is done, and records its reports.
class PropertyWindows : public editors::FormWindows {
public:
    struct Report {
        std::int32_t kind = 0;
        std::string profile;
        std::string property;
        double price = 0;
        bool operator==(const Report&) const = default;
    };

    explicit PropertyWindows(editors::Desktop& desktop) : FormWindows(desktop), desktop_(desktop) {
        model::InstallRecordWindows(this);
    }
    ~PropertyWindows() override { model::InstallRecordWindows(nullptr); }
    PropertyWindows(const PropertyWindows&) = delete;
    PropertyWindows& operator=(const PropertyWindows&) = delete;

    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProperty& property) override {
        struct Window : model::EditorWindow {
            ~Window() override {
                if (!form)
                    return;
                form->done(QDialog::Rejected);
                form->deleteLater();
            }
            void Show() override { form->show(); }
            void BringToFront() override {}
            QPointer<editors::frmProperty> form;
        };
        auto window = std::make_unique<Window>();
        form = window->form = new editors::frmProperty(property, desktop_, nullptr);
        return window;
    }
    std::unique_ptr<model::ReportWriter> NewReportWriter() override {
        struct Writer : model::ReportWriter {
            explicit Writer(std::vector<Report>& list) : runs(list) {}
            void Profile(model::clsProfile& objProfile) override { run.profile = objProfile.ProfileName; }
            void Property(model::clsProperty& objProperty) override {
                run.property = objProperty.PropertyName;
                run.price = objProperty.PurchasePrice;
            }
            void ReportType(std::int32_t number) override { run.kind = number; }
            void PrintReport() override { runs.push_back(run); }
            bool InUse() const override { return false; }
            std::vector<Report>& runs;
            Report run;
        };
        return std::make_unique<Writer>(reports);
    }

    QPointer<editors::frmProperty> form;  // of the last property whose editor was opened
    std::vector<Report> reports;

private:
    editors::Desktop& desktop_;
};

// The places of windows are kept in a folder of the test's own, as long as the object lives.
class WindowPlaces {
public:
    WindowPlaces() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path()); }

private:
    QTemporaryDir folder_;
};

// A household with the editor of one property open: a stored one of its first profile, by its number, or a new one.
class PropertyEditor : public Household {
public:
    static constexpr int kNew = -1;

    explicit PropertyEditor(int number = kNew) {
        profile().LoadProperties();
        profile().ReloadProperties = [this] { ++reloads; };
        property = number == kNew ? &profile().AddProperty(1) : &profile().Property(model::PropertyKey(1, number));
    }
    bool Open() {
        property->Display();
        return QTest::qWaitForWindowActive(form());
    }
    editors::frmProperty* form() const { return property_windows.form; }
    bool Closed() const { return !form() || !form()->isVisible(); }
    QLineEdit* Line(const QString& name) const { return LineOf(form(), name); }
    // Goes to a box and types over what it holds.
    void Type(const QString& name, const QString& text) const {
        Line(name)->setFocus();
        TypeOver(Line(name), text);
    }
    QString Text(const QString& name) const { return BoxOf(form(), name)->Text(); }
    std::string Stored(const std::string& column) const {
        const auto row =
            Row("select " + column + " from ProfileProperty where ProfileNumber = 1 and PropertyNumber = " +
                runtime::ToText(property->PropertyNumber));
        return row.empty() ? "no row" : row.front();
    }

    WindowPlaces places;
    PropertyWindows property_windows{desktop};
    model::clsProperty* property;
    int reloads = 0;
};

}  // namespace ledgix::test
