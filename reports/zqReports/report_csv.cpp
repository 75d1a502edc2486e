#include "report_csv.h"

#include <string_view>

#include "text.h"

namespace ledgix::zq {

namespace {

std::string Quoted(const std::string& value) {
    const bool outer_blank = value.starts_with(' ') || value.ends_with(' ');
    if (!outer_blank && value.find_first_of(",\"\r\n") == value.npos)
        return value;
    return '"' + runtime::ReplaceAll(value, "\"", "\"\"") + '"';
}

}  // namespace

std::string ToCsv(const Document& document) {
    std::string csv;
    for (const PrintedBand& band : document.bands) {
        csv += Quoted(band.name);
        for (const PrintedField& field : band.fields)
            csv += ',' + Quoted(field.text);
        csv += runtime::kLineBreak;
    }
    return csv;
}

}  // namespace ledgix::zq
