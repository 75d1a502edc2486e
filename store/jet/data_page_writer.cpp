#include "data_page_writer.h"

#include <algorithm>

#include "byte_order.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kSlotSize = 2;

// Where the row of a slot starts; that of "slot -1" would start at the end of the page.
std::size_t StartOf(const DataPageLayout& layout, Bytes page, std::size_t slots_up_to) {
    if (slots_up_to == 0)
        return page.size();
    return LoadU16(page, layout.slots + kSlotSize * (slots_up_to - 1)) & kSlotStart;
}

}  // namespace

std::vector<std::uint8_t> MakeDataPage(const Format& format, std::uint32_t owner) {
    const DataPageLayout& layout = format.data_page;
    std::vector<std::uint8_t> page(format.page_size);
    page[0] = static_cast<std::uint8_t>(PageKind::kData);
    page[1] = kPageInUse;
    StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(page.size() - layout.slots));
    StoreLittle(page, layout.owner, owner);
    return page;
}

std::optional<std::uint8_t> AppendRow(const Format& format, std::span<std::uint8_t> page, Bytes row,
                                      std::uint16_t flags) {
    const DataPageLayout& layout = format.data_page;
    const std::size_t slot = LoadU16(page, layout.slot_count);
    const std::size_t taken = row.size() + kSlotSize;
    const std::size_t free = LoadU16(page, layout.free_bytes);
    if (slot >= kMostSlotsWritten || taken > free)
        return std::nullopt;
    const std::size_t start = StartOf(layout, page, slot) - row.size();
    std::copy(row.begin(), row.end(), page.begin() + static_cast<std::ptrdiff_t>(start));
    StoreLittle(page, layout.slots + kSlotSize * slot, static_cast<std::uint16_t>(start | flags));
    StoreLittle(page, layout.slot_count, static_cast<std::uint16_t>(slot + 1));
    StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(free - taken));
    return static_cast<std::uint8_t>(slot);
}

std::span<std::uint8_t> RowBytes(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot) {
    const std::size_t start = StartOf(format.data_page, page, slot + std::size_t{1});
    return page.subspan(start, StartOf(format.data_page, page, slot) - start);
}

}  // namespace ledgix::jet
