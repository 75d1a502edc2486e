#include "table_writer.h"

#include <optional>
#include <random>
#include <utility>

#include "byte_order.h"
#include "damage_error.h"
#include "data_page_writer.h"
#include "database_file.h"
#include "jet_format.h"
#include "long_value_writer.h"
#include "row_reader.h"
#include "row_store.h"
#include "row_writer.h"
#include "table_indexes.h"

namespace ledgix::jet {

namespace {

runtime::Guid DrawGuid() {
    std::random_device device;
    runtime::Guid guid;
    for (std::uint8_t& byte : guid.bytes)
        byte = static_cast<std::uint8_t>(device());
    guid.bytes[6] = static_cast<std::uint8_t>((guid.bytes[6] & 0x0F) | 0x40);  // a random one, in the variant
    guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);  // that all systems share
    return guid;
}

}  // namespace

class TableWriter::Work {
public:
    Work(DatabaseFile& file, TableDefinition table)
        : file_(file),
          pager_(file.pager()),
          table_(std::move(table)),
          indexes_(pager_, table_),
          rows_(pager_, table_.page, table_.owned_map, table_.free_space_map),
          long_values_(pager_) {}

    const TableDefinition& table() const { return table_; }

    RowId Insert(const std::vector<runtime::Variant>& given) {
        const std::vector<runtime::Variant>* values = &given;
        std::vector<runtime::Variant> numbered;
        if (HasAutonumber()) {
            numbered = Numbered(given);
            values = &numbered;
        }
        const TableIndexes::Keys keys = indexes_.KeysOf([&](std::size_t column) { return (*values)[column]; });
        RowEncoder encoder(pager_.format(), table_);
        for (std::size_t i = 0; i < values->size(); ++i)
            Put(encoder, table_.columns[i], (*values)[i]);
        const RowId row = rows_.Append(encoder.Finish());
        indexes_.Insert(keys, row);
        CountRows(1);
        return row;
    }

    void Update(RowId id, const std::vector<Assignment>& assignments) {
        RowReader reader(file_, table_);
        LoadLive(reader, id);
        std::vector<const runtime::Variant*> assigned(table_.columns.size());
        std::vector<bool> changed(table_.columns.size());
        for (const Assignment& assignment : assignments) {
            assigned[assignment.column] = &assignment.value;
            changed[assignment.column] = true;
        }
        UpdateIndexes(reader, assigned, changed, id);
        RowEncoder encoder(pager_.format(), table_);
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const Column& column = table_.columns[i];
            const std::optional<Bytes> stored = reader.Stored(i);
            if (assigned[i] == nullptr) {
                if (stored)
                    encoder.PutStored(column, *stored);
                continue;
            }
            if (stored && IsLongValue(column.type))
                long_values_.Free(column, *stored, id);
            Put(encoder, column, *assigned[i]);
        }
        Place(id, reader.moves(), encoder.Finish());
    }

    void Delete(RowId id) {
        RowReader reader(file_, table_);
        LoadLive(reader, id);
        indexes_.Remove(indexes_.KeysOf([&](std::size_t column) { return reader.Value(column); }), id);
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const Column& column = table_.columns[i];
            const std::optional<Bytes> stored = reader.Stored(i);
            if (stored && IsLongValue(column.type))
                long_values_.Free(column, *stored, id);
        }
        DeleteAll(reader.moves());
        rows_.Delete(id);
        CountRows(-1);
    }

private:
    void LoadLive(RowReader& reader, RowId id) const {
        if (!reader.Load(id))
            RaiseDamage(Describe(id) + " is to be changed, and it is gone");
    }

    void Put(RowEncoder& encoder, const Column& column, const runtime::Variant& value) {
        if (IsLongValue(column.type) && !runtime::IsNull(value))
            encoder.PutStored(column, long_values_.Store(column, value));
        else
            encoder.Put(column, value);
    }

    void UpdateIndexes(RowReader& reader, const std::vector<const runtime::Variant*>& assigned,
                       const std::vector<bool>& changed, RowId id) {
        if (!indexes_.Concern(changed))
            return;
        const TableIndexes::Keys before = indexes_.KeysOf([&](std::size_t i) { return reader.Value(i); });
        const TableIndexes::Keys after =
            indexes_.KeysOf([&](std::size_t i) { return assigned[i] != nullptr ? *assigned[i] : reader.Value(i); });
        indexes_.Update(before, after, id);
    }

    // Puts the new bytes of a row where its old ones are, or else home, or else onto another page.
    void Place(RowId home, const std::vector<RowId>& moves, Bytes row) {
        if (moves.size() == 1 && !FitsAtHome(home, row) && rows_.Replace(moves.front(), row, kSlotHidden))
            return;
        DeleteAll(moves);
        if (rows_.Replace(home, row, 0))
            return;
        std::uint8_t pointer[kRowPointerSize];
        StoreRowPointer(pointer, 0, rows_.Append(row, kSlotHidden));
        if (!rows_.Replace(home, pointer, kSlotPointer))
            RaiseDamage(Describe(home) + " has no room for the pointer to where the row moves");
    }

    bool FitsAtHome(RowId home, Bytes row) const {
        const PagePtr page = pager_.Read(home.page);
        const Bytes now = DataPage(pager_, home.page, table_.page, "data page of the table").row(home.slot);
        return row.size() <= now.size() + FreeBytes(pager_.format(), page->bytes);
    }

    void DeleteAll(const std::vector<RowId>& places) {
        for (const RowId place : places)
            rows_.Delete(place);
    }

    void CountRows(int difference) {
        const std::size_t at = pager_.format().definition.row_count;
        const std::span<std::uint8_t> page = pager_.Change(table_.page);
        table_.row_count = LoadU32(page, at);
        // The counters of system tables may lag behind.
        if (difference > 0 || table_.row_count > 0)
            table_.row_count += static_cast<std::uint32_t>(difference);
        StoreLittle(page, at, table_.row_count);
    }

    bool HasAutonumber() const {
        for (const Column& column : table_.columns) {
            if (column.autonumber)
                return true;
        }
        return false;
    }

    // The values with numbers where autonumber columns have none. A given number above all handed out counts as one.
    std::vector<runtime::Variant> Numbered(std::vector<runtime::Variant> values) {
        const std::size_t at = pager_.format().definition.last_autonumber;
        auto last = static_cast<std::int32_t>(LoadU32(pager_.Read(table_.page)->bytes, at));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const Column& column = table_.columns[i];
            if (!column.autonumber)
                continue;
            if (column.type == ColumnType::kGuid) {
                if (runtime::IsNull(values[i]))
                    values[i] = DrawGuid();
                continue;
            }
            if (runtime::IsNull(values[i]))
                values[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(last) + 1);
            if (const auto* number = std::get_if<std::int32_t>(&values[i]); number != nullptr && *number > last)
                last = *number;
        }
        StoreLittle(pager_.Change(table_.page), at, static_cast<std::uint32_t>(last));
        return values;
    }

    DatabaseFile& file_;
    Pager& pager_;
    TableDefinition table_;
    TableIndexes indexes_;
    RowStore rows_;
    LongValueWriter long_values_;
};

TableWriter::TableWriter(DatabaseFile& file, TableDefinition table)
    : work_(std::make_unique<Work>(file, std::move(table))) {}

TableWriter::~TableWriter() = default;

const TableDefinition& TableWriter::table() const {
    return work_->table();
}

RowId TableWriter::Insert(const std::vector<runtime::Variant>& values) {
    return work_->Insert(values);
}

void TableWriter::Update(RowId row, const std::vector<Assignment>& assignments) {
    work_->Update(row, assignments);
}

void TableWriter::Delete(RowId row) {
    work_->Delete(row);
}

}  // namespace ledgix::jet
