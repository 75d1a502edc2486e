#include "csv_field.h"

#include "text.h"

namespace ledgix::runtime {

std::string CsvField(const std::string& text) {
    const bool outer_blank = text.starts_with(' ') || text.ends_with(' ');
    if (!outer_blank && text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    return '"' + ReplaceAll(text, "\"", "\"\"") + '"';
}

}  // namespace ledgix::runtime
