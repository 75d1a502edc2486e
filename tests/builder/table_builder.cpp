#include "table_builder.h"

#include <algorithm>
#include <stdexcept>

#include "byte_order.h"
#include "index_image.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;
using jet::RowId;
using jet::StoreLittle;

constexpr std::uint32_t kDefinitionMark = 1625;
constexpr std::uint32_t kIndexMark = 1923;
constexpr std::uint16_t kCountryCode = 1;
constexpr std::uint16_t kSortOrder = 0x0409;
constexpr std::uint16_t kCodePage = 1252;

bool IsJet4(const jet::Format& format) {
    return format.generation == jet::Generation::kJet4;
}

std::uint8_t Flags(const ColumnSpec& column, bool system) {
    return static_cast<std::uint8_t>((column.IsFixed() ? 0x03 : 0x02) | (system ? 0x10 : 0) | column.more_flags);
}

ByteList Int32Key(std::int32_t value, bool ascending) {
    const std::uint32_t bits = static_cast<std::uint32_t>(value) ^ 0x80000000U;
    ByteList key{0x7F};
    for (int shift = 24; shift >= 0; shift -= 8)
        key.push_back(static_cast<std::uint8_t>(bits >> shift));
    if (!ascending)
        std::transform(key.begin(), key.end(), key.begin(), [](auto b) { return static_cast<std::uint8_t>(~b); });
    return key;
}

}  // namespace

TableBuilder::TableBuilder(FileImage& file, PageNumber page, bool system, std::vector<ColumnSpec> columns)
    : file_(file),
      format_(file.format()),
      page_(page),
      system_(system),
      map_page_(file.AddDataPage(jet::kUsageMapOwner)),
      owned_(AddMap()),
      free_space_(AddMap()) {
    for (const ColumnSpec& column : columns)
        Place(column);
}

void TableBuilder::Place(const ColumnSpec& spec) {
    PlacedColumn column{.spec = spec, .number = columns_ever_++, .variable_index = variable_ever_};
    column.ordinal = system_ ? std::uint16_t{0} : column.number;
    if (!spec.IsFixed()) {
        ++variable_ever_;
    } else if (spec.type != jet::ColumnType::kBoolean) {
        column.fixed_offset = fixed_size_;
        fixed_size_ = static_cast<std::uint16_t>(fixed_size_ + spec.Length(format_));
    }
    if (jet::IsLongValue(spec.type)) {
        long_columns_.push_back({.number = column.number, .owned = AddMap(), .free_space = AddMap()});
    }
    columns_.push_back(column);
}

RowId TableBuilder::AddMap() {
    if (!file_.HasRoomForMap(map_page_))
        map_page_ = file_.AddDataPage(jet::kUsageMapOwner);
    return file_.AddMap(map_page_);
}

void TableBuilder::AddColumn(const ColumnSpec& column) {
    Place(column);
}

void TableBuilder::DropColumn(const std::string& name) {
    std::erase_if(columns_, [&](const PlacedColumn& column) { return column.spec.name == name; });
}

void TableBuilder::AddIndex(const IndexSpec& index) {
    indexes_.push_back({.spec = index, .map = AddMap(), .root = file_.Allocate()});
}

ByteList TableBuilder::Encode(const Values& values, std::size_t gap_before_end) {
    RowContent content;
    content.columns_ever = columns_ever_;
    content.fixed.resize(fixed_size_);
    content.variable.resize(variable_ever_);
    content.not_null.resize(columns_ever_);
    content.gap_before_end = gap_before_end;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const PlacedColumn& column = columns_[i];
        const bool boolean = column.spec.type == jet::ColumnType::kBoolean;
        content.not_null[column.number] = boolean ? std::get<bool>(values[i]) : !runtime::IsNull(values[i]);
        if (boolean || runtime::IsNull(values[i]))
            continue;
        const ByteList bytes = EncodeColumn(column, values[i]);
        if (column.spec.IsFixed())
            std::copy(bytes.begin(), bytes.end(), content.fixed.begin() + column.fixed_offset);
        else
            content.variable[column.variable_index] = bytes;
    }
    return EncodeRow(format_, content);
}

ByteList TableBuilder::EncodeColumn(const PlacedColumn& column, const runtime::Variant& value) {
    return jet::IsLongValue(column.spec.type) ? EncodeLongValue(column, value)
                                              : EncodeValue(format_, column.spec, value);
}

ByteList TableBuilder::EncodeLongValue(const PlacedColumn& column, const runtime::Variant& value) {
    const std::size_t most_inside = IsJet4(format_) ? 64 : 32;
    const std::size_t longest_row = IsJet4(format_) ? 4076 : 2036;
    const ByteList data = column.spec.type == jet::ColumnType::kMemo
                              ? EncodeText(format_, std::get<std::string>(value), column.spec.compressed)
                              : std::get<runtime::Binary>(value);
    const auto long_column = std::find_if(long_columns_.begin(), long_columns_.end(),
                                          [&](const LongColumn& c) { return c.number == column.number; });
    std::uint32_t kind = jet::kLongValueInside;
    std::uint32_t pointer = 0;
    const auto remember = [&](RowId id) { pointer = id.page << 8 | id.slot; };
    if (long_value_place_ == LongValuePlace::kChain || data.size() > longest_row) {
        kind = jet::kLongValueChain;
        const std::size_t piece_size = longest_row - jet::kLongValuePointer;
        for (std::size_t end = data.size(); end > 0;) {
            const std::size_t start = (end - 1) / piece_size * piece_size;
            ByteList piece;
            AppendLittle(piece, pointer);
            piece.insert(piece.end(), data.begin() + static_cast<std::ptrdiff_t>(start),
                         data.begin() + static_cast<std::ptrdiff_t>(end));
            remember(AddLongRow(*long_column, piece));
            end = start;
        }
    } else if (data.size() > most_inside) {
        kind = jet::kLongValueOneRow;
        remember(AddLongRow(*long_column, data));
    }
    ByteList field;
    AppendLittle(field, static_cast<std::uint32_t>(data.size()) | kind);
    AppendLittle(field, pointer);
    AppendLittle(field, std::uint32_t{0});
    if (kind == jet::kLongValueInside)
        Append(field, data);
    return field;
}

RowId TableBuilder::AddLongRow(LongColumn& column, const ByteList& row) {
    if (column.current_page == 0 || !file_.HasRoom(column.current_page, row.size())) {
        column.current_page = file_.AddDataPage(jet::kLongValueOwner);
        file_.AddToMap(column.owned, column.current_page);
    }
    return file_.AddRow(column.current_page, row);
}

PageNumber TableBuilder::PageFor(std::size_t length) {
    if (current_page_ == 0 || !file_.HasRoom(current_page_, length)) {
        current_page_ = file_.AddDataPage(page_);
        file_.AddToMap(owned_, current_page_);
        file_.AddToMap(free_space_, current_page_);
    }
    return current_page_;
}

std::map<std::string, std::int32_t> TableBuilder::KeysOf(const Values& values) const {
    std::map<std::string, std::int32_t> keys;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (const auto* number = std::get_if<std::int32_t>(&values[i]))
            keys[columns_[i].spec.name] = *number;
    }
    return keys;
}

RowId TableBuilder::AddRow(const Values& values) {
    const RowId id = AddEncodedRow(Encode(values));
    rows_.back().keys = KeysOf(values);
    return id;
}

RowId TableBuilder::AddEncodedRow(const ByteList& row, std::uint16_t flags) {
    const RowId id = file_.AddRow(PageFor(row.size()), row, flags);
    if (flags == 0)
        rows_.push_back({.id = id, .keys = {}});
    return id;
}

void TableBuilder::Delete(RowId id, bool keep_bytes) {
    if (!keep_bytes)
        file_.SqueezeOut(id);
    file_.SetFlags(id, jet::kSlotDeleted);
    std::erase_if(rows_, [&](const LiveRow& row) { return row.id == id; });
}

RowId TableBuilder::Move(RowId id, const Values& values) {
    StartPage();
    const RowId moved = AddEncodedRow(Encode(values), jet::kSlotHidden);
    jet::StoreRowPointer(file_.row(id), 0, moved);
    file_.SetFlags(id, jet::kSlotPointer);
    for (LiveRow& row : rows_) {
        if (row.id == id)
            row.keys = KeysOf(values);
    }
    return moved;
}

void TableBuilder::AppendName(ByteList& out, const std::string& name) const {
    const ByteList stored = EncodeText(format_, name, false);
    out.push_back(static_cast<std::uint8_t>(stored.size()));
    if (format_.definition.name_length_size == 2)
        out.push_back(static_cast<std::uint8_t>(stored.size() >> 8));
    Append(out, stored);
}

void TableBuilder::AppendColumn(ByteList& out, const PlacedColumn& column) const {
    const jet::ColumnRecordLayout& layout = format_.column;
    ByteList record(layout.size);
    record[layout.type] = static_cast<std::uint8_t>(column.spec.type);
    StoreLittle<std::uint16_t>(record, layout.number, column.number);
    StoreLittle<std::uint16_t>(record, layout.variable_index, column.variable_index);
    StoreLittle<std::uint16_t>(record, layout.ordinal, column.ordinal);
    StoreLittle<std::uint16_t>(record, layout.precision, kSortOrder);
    if (IsJet4(format_)) {
        StoreLittle(record, layout.type + 1, kDefinitionMark);
        record[layout.text_flags] = column.spec.compressed ? 1 : 0;
    } else {
        StoreLittle(record, layout.ordinal + 2, kCountryCode);
        StoreLittle(record, layout.precision + 2, kCodePage);
    }
    if (column.spec.type == jet::ColumnType::kNumeric) {
        record[layout.precision] = column.spec.precision;
        record[layout.precision + 1] = column.spec.scale;
    }
    record[layout.flags] = Flags(column.spec, system_);
    StoreLittle<std::uint16_t>(record, layout.fixed_offset, column.fixed_offset);
    StoreLittle<std::uint16_t>(record, layout.length, column.spec.Length(format_));
    Append(out, record);
}

void TableBuilder::AppendIndexBlock(ByteList& out, const BuiltIndex& index) const {
    const jet::IndexBlockLayout& layout = format_.index_block;
    ByteList block(layout.size);
    if (IsJet4(format_))
        StoreLittle(block, 0, kIndexMark);
    for (std::size_t i = 0; i < jet::kIndexColumnSlots; ++i)
        StoreLittle(block, layout.columns + 3 * i, jet::kNoIndexColumn);
    const auto column = std::find_if(columns_.begin(), columns_.end(),
                                     [&](const PlacedColumn& c) { return c.spec.name == index.spec.column; });
    StoreLittle<std::uint16_t>(block, layout.columns, column->number);
    block[layout.columns + 2] = index.spec.ascending ? 1 : 0;
    jet::StoreRowPointer(block, layout.map, index.map);
    StoreLittle(block, layout.root, index.root);
    block[layout.flags] = static_cast<std::uint8_t>((index.spec.primary ? 0x09 : 0) | (IsJet4(format_) ? 0x80 : 0));
    Append(out, block);
}

void TableBuilder::AppendLogicalIndex(ByteList& out, std::size_t number) const {
    const jet::LogicalIndexLayout& layout = format_.logical_index;
    ByteList record(layout.size);
    if (IsJet4(format_))
        StoreLittle(record, 0, kDefinitionMark);
    StoreLittle(record, layout.number, static_cast<std::uint32_t>(number));
    StoreLittle(record, layout.real_number, static_cast<std::uint32_t>(number));
    StoreLittle(record, layout.relation_index, 0xFFFFFFFFU);
    record[layout.cascade_updates] = 4;
    record[layout.cascade_deletes] = 4;
    record[layout.type] = indexes_[number].spec.primary ? 1 : 0;
    Append(out, record);
}

ByteList TableBuilder::DefinitionHeader() const {
    const jet::DefinitionLayout& layout = format_.definition;
    ByteList out(layout.statistics);
    out[0] = static_cast<std::uint8_t>(jet::PageKind::kDefinition);
    out[1] = 1;
    if (IsJet4(format_)) {
        StoreLittle(out, 12, kDefinitionMark);
        StoreLittle(out, 24, std::uint32_t{1});
    }
    StoreLittle(out, layout.row_count, static_cast<std::uint32_t>(rows_.size()));
    out[layout.table_mark] = system_ ? jet::kSystemTableMark : jet::kUserTableMark;
    StoreLittle(out, layout.columns_ever, columns_ever_);
    StoreLittle(out, layout.variable_columns_ever, variable_ever_);
    StoreLittle(out, layout.column_count, static_cast<std::uint16_t>(columns_.size()));
    StoreLittle(out, layout.logical_index_count, static_cast<std::uint32_t>(indexes_.size()));
    StoreLittle(out, layout.real_index_count, static_cast<std::uint32_t>(indexes_.size()));
    jet::StoreRowPointer(out, layout.owned_map, owned_);
    jet::StoreRowPointer(out, layout.free_space_map, free_space_);
    return out;
}

ByteList TableBuilder::Definition() const {
    const jet::DefinitionLayout& layout = format_.definition;
    ByteList out = DefinitionHeader();
    for (std::size_t i = 0; i < indexes_.size(); ++i) {
        ByteList statistics(layout.statistics_size);
        StoreLittle(statistics, layout.distinct_keys, static_cast<std::uint32_t>(rows_.size()));
        Append(out, statistics);
    }
    for (const PlacedColumn& column : columns_)
        AppendColumn(out, column);
    for (const PlacedColumn& column : columns_)
        AppendName(out, column.spec.name);
    for (const BuiltIndex& index : indexes_)
        AppendIndexBlock(out, index);
    for (std::size_t i = 0; i < indexes_.size(); ++i)
        AppendLogicalIndex(out, i);
    for (const BuiltIndex& index : indexes_)
        AppendName(out, index.spec.name);
    for (const LongColumn& column : long_columns_) {
        ByteList maps(jet::kLongColumnMapsSize);
        StoreLittle(maps, 0, column.number);
        jet::StoreRowPointer(maps, 2, column.owned);
        jet::StoreRowPointer(maps, 6, column.free_space);
        Append(out, maps);
    }
    AppendLittle(out, jet::kDefinitionEnd);
    StoreLittle(out, layout.length, static_cast<std::uint32_t>(out.size()));
    return out;
}

void TableBuilder::WriteDefinition(const ByteList& definition) {
    PageNumber number = page_;
    for (std::size_t at = 0; at < definition.size();) {
        const std::span<std::uint8_t> page = file_.page(number);
        const std::size_t header = at == 0 ? 0 : jet::kDefinitionPageHeader;
        const std::size_t size = std::min(definition.size() - at, page.size() - header);
        std::copy_n(definition.begin() + static_cast<std::ptrdiff_t>(at), size,
                    page.begin() + static_cast<std::ptrdiff_t>(header));
        at += size;
        page[0] = static_cast<std::uint8_t>(jet::PageKind::kDefinition);
        page[1] = 1;
        const std::size_t free = page.size() - std::min(page.size(), header + size + 8);
        StoreLittle(page, 2, IsJet4(format_) ? static_cast<std::uint16_t>(free) : std::uint16_t{0x4356});
        if (at < definition.size()) {
            const PageNumber next = file_.Allocate();
            StoreLittle(file_.page(number), jet::kDefinitionNextPage, next);
            number = next;
        }
    }
}

void TableBuilder::WriteIndex(const BuiltIndex& index) {
    std::vector<IndexEntry> entries;
    for (const LiveRow& row : rows_)
        entries.push_back({.key = Int32Key(row.keys.at(index.spec.column), index.spec.ascending), .row = row.id});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const IndexEntry& a, const IndexEntry& b) { return a.key < b.key; });
    WriteIndexTree(file_,
                   {.owner = page_,
                    .root = index.root,
                    .map = index.map,
                    .entries_per_page = index.spec.entries_per_page,
                    .compressed = index.spec.compressed},
                   entries);
}

void TableBuilder::Finish() {
    for (const BuiltIndex& index : indexes_)
        WriteIndex(index);
    WriteDefinition(Definition());
}

}  // namespace ledgix::test
