#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "jet_format.h"
#include "row_image.h"

namespace ledgix::test {

// The pages of a database under construction, with the operations that its parts have in common.
class FileImage {
public:
    // Begins with a header page and the page of the free-page map. A usage map of 0 bytes has the usual size, which is
    // enough for 1024 (Jet 3) or 512 pages.
    explicit FileImage(jet::Generation generation, std::size_t map_size = 0);

    const jet::Format& format() const { return format_; }
    jet::PageNumber page_count() const { return static_cast<jet::PageNumber>(bytes_.size() / format_.page_size); }

    jet::PageNumber Allocate();
    std::span<std::uint8_t> page(jet::PageNumber number);

    // Allocates a page of rows.
    jet::PageNumber AddDataPage(std::uint32_t owner);

    // Whether a row of this length has room on the page.
    bool HasRoom(jet::PageNumber page, std::size_t length);

    // Puts a row on a page that has room for it.
    jet::RowId AddRow(jet::PageNumber page, const ByteList& row, std::uint16_t flags = 0);

    std::span<std::uint8_t> row(jet::RowId id);
    void SetFlags(jet::RowId id, std::uint16_t flags);

    // Takes the bytes of a row out and moves those of the rows with higher numbers; the slot stays.
    void SqueezeOut(jet::RowId id);

    // An empty usage map on a page of maps.
    bool HasRoomForMap(jet::PageNumber map_page) { return HasRoom(map_page, map_size_); }
    jet::RowId AddMap(jet::PageNumber map_page);
    void AddToMap(jet::RowId map, jet::PageNumber page);

    // The whole file, with the map of free pages brought up to date.
    std::vector<std::uint8_t> Finish();

private:
    std::uint16_t LoadSlot(jet::PageNumber page, std::size_t slot);
    void StoreSlot(jet::PageNumber page, std::size_t slot, std::size_t value);
    std::size_t SlotCount(jet::PageNumber page);
    std::size_t LowestStart(jet::PageNumber page);
    void UpdateFreeBytes(jet::PageNumber page);
    void WriteHeaderPage();

    const jet::Format& format_;
    std::size_t map_size_;
    std::vector<std::uint8_t> bytes_;
    jet::RowId free_pages_;
};

}  // namespace ledgix::test
