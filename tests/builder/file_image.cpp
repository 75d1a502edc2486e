#include "file_image.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "byte_order.h"
#include "rc4.h"

namespace ledgix::test {

namespace {

using jet::LoadU16;
using jet::PageNumber;
using jet::RowId;
using jet::StoreLittle;

constexpr std::uint8_t kHeaderKey[]{0xC7, 0xDA, 0x39, 0x6B};
constexpr double kCreationDate = 42329.0;

std::size_t UsualMapSize(jet::Generation generation) {
    return generation == jet::Generation::kJet3 ? 133 : 69;
}

}  // namespace

FileImage::FileImage(jet::Generation generation, std::size_t map_size)
    : format_(jet::FormatOf(generation)), map_size_(map_size != 0 ? map_size : UsualMapSize(generation)) {
    Allocate();
    WriteHeaderPage();
    AddDataPage(jet::kAllocationPage);
    free_pages_ = AddMap(jet::kAllocationPage);
    AddMap(jet::kAllocationPage);
}

void FileImage::WriteHeaderPage() {
    const std::span<std::uint8_t> header = page(0);
    std::memcpy(header.data(), "\0\1\0\0Standard Jet DB", 20);
    header[jet::kHeaderVersion] = format_.generation == jet::Generation::kJet3 ? 0 : 1;
    StoreLittle(header, 0x18, std::uint32_t{0x100});
    StoreLittle(header, 0x1C, std::uint32_t{0x101});
    for (std::uint32_t i = 0; i < 4; ++i)
        StoreLittle(header, 0x20 + 4 * i, 2 + i);
    StoreLittle(header, jet::kHeaderCodePage, std::uint16_t{1252});
    if (format_.header.password_masked_by_date) {
        for (std::size_t i = 0; i < format_.header.password_size; i += 4)
            StoreLittle(header, jet::kHeaderPassword + i, static_cast<std::uint32_t>(kCreationDate));
        StoreLittle(header, jet::kHeaderCreationDate, std::bit_cast<std::uint64_t>(kCreationDate));
    }
    jet::ApplyRc4(kHeaderKey, header.subspan(jet::kHeaderMasked, format_.header.masked_size));
}

PageNumber FileImage::Allocate() {
    bytes_.resize(bytes_.size() + format_.page_size);
    return page_count() - 1;
}

std::span<std::uint8_t> FileImage::page(PageNumber number) {
    return std::span(bytes_).subspan(number * format_.page_size, format_.page_size);
}

PageNumber FileImage::AddDataPage(std::uint32_t owner) {
    const PageNumber number = Allocate();
    page(number)[0] = static_cast<std::uint8_t>(jet::PageKind::kData);
    page(number)[1] = 1;
    StoreLittle(page(number), format_.data_page.owner, owner);
    UpdateFreeBytes(number);
    return number;
}

std::size_t FileImage::SlotCount(PageNumber number) {
    return LoadU16(page(number), format_.data_page.slot_count);
}

std::uint16_t FileImage::LoadSlot(PageNumber number, std::size_t slot) {
    return LoadU16(page(number), format_.data_page.slots + 2 * slot);
}

void FileImage::StoreSlot(PageNumber number, std::size_t slot, std::size_t value) {
    StoreLittle(page(number), format_.data_page.slots + 2 * slot, static_cast<std::uint16_t>(value));
}

std::size_t FileImage::LowestStart(PageNumber number) {
    const std::size_t count = SlotCount(number);
    return count == 0 ? format_.page_size : LoadSlot(number, count - 1) & jet::kSlotStart;
}

void FileImage::UpdateFreeBytes(PageNumber number) {
    const std::size_t free = LowestStart(number) - format_.data_page.slots - 2 * SlotCount(number);
    StoreLittle(page(number), format_.data_page.free_bytes, static_cast<std::uint16_t>(free));
}

bool FileImage::HasRoom(PageNumber number, std::size_t length) {
    return LoadU16(page(number), format_.data_page.free_bytes) >= length + 2 && SlotCount(number) < 255;
}

RowId FileImage::AddRow(PageNumber number, const ByteList& row, std::uint16_t flags) {
    const std::size_t slot = SlotCount(number);
    const std::size_t start = LowestStart(number) - row.size();
    std::copy(row.begin(), row.end(), page(number).begin() + static_cast<std::ptrdiff_t>(start));
    StoreLittle(page(number), format_.data_page.slot_count, static_cast<std::uint16_t>(slot + 1));
    StoreSlot(number, slot, start | flags);
    UpdateFreeBytes(number);
    return {.page = number, .slot = static_cast<std::uint8_t>(slot)};
}

std::span<std::uint8_t> FileImage::row(RowId id) {
    const std::size_t start = LoadSlot(id.page, id.slot) & jet::kSlotStart;
    const std::size_t end = id.slot == 0 ? format_.page_size : LoadSlot(id.page, id.slot - 1U) & jet::kSlotStart;
    return page(id.page).subspan(start, end - start);
}

void FileImage::SetFlags(RowId id, std::uint16_t flags) {
    StoreSlot(id.page, id.slot, (LoadSlot(id.page, id.slot) & jet::kSlotStart) | flags);
}

void FileImage::SqueezeOut(RowId id) {
    const std::size_t length = row(id).size();
    const std::size_t start = LoadSlot(id.page, id.slot) & jet::kSlotStart;
    const std::size_t lowest = LowestStart(id.page);
    std::memmove(&page(id.page)[lowest + length], &page(id.page)[lowest], start - lowest);
    for (std::size_t slot = id.slot; slot < SlotCount(id.page); ++slot)
        StoreSlot(id.page, slot, LoadSlot(id.page, slot) + length);
    UpdateFreeBytes(id.page);
}

RowId FileImage::AddMap(PageNumber map_page) {
    return AddRow(map_page, ByteList(map_size_));
}

void FileImage::AddToMap(RowId map, PageNumber number) {
    row(map)[jet::kInlineBitmap + number / 8] |= static_cast<std::uint8_t>(1U << number % 8);
}

std::vector<std::uint8_t> FileImage::Finish() {
    const auto pages_in_map = static_cast<PageNumber>((row(free_pages_).size() - jet::kInlineBitmap) * 8);
    for (PageNumber number = page_count(); number < pages_in_map; ++number)
        AddToMap(free_pages_, number);
    return bytes_;
}

}  // namespace ledgix::test
