#include "keyed_collection.h"

#include <gtest/gtest.h>

#include "error_of.h"

namespace ledgix::model {
namespace {

using runtime::ErrorNumber;

KeyedCollection<int> Filled() {
    KeyedCollection<int> items;
    items.Add(std::make_unique<int>(7), "P7");
    items.Add(std::make_unique<int>(2), "P2");
    return items;
}

TEST(KeyedCollection, KeepsTheOrderOfAdding) {
    const KeyedCollection<int> items = Filled();
    EXPECT_EQ(items.Count(), 2U);
    EXPECT_EQ(items[std::size_t{1}], 7);
    EXPECT_EQ(items[std::size_t{2}], 2);
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P7", "P2"}));
}

TEST(KeyedCollection, FindsKeysInAnyCase) {
    EXPECT_EQ(Filled()["p2"], 2);
    EXPECT_TRUE(Filled().Contains("p7"));
    EXPECT_FALSE(Filled().Contains("P3"));
}

TEST(KeyedCollection, GivesAnItemAnotherKeyInItsPlace) {
    KeyedCollection<int> items = Filled();
    items.Rename("p7", "P8");
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P8", "P2"}));
    EXPECT_EQ(items["P8"], 7);
    EXPECT_FALSE(items.Contains("P7"));
    items.Rename("P8", "p8");
    EXPECT_EQ(items["P8"], 7);
}

TEST(KeyedCollection, RefusesToRenameToAKeyThatAnotherItemHas) {
    KeyedCollection<int> items = Filled();
    EXPECT_ERROR(items.Rename("P7", "P2"), ErrorNumber::kDuplicateKey);
    EXPECT_ERROR(items.Rename("P3", "P4"), ErrorNumber::kInvalidArgument);
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P7", "P2"}));
}

TEST(KeyedCollection, RefusesAKeyThatItHolds) {
    KeyedCollection<int> items = Filled();
    EXPECT_ERROR(items.Add(std::make_unique<int>(9), "p7"), ErrorNumber::kDuplicateKey);
    EXPECT_EQ(items.Count(), 2U);
    EXPECT_EQ(items["P7"], 7);
}

TEST(KeyedCollection, HasNothingOutsideItsPositionsAndKeys) {
    EXPECT_ERROR(Filled()[std::size_t{0}], ErrorNumber::kSubscript);
    EXPECT_ERROR(Filled()[std::size_t{3}], ErrorNumber::kSubscript);
    EXPECT_ERROR(Filled()["P3"], ErrorNumber::kInvalidArgument);
}

TEST(KeyedCollection, ForgetsWhatIsRemovedByPosition) {
    KeyedCollection<int> items = Filled();
    items.Add(std::make_unique<int>(5), "P5");
    items.Remove(std::size_t{2});
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P7", "P5"}));
    EXPECT_EQ(items[std::size_t{2}], 5);
    EXPECT_EQ(items["P5"], 5);
    EXPECT_FALSE(items.Contains("P2"));
}

TEST(KeyedCollection, ForgetsWhatIsRemovedByKeyInAnyCase) {
    KeyedCollection<int> items = Filled();
    items.Remove("p7");
    EXPECT_EQ(items.Keys(), std::vector<std::string>{"P2"});
    EXPECT_EQ(items["P2"], 2);
    items.Remove("P2");
    EXPECT_EQ(items.Count(), 0U);
}

TEST(KeyedCollection, TakesAKeyAgainBehindTheOthersOnceItIsRemoved) {
    KeyedCollection<int> items = Filled();
    items.Remove("P7");
    items.Add(std::make_unique<int>(9), "P7");
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P2", "P7"}));
    EXPECT_EQ(items["P7"], 9);
}

TEST(KeyedCollection, RemovesNothingThatItDoesNotHold) {
    KeyedCollection<int> items = Filled();
    EXPECT_ERROR(items.Remove(std::size_t{0}), ErrorNumber::kSubscript);
    EXPECT_ERROR(items.Remove(std::size_t{3}), ErrorNumber::kSubscript);
    EXPECT_ERROR(items.Remove("P3"), ErrorNumber::kInvalidArgument);
    EXPECT_EQ(items.Keys(), (std::vector<std::string>{"P7", "P2"}));
}

TEST(KeyedCollection, ClearedTakesOldKeysAgain) {
    KeyedCollection<int> items = Filled();
    items.Clear();
    items.Add(std::make_unique<int>(1), "P7");
    EXPECT_EQ(items.Count(), 1U);
}

}  // namespace
}  // namespace ledgix::model
