#include "specimen.h"

#include <algorithm>

#include "byte_order.h"
#include "rc4.h"
#include "table_scan.h"
#include "usage_map.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using runtime::Null;

constexpr std::uint8_t kHeaderKey[]{0xC7, 0xDA, 0x39, 0x6B};

jet::DatabaseFile OpenCopy(const std::vector<std::uint8_t>& content) {
    return jet::DatabaseFile(jet::MakeMemoryFile(content));
}

std::string Line(const jet::Finding& finding) {
    return finding.code + "  " + finding.text + "\n";
}

std::size_t SkipNames(const jet::Format& format, jet::Bytes page, std::size_t at, std::size_t count) {
    const std::size_t size = format.definition.name_length_size;
    for (std::size_t i = 0; i < count; ++i)
        at += size + (size == 1 ? page[at] : jet::LoadU16(page, at));
    return at;
}

}  // namespace

std::vector<jet::Finding> Check(std::vector<std::uint8_t> content, jet::Strictness strictness) {
    jet::DatabaseFile file(jet::MakeMemoryFile(std::move(content)));
    return jet::CheckStructure(file.pager(), strictness);
}

Codes CodesOf(const std::vector<jet::Finding>& findings) {
    Codes codes;
    for (const jet::Finding& finding : findings)
        codes.insert(finding.code);
    return codes;
}

std::string Lines(const std::vector<jet::Finding>& findings) {
    std::string lines;
    for (const jet::Finding& finding : findings)
        lines += Line(finding);
    return lines;
}

Specimen::Specimen(std::vector<std::uint8_t> sound)
    : sound_(std::move(sound)), content_(sound_), format_(&OpenCopy(sound_).format()) {}

std::span<std::uint8_t> Specimen::Page(jet::PageNumber number) {
    return std::span(content_).subspan(number * format_->page_size, format_->page_size);
}

jet::TableDefinition Specimen::Table(const std::string& name) const {
    jet::DatabaseFile file = OpenCopy(sound_);
    return file.ReadTableDefinition(file.FindTable(name).value().DefinitionPage());
}

std::vector<jet::PageNumber> Specimen::PagesOf(jet::RowId map) const {
    jet::DatabaseFile file = OpenCopy(sound_);
    return jet::ReadUsageMap(file.pager(), map);
}

std::vector<jet::RowId> Specimen::RowsOf(const std::string& table) const {
    jet::DatabaseFile file = OpenCopy(sound_);
    const jet::TableDefinition definition = Table(table);
    std::vector<jet::RowId> rows;
    for (jet::TableScan scan(file, definition); scan.Next();)
        rows.push_back(scan.id());
    return rows;
}

DefinitionPlaces Specimen::PlacesOf(const std::string& table) const {
    const jet::TableDefinition definition = Table(table);
    const jet::Bytes page = jet::Bytes(sound_).subspan(definition.page * format_->page_size, format_->page_size);
    const std::size_t indexes = definition.indexes.size();
    DefinitionPlaces places;
    places.columns = format_->definition.statistics + indexes * format_->definition.statistics_size;
    places.column_names = places.columns + definition.columns.size() * format_->column.size;
    places.index_blocks = SkipNames(*format_, page, places.column_names, definition.columns.size());
    places.logical_indexes = places.index_blocks + indexes * format_->index_block.size;
    places.index_names = places.logical_indexes + indexes * format_->logical_index.size;
    places.long_columns = SkipNames(*format_, page, places.index_names, indexes);
    return places;
}

std::uint16_t Specimen::Slot(jet::RowId row) {
    return jet::LoadU16(Page(row.page), format_->data_page.slots + 2U * row.slot);
}

void Specimen::SetSlot(jet::RowId row, std::uint16_t entry) {
    jet::StoreLittle(Page(row.page), format_->data_page.slots + 2U * row.slot, entry);
}

std::span<std::uint8_t> Specimen::Row(jet::RowId row) {
    const std::size_t start = Slot(row) & jet::kSlotStart;
    const std::uint8_t before = static_cast<std::uint8_t>(row.slot - 1);
    const std::size_t end = row.slot == 0 ? format_->page_size : Slot({row.page, before}) & jet::kSlotStart;
    return Page(row.page).subspan(start, end - start);
}

void Specimen::SetMapBit(jet::RowId map, jet::PageNumber page, bool value) {
    const auto bit = static_cast<std::uint8_t>(1U << page % 8);
    std::uint8_t& byte = Row(map)[jet::kInlineBitmap + page / 8];
    byte = static_cast<std::uint8_t>(value ? byte | bit : byte & ~bit);
}

jet::PageNumber Specimen::AddPage() {
    SetMapBit({.page = jet::kAllocationPage, .slot = 0}, page_count(), false);
    content_.resize(content_.size() + format_->page_size);
    return page_count() - 1;
}

void Specimen::ChangeHeader(const std::function<void(std::span<std::uint8_t>)>& change) {
    const std::span<std::uint8_t> masked = Page(0).subspan(jet::kHeaderMasked, format_->header.masked_size);
    jet::ApplyRc4(kHeaderKey, masked);
    change(Page(0));
    jet::ApplyRc4(kHeaderKey, masked);
}

Codes Specimen::Found(jet::Strictness strictness) const {
    std::multiset<std::string> before;
    for (const jet::Finding& finding : Check(sound_, strictness))
        before.insert(Line(finding));
    Codes found;
    for (const jet::Finding& finding : Check(content_, strictness)) {
        const auto same = before.find(Line(finding));
        if (same == before.end())
            found.insert(finding.code);
        else
            before.erase(same);
    }
    return found;
}

std::vector<std::uint8_t> BuildPets(jet::Generation generation) {
    DatabaseBuilder builder(generation);
    TableBuilder& table = builder.AddTable("Pets", {{.name = "Id"},
                                                    {.name = "Rank"},
                                                    {.name = "Born", .type = kDate},
                                                    {.name = "Tame", .type = kBoolean},
                                                    {.name = "Nick", .type = kText, .characters = 20},
                                                    {.name = "Loose", .type = kInt16, .stored_variable = true},
                                                    {.name = "Code", .type = kBinary, .characters = 4},
                                                    {.name = "Remarks", .type = kMemo},
                                                    {.name = "Picture", .type = kOle}});
    table.AddIndex({.name = "PrimaryKey", .column = "Id", .primary = true, .entries_per_page = 3});
    table.AddIndex({.name = "Rank", .column = "Rank", .entries_per_page = 2, .ascending = false});
    const auto values = [](int id, const runtime::Variant& remarks, const runtime::Variant& picture) {
        return Values{id,
                      id / 2,
                      runtime::Date{36526.5},
                      id % 2 == 0,
                      "Rex " + std::to_string(id),
                      static_cast<std::int16_t>(id),
                      runtime::Binary{1, 2, 3},
                      remarks,
                      picture};
    };
    std::vector<jet::RowId> rows;
    for (int id = 0; id < 12; ++id)
        rows.push_back(table.AddRow(values(id, "inside", Null{})));
    table.AddRow(values(20, std::string(300, 'a'), runtime::Binary(9000, 7)));
    table.AddRow(values(21, std::string(200, 'b'), runtime::Binary(100, 8)));
    table.Delete(rows[3]);
    table.Delete(rows[5], true);
    table.Move(rows[6], values(6, "moved", Null{}));
    table.Move(rows[9], values(9, "moved too", Null{}));
    builder.AddTable("Empty", {{.name = "Id"}});
    return builder.Finish();
}

}  // namespace ledgix::test
