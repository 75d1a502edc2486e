#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cls_profile.h"
#include "cls_property.h"
#include "record_windows.h"
#include "zq_reports.h"

namespace ledgix::reports {

enum ReportKind : std::int32_t {
    kProfileReport = 0,
    kAnalysisReport = 1,  // the first year of a purchase
    kOutlookReport = 2,   // ten years
};

// Runs one report: opens its template, has the report's body fill and print the bands, and shows the result. Created
// for one report and kept as long as its preview is open, so that the report can be run again for the printer.
class clsReport : public model::ReportWriter {
public:
    clsReport();
    clsReport(const clsReport&) = delete;
    clsReport& operator=(const clsReport&) = delete;

    // Property reports need both: the property and the profile that owns it.
    void Profile(model::clsProfile& objProfile) override { profile_ = &objProfile; }
    void Property(model::clsProperty& objProperty) override { property_ = &objProperty; }
    void ReportType(std::int32_t kind) override { kind_ = kind; }

    // The layout engine; report bodies call its bands and fields directly.
    zq::zqReports& objReport() { return engine_; }
    const zq::zqReports& objReport() const { return engine_; }

    // An error ends the run in a message box, and the report is not shown. A template that cannot be opened ends it
    // without a word.
    void PrintReport() override;

    bool InUse() const override { return engine_.PreviewOpen(); }

    // The last run reached its end.
    bool Printed() const { return printed_; }

    void PrintHeading(std::string_view sCaption);

    // A paragraph of any length, as many bands as it has lines. Nothing for an empty text.
    void PrintMemo(std::string_view sMemo);

private:
    void objReport_PrintToPrinterButton();
    std::string FileName() const;
    void RunBody();

    zq::zqReports engine_;
    model::clsProfile* profile_ = nullptr;
    model::clsProperty* property_ = nullptr;
    std::int32_t kind_ = kProfileReport;
    bool printed_ = false;
};

}  // namespace ledgix::reports
