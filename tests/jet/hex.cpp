#include "hex.h"

#include <charconv>

namespace ledgix::test {

ByteList Hex(std::string_view text) {
    ByteList bytes;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == ' ' || text[at] == '\n') {
            ++at;
            continue;
        }
        std::from_chars(text.data() + at, text.data() + at + 2, bytes.emplace_back(), 16);
        at += 2;
    }
    return bytes;
}

}  // namespace ledgix::test
