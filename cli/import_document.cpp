#include "import_document.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string_view>

#include "date_time.h"
#include "files.h"
#include "json_reader.h"
#include "request_refused.h"
#include "schema.h"
#include "text.h"

namespace ledgix::cli {

namespace {

using Json = nlohmann::json;

// How the rows of a table stand in the document.
struct RecordShape {
    const store::SchemaTable& table;
    std::string_view number;    // the member that tells records of a list apart; empty: none
    std::string_view left_out;  // the column that the place in the document stands for
    std::string_view list;      // the member with the records that belong to this one
    bool takes_null = false;
    bool all_required = false;
};

const RecordShape kProfile{.table = store::ProfilesTable(),
                           .number = "ProfileNumber",
                           .left_out = {},
                           .list = "properties",
                           .takes_null = true};
const RecordShape kProperty{
    .table = store::ProfilePropertyTable(), .number = "PropertyNumber", .left_out = "ProfileNumber", .list = {}};
const RecordShape kBracket{
    .table = store::TaxRatesTable(), .number = {}, .left_out = {}, .list = {}, .all_required = true};

[[noreturn]] void Refuse(const std::string& place, const std::string& reason) {
    throw RequestRefused(place.empty() ? reason : place + ": " + reason);
}

template <class Whole>
void CheckWhole(const Json& value, Whole least, const std::string& place) {
    constexpr Whole kMost = std::numeric_limits<Whole>::max();
    const double number = value.is_number() ? value.get<double>() : 0.5;
    if (number != std::floor(number) || number < least || number > kMost)
        Refuse(place, "a whole number from " + std::to_string(least) + " to " + std::to_string(kMost) + " is wanted");
}

void CheckNumber(const Json& value, double most, const std::string& place) {
    if (!value.is_number())
        Refuse(place, "a number is wanted");
    if (std::abs(value.get<double>()) > most)
        Refuse(place, "the number is out of range");
}

void CheckText(const Json& value, int size, const std::string& place) {
    if (!value.is_string())
        Refuse(place, "a text is wanted");
    if (runtime::ToUtf16(value.get_ref<const std::string&>()).size() > static_cast<std::size_t>(size))
        Refuse(place, "the text has more than " + std::to_string(size) + " characters");
}

void CheckDate(const Json& value, const std::string& place) {
    if (!value.is_string() || !runtime::ParseIso8601(value.get_ref<const std::string&>()))
        Refuse(place, "a date and time like 2026-02-14T20:15:30 is wanted");
}

void CheckValue(const Json& value, const store::SchemaColumn& column, bool is_number_of_record,
                const std::string& place) {
    switch (column.type) {
        case dao::kBoolean:
            if (!value.is_boolean())
                Refuse(place, "true or false is wanted");
            break;
        case dao::kInteger:
            return CheckWhole(value, std::numeric_limits<std::int16_t>::min(), place);
        case dao::kLong:
            return CheckWhole(value, is_number_of_record ? 1 : std::numeric_limits<std::int32_t>::min(), place);
        case dao::kSingle:
            return CheckNumber(value, static_cast<double>(std::numeric_limits<float>::max()), place);
        case dao::kText:
            return CheckText(value, column.size, place);
        case dao::kDate:
            return CheckDate(value, place);
        default:
            return CheckNumber(value, std::numeric_limits<double>::max(), place);
    }
}

const store::SchemaColumn* FindColumn(const RecordShape& shape, const std::string& member) {
    const auto& columns = shape.table.columns;
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const store::SchemaColumn& column) { return column.name == member; });
    return found == columns.end() || member == shape.left_out ? nullptr : &*found;
}

void CheckRecords(const Json& records, const RecordShape& shape, const std::string& place);

void CheckMember(const std::string& member, const Json& value, const RecordShape& shape, const std::string& place) {
    if (!shape.list.empty() && member == shape.list)
        return CheckRecords(value, kProperty, place);
    const store::SchemaColumn* column = FindColumn(shape, member);
    if (column == nullptr)
        Refuse(place, "there is no such member");
    const bool is_number_of_record = member == shape.number;
    const bool may_be_null = !is_number_of_record && (shape.takes_null || column->type == dao::kText);
    if (!value.is_null() || !may_be_null)
        CheckValue(value, *column, is_number_of_record, place);
}

void CheckRecord(const Json& record, const RecordShape& shape, const std::string& place) {
    if (!record.is_object())
        Refuse(place, "an object is wanted");
    for (const auto& [member, value] : record.items())
        CheckMember(member, value, shape, MemberPlace(place, member));
    for (const store::SchemaColumn& column : shape.table.columns) {
        if ((shape.all_required || column.name == shape.number) && !record.contains(column.name))
            Refuse(MemberPlace(place, column.name), "the number is missing");
    }
}

void CheckRecords(const Json& records, const RecordShape& shape, const std::string& place) {
    if (!records.is_array())
        Refuse(place, "a list is wanted");
    std::set<double> numbers;
    for (std::size_t i = 0; i < records.size(); ++i) {
        CheckRecord(records[i], shape, ElementPlace(place, i));
        if (!shape.number.empty() && !numbers.insert(NumberIn(records[i], shape.number)).second)
            Refuse(MemberPlace(ElementPlace(place, i), shape.number), "the number stands there twice");
    }
}

void CheckDocument(const Json& document) {
    if (!document.is_object())
        Refuse({}, "an object is wanted");
    for (const auto& [member, value] : document.items()) {
        if (member == "profiles")
            CheckRecords(value, kProfile, member);
        else if (member == "taxRates")
            CheckRecords(value, kBracket, member);
        else
            Refuse(member, "there is no such member");
    }
    if (!document.contains("profiles"))
        Refuse("profiles", "the list is missing");
}

}  // namespace

nlohmann::json ReadImportDocument(const std::string& path) {
    const std::string text = runtime::ReadFile(path);
    try {
        Json document = ReadJson(text);
        CheckDocument(document);
        return document;
    } catch (const RequestRefused& refusal) {
        throw RequestRefused(std::string("import: ") + refusal.what());
    }
}

double NumberIn(const nlohmann::json& record, std::string_view column) {
    const auto value = record.find(column);
    return value == record.end() || value->is_null() ? 0 : value->get<double>();
}

std::string TextIn(const nlohmann::json& record, std::string_view column) {
    const auto value = record.find(column);
    return value == record.end() || value->is_null() ? std::string() : value->get<std::string>();
}

}  // namespace ledgix::cli
