#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "error_log.h"
#include "message_recorder.h"
#include "scoped_environment.h"
#include "temporary_folder.h"
#include "variant.h"
#include "workspace.h"

namespace ledgix::test {

// A database file to be changed, in a folder that is the application folder meanwhile. It is the program's one database
// from Open to Close, or to its end.
class HouseholdFile {
public:
    explicit HouseholdFile(std::string_view content);
    explicit HouseholdFile(const std::vector<std::uint8_t>& content);
    ~HouseholdFile();
    HouseholdFile(const HouseholdFile&) = delete;
    HouseholdFile& operator=(const HouseholdFile&) = delete;

    const std::string& path() const { return path_; }
    const TemporaryFolder& folder() const { return folder_; }
    std::string bytes() const { return Content(path_); }

    // As another start of the program does.
    void Open() const;
    void OpenReadOnly() const;
    void Close() const;

    // Rows of a statement as another program sees them.
    std::vector<std::vector<runtime::Variant>> Rows(const std::string& sql) const;
    // The first field of each.
    std::vector<runtime::Variant> Column(const std::string& sql) const;
    // As another program does; the number of rows that it touched.
    std::size_t Execute(const std::string& sql) const;

private:
    TemporaryFolder folder_;
    ScopedEnvironment application_{"LEDGIX_FOLDER", folder_.path()};
    std::string path_;
};

// The content of one of the sample files.
std::string SampleContent(const std::string& name);

// A new file without any of the program's tables, and one with all of them and the default tax brackets.
std::string EmptyContent(dao::FileFormat format);
std::string UpgradedContent(dao::FileFormat format);

// Both generations as a test parameter, and the name of one.
inline constexpr dao::FileFormat kBothFormats[]{dao::FileFormat::kJet3, dao::FileFormat::kJet4};
inline std::string FormatName(const testing::TestParamInfo<dao::FileFormat>& info) {
    return info.param == dao::FileFormat::kJet3 ? "Jet3" : "Jet4";
}

// Keeps the diagnoses of engine errors as long as it lives, "3163 - ..." each.
class DiagnosisRecorder : public services::Diagnostics {
public:
    DiagnosisRecorder() { services::InstallDiagnostics(this); }
    ~DiagnosisRecorder() override { services::InstallDiagnostics(nullptr); }
    DiagnosisRecorder(const DiagnosisRecorder&) = delete;
    DiagnosisRecorder& operator=(const DiagnosisRecorder&) = delete;

    void Write(std::string_view diagnosis) override { diagnoses_.emplace_back(diagnosis); }
    // The numbers that they begin with.
    std::vector<int> Numbers() const;
    void Clear() { diagnoses_.clear(); }

private:
    std::vector<std::string> diagnoses_;
};

}  // namespace ledgix::test
