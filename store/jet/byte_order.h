#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

#include "jet_types.h"

// Numbers at a place in a page. The caller has checked that they lie inside.
namespace ledgix::jet {

template <typename Number>
Number LoadLittle(Bytes bytes, std::size_t at) {
    assert(at + sizeof(Number) <= bytes.size());
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        value |= std::uint64_t{bytes[at + i]} << (8 * i);
    return static_cast<Number>(value);
}

inline std::uint16_t LoadU16(Bytes bytes, std::size_t at) {
    return LoadLittle<std::uint16_t>(bytes, at);
}

inline std::uint32_t LoadU24(Bytes bytes, std::size_t at) {
    return LoadU16(bytes, at) | std::uint32_t{bytes[at + 2]} << 16;
}

inline std::uint32_t LoadU32(Bytes bytes, std::size_t at) {
    return LoadLittle<std::uint32_t>(bytes, at);
}

inline std::uint64_t LoadU64(Bytes bytes, std::size_t at) {
    return LoadLittle<std::uint64_t>(bytes, at);
}

inline double LoadDouble(Bytes bytes, std::size_t at) {
    return std::bit_cast<double>(LoadU64(bytes, at));
}

// Row pointer: u8 slot, u24 page.
inline RowId LoadRowPointer(Bytes bytes, std::size_t at) {
    return {.page = LoadU24(bytes, at + 1), .slot = bytes[at]};
}

template <typename Number>
Number LoadBig(Bytes bytes, std::size_t at) {
    assert(at + sizeof(Number) <= bytes.size());
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        value = value << 8 | bytes[at + i];
    return static_cast<Number>(value);
}

template <typename Number>
void StoreLittle(std::span<std::uint8_t> bytes, std::size_t at, Number number) {
    assert(at + sizeof(Number) <= bytes.size());
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bytes[at + i] = static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * i));
}

inline void StoreRowPointer(std::span<std::uint8_t> bytes, std::size_t at, RowId id) {
    StoreLittle(bytes, at, id.page << 8 | id.slot);
}

template <typename Number>
void StoreBig(std::span<std::uint8_t> bytes, std::size_t at, Number number) {
    assert(at + sizeof(Number) <= bytes.size());
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bytes[at + i] = static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * (sizeof(Number) - 1 - i)));
}

}  // namespace ledgix::jet
