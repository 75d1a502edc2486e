#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "damage.h"
#include "read_everything.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

// Half of the mutations aim at the structure: swapped pages, forged counts and pointers.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
    constexpr std::size_t kFewestBytes = 4 * 4096;  // damage needs some pages
    std::mt19937 random(seed);
    if (size < kFewestBytes || random() % 2 == 0)
        return LLVMFuzzerMutate(data, size, max_size);
    const ledgix::test::Damage damage = ledgix::test::kAllDamages[random() % std::size(ledgix::test::kAllDamages)];
    const std::vector<std::uint8_t> damaged = ledgix::test::Damaged({data, data + size}, damage, seed);
    std::copy(damaged.begin(), damaged.end(), data);
    return damaged.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ledgix::test::ReadEverything({data, data + size});
    return 0;
}
