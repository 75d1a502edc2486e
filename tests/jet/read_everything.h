#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ledgix::test {

// What a walk through a whole file came across.
struct Everything {
    std::size_t tables = 0;
    std::size_t rows = 0;
    std::size_t entries = 0;        // of indexes
    std::size_t longest_table = 0;  // bytes of text and binary values in the table with the most of them
    std::size_t errors = 0;         // tables and indexes given up with an error of the engine
    bool opened = false;
};

// Opens the bytes as a database, lists the catalogue and reads every value of every table and every entry of every
// index. Errors of the engine are
// counted; any other exception gets out.
Everything ReadEverything(std::vector<std::uint8_t> content);

}  // namespace ledgix::test
