#include "usage_map_writer.h"

#include "byte_order.h"

namespace ledgix::jet {

std::vector<std::uint8_t> MakeUsageMap(const Format& format) {
    return std::vector<std::uint8_t>(format.new_map_size);  // zeros: an inline map that starts at page 0
}

bool SetInUsageMap(std::span<std::uint8_t> map, PageNumber page, bool in_map) {
    const PageNumber first = LoadU32(map, kMapFirstPage);
    const std::span<std::uint8_t> bitmap = map.subspan(kInlineBitmap);
    if (map[0] != kInlineMap || page < first || (page - first) / 8 >= bitmap.size())
        return false;
    std::uint8_t& byte = bitmap[(page - first) / 8];
    const unsigned bit = 1U << ((page - first) % 8);
    byte = static_cast<std::uint8_t>(in_map ? byte | bit : byte & ~bit);
    return true;
}

void FillUsageMap(std::span<std::uint8_t> map, PageNumber first) {
    for (PageNumber page = first; SetInUsageMap(map, page, true);)
        ++page;
}

}  // namespace ledgix::jet
