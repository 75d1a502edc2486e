#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <random>
#include <thread>

#include "child_process.h"
#include "conversions.h"
#include "database_file.h"
#include "pets.h"
#include "recordset.h"
#include "temporary_folder.h"
#include "workspace.h"

namespace ledgix::test {

namespace {

constexpr int kRounds = 300;
constexpr int kRowsOfEach = 12;
constexpr int kLogLength = 200;
constexpr std::size_t kMostMicroseconds = 15000;

dao::Field Column(const std::string& name, dao::FieldType type, int size = 0) {
    return {name, type, size, 0};
}

void MakeTable(dao::Database& database, const std::string& name, const std::string& key,
               const std::vector<dao::Field>& columns) {
    dao::TableDef table{name, dao::Collection<dao::Field>(columns), {}, 0};
    dao::Index primary{"PrimaryKey", {{key}}};
    primary.primary = true;
    table.indexes.Append(primary);
    database.CreateTable(table);
}

// What program/main.cpp counts in.
void MakeCounters(const std::string& path, dao::FileFormat format) {
    dao::CreateDatabase(path, format);
    const auto database = dao::DefaultWorkspace().OpenDatabase(path);
    MakeTable(*database, "Memos", "Number",
              {Column("Number", dao::kLong), Column("Counter", dao::kLong), Column("Note", dao::kMemo)});
    MakeTable(*database, "Names", "Number",
              {Column("Number", dao::kLong), Column("Counter", dao::kLong), Column("Name", dao::kText, 255)});
    MakeTable(*database, "Log", "Counter", {Column("Counter", dao::kLong), Column("Name", dao::kText, 255)});
    for (int number = 1; number <= kRowsOfEach; ++number) {
        for (const char* table : {"Memos", "Names"}) {
            std::string sql = "insert into ";
            sql += table;
            database->Execute(sql + " (Number, Counter) values (" + std::to_string(number) + ", 0)");
        }
    }
}

// The one counter that all rows carry.
int CounterIn(dao::Database& database) {
    int counter = -1;
    for (const char* table : {"Memos", "Names"}) {
        const auto rows = database.OpenRecordset(table);
        EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRowsOfEach));
        for (; !rows->Eof(); rows->MoveNext()) {
            const int carried = runtime::ToInt32((*rows)["Counter"]);
            counter = counter < 0 ? carried : counter;
            EXPECT_EQ(carried, counter) << table;
        }
    }
    return counter;
}

void ExpectLogUpTo(dao::Database& database, int counter) {
    int next = std::max(1, counter - kLogLength + 1);
    for (const auto rows = database.OpenRecordset("select Counter from Log order by Counter"); !rows->Eof();
         rows->MoveNext())
        EXPECT_EQ(runtime::ToInt32((*rows)["Counter"]), next++);
    EXPECT_EQ(next, counter + 1);
}

std::string FindingsOf(const std::string& path) {
    jet::DatabaseFile file(path, jet::OpenMode::kReadWrite);
    return Findings(file);
}

void Pause(std::size_t microseconds) {
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}

// Lets the program count and ends it: at the soonest when it has committed so many times. The last counter that it
// acknowledged, or `last` when it came to none.
int CountAndKill(const std::string& path, std::size_t commits, std::size_t microseconds, int last) {
    ChildProcess child({"count", path});
    for (std::size_t i = 0; i < commits; ++i) {
        const auto line = child.ReadLine();
        EXPECT_TRUE(line);
        last = std::stoi(line.value_or("0"));
    }
    Pause(microseconds);
    child.Kill();
    while (const auto line = child.ReadLine())
        last = std::stoi(*line);
    return last;
}

class Killed : public testing::Test {
protected:
    void Round(int round, const std::string& path, int& counter) {
        const std::size_t commits = 1 + random_() % 3;
        int acknowledged = CountAndKill(path, commits, random_() % kMostMicroseconds, counter);
        // The next one may be ended while it undoes what this one has begun.
        if (random_() % 4 == 0)
            acknowledged = CountAndKill(path, 0, random_() % kMostMicroseconds, acknowledged);
        journals_ += std::filesystem::exists(path + ".journal") ? 1 : 0;
        const auto database = dao::DefaultWorkspace().OpenDatabase(path);
        EXPECT_FALSE(std::filesystem::exists(path + ".journal"));
        counter = CounterIn(*database);
        EXPECT_GE(counter, acknowledged);
        EXPECT_LE(counter, acknowledged + 1);
        ExpectLogUpTo(*database, counter);
        if (round % 10 < 2 || round >= kRounds - 2) {
            EXPECT_EQ(FindingsOf(path), "");
        }
    }

    std::uint32_t seed_ = static_cast<std::uint32_t>(testing::UnitTest::GetInstance()->random_seed()) + 1;
    std::mt19937 random_{seed_};
    int journals_ = 0;
    TemporaryFolder folder_;
};

TEST_F(Killed, LongRunOf300RoundsLeavesEveryChangeWholeOrUndone) {
#ifdef _WIN32
    GTEST_SKIP() << "needs signals";
#endif
    std::cout << "seed " << seed_ << "\n";
    const std::string paths[]{folder_.File("jet3.mdb"), folder_.File("jet4.mdb")};
    MakeCounters(paths[0], dao::FileFormat::kJet3);
    MakeCounters(paths[1], dao::FileFormat::kJet4);
    int counters[]{0, 0};
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Round(round, paths[round % 2], counters[round % 2]);
    }
    std::cout << "changes " << counters[0] << " and " << counters[1] << ", journals left " << journals_ << "\n";
}

}  // namespace

}  // namespace ledgix::test
