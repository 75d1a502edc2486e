#include "damage_error.h"

#include "runtime_error.h"

namespace ledgix::jet {

void RaiseDamage(std::string_view text) {
    runtime::RaiseEngineError(runtime::ErrorNumber::kDatabaseDamaged,
                              "The database file is damaged: " + std::string(text) + ".");
}

std::string Describe(RowId row) {
    return "row " + std::to_string(row.slot) + " of page " + std::to_string(row.page);
}

std::string DescribePage(PageNumber page) {
    return "page " + std::to_string(page);
}

}  // namespace ledgix::jet
