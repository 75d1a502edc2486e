#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "database_file.h"
#include "file_image.h"
#include "table_builder.h"

namespace ledgix::test {

// Builds a small database of either generation from the facts of the format, to be read by the code under test and by
// mdbtools. System tables are there, but MSysObjects alone has rows.
class DatabaseBuilder {
public:
    explicit DatabaseBuilder(jet::Generation generation, std::size_t map_size = 0);

    FileImage& file() { return file_; }

    // Appends unused pages until the next one allocated has this number.
    void SkipTo(jet::PageNumber page);

    // The reference stays good.
    TableBuilder& AddTable(const std::string& name, std::vector<ColumnSpec> columns);

    // A catalogue entry of another kind. Null texts are left out.
    void AddEntry(std::int32_t id, std::int32_t parent, const std::string& name, std::int16_t type, std::uint32_t flags,
                  const runtime::Variant& database = {}, const runtime::Variant& foreign_name = {});

    // The content of the file. To be called once.
    std::vector<std::uint8_t> Finish();
    jet::DatabaseFile Open() { return jet::DatabaseFile(jet::MakeMemoryFile(Finish())); }

private:
    FileImage file_;
    std::deque<TableBuilder> system_tables_;
    std::deque<TableBuilder> tables_;
};

}  // namespace ledgix::test
