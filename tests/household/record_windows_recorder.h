#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cls_profile.h"
#include "cls_property.h"
#include "record_windows.h"

namespace ledgix::test {

// Stands for the windows of records as long as it lives, and keeps what was asked of them: "open P2", "show P2",
// "front P2", "close P2", "report 1 of P2, P2-1", "end of report".
class RecordWindowsRecorder : public model::RecordWindows {
public:
    RecordWindowsRecorder() { model::InstallRecordWindows(this); }
    ~RecordWindowsRecorder() override { model::InstallRecordWindows(nullptr); }
    RecordWindowsRecorder(const RecordWindowsRecorder&) = delete;
    RecordWindowsRecorder& operator=(const RecordWindowsRecorder&) = delete;

    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProfile& profile) override {
        return std::make_unique<Editor>(*this, "P" + std::to_string(profile.ProfileNumber));
    }
    std::unique_ptr<model::EditorWindow> EditorOf(model::clsProperty& property) override {
        return std::make_unique<Editor>(*this, NameOf(property));
    }
    std::unique_ptr<model::ReportWriter> NewReportWriter() override { return std::make_unique<Writer>(*this); }

    // What was asked since the last call.
    std::vector<std::string> Take() { return std::exchange(asked_, {}); }

    bool previews_stay_open = true;

private:
    static std::string NameOf(const model::clsProperty& property) {
        return model::PropertyKey(property.ProfileNumber, property.PropertyNumber);
    }

    struct Editor : model::EditorWindow {
        Editor(RecordWindowsRecorder& owner, std::string record) : owner_(owner), record_(std::move(record)) {
            owner_.asked_.push_back("open " + record_);
        }
        ~Editor() override { owner_.asked_.push_back("close " + record_); }
        void Show() override { owner_.asked_.push_back("show " + record_); }
        void BringToFront() override { owner_.asked_.push_back("front " + record_); }

    private:
        RecordWindowsRecorder& owner_;
        std::string record_;
    };

    struct Writer : model::ReportWriter {
        explicit Writer(RecordWindowsRecorder& owner) : owner_(owner) {}
        ~Writer() override { owner_.asked_.push_back("end of report"); }
        void Profile(model::clsProfile& profile) override { of_ = "P" + std::to_string(profile.ProfileNumber); }
        void Property(model::clsProperty& property) override { property_ = NameOf(property); }
        void ReportType(std::int32_t kind) override { kind_ = kind; }
        void PrintReport() override {
            std::string asked = "report " + std::to_string(kind_) + " of " + of_;
            if (!property_.empty())
                asked.append(", ").append(property_);
            owner_.asked_.push_back(asked);
        }
        bool InUse() const override { return owner_.previews_stay_open; }

    private:
        RecordWindowsRecorder& owner_;
        std::string of_;
        std::string property_;
        std::int32_t kind_ = -1;
    };

    std::vector<std::string> asked_;
};

}  // namespace ledgix::test
