#pragma once

#include <QAction>
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <string>
#include <vector>

#include "case_list.h"
#include "cls_profiles.h"
#include "frm_main.h"
#include "household_builder.h"
#include "household_file.h"
#include "message_recorder.h"
#include "record_windows.h"
#include "runtime_error.h"

// What tests of the main window share: a household in a file, the window on it, and record windows that tell what was
// asked of them.
namespace ledgix::test {

// Editors that keep a diary in place of windows: "open 2", "show 2", "front 2", "close 2".
class EditorDiary : public model::RecordWindows {
public:
    EditorDiary() { model::InstallRecordWindows(this); }
    ~EditorDiary() override { model::InstallRecordWindows(nullptr); }
    EditorDiary(const EditorDiary&) = delete;
    EditorDiary& operator=(const EditorDiary&) = delete;

    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProfile& profile) override {
        return std::make_unique<Editor>(entries, profile.ProfileNumber);
    }
    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProperty&) override {
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    }
    std::unique_ptr<model::ReportWriter> NewReportWriter() override {
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    }

    QStringList entries;

private:
    class Editor : public model::EditorWindow {
    public:
        Editor(QStringList& entries, int number) : entries_(entries), number_(number) { Note("open"); }
        ~Editor() override { Note("close"); }
        void Show() override { Note("show"); }
        void BringToFront() override { Note("front"); }

    private:
        void Note(const char* what) { entries_ << QString("%1 %2").arg(what).arg(number_); }

        QStringList& entries_;
        int number_;
    };
};

struct NamedProfile {
    int number;
    std::string name;
};

inline std::vector<NamedProfile> NumberedProfiles(int count) {
    std::vector<NamedProfile> profiles;
    for (int i = 1; i <= count; ++i)
        profiles.push_back({i, "Profile " + std::to_string(i)});
    return profiles;
}

// Keeps the places of windows in a folder that goes with the object.
class WindowPlaces {
public:
    WindowPlaces() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path()); }

private:
    QTemporaryDir folder_;
};

// The main window on a household file with these profiles, open and loaded.
class MainForm {
public:
    explicit MainForm(const std::vector<NamedProfile>& profiles) : file(Household(profiles)) {
        file.Open();
        form = std::make_unique<shell::frmMain>();
        model::gProfiles = std::make_unique<model::clsProfiles>();
        model::gProfiles->Load();
    }
    MainForm() : MainForm(std::vector<NamedProfile>{{2, "Archer"}, {5, "Baker"}, {9, "Cole & Dunn"}}) {}
    ~MainForm() {
        model::gProfiles.reset();
        form.reset();
    }
    MainForm(const MainForm&) = delete;
    MainForm& operator=(const MainForm&) = delete;

    // The first activation loads the list.
    bool ShowActive() {
        form->show();
        form->activateWindow();
        return QTest::qWaitForWindowActive(form.get()) && QTest::qWaitForWindowExposed(form.get());
    }

    shell::ProfileList* list() const { return form->picMenu; }
    const shell::ProfileRows& rows() const { return form->picMenu->rows(); }
    QAction* Action(const char* name) const { return form->findChild<QAction*>(QLatin1String(name)); }
    QPoint Middle(int row) const { return list()->RowRect(row).center(); }

    void Click(int row) const { QTest::mouseClick(list(), Qt::LeftButton, {}, Middle(row)); }
    void DoubleClick(int row) const {
        Click(row);
        QTest::mouseDClick(list(), Qt::LeftButton, {}, Middle(row));
    }
    void Move(QWidget* widget, const QPoint& position) const {
        QMouseEvent move(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(widget, &move);
    }
    void Press(int key) const { QTest::keyClick(list(), Qt::Key(key)); }
    void Wheel(int eighths) const {
        QWheelEvent wheel(QPointF(30, 30), list()->mapToGlobal(QPointF(30, 30)), {}, QPoint(0, eighths), Qt::NoButton,
                          {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(list(), &wheel);
    }

    WindowPlaces places;
    HouseholdFile file;
    MessageRecorder messages;
    EditorDiary editors;
    std::unique_ptr<shell::frmMain> form;

private:
    static std::vector<std::uint8_t> Household(const std::vector<NamedProfile>& profiles) {
        HouseholdBuilder builder;
        for (const NamedProfile& profile : profiles)
            builder.AddProfile(profile.number, Json{{"ProfileName", profile.name}});
        return builder.Finish();
    }
};

}  // namespace ledgix::test
