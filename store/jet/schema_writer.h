#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "table_definition.h"

namespace ledgix::jet {

class DatabaseFile;

// A column as its maker wants it. Characters of a text column, bytes of a binary one; other types have their own size.
struct NewColumn {
    std::string name;
    ColumnType type = ColumnType::kInt32;
    std::uint16_t size = 0;
    bool autonumber = false;
    std::uint8_t precision = 0;  // of a numeric column
    std::uint8_t scale = 0;
};

// An index as its maker wants it.
struct NewIndex {
    struct Part {
        std::string column;
        bool ascending = true;
    };
    std::string name;
    std::vector<Part> parts;  // 1 to 10
    bool primary = false;     // implies unique and required
    bool unique = false;
    bool required = false;
    bool ignore_nulls = false;
};

// Changes of the schema, only inside a Transaction; when a call fails, the transaction must be given up. Names: at most
// 64 characters, none of . ! [ ] ` and control characters, no blank in front: error 3125 otherwise.

// Makes a table without rows and registers it. Errors: 3010 there is one of this name, 3190 more than 255 columns, 3047
// when a row can't hold the columns, 3191 a column of this name twice, 3259 an impossible type.
TableDefinition CreateTable(DatabaseFile& file, std::string_view name, const std::vector<NewColumn>& columns);

// Rows that are there read Null in the new column (false in a boolean). The result is the table with it.
// Errors: 3191 there is one of this name, and those of CreateTable.
TableDefinition AddColumn(DatabaseFile& file, const TableDefinition& table, const NewColumn& column);

// Over the rows that are there. Errors: 3284 there is one of this name, 3283 there is a primary key, 3265 no such
// column, 3022 and 3058 for rows that it can't hold, 3626 more than 32 indexes.
TableDefinition CreateIndex(DatabaseFile& file, const TableDefinition& table, const NewIndex& index);

}  // namespace ledgix::jet
