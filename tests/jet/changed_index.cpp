#include "changed_index.h"

#include <numeric>

#include "byte_order.h"
#include "index_cursor.h"
#include "jet_test.h"
#include "usage_map_writer.h"

namespace ledgix::test {

using jet::RowId;

namespace {

constexpr RowId kFreePages{.page = jet::kAllocationPage, .slot = 0};

// Gives its definition page.
jet::PageNumber AddTable(DatabaseBuilder& builder) {
    TableBuilder& table = builder.AddTable("T", {{.name = "Id"}});
    table.AddIndex({.name = "Id", .column = "Id"});
    return table.page();
}

}  // namespace

ByteList Key(std::uint32_t number) {
    ByteList key(5, 0x7F);
    jet::StoreBig(std::span(key), 1, number);
    return key;
}

ByteList LongKey(std::uint32_t number, std::size_t size) {
    ByteList key = Key(number * 2654435761U);
    for (std::uint8_t& byte : key)
        byte |= 1;
    Append(key, ByteList(size - key.size() - 9, 0x4A));
    for (std::uint32_t shift = 0; shift < 32; shift += 4)
        key.push_back(static_cast<std::uint8_t>(0x20 + (number >> shift & 15)));
    key.push_back(0);
    return key;
}

RowId Row(std::uint32_t number) {
    return {.page = 100 + number / 200, .slot = static_cast<std::uint8_t>(number % 200)};
}

ByteList Entry(const ByteList& key, RowId row) {
    ByteList entry = key;
    entry.resize(key.size() + 4);
    jet::StoreBig(std::span(entry), key.size(), row.page << 8 | row.slot);
    return entry;
}

std::vector<std::uint32_t> Numbers(std::uint32_t count) {
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

std::vector<std::uint32_t> Backwards(std::vector<std::uint32_t> numbers) {
    std::reverse(numbers.begin(), numbers.end());
    return numbers;
}

void ChangedIndex::SetUp() {
    DatabaseBuilder builder(GetParam());
    owner_ = AddTable(builder);
    Open(builder.Finish());
}

void ChangedIndex::OpenWith(const std::vector<IndexEntry>& entries, std::size_t entries_per_page) {
    DatabaseBuilder builder(GetParam());
    owner_ = AddTable(builder);
    jet::DatabaseFile empty(jet::MakeMemoryFile(builder.Finish()));
    const jet::Index built = empty.ReadTableDefinition(owner_).indexes.at(0);
    WriteIndexTree(builder.file(),
                   {.owner = owner_,
                    .root = built.root,
                    .map = built.map,
                    .entries_per_page = entries_per_page,
                    .compressed = true},
                   entries);
    for (jet::PageNumber page = 0; page < builder.file().page_count(); ++page)
        jet::SetInUsageMap(builder.file().row(kFreePages), page, false);
    Open(builder.file().Finish());
    model_.clear();
    for (const IndexEntry& entry : entries)
        model_.insert(Entry(entry.key, entry.row));
}

void ChangedIndex::Open(std::vector<std::uint8_t> content) {
    file_.emplace(jet::MakeMemoryFile(std::move(content)));
    table_ = file_->ReadTableDefinition(owner_);
    file_->pager().BeginLevel();
    tree_.emplace(file_->pager(), owner_, index());
}

bool ChangedIndex::Insert(const ByteList& key, RowId row) {
    model_.insert(Entry(key, row));
    return tree_->Insert(key, row);
}

void ChangedIndex::Remove(const ByteList& key, RowId row) {
    model_.erase(Entry(key, row));
    tree_->Remove(key, row);
}

void ChangedIndex::Verify() {
    const TreeCheck check = CheckPages();
    ASSERT_EQ(check.fault, "");
    ASSERT_TRUE(std::equal(check.entries.begin(), check.entries.end(), model_.begin(), model_.end()));
    VerifyWalk();
}

void ChangedIndex::VerifyWalk() {
    jet::IndexCursor cursor(*file_, table_, index());
    for (const ByteList& expected : model_) {
        ASSERT_TRUE(cursor.Next());
        ASSERT_EQ(Entry(ByteList(cursor.key().begin(), cursor.key().end()), cursor.row()), expected);
    }
    ASSERT_FALSE(cursor.Next());
}

void ChangedIndex::InsertAll(const std::vector<std::uint32_t>& numbers, const KeyMaker& key) {
    const std::size_t step = numbers.size() / 7 + 1;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ASSERT_TRUE(Insert(key(numbers[i]), Row(numbers[i])));
        if (i % step == 0) {
            ASSERT_NO_FATAL_FAILURE(Verify()) << i;
        }
    }
    ASSERT_NO_FATAL_FAILURE(Verify());
}

void ChangedIndex::RemoveAll(const std::vector<std::uint32_t>& numbers, const KeyMaker& key) {
    const std::size_t step = numbers.size() / 7 + 1;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        Remove(key(numbers[i]), Row(numbers[i]));
        if (i % step == 0) {
            ASSERT_NO_FATAL_FAILURE(Verify()) << i;
        }
    }
    ASSERT_NO_FATAL_FAILURE(Verify());
}

void ChangedIndex::ChangeAtRandom(int changes, std::uint32_t keys, const KeyMaker& key) {
    std::mt19937 random(kSeed);
    for (int done = 0; done < changes;) {
        const std::uint32_t likely = done / 3000 % 2 == 0 ? 3 : 1;  // quarters
        const ByteList some_key = key(static_cast<std::uint32_t>(random()) % keys);
        const RowId row = Row(random() % 2);
        const bool has = model_.contains(Entry(some_key, row));
        if (random() % 4 >= (has ? 4 - likely : likely))
            continue;
        const bool had_key = HasKeyInModel(some_key);
        ASSERT_EQ(tree_->HasKey(some_key), had_key);
        if (has) {
            Remove(some_key, row);
        } else {
            ASSERT_EQ(Insert(some_key, row), !had_key);
        }
        if (++done % 1000 == 0) {
            ASSERT_NO_FATAL_FAILURE(Verify()) << "seed " << kSeed << ", change " << done;
        }
    }
}

bool ChangedIndex::ChangeDamaged(const std::vector<std::uint8_t>& sound, const std::vector<jet::PageNumber>& pages,
                                 std::uint32_t seed) {
    std::vector<std::uint8_t> content = sound;
    std::mt19937 random(seed);
    const std::size_t page_size = jet::FormatOf(GetParam()).page_size;
    for (int i = 0; i < 4; ++i) {
        const std::size_t page = pages[random() % pages.size()] * page_size;
        const bool in_header = random() % 2 == 0;
        content[page + random() % (in_header ? 30 : page_size)] = static_cast<std::uint8_t>(random());
    }
    Open(std::move(content));
    const int error = ErrorOf([&] {
        for (std::uint32_t i = 0; i < 300; ++i) {
            const std::uint32_t number = static_cast<std::uint32_t>(random()) % 1200;
            const ByteList key = LongKey(number, 40 + number % 60);
            if (number < 900)
                tree_->Remove(key, Row(number));
            if (!tree_->HasKey(key))
                tree_->Insert(key, Row(number));
        }
    });
    EXPECT_TRUE(error == 0 || error == kDamaged) << "seed " << seed << ", error " << error;
    return error == 0;
}

bool ChangedIndex::HasKeyInModel(const ByteList& key) const {
    const auto found = model_.lower_bound(key);
    return found != model_.end() && found->size() == key.size() + 4 &&
           std::equal(key.begin(), key.end(), found->begin());
}

}  // namespace ledgix::test
