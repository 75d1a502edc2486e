#include "page_space.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "byte_order.h"
#include "damage_error.h"
#include "data_page.h"
#include "data_page_writer.h"
#include "jet_format.h"
#include "usage_map.h"
#include "usage_map_writer.h"

namespace ledgix::jet {

namespace {

constexpr RowId kFreePages{.page = kAllocationPage, .slot = 0};
constexpr PageNumber kFirstOrdinaryPage = kRelationshipsPage + 1;
constexpr std::size_t kMapGrowth = 32;  // bytes by which the map of free pages grows on its page

std::uint32_t OwnerOf(RowId map) {
    return map.page == kAllocationPage ? kAllocationOwner : kUsageMapOwner;
}

// The row of a map, checked.
Bytes MapRow(Pager& pager, RowId map, DataPage& page) {
    const Bytes row = ReadRow(pager, map, OwnerOf(map), 0, "usage map", page);
    if (!HasSoundRows(pager.format(), pager.Read(map.page)->bytes))
        RaiseDamage("the usage maps of " + DescribePage(map.page) + " overlap");
    if (row.size() < kInlineBitmap || row[0] > kReferenceMap)
        RaiseDamage(Describe(map) + " is no usage map");
    return row;
}

std::span<std::uint8_t> ChangeRow(Pager& pager, RowId id) {
    return RowBytes(pager.format(), pager.Change(id.page), id.slot);
}

void SetBit(std::span<std::uint8_t> bitmap, PageNumber at, bool on) {
    const unsigned bit = 1U << (at % 8);
    std::uint8_t& byte = bitmap[at / 8];
    byte = static_cast<std::uint8_t>(on ? byte | bit : byte & ~bit);
}

// The first bit of a bitmap that is set, if any; `bitmap` stands for the pages from `first` on.
std::optional<PageNumber> FirstPage(Bytes bitmap, PageNumber first) {
    const auto found = std::find_if(bitmap.begin(), bitmap.end(), [](std::uint8_t byte) { return byte != 0; });
    if (found == bitmap.end())
        return std::nullopt;
    PageNumber bit = 0;
    while ((*found >> bit & 1) == 0)
        ++bit;
    return first + static_cast<PageNumber>(found - bitmap.begin()) * 8 + bit;
}

// The last bit below `bound` that is set, if any.
std::optional<PageNumber> LastPage(Bytes bitmap, PageNumber first, PageNumber bound) {
    if (bound <= first)
        return std::nullopt;
    std::size_t at = std::min<std::size_t>(bitmap.size() * 8, bound - first);
    while (at > 0) {
        if (at % 8 == 0 && bitmap[at / 8 - 1] == 0) {
            at -= 8;
            continue;
        }
        --at;
        if ((bitmap[at / 8] >> (at % 8) & 1) != 0)
            return first + static_cast<PageNumber>(at);
    }
    return std::nullopt;
}

// One usage map, to be changed.
class MapEditor {
public:
    MapEditor(Pager& pager, RowId map) : pager_(pager), map_(map) {
        DataPage page;
        const Bytes row = MapRow(pager, map, page);
        reference_ = row[0] == kReferenceMap;
        size_ = row.size();
    }

    bool Covers(PageNumber page) const {
        if (reference_)
            return BitmapOf(page) != 0;
        const PageNumber first = FirstInline();
        return page >= first && (page - first) / 8 < size_ - kInlineBitmap;
    }

    // The map must cover the page.
    void Set(PageNumber page, bool on) {
        if (reference_) {
            const std::span<std::uint8_t> bitmap = pager_.Change(BitmapOf(page)).subspan(kBitmapPageBits);
            SetBit(bitmap, page % pager_.format().PagesPerBitmap(), on);
        } else {
            SetInUsageMap(ChangeRow(pager_, map_), page, on);
        }
    }

    // Moves an inline map so that it covers the page too; false when its pages and this one lie too far apart.
    bool Reach(PageNumber page) {
        if (reference_)
            return false;
        std::vector<PageNumber> pages = ReadUsageMap(pager_, map_);
        const PageNumber lowest = pages.empty() ? page : std::min(page, pages.front());
        const PageNumber highest = pages.empty() ? page : std::max(page, pages.back());
        const PageNumber first = lowest / 8 * 8;
        if ((highest - first) / 8 >= size_ - kInlineBitmap)
            return false;
        const std::span<std::uint8_t> row = ChangeRow(pager_, map_);
        std::fill(row.begin(), row.end(), std::uint8_t{0});
        StoreLittle(row, kMapFirstPage, first);
        for (const PageNumber member : pages)
            SetInUsageMap(row, member, true);
        return true;
    }

    // Makes the map one of references to pages of bits, and keeps its members.
    void MakeReference(PageNumber (*new_page)(Pager&)) {
        if (reference_)
            return;
        const std::vector<PageNumber> pages = ReadUsageMap(pager_, map_);
        ClearForReferences();
        for (const PageNumber page : pages) {
            if (!Covers(page))
                AddBitmap(page, new_page, 0);
            Set(page, true);
        }
    }

    void ClearForReferences() {
        const std::span<std::uint8_t> row = ChangeRow(pager_, map_);
        std::fill(row.begin(), row.end(), std::uint8_t{0});
        row[0] = kReferenceMap;
        reference_ = true;
    }

    // Adds the page of bits that covers a page; `fill` is what all its bytes are.
    std::span<std::uint8_t> AddBitmap(PageNumber page, PageNumber (*new_page)(Pager&), std::uint8_t fill) {
        const std::size_t at = kMapReferences + 4 * (page / pager_.format().PagesPerBitmap());
        if (at + 4 > size_)
            RaiseDamage("the usage map in " + Describe(map_) + " is too short for " + DescribePage(page));
        const PageNumber bitmap = new_page(pager_);
        const std::span<std::uint8_t> bytes = pager_.Overwrite(bitmap);
        bytes[0] = static_cast<std::uint8_t>(PageKind::kUsageBitmap);
        bytes[1] = kPageInUse;
        std::fill(bytes.begin() + kBitmapPageBits, bytes.end(), fill);
        StoreLittle(ChangeRow(pager_, map_), at, bitmap);
        return bytes.subspan(kBitmapPageBits);
    }

    // The lowest member, if there is one.
    std::optional<PageNumber> Lowest() const {
        DataPage page;
        const Bytes row = MapRow(pager_, map_, page);
        if (!reference_)
            return FirstPage(row.subspan(kInlineBitmap), FirstInline());
        for (std::size_t i = 0; i < ReferenceCount(row); ++i) {
            if (const auto found = FirstOfBitmap(row, i))
                return found;
        }
        return std::nullopt;
    }

    // The highest member below `bound`, if there is one.
    std::optional<PageNumber> HighestBelow(PageNumber bound) const {
        DataPage page;
        const Bytes row = MapRow(pager_, map_, page);
        if (!reference_)
            return LastPage(row.subspan(kInlineBitmap), FirstInline(), bound);
        for (std::size_t i = ReferenceCount(row); i-- > 0;) {
            const PageNumber bitmap = LoadU32(row, kMapReferences + 4 * i);
            if (bitmap == 0)
                continue;
            const auto first = static_cast<PageNumber>(i) * pager_.format().PagesPerBitmap();
            const PagePtr bits = ReadBitmap(bitmap);
            if (const auto found = LastPage(Bytes(bits->bytes).subspan(kBitmapPageBits), first, bound))
                return found;
        }
        return std::nullopt;
    }

    bool IsReference() const { return reference_; }

private:
    static std::size_t ReferenceCount(Bytes row) { return (row.size() - kMapReferences) / 4; }

    std::optional<PageNumber> FirstOfBitmap(Bytes row, std::size_t i) const {
        const PageNumber bitmap = LoadU32(row, kMapReferences + 4 * i);
        if (bitmap == 0)
            return std::nullopt;
        const PagePtr bits = ReadBitmap(bitmap);
        const auto first = static_cast<PageNumber>(i) * pager_.format().PagesPerBitmap();
        return FirstPage(Bytes(bits->bytes).subspan(kBitmapPageBits), first);
    }

    PageNumber FirstInline() const {
        DataPage page;
        return LoadU32(MapRow(pager_, map_, page), kMapFirstPage);
    }

    PagePtr ReadBitmap(PageNumber number) const {
        return pager_.Read(number, PageKind::kUsageBitmap, "bitmap page of a usage map");
    }

    // The page of bits that covers a page; 0 if there is none.
    PageNumber BitmapOf(PageNumber page) const {
        const std::size_t at = kMapReferences + 4 * (page / pager_.format().PagesPerBitmap());
        if (at + 4 > size_)
            return 0;
        DataPage holder;
        const PageNumber bitmap = LoadU32(MapRow(pager_, map_, holder), at);
        if (bitmap != 0)
            ReadBitmap(bitmap);
        return bitmap;
    }

    Pager& pager_;
    RowId map_;
    bool reference_ = false;
    std::size_t size_ = 0;
};

// The map of free pages reaches past the end of the file, with all bits there set; so its own pages of bits are taken
// from the end.
PageNumber AppendPage(Pager& pager) {
    return pager.Append();
}

// Makes row 0 of the page of maps longer; false when the page is full.
bool GrowOnPage(Pager& pager) {
    const std::span<std::uint8_t> page = pager.Change(kFreePages.page);
    const std::size_t size = RowBytes(pager.format(), page, kFreePages.slot).size();
    if (!ResizeRow(pager.format(), page, kFreePages.slot, size + kMapGrowth))
        return false;
    const std::span<std::uint8_t> grown = RowBytes(pager.format(), page, kFreePages.slot);
    std::fill(grown.begin() + static_cast<std::ptrdiff_t>(size), grown.end(), std::uint8_t{0xFF});
    return true;
}

// Turns the inline map of free pages into one of references.
void ConvertFreeMap(Pager& pager) {
    DataPage page;
    const Bytes row = MapRow(pager, kFreePages, page);
    const PageNumber first = LoadU32(row, kMapFirstPage);
    const std::vector<std::uint8_t> bits(row.begin() + kInlineBitmap, row.end());
    MapEditor map(pager, kFreePages);
    map.ClearForReferences();
    const PageNumber per_bitmap = pager.format().PagesPerBitmap();
    for (PageNumber start = 0; start < first + 8 * bits.size(); start += per_bitmap)
        map.AddBitmap(start, AppendPage, 0xFF);
    for (PageNumber i = 0; i < 8 * bits.size(); ++i)
        map.Set(first + i, (bits[i / 8] >> (i % 8) & 1) != 0);
    for (PageNumber i = 0; i < first; ++i)
        map.Set(i, false);
}

// Makes the map of free pages reach to the last page of the file.
void CoverLastPage(Pager& pager) {
    for (PageNumber last = pager.page_count() - 1;; last = pager.page_count() - 1) {
        MapEditor map(pager, kFreePages);
        if (map.Covers(last))
            return;
        if (map.IsReference())
            map.AddBitmap(last, AppendPage, 0xFF);
        else if (!GrowOnPage(pager))
            ConvertFreeMap(pager);
    }
}

void MarkUsedFrom(Pager& pager, PageNumber first) {
    MapEditor map(pager, kFreePages);
    for (PageNumber page = first; page < pager.page_count(); ++page)
        map.Set(page, false);
}

}  // namespace

PageNumber AllocatePage(Pager& pager) {
    const std::optional<PageNumber> lowest = MapEditor(pager, kFreePages).Lowest();
    if (lowest && *lowest < pager.page_count()) {
        if (*lowest < kFirstOrdinaryPage)
            RaiseDamage("the map of free pages lists " + DescribePage(*lowest));
        MapEditor(pager, kFreePages).Set(*lowest, false);
        pager.Overwrite(*lowest);
        return *lowest;
    }
    const PageNumber appended = pager.Append();
    CoverLastPage(pager);
    MarkUsedFrom(pager, appended);
    return appended;
}

// Pages that the map does not reach to count as free.
void FreePage(Pager& pager, PageNumber page) {
    MapEditor map(pager, kFreePages);
    if (map.Covers(page))
        map.Set(page, true);
}

void AddToMap(Pager& pager, RowId map, PageNumber page) {
    MapEditor editor(pager, map);
    if (!editor.Covers(page) && !editor.Reach(page)) {
        editor.MakeReference(AllocatePage);
        if (!editor.Covers(page))
            editor.AddBitmap(page, AllocatePage, 0);
    }
    editor.Set(page, true);
}

void RemoveFromMap(Pager& pager, RowId map, PageNumber page) {
    MapEditor editor(pager, map);
    if (editor.Covers(page))
        editor.Set(page, false);
}

PageNumber HighestInMap(Pager& pager, RowId map, PageNumber bound) {
    return MapEditor(pager, map).HighestBelow(bound).value_or(0);
}

RowId AddMap(Pager& pager, PageNumber beside) {
    const std::vector<std::uint8_t> map = MakeUsageMap(pager.format());
    if (beside != 0) {
        DataPage(pager, beside, kUsageMapOwner, "page of usage maps");
        if (!HasSoundRows(pager.format(), pager.Read(beside)->bytes))
            RaiseDamage("the usage maps of " + DescribePage(beside) + " overlap");
        if (const auto slot = AppendRow(pager.format(), pager.Change(beside), map))
            return {.page = beside, .slot = *slot};
    }
    const PageNumber fresh = AllocatePage(pager);
    const std::vector<std::uint8_t> content = MakeDataPage(pager.format(), kUsageMapOwner);
    const std::span<std::uint8_t> page = pager.Change(fresh);
    std::copy(content.begin(), content.end(), page.begin());
    return {.page = fresh, .slot = AppendRow(pager.format(), page, map).value()};
}

}  // namespace ledgix::jet
