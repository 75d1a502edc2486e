#include "table_scan.h"

#include "database_file.h"
#include "usage_map.h"

namespace ledgix::jet {

TableScan::TableScan(DatabaseFile& file, const TableDefinition& table)
    : file_(file), table_(table), pages_(ReadUsageMap(file.pager(), table.owned_map)), reader_(file, table) {}

bool TableScan::Next() {
    for (;;) {
        while (next_slot_ < page_.slot_count()) {
            if (reader_.Load(page_, static_cast<std::uint8_t>(next_slot_++)))
                return true;
        }
        if (next_page_ == pages_.size())
            return false;
        page_ = DataPage(file_.pager(), pages_[next_page_++], table_.page, "data page of the table");
        next_slot_ = 0;
    }
}

}  // namespace ledgix::jet
