#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "circle_guard.h"
#include "index_key.h"
#include "index_page_view.h"
#include "jet_types.h"
#include "table_definition.h"

namespace ledgix::jet {

class DatabaseFile;

// Walks the entries of an index in their order. The pages read do not depend on the size of the table, but for those
// walked over. Error 3049 for damage, in every call.
class IndexCursor {
public:
    // All must outlive the cursor, which stands before the first entry.
    IndexCursor(DatabaseFile& file, const TableDefinition& table, const Index& index);

    // Goes before the first entry whose key is not smaller. A key of the first columns only is smaller than all that
    // begin with it; the empty one than all.
    void Seek(const IndexKey& key);

    // Goes to the next entry; false at the end.
    bool Next();

    // Of the current entry.
    Bytes key() const { return Bytes(entry_).first(entry_.size() - kLeafPointerSize); }
    RowId row() const;

private:
    DatabaseFile& file_;
    const TableDefinition& table_;
    const Index& index_;
    std::optional<IndexPageView> leaf_;
    std::size_t next_place_ = 0;
    std::vector<std::uint8_t> entry_;
    std::vector<std::uint8_t> previous_;
    CircleGuard<PageNumber> guard_;
};

// The rows whose index columns have these values, in index order. values[i] is that of index.columns[i]; fewer values
// leave the further columns open.
std::vector<RowId> FindRows(DatabaseFile& file, const TableDefinition& table, const Index& index,
                            const std::vector<runtime::Variant>& values);

}  // namespace ledgix::jet
