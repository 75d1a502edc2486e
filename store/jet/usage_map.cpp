#include "usage_map.h"

#include <string>

#include "byte_order.h"
#include "damage_error.h"
#include "data_page.h"

namespace ledgix::jet {

namespace {

class MapReader {
public:
    MapReader(Pager& pager, RowId map) : pager_(pager), map_(map) {}

    std::vector<PageNumber> Read() {
        DataPage page;
        const std::uint32_t owner = map_.page == kAllocationPage ? kAllocationOwner : kUsageMapOwner;
        const Bytes row = ReadRow(pager_, map_, owner, 0, "usage map", page);
        if (row.empty() || row[0] > kReferenceMap)
            RaiseDamage(Describe(map_) + " is no usage map");
        if (row[0] == kReferenceMap)
            ReadReferences(row);
        else
            ReadInline(row);
        return std::move(pages_);
    }

private:
    void ReadInline(Bytes row) {
        if (row.size() < kInlineBitmap)
            RaiseDamage("the usage map in " + Describe(map_) + " is cut off");
        AddBits(LoadU32(row, kMapFirstPage), row.subspan(kInlineBitmap));
    }

    void ReadReferences(Bytes row) {
        const std::uint64_t pages_per_bitmap = pager_.format().PagesPerBitmap();
        for (std::size_t i = 0; kMapReferences + 4 * (i + 1) <= row.size(); ++i) {
            const PageNumber number = LoadU32(row, kMapReferences + 4 * i);
            if (number == 0)
                continue;
            const PagePtr bitmap = pager_.Read(number, PageKind::kUsageBitmap, "bitmap page of a usage map");
            AddBits(i * pages_per_bitmap, Bytes(bitmap->bytes).subspan(kBitmapPageBits));
        }
    }

    void AddBits(std::uint64_t first, Bytes bitmap) {
        for (std::size_t i = 0; i < bitmap.size(); ++i) {
            if (bitmap[i] == 0)
                continue;
            for (unsigned bit = 0; bit < 8; ++bit) {
                if ((bitmap[i] >> bit & 1) != 0)
                    Add(first + 8 * i + bit);
            }
        }
    }

    void Add(std::uint64_t page) {
        if (page == 0 || page >= pager_.page_count())
            RaiseDamage("the usage map in " + Describe(map_) + " lists page " + std::to_string(page) +
                        ", and the file has " + std::to_string(pager_.page_count()) + " pages");
        pages_.push_back(static_cast<PageNumber>(page));
    }

    Pager& pager_;
    RowId map_;
    std::vector<PageNumber> pages_;
};

}  // namespace

std::vector<PageNumber> ReadUsageMap(Pager& pager, RowId map) {
    return MapReader(pager, map).Read();
}

}  // namespace ledgix::jet
