#pragma once

#include <map>
#include <string>
#include <vector>

#include "column_spec.h"
#include "file_image.h"
#include "variant.h"

namespace ledgix::test {

// One value for each column present, in the order of their declaration.
using Values = std::vector<runtime::Variant>;

// How the data of a long value are kept.
enum class LongValuePlace { kByLength, kChain };

// An index to build over the int32 column with this name.
struct IndexSpec {
    std::string name;
    std::string column;
    bool primary = false;
    std::size_t entries_per_page = 100;
    bool ascending = true;
    bool compressed = false;  // what the keys of a page begin with in common is stored once
};

// Builds one table. Rows go to pages as they are added; the definition is written by Finish.
class TableBuilder {
public:
    TableBuilder(FileImage& file, jet::PageNumber page, bool system, std::vector<ColumnSpec> columns);

    jet::PageNumber page() const { return page_; }

    // The encoded row, to be changed or put into the table.
    ByteList Encode(const Values& values, std::size_t gap_before_end = 0);

    jet::RowId AddRow(const Values& values);
    jet::RowId AddEncodedRow(const ByteList& row, std::uint16_t flags = 0);

    // The next row begins a new page.
    void StartPage() { current_page_ = 0; }

    // With `keep_bytes` the row's bytes stay in place, as some writers leave them.
    void Delete(jet::RowId id, bool keep_bytes = false);

    // Writes the row anew on another page, hidden, and leaves a pointer in its home slot.
    jet::RowId Move(jet::RowId id, const Values& values);

    // The rows written before stay as they are.
    void AddColumn(const ColumnSpec& column);
    void DropColumn(const std::string& name);

    void AddIndex(const IndexSpec& index);

    // How long values of rows added from now on are kept.
    void KeepLongValues(LongValuePlace place) { long_value_place_ = place; }

    void Finish();

private:
    struct LongColumn {
        std::uint16_t number;
        jet::RowId owned;
        jet::RowId free_space;
        jet::PageNumber current_page = 0;
    };
    struct BuiltIndex {
        IndexSpec spec;
        jet::RowId map;
        jet::PageNumber root;
    };
    struct LiveRow {
        jet::RowId id;
        std::map<std::string, std::int32_t> keys;  // by column
    };

    jet::RowId AddMap();
    void Place(const ColumnSpec& column);
    ByteList EncodeColumn(const PlacedColumn& column, const runtime::Variant& value);
    std::map<std::string, std::int32_t> KeysOf(const Values& values) const;
    ByteList EncodeLongValue(const PlacedColumn& column, const runtime::Variant& value);
    jet::RowId AddLongRow(LongColumn& column, const ByteList& row);
    jet::PageNumber PageFor(std::size_t length);
    ByteList DefinitionHeader() const;
    ByteList Definition() const;
    void AppendName(ByteList& out, const std::string& name) const;
    void AppendColumn(ByteList& out, const PlacedColumn& column) const;
    void AppendIndexBlock(ByteList& out, const BuiltIndex& index) const;
    void AppendLogicalIndex(ByteList& out, std::size_t number) const;
    void WriteDefinition(const ByteList& definition);
    void WriteIndex(const BuiltIndex& index);

    FileImage& file_;
    const jet::Format& format_;
    jet::PageNumber page_;
    bool system_;
    jet::PageNumber map_page_;
    jet::RowId owned_;
    jet::RowId free_space_;
    std::vector<PlacedColumn> columns_;
    std::vector<LongColumn> long_columns_;
    std::vector<BuiltIndex> indexes_;
    std::vector<LiveRow> rows_;
    std::uint16_t columns_ever_ = 0;
    std::uint16_t variable_ever_ = 0;
    std::uint16_t fixed_size_ = 0;
    jet::PageNumber current_page_ = 0;
    LongValuePlace long_value_place_ = LongValuePlace::kByLength;
};

}  // namespace ledgix::test
