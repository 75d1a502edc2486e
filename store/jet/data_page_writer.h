#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"

namespace ledgix::jet {

// A page without rows. The owner is the definition page of a table, or one of those that jet_format.h names.
std::vector<std::uint8_t> MakeDataPage(const Format& format, std::uint32_t owner);

// Puts a row behind those that a data page has; `flags` are those of the slot. The slot that it got, or nothing when
// the page has no room for the row or no number for its slot.
std::optional<std::uint8_t> AppendRow(const Format& format, std::span<std::uint8_t> page, Bytes row,
                                      std::uint16_t flags = 0);

// Whether AppendRow would find room for a row of so many bytes.
bool HasRoomFor(const Format& format, Bytes page, std::size_t row_size);

// Makes a row longer or shorter at its end; the rows behind it on the page move, and bytes added are zero. False, and
// no change, when the page has no room.
bool ResizeRow(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot, std::size_t size);

void SetSlotFlags(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot, std::uint16_t flags);

// Bytes between the table of slots and the lowest row.
std::size_t FreeBytes(const Format& format, Bytes page);

// Whether any slot is not deleted.
bool HasLiveRows(const Format& format, Bytes page);

// Whether rows descend from the end of the page and leave the table of slots alone. A page that was read must pass
// before it is changed.
bool HasSoundRows(const Format& format, Bytes page);

// The bytes of a row, to be changed. The slot must exist.
std::span<std::uint8_t> RowBytes(const Format& format, std::span<std::uint8_t> page, std::uint8_t slot);

}  // namespace ledgix::jet
