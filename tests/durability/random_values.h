#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "model_rows.h"

namespace ledgix::test {

// Draws what rows are to hold. The same seed gives the same on every run.
class RandomValues {
public:
    explicit RandomValues(std::uint32_t seed) : random_(seed) {}

    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
    bool OneOf(std::size_t limit) { return Below(limit) == 0; }

    // A value that the column takes, Null now and then.
    runtime::Variant Draw(const ModelColumn& column);

    // Letters and digits in any case.
    std::string Word(std::size_t characters);

private:
    std::string Text(std::size_t most);
    std::string Memo();
    double Real();

    std::mt19937_64 random_;
};

}  // namespace ledgix::test
