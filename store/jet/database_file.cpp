#include "database_file.h"

#include <utility>

#include "definition_reader.h"

namespace ledgix::jet {

DatabaseFile::DatabaseFile(std::unique_ptr<PageFile> file)
    : header_(ReadHeaderPage(*file)), pager_(std::move(file), FormatOf(header_.generation)) {}

std::vector<CatalogEntry> DatabaseFile::ReadCatalog() {
    return ReadCatalogTable(*this);
}

std::optional<CatalogEntry> DatabaseFile::FindTable(std::string_view name) {
    const std::vector<CatalogEntry> catalog = ReadCatalog();
    const CatalogEntry* found = jet::FindTable(catalog, name);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

TableDefinition DatabaseFile::ReadTableDefinition(PageNumber page) {
    return ReadDefinition(pager_, page);
}

}  // namespace ledgix::jet
