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
    const std::size_t free = FreeBytes(format, page);
    if (!HasRoomFor(format, page, row.size()))
        return std::nullopt;
    const std::size_t start = StartOf(layout, page, slot) - row.size();
    std::copy(row.begin(), row.end(), page.begin() + static_cast<std::ptrdiff_t>(start));
    StoreLittle(page, layout.slots + kSlotSize * slot, static_cast<std::uint16_t>(start | flags));
    StoreLittle(page, layout.slot_count, static_cast<std::uint16_t>(slot + 1));
    StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(free - taken));
    return static_cast<std::uint8_t>(slot);
}

bool HasRoomFor(const Format& format, Bytes page, std::size_t row_size) {
    return LoadU16(page, format.data_page.slot_count) < kMostSlotsWritten &&
           row_size + kSlotSize <= FreeBytes(format, page);
}

bool ResizeRow(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot, std::size_t size) {
    const DataPageLayout& layout = format.data_page;
    const std::size_t slots = LoadU16(page, layout.slot_count);
    const std::size_t end = StartOf(layout, page, slot);
    const std::size_t start = StartOf(layout, page, slot + std::size_t{1});
    const std::size_t lowest = StartOf(layout, page, slots);
    const std::size_t free = FreeBytes(format, page);
    if (size > end - start + free)
        return false;
    const std::ptrdiff_t shift = static_cast<std::ptrdiff_t>(end - start) - static_cast<std::ptrdiff_t>(size);
    const auto kept = static_cast<std::ptrdiff_t>(std::min(size, end - start));
    const auto first = page.begin() + static_cast<std::ptrdiff_t>(lowest);
    const auto row_start = page.begin() + static_cast<std::ptrdiff_t>(start);
    if (shift < 0) {
        std::copy(first, row_start + kept, first + shift);
        std::fill(row_start + kept + shift, page.begin() + static_cast<std::ptrdiff_t>(end), std::uint8_t{0});
    } else {
        std::copy_backward(first, row_start + kept, row_start + kept + shift);
    }
    for (std::size_t i = slot; i < slots; ++i) {
        const std::size_t at = layout.slots + kSlotSize * i;
        StoreLittle(page, at, static_cast<std::uint16_t>(LoadU16(page, at) + shift));
    }
    StoreLittle(page, layout.free_bytes, static_cast<std::uint16_t>(static_cast<std::ptrdiff_t>(free) + shift));
    return true;
}

void SetSlotFlags(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot, std::uint16_t flags) {
    const std::size_t at = format.data_page.slots + kSlotSize * slot;
    StoreLittle(page, at, static_cast<std::uint16_t>((LoadU16(page, at) & kSlotStart) | flags));
}

std::size_t FreeBytes(const Format& format, Bytes page) {
    const DataPageLayout& layout = format.data_page;
    const std::size_t slots = LoadU16(page, layout.slot_count);
    return StartOf(layout, page, slots) - (layout.slots + kSlotSize * slots);
}

bool HasLiveRows(const Format& format, Bytes page) {
    const DataPageLayout& layout = format.data_page;
    const std::size_t slots = LoadU16(page, layout.slot_count);
    for (std::size_t i = 0; i < slots; ++i) {
        if ((LoadU16(page, layout.slots + kSlotSize * i) & kSlotDeleted) != kSlotDeleted)
            return true;
    }
    return false;
}

bool HasSoundRows(const Format& format, Bytes page) {
    const DataPageLayout& layout = format.data_page;
    const std::size_t slots = LoadU16(page, layout.slot_count);
    const std::size_t slots_end = layout.slots + kSlotSize * slots;
    if (slots > kMostSlots || slots_end > page.size())
        return false;
    std::size_t end = page.size();
    for (std::size_t i = 1; i <= slots; ++i) {
        const std::size_t start = StartOf(layout, page, i);
        if (start > end)
            return false;
        end = start;
    }
    return end >= slots_end;
}

std::span<std::uint8_t> RowBytes(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot) {
    const std::size_t start = StartOf(format.data_page, page, slot + std::size_t{1});
    return page.subspan(start, StartOf(format.data_page, page, slot) - start);
}

}  // namespace ledgix::jet
