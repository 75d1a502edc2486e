#include "table_rows.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "table_scan.h"

namespace ledgix::test {

std::vector<NamedRow> ReadRows(jet::DatabaseFile& file, const jet::TableDefinition& table) {
    std::vector<NamedRow> rows;
    jet::TableScan scan(file, table);
    while (scan.Next()) {
        NamedRow& row = rows.emplace_back();
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            row.emplace_back(table.columns[i].name, scan.Value(i));
    }
    return rows;
}

std::vector<NamedRow> ReadRows(jet::DatabaseFile& file, const std::string& table) {
    return ReadRows(file, file.ReadTableDefinition(file.FindTable(table).value().DefinitionPage()));
}

std::vector<std::string> SampleFiles() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(LEDGIX_TEST_DATA "/mdb")) {
        if (entry.path().extension() == ".mdb")
            paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string FileTestName(const testing::TestParamInfo<std::string>& info) {
    std::string name = std::filesystem::path(info.param).stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

}  // namespace ledgix::test
