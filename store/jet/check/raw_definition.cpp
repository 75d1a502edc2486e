#include "raw_definition.h"

#include <algorithm>

#include "byte_order.h"
#include "damage_error.h"
#include "definition_pages.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostColumns = 255;
constexpr std::uint32_t kMostRealIndexes = 32;
constexpr std::uint32_t kMostLogicalIndexes = 255;
constexpr std::size_t kLongestName = 64;

// The end of the definition came before that of what it announces.
struct CutOff {};

class DefinitionTaker {
public:
    DefinitionTaker(CheckRun& run, PageNumber page, Bytes definition)
        : run_(run), format_(run.format), definition_(definition) {
        raw_.page = page;
    }

    std::optional<RawDefinition> Take() {
        if (definition_.size() < format_.definition.statistics)
            return std::nullopt;
        TakeHeader();
        try {
            TakeBody();
        } catch (const CutOff&) {
            Add("T9", "it ends before all that it announces");
        }
        return std::move(raw_);
    }

private:
    void TakeHeader() {
        const DefinitionLayout& layout = format_.definition;
        const Bytes header = TakeBytes(layout.statistics);
        const std::uint8_t mark = header[layout.table_mark];
        if (mark != kUserTableMark && mark != kSystemTableMark)
            Add("T4", "it is of the unknown kind " + std::to_string(mark));
        raw_.system = mark == kSystemTableMark;
        raw_.row_count = LoadU32(header, layout.row_count);
        raw_.columns_ever = LoadU16(header, layout.columns_ever);
        raw_.variable_columns_ever = LoadU16(header, layout.variable_columns_ever);
        raw_.owned_map = LoadRowPointer(header, layout.owned_map);
        raw_.free_space_map = LoadRowPointer(header, layout.free_space_map);
        column_count_ = LoadU16(header, layout.column_count);
        logical_count_ = LoadU32(header, layout.logical_index_count);
        real_count_ = LoadU32(header, layout.real_index_count);
    }

    void TakeBody() {
        if (column_count_ > raw_.columns_ever || raw_.columns_ever > kMostColumns)
            Add("T5",
                "it claims " + std::to_string(column_count_) + " of " + std::to_string(raw_.columns_ever) + " columns");
        if (raw_.variable_columns_ever > raw_.columns_ever)
            Add("T6", "it claims " + std::to_string(raw_.variable_columns_ever) + " variable columns");
        if (real_count_ > kMostRealIndexes || logical_count_ > kMostLogicalIndexes) {
            Add("T7", "it claims " + std::to_string(logical_count_) + " indexes and " + std::to_string(real_count_) +
                          " real ones");
            return;
        }
        TakeStatistics();
        TakeColumns();
        TakeIndexBlocks();
        TakeLogicalIndexes();
        TakeLongColumns();
        if (at_ != definition_.size())
            Add("T9", "it claims " + std::to_string(definition_.size()) + " bytes and has " + std::to_string(at_));
    }

    void TakeStatistics() {
        for (std::uint32_t i = 0; i < real_count_; ++i) {
            const Bytes statistics = TakeBytes(format_.definition.statistics_size);
            raw_.real_indexes.emplace_back().distinct_keys = LoadU32(statistics, format_.definition.distinct_keys);
        }
    }

    void TakeColumns() {
        const ColumnRecordLayout& layout = format_.column;
        for (std::size_t i = 0; i < column_count_; ++i) {
            const Bytes record = TakeBytes(layout.size);
            Column& column = raw_.columns.emplace_back();
            column.type = static_cast<ColumnType>(record[layout.type]);
            column.number = LoadU16(record, layout.number);
            column.variable_index = LoadU16(record, layout.variable_index);
            column.flags = record[layout.flags];
            column.fixed = (column.flags & kColumnFixed) != 0;
            column.fixed_offset = LoadU16(record, layout.fixed_offset);
            column.length = LoadU16(record, layout.length);
            column.character_size = static_cast<std::uint8_t>(format_.character_size);
        }
        for (Column& column : raw_.columns)
            column.name = TakeName("column");
    }

    void TakeIndexBlocks() {
        const IndexBlockLayout& layout = format_.index_block;
        for (RawIndex& index : raw_.real_indexes) {
            const Bytes block = TakeBytes(layout.size);
            index.map = LoadRowPointer(block, layout.map);
            index.root = LoadU32(block, layout.root);
            index.flags = block[layout.flags];
            for (std::size_t i = 0; i < kIndexColumnSlots; ++i) {
                const std::size_t at = layout.columns + i * kIndexColumnSlotSize;
                const std::uint16_t number = LoadU16(block, at);
                if (number != kNoIndexColumn)
                    index.columns.push_back({.column_number = number, .ascending = block[at + 2] == kIndexAscending});
            }
        }
    }

    void TakeLogicalIndexes() {
        const LogicalIndexLayout& layout = format_.logical_index;
        for (std::uint32_t i = 0; i < logical_count_; ++i) {
            const Bytes record = TakeBytes(layout.size);
            raw_.logical_indexes.push_back({.name = {},
                                            .number = LoadU32(record, layout.number),
                                            .real_number = LoadU32(record, layout.real_number),
                                            .type = record[layout.type],
                                            .relation_side = record[layout.relation_side],
                                            .relation_index = LoadU32(record, layout.relation_index),
                                            .relation_table = LoadU32(record, layout.relation_table)});
        }
        for (RawLogicalIndex& index : raw_.logical_indexes)
            index.name = TakeName("index");
    }

    void TakeLongColumns() {
        for (Bytes number = TakeBytes(2); LoadU16(number, 0) != kDefinitionEnd; number = TakeBytes(2)) {
            const Bytes maps = TakeBytes(kLongColumnMapsSize - 2);
            raw_.long_columns.push_back({.column_number = LoadU16(number, 0),
                                         .owned = LoadRowPointer(maps, 0),
                                         .free_space = LoadRowPointer(maps, kRowPointerSize)});
        }
    }

    std::string TakeName(const char* what) {
        const Bytes length = TakeBytes(format_.definition.name_length_size);
        const Bytes name = TakeBytes(length.size() == 1 ? length[0] : LoadU16(length, 0));
        const std::size_t size = format_.character_size;
        if (name.empty() || name.size() % size != 0 || name.size() > kLongestName * size)
            Add("T8", "the name of a " + std::string(what) + " has " + std::to_string(name.size()) + " bytes");
        return DecodeName(format_, name);
    }

    Bytes TakeBytes(std::size_t size) {
        if (size > definition_.size() - at_)
            throw CutOff{};
        at_ += size;
        return definition_.subspan(at_ - size, size);
    }

    void Add(std::string_view code, const std::string& text) {
        run_.findings.Add(code, "the table definition in " + DescribePage(raw_.page) + ": " + text);
    }

    CheckRun& run_;
    const Format& format_;
    Bytes definition_;
    std::size_t at_ = 0;
    std::size_t column_count_ = 0;
    std::uint32_t logical_count_ = 0;
    std::uint32_t real_count_ = 0;
    RawDefinition raw_;
};

}  // namespace

std::optional<RawDefinition> ReadRawDefinition(CheckRun& run, PageNumber page) {
    const std::vector<std::uint8_t> joined = JoinDefinitionPages(run, page);
    return DefinitionTaker(run, page, joined).Take();
}

}  // namespace ledgix::jet
