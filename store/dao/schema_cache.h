#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "catalog.h"
#include "jet_types.h"
#include "table_definition.h"

namespace ledgix::jet {
class DatabaseFile;
}

namespace ledgix::dao {

// The catalogue and the definitions of tables, in memory for as long as nothing in the file may have changed. Asked
// inside a ReadAccess or a Transaction. Errors 3049, 3043.
class SchemaCache {
public:
    // The file must outlive this.
    explicit SchemaCache(jet::DatabaseFile& file) : file_(file) {}

    jet::DatabaseFile& file() const { return file_; }

    const std::vector<jet::CatalogEntry>& Catalog();
    // The table, linked ones included, with this name in any case; null if there is none. Good until the schema is
    // asked for again.
    const jet::CatalogEntry* FindTable(std::string_view name);
    // Its counters may lag behind. The same object again when nothing changed.
    std::shared_ptr<const jet::TableDefinition> Definition(jet::PageNumber page);

    // The schema is being changed in the transaction that is open.
    void Forget() { read_at_.reset(); }

private:
    void DropWhatIsOld();

    jet::DatabaseFile& file_;
    std::optional<std::uint64_t> read_at_;  // the file's change count
    std::optional<std::vector<jet::CatalogEntry>> catalog_;
    std::unordered_map<jet::PageNumber, std::shared_ptr<const jet::TableDefinition>> definitions_;
};

}  // namespace ledgix::dao
