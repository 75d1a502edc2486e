#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "catalog.h"
#include "header_page.h"
#include "jet_format.h"
#include "jet_types.h"
#include "page_file.h"
#include "pager.h"
#include "table_definition.h"

namespace ledgix::jet {

// One open database file. One thread. Nothing but the header page is read at opening.
class DatabaseFile {
public:
    // Errors: 3343 for a file of another format, 3049 for a damaged one, 3031 for one protected by a password, 3112
    // for an encrypted one, 3043 when it cannot be read.
    explicit DatabaseFile(std::unique_ptr<PageFile> file);

    Generation generation() const { return header_.generation; }
    int code_page() const { return header_.code_page; }
    const Format& format() const { return FormatOf(header_.generation); }
    Pager& pager() { return pager_; }

    // All rows of MSysObjects, in file order. Errors 3049, 3043, as in all that follows.
    std::vector<CatalogEntry> ReadCatalog();

    // The table of any kind, linked ones included, with this name in any case.
    std::optional<CatalogEntry> FindTable(std::string_view name);

    TableDefinition ReadTableDefinition(PageNumber page);

private:
    HeaderPage header_;
    Pager pager_;
};

}  // namespace ledgix::jet
