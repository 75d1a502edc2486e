#pragma once

#include <cstdint>
#include <span>

#include "jet_types.h"

namespace ledgix::jet {

// Combines `bytes` with the RC4 key stream of `key`; doing it twice gives the first bytes back.
void ApplyRc4(Bytes key, std::span<std::uint8_t> bytes);

}  // namespace ledgix::jet
