#include "report_command.h"

#include <ostream>
#include <string>
#include <vector>

#include "application_folder.h"
#include "cls_profiles.h"
#include "conversions.h"
#include "files.h"
#include "json_text.h"
#include "layout_check.h"
#include "pdf_output.h"
#include "report_csv.h"
#include "report_text.h"
#include "runtime_error.h"

namespace ledgix::cli {

namespace {

using runtime::ErrorNumber;
using runtime::RaiseError;

// The record that `wanted` names: by number, or else by exact name. `what` is the kind of record in messages.
template <class Record>
Record& Select(const model::KeyedCollection<Record>& records, const std::string& wanted, const std::string& what,
               std::int32_t Record::*number, std::string Record::*name) {
    std::vector<Record*> named;
    for (std::size_t i = 1; i <= records.Count(); ++i) {
        Record& record = records[i];
        if (runtime::ToText(record.*number) == wanted)
            return record;
        if (record.*name == wanted)
            named.push_back(&record);
    }
    if (named.empty())
        RaiseError(ErrorNumber::kInvalidArgument, "There is no " + what + " '" + wanted + "'.");
    if (named.size() > 1)
        RaiseError(ErrorNumber::kInvalidArgument,
                   "More than one " + what + " is named '" + wanted + "'; give its number.");
    return *named.front();
}

model::clsProperty& SelectProperty(model::clsProfile& profile, const std::string& wanted) {
    profile.ReloadProfile();
    model::clsProperty& property = Select(profile.Properties(), wanted, "property", &model::clsProperty::PropertyNumber,
                                          &model::clsProperty::PropertyName);
    if (!property.Saved)
        RaiseError(ErrorNumber::kInvalidNull, "The property '" + wanted + "' could not be loaded.");
    return property;
}

std::string ToJson(const zq::Document& document, reports::ReportKind kind) {
    std::string text = "{\"report\": " + JsonText(std::string_view(ReportName(kind))) + ", \"bands\": [";
    const char* separator = "\n";
    for (const zq::PrintedBand& band : document.bands) {
        text += separator + (" {\"band\": " + JsonText(std::string_view(band.name))) + ", \"fields\": {";
        bool first = true;
        for (const zq::PrintedField& field : band.fields) {
            if (field.text.empty())
                continue;
            text += (first ? "" : ", ") + JsonText(std::string_view(field.name)) + ": " +
                    JsonText(std::string_view(field.text));
            first = false;
        }
        text += "}}";
        separator = ",\n";
    }
    return text + "\n]}\n";
}

std::string Written(const zq::Document& document, const ReportRequest& request) {
    switch (request.format) {
        case Format::kCsv:
            return zq::ToCsv(document);
        case Format::kJson:
            return ToJson(document, request.kind);
        case Format::kPdf:
            return zq::ToPdf(document);
        default:
            return zq::ToText(document);
    }
}

void CheckTemplates(const zq::zqReports& engine) {
    if (!engine.why().empty())
        RaiseError(ErrorNumber::kFileNotFound, "The report template cannot be used: " + engine.why());
}

}  // namespace

std::string ReportName(reports::ReportKind kind) {
    switch (kind) {
        case reports::kAnalysisReport:
            return "analysis";
        case reports::kOutlookReport:
            return "outlook";
        default:
            return "profile";
    }
}

bool RunReport(dao::Database& database, const ReportRequest& request, std::ostream& out) {
    const bool of_property = request.kind != reports::kProfileReport;
    if (of_property)
        RequireLayout(database, {&store::ProfilesTable(), &store::ProfilePropertyTable(), &store::TaxRatesTable()});
    else
        RequireLayout(database, {&store::ProfilesTable(), &store::TaxRatesTable()});
    model::clsProfiles profiles;
    profiles.Load();
    model::clsProfile& profile = Select(profiles.Profiles(), request.profile, "profile",
                                        &model::clsProfile::ProfileNumber, &model::clsProfile::ProfileName);
    reports::clsReport report;
    report.Profile(profile);
    if (of_property)
        report.Property(SelectProperty(profile, request.property));
    report.ReportType(request.kind);
    report.PrintReport();
    if (!report.Printed()) {
        CheckTemplates(report.objReport());
        return false;
    }
    const zq::Document& document = report.objReport().document();
    if (request.output.empty())
        out << Written(document, request);
    else
        runtime::WriteFile(request.output, Written(document, request));
    return true;
}

}  // namespace ledgix::cli
