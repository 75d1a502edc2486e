#include "rc4.h"

#include <array>
#include <numeric>
#include <utility>

namespace ledgix::jet {

void ApplyRc4(Bytes key, std::span<std::uint8_t> bytes) {
    std::array<std::uint8_t, 256> state;
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (std::uint8_t& byte : bytes) {
        j = static_cast<std::uint8_t>(j + state[++i]);
        std::swap(state[i], state[j]);
        byte = static_cast<std::uint8_t>(byte ^ state[static_cast<std::uint8_t>(state[i] + state[j])]);
    }
}

}  // namespace ledgix::jet
