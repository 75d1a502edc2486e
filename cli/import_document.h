#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace ledgix::cli {

// The document of a file in the shape that `export` writes, checked as a whole: known members, values that the columns
// of the current layout take, every number once. Raises RequestRefused with the place in the file, error 53 or 57 when
// the file cannot be read.
nlohmann::json ReadImportDocument(const std::string& path);

// A number of the document; 0 where it is missing or null.
double NumberIn(const nlohmann::json& record, std::string_view column);
// A text of the document; empty where it is missing or null.
std::string TextIn(const nlohmann::json& record, std::string_view column);

}  // namespace ledgix::cli
