#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "database_builder.h"
#include "index_image.h"
#include "index_tree.h"
#include "index_tree_check.h"

namespace ledgix::test {

inline constexpr std::uint32_t kSeed = 20041;

using KeyMaker = std::function<ByteList(std::uint32_t)>;

// The key of an int32 column.
ByteList Key(std::uint32_t number);

// As text has it: the end is marked by a byte that occurs nowhere else. Neighbours differ early.
ByteList LongKey(std::uint32_t number, std::size_t size);

// A row for each number, 200 on a page.
jet::RowId Row(std::uint32_t number);

// What a leaf says: key and row pointer.
ByteList Entry(const ByteList& key, jet::RowId row);

// From 0 up.
std::vector<std::uint32_t> Numbers(std::uint32_t count);
std::vector<std::uint32_t> Backwards(std::vector<std::uint32_t> numbers);

// In the same disorder on every run.
template <typename Element>
std::vector<Element> Shuffled(std::vector<Element> elements) {
    std::shuffle(elements.begin(), elements.end(), std::mt19937(kSeed));
    return elements;
}

// An index of a table without rows, changed together with a set that says what should be in it.
class ChangedIndex : public testing::TestWithParam<jet::Generation> {
protected:
    void SetUp() override;

    // Begins anew with an index whose pages another writer compressed.
    void OpenWith(const std::vector<IndexEntry>& entries, std::size_t entries_per_page);

    void Open(std::vector<std::uint8_t> content);

    const jet::Index& index() const { return table_.indexes.at(0); }
    jet::Pager& pager() { return file_->pager(); }

    bool Insert(const ByteList& key, jet::RowId row);
    void Remove(const ByteList& key, jet::RowId row);

    TreeCheck CheckPages() { return CheckIndexTree(pager(), owner_, index()); }

    // The pages are sound, and a walk gives exactly what should be there.
    void Verify();
    // The second half of that.
    void VerifyWalk();

    // With Verify now and then.
    void InsertAll(const std::vector<std::uint32_t>& numbers, const KeyMaker& key);
    void RemoveAll(const std::vector<std::uint32_t>& numbers, const KeyMaker& key);

    // Takes entries in and out at random, growing and shrinking in turn. Half of the keys are shared by two rows.
    void ChangeAtRandom(int changes, std::uint32_t keys, const KeyMaker& key);

    // Changes a copy of a file that was damaged in its index pages; false when the engine refused that.
    bool ChangeDamaged(const std::vector<std::uint8_t>& sound, const std::vector<jet::PageNumber>& pages,
                       std::uint32_t seed);

    bool HasKeyInModel(const ByteList& key) const;

    jet::PageNumber owner_ = 0;
    std::optional<jet::DatabaseFile> file_;
    jet::TableDefinition table_;
    std::optional<jet::IndexTree> tree_;
    std::set<ByteList> model_;
};

}  // namespace ledgix::test
