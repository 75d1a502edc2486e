#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Damage done on purpose to Access files, the same on every run.
namespace ledgix::test {

enum class Damage {
    kChangedBytes,    // a few bytes anywhere
    kCutOff,          // the file ends early, within a page or between pages
    kSwappedPages,    // two pages have changed places
    kForgedCounts,    // a number near the start of a page is out of all proportion
    kForgedPointers,  // a page or row pointer leads elsewhere: into a circle, to a page of another kind, out of the
                      // file
};

inline constexpr Damage kAllDamages[]{Damage::kChangedBytes, Damage::kCutOff, Damage::kSwappedPages,
                                      Damage::kForgedCounts, Damage::kForgedPointers};

// "CutOff"
std::string DamageName(Damage damage);

// A copy of a sound file with damage of one kind; each seed does other damage.
std::vector<std::uint8_t> Damaged(const std::vector<std::uint8_t>& sound, Damage damage, std::uint32_t seed);

}  // namespace ledgix::test
