#pragma once

#include <QApplication>
#include <QPrinter>
#include <QTest>
#include <QToolButton>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cases.h"
#include "cls_profiles.h"
#include "cls_report.h"
#include "desktop.h"
#include "form_windows.h"
#include "frm_preview.h"
#include "household_builder.h"
#include "household_file.h"
#include "process.h"
#include "report_folder.h"
#include "report_windows.h"

// One report by way of the program's windows, and by ledgix-cli as a process of its own.
namespace ledgix::test {

// A household whose reports take more than a page.
constexpr const char* kLongestHousehold = "longest";

// A report of a household: a sample file, a reference case as "file.json/number", or kLongestHousehold.
struct WantedReport {
    std::string household;
    std::int32_t kind = reports::kProfileReport;
    std::int32_t profile = 1;
    std::int32_t property = 0;  // of property reports
};

inline std::vector<std::uint8_t> LongestHousehold() {
    constexpr double kHighest = 999999999999.99;
    Json profile{{"ProfileName", std::string(50, 'W')}};
    for (const auto& amount : model::kIncomeAmounts)
        profile[std::string(amount.column)] = kHighest;
    for (const auto& amount : model::kAssetAmounts)
        profile[std::string(amount.column)] = kHighest;
    const Json property{{"PropertyName", std::string(50, 'W')},
                        {"PurchasePrice", kHighest},
                        {"DepositValue", 1},
                        {"MortgageRate", 9.75},
                        {"MortgageTerm", 30},
                        {"RentIncome", kHighest},
                        {"Fees", kHighest}};
    HouseholdBuilder builder;
    builder.AddProfile(1, profile).AddProperty(1, 1, property);
    return builder.AddTaxRates(Json::parse(R"([{"upper": 0, "rate": 39}])")).Finish();
}

inline std::string HouseholdContent(const std::string& household) {
    if (household == kLongestHousehold) {
        const auto bytes = LongestHousehold();
        return {bytes.begin(), bytes.end()};
    }
    const std::size_t slash = household.find('/');
    if (slash == household.npos)
        return SampleContent(household);
    const Json cases = LoadCases(household.substr(0, slash));
    const auto bytes = CaseContent(cases.at(std::stoul(household.substr(slash + 1))));
    return {bytes.begin(), bytes.end()};
}

// A copy of the household, brought up to the layout of today, with all its records loaded.
class CurrentHousehold {
public:
    explicit CurrentHousehold(const std::string& household) : file_(HouseholdContent(household)) {
        if (household.ends_with(".mdb"))
            OutputOfSuccess(Cli("upgrade"));
        file_.Open();
        model::gProfiles = std::make_unique<model::clsProfiles>();
        model::gProfiles->Load();
        for (std::size_t i = 1; i <= model::gProfiles->Count(); ++i)
            model::gProfiles->Item(i).ReloadProfile();
    }
    ~CurrentHousehold() { model::gProfiles.reset(); }
    CurrentHousehold(const CurrentHousehold&) = delete;
    CurrentHousehold& operator=(const CurrentHousehold&) = delete;

    // The command that runs ledgix-cli on the file.
    std::string Cli(const std::string& arguments) const {
        return "'" LEDGIX_CLI "' --database '" + file_.path() + "' " + arguments;
    }

private:
    HouseholdFile file_;
    ReportFolder templates_;
};

inline std::string CliArguments(const WantedReport& wanted) {
    constexpr const char* kNames[] = {"profile", "analysis", "outlook"};
    std::string arguments = "report ";
    arguments += kNames[wanted.kind];
    arguments += " --profile " + std::to_string(wanted.profile);
    if (wanted.kind != reports::kProfileReport)
        arguments += " --property " + std::to_string(wanted.property);
    return arguments;
}

// A program without a main window.
class NoDesktop : public editors::Desktop {
public:
    void AddDocument(QWidget&) override {}
    void RaiseDocument(QWidget&) override {}
    void ReloadProfileList() override {}
    void ShowHelpTopic(int) override {}
    QWidget* Owner() override { return nullptr; }
};

// The program's windows, with a printer that prints into a file. Keeps what was shown last.
class ReportDesk : public preview::ReportWindows {
public:
    explicit ReportDesk(const QString& printed)
        : ReportWindows([printed](QPrinter& printer, QWidget*) {
              printer.setOutputFormat(QPrinter::PdfFormat);
              printer.setOutputFileName(printed);
              return true;
          }) {
        model::InstallRecordWindows(&forms_);
        zq::InstallPreview(this);
    }
    ~ReportDesk() override {
        zq::InstallPreview(nullptr);
        model::InstallRecordWindows(nullptr);
    }
    ReportDesk(const ReportDesk&) = delete;
    ReportDesk& operator=(const ReportDesk&) = delete;

    std::unique_ptr<zq::PreviewWindow> Show(const zq::Document& document, std::function<void()> button) override {
        shown_ = document;
        return ReportWindows::Show(document, std::move(button));
    }
    const zq::Document& shown() const { return shown_; }

    // Runs the report as the program's buttons do, and gives its window, which closes with the record.
    preview::frmPreview* Open(const WantedReport& wanted) {
        model::clsProfile& profile = model::gProfiles->Item(model::ProfileKey(wanted.profile));
        const std::string key = model::PropertyKey(wanted.profile, wanted.property);
        if (wanted.kind == reports::kProfileReport)
            profile.Analyse();
        else if (wanted.kind == reports::kAnalysisReport)
            profile.Property(key).Analysis(profile);
        else
            profile.Property(key).Year10Analysis(profile);
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<preview::frmPreview*>(widget); window && window->isVisible())
                return window;
        return nullptr;
    }

private:
    NoDesktop desktop_;
    editors::FormWindows forms_{desktop_};
    zq::Document shown_;
};

}  // namespace ledgix::test
