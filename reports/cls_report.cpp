#include "cls_report.h"

#include <string>
#include <utility>

#include "application_folder.h"
#include "error_log.h"
#include "message_box.h"
#include "outlook_report.h"
#include "profile_report.h"
#include "property_report.h"
#include "runtime_error.h"

namespace ledgix::reports {

namespace {

std::string TemplateName(std::int32_t kind) {
    switch (kind) {
        case kProfileReport:
        case kAnalysisReport:
            return "profile.rdn";
        case kOutlookReport:
            return "profile10.rdn";
        default:
            return {};
    }
}

template <class Record>
Record& Known(Record* record) {
    if (!record)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    return *record;
}

}  // namespace

clsReport::clsReport() {
    engine_.PrintToPrinterButton = [this] { objReport_PrintToPrinterButton(); };
}

void clsReport::objReport_PrintToPrinterButton() {
    engine_.SetDestination(zq::kToPrinter);
    PrintReport();
}

void clsReport::PrintReport() {
    printed_ = false;
    try {
        if (!engine_.OpenTemplate(runtime::ApplicationFile(TemplateName(kind_))))
            return;
        RunBody();
        engine_.SetName(FileName());
        engine_.Show();
        printed_ = true;
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "clsGroup.PrintReport");
        if (kind_ == kAnalysisReport) {
            std::string entry = error.what();
            services::WriteErrorLog(entry);
        }
    }
}

// "Analysis - Hannah and Tom - 14 Harbour Terrace"
std::string clsReport::FileName() const {
    std::string name = kind_ == kProfileReport ? "Profile" : kind_ == kAnalysisReport ? "Analysis" : "Outlook";
    name.append(" - ").append(Known(profile_).ProfileName);
    if (kind_ != kProfileReport)
        name.append(" - ").append(Known(property_).PropertyName);
    return name;
}

void clsReport::RunBody() {
    switch (kind_) {
        case kProfileReport:
            PrintProfileReport(*this, Known(profile_));
            break;
        case kAnalysisReport:
            PrintPropertyReport(*this, Known(property_), Known(profile_));
            break;
        default:
            PrintOutlookReport(*this, Known(property_), Known(profile_));
            break;
    }
}

void clsReport::PrintHeading(std::string_view sCaption) {
    engine_.band("Heading").field("caption").SetText(std::string(sCaption));
    engine_.PrintBand("Heading");
}

void clsReport::PrintMemo(std::string_view sMemo) {
    zq::Band& band = engine_.band("freetext");
    std::string rest(sMemo);
    while (!rest.empty()) {
        zq::Field& caption = band.field("caption");
        zq::zqReports::Fit fit = engine_.FitText(caption, rest);
        caption.SetText(std::move(fit.part));
        rest = std::move(fit.rest);
        engine_.PrintBand(band.name());
    }
}

}  // namespace ledgix::reports
