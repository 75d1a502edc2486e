#include "index_page_writer.h"

#include <algorithm>
#include <cassert>
#include <tuple>

#include "byte_order.h"

namespace ledgix::jet {

bool IndexEntry::operator<(const IndexEntry& other) const {
    return std::tie(key, row.page, row.slot) < std::tie(other.key, other.row.page, other.row.slot);
}

std::vector<std::uint8_t> MakeIndexLeaf(const Format& format, PageNumber owner,
                                        const std::vector<IndexEntry>& entries) {
    const IndexPageLayout& layout = format.index_page;
    std::vector<std::uint8_t> page(format.page_size);
    page[0] = static_cast<std::uint8_t>(PageKind::kIndexLeaf);
    page[1] = kPageInUse;
    StoreLittle(page, layout.owner, owner);
    std::size_t end = 0;  // of the entries, counted from the first one
    for (const IndexEntry& entry : entries) {
        const std::size_t at = layout.entries + end;
        assert(at + entry.key.size() + kLeafPointerSize <= page.size());
        std::copy(entry.key.begin(), entry.key.end(), page.begin() + static_cast<std::ptrdiff_t>(at));
        StoreBig(page, at + entry.key.size(), entry.row.page << 8 | entry.row.slot);
        end += entry.key.size() + kLeafPointerSize;
        std::uint8_t& mask = page[layout.mask + end / 8];
        mask = static_cast<std::uint8_t>(mask | 1U << (end % 8));
    }
    StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(page.size() - layout.entries - end));
    return page;
}

std::uint32_t CountDistinctKeys(const std::vector<IndexEntry>& entries) {
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i == 0 || entries[i].key != entries[i - 1].key)
            ++count;
    }
    return count;
}

}  // namespace ledgix::jet
