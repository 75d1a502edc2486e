#include "entry_mask.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ledgix::jet {

namespace {

bool IsWordZero(Bytes mask, std::size_t at) {
    std::uint64_t word = 0;
    std::memcpy(&word, mask.data() + at, sizeof(word));
    return word == 0;
}

// The bits of `byte` that stand for places behind `place`, where `byte` is the one with the place itself.
std::uint8_t Behind(std::uint8_t byte, std::size_t place) {
    return static_cast<std::uint8_t>(byte & (0xFEU << (place % 8)));
}

std::uint8_t UpTo(std::uint8_t byte, std::size_t place) {
    return static_cast<std::uint8_t>(byte & ~(0xFEU << (place % 8)));
}

}  // namespace

std::size_t LastMark(Bytes mask) {
    std::size_t end = mask.size();
    while (end >= sizeof(std::uint64_t) && IsWordZero(mask, end - sizeof(std::uint64_t)))
        end -= sizeof(std::uint64_t);
    while (end > 0 && mask[end - 1] == 0)
        --end;
    return end == 0 ? 0 : 8 * end - 1 - static_cast<std::size_t>(std::countl_zero(mask[end - 1]));
}

std::size_t NextMark(Bytes mask, std::size_t place) {
    std::size_t at = place / 8;
    std::uint8_t byte = Behind(mask[at], place);
    while (byte == 0)
        byte = mask[++at];
    return 8 * at + static_cast<std::size_t>(std::countr_zero(byte));
}

std::size_t MarkUpTo(Bytes mask, std::size_t place) {
    std::size_t at = place / 8;
    std::uint8_t byte = UpTo(mask[at], place);
    while (byte == 0 && at > 0)
        byte = mask[--at];
    return byte == 0 ? 0 : 8 * at + 7 - static_cast<std::size_t>(std::countl_zero(byte));
}

std::size_t CountMarks(Bytes mask) {
    std::size_t count = 0;
    for (const std::uint8_t byte : mask)
        count += static_cast<std::size_t>(std::popcount(byte));
    return count;
}

void Mark(std::span<std::uint8_t> mask, std::size_t place) {
    mask[place / 8] = static_cast<std::uint8_t>(mask[place / 8] | 1U << (place % 8));
}

void SpreadMarks(std::span<std::uint8_t> mask, std::size_t place, std::size_t count) {
    const std::size_t first = place / 8;
    const std::size_t bytes = count / 8;
    const unsigned bits = count % 8;
    const std::uint8_t stays = UpTo(mask[first], place);
    mask[first] = Behind(mask[first], place);
    // Byte i gets what byte i - bytes and the one below it hold.
    for (std::size_t i = mask.size(); i-- > first + bytes;) {
        const unsigned from = mask[i - bytes];
        const unsigned below = i - bytes > first ? mask[i - bytes - 1] : 0U;
        mask[i] = static_cast<std::uint8_t>((from << 8 | below) << bits >> 8);
    }
    std::fill_n(mask.begin() + static_cast<std::ptrdiff_t>(first), std::min(bytes, mask.size() - first),
                std::uint8_t{0});
    mask[first] = static_cast<std::uint8_t>(mask[first] | stays);
}

void CloseMarks(std::span<std::uint8_t> mask, std::size_t place, std::size_t count) {
    const std::size_t first = place / 8;
    const std::size_t bytes = count / 8;
    const unsigned bits = count % 8;
    const std::uint8_t stays = UpTo(mask[first], place);
    for (std::size_t i = first; i < mask.size(); ++i) {
        const unsigned from = i + bytes < mask.size() ? mask[i + bytes] : 0U;
        const unsigned above = i + bytes + 1 < mask.size() ? mask[i + bytes + 1] : 0U;
        mask[i] = static_cast<std::uint8_t>((above << 8 | from) >> bits);
    }
    mask[first] = static_cast<std::uint8_t>(Behind(mask[first], place) | stays);
}

void CutMarks(std::span<std::uint8_t> mask, std::size_t place) {
    const std::size_t first = place / 8;
    mask[first] = UpTo(mask[first], place);
    std::fill(mask.begin() + static_cast<std::ptrdiff_t>(first) + 1, mask.end(), std::uint8_t{0});
}

}  // namespace ledgix::jet
