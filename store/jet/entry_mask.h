#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "jet_types.h"

// The bits of an index page: one for each place just behind an entry, counted from the first entry. Place q is bit
// q & 7 of byte q / 8. Place 0 has none.
namespace ledgix::jet {

// The last place that is marked; 0 for none.
std::size_t LastMark(Bytes mask);

// The first place behind `place` that is marked. There must be one.
std::size_t NextMark(Bytes mask, std::size_t place);

// The last place up to `place` that is marked; 0 for none.
std::size_t MarkUpTo(Bytes mask, std::size_t place);

std::size_t CountMarks(Bytes mask);

void Mark(std::span<std::uint8_t> mask, std::size_t place);

// Moves the marks behind `place` on by `count` places. Those moved past the end are lost.
void SpreadMarks(std::span<std::uint8_t> mask, std::size_t place, std::size_t count);

// Takes the marks of the `count` places behind `place` out and moves those behind them back.
void CloseMarks(std::span<std::uint8_t> mask, std::size_t place, std::size_t count);

// Takes out all marks behind `place`.
void CutMarks(std::span<std::uint8_t> mask, std::size_t place);

}  // namespace ledgix::jet
