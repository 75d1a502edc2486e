#include "schema_cache.h"

#include "database_file.h"

namespace ledgix::dao {

void SchemaCache::DropWhatIsOld() {
    if (read_at_ == file_.change_count())
        return;
    catalog_.reset();
    definitions_.clear();
    read_at_ = file_.change_count();
}

const std::vector<jet::CatalogEntry>& SchemaCache::Catalog() {
    DropWhatIsOld();
    if (!catalog_)
        catalog_ = file_.ReadCatalog();
    return *catalog_;
}

const jet::CatalogEntry* SchemaCache::FindTable(std::string_view name) {
    return jet::FindTable(Catalog(), name);
}

std::shared_ptr<const jet::TableDefinition> SchemaCache::Definition(jet::PageNumber page) {
    DropWhatIsOld();
    std::shared_ptr<const jet::TableDefinition>& definition = definitions_[page];
    if (!definition)
        definition = std::make_shared<const jet::TableDefinition>(file_.ReadTableDefinition(page));
    return definition;
}

}  // namespace ledgix::dao
