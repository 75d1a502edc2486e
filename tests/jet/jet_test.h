#pragma once

#include <gtest/gtest.h>

#include "error_of.h"
#include "jet_types.h"

// What the tests of this folder have in common.
namespace ledgix::test {

// The error number of damage.
inline constexpr int kDamaged = 3049;

inline const auto kBothGenerations = testing::Values(jet::Generation::kJet3, jet::Generation::kJet4);

inline std::string GenerationName(const testing::TestParamInfo<jet::Generation>& info) {
    return info.param == jet::Generation::kJet3 ? "Jet3" : "Jet4";
}

}  // namespace ledgix::test
