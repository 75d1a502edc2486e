#include "report_csv.h"

#include "csv_field.h"
#include "text.h"

namespace ledgix::zq {

std::string ToCsv(const Document& document) {
    std::string csv;
    for (const PrintedBand& band : document.bands) {
        csv += runtime::CsvField(band.name);
        for (const PrintedField& field : band.fields)
            csv += ',' + runtime::CsvField(field.text);
        csv += runtime::kLineBreak;
    }
    return csv;
}

}  // namespace ledgix::zq
