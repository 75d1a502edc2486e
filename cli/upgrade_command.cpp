#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "command_messages.h"
#include "commands.h"
#include "schema.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::cli {

namespace {

struct Layout {
    std::vector<std::string> missing;
    std::size_t brackets = 0;
};

Layout LayoutOf(dao::Database& database) {
    Layout layout;
    for (const store::SchemaTable* table :
         {&store::ProfilesTable(), &store::ProfilePropertyTable(), &store::TaxRatesTable()}) {
        const std::vector<std::string> missing = store::MissingFrom(database, *table);
        layout.missing.insert(layout.missing.end(), missing.begin(), missing.end());
        if (!table->primary_key.empty() && database.HasTable(table->name) &&
            !database.TableDefinition(table->name).indexes.Contains("PrimaryKey"))
            layout.missing.push_back("primary key of " + std::string(table->name));
    }
    if (database.HasTable(store::TaxRatesTable().name))
        layout.brackets = database.CountRows(store::TaxRatesTable().name);
    return layout;
}

bool Contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

}  // namespace

bool UpgradeLayout(dao::Database& database, const CommandMessages& messages, std::ostream& out, std::ostream& err) {
    const std::size_t messages_before = messages.Count();
    const Layout before = LayoutOf(database);
    store::UpgradeSchema(model::CheckDefaultTaxRates);
    const Layout after = LayoutOf(database);
    for (const std::string& item : before.missing) {
        if (!Contains(after.missing, item))
            out << "Added: " << item << "\n";
    }
    if (after.brackets > before.brackets)
        out << "Added: " << after.brackets - before.brackets << " tax brackets\n";
    for (const std::string& item : after.missing)
        err << "Still missing: " << item << "\n";
    if (after.brackets == 0)
        err << "Still missing: tax brackets\n";
    const bool complete = after.missing.empty() && after.brackets != 0 && messages.Count() == messages_before;
    if (complete && before.missing.empty() && before.brackets != 0)
        out << "The database is up to date.\n";
    return complete;
}

}  // namespace ledgix::cli
