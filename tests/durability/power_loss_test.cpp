#include <gtest/gtest.h>

#include <iostream>

#include "error_of.h"
#include "memory_disk.h"
#include "pets.h"
#include "runtime_error.h"

namespace ledgix::test {

namespace {

constexpr char kPath[] = "pets.mdb";
constexpr char kJournal[] = "pets.mdb.journal";
constexpr int kRounds = 1500;

class PowerLoss : public testing::TestWithParam<jet::Generation> {};

// A household of pets that changes a little, or much.
Pets Changed(Pets pets, std::mt19937& random) {
    const std::size_t changes = random() % 4 == 0 ? 60 : 3;
    for (std::size_t i = 0; i < changes; ++i) {
        const int number = static_cast<int>(random() % 200);
        if (random() % 4 == 0)
            pets.erase(number);
        else
            pets[number] = std::string(random() % 200, static_cast<char>('a' + random() % 26));
    }
    return pets;
}

TEST_P(PowerLoss, AtAnyMomentLeavesTheStateBeforeOrAfterAChange) {
    const auto seed = static_cast<std::uint32_t>(testing::UnitTest::GetInstance()->random_seed()) + 1;
    std::cout << "seed " << seed << "\n";
    std::mt19937 random(seed);
    MemoryDisk disk;
    disk.Put(kPath, PetDatabase(GetParam()));
    Pets held;
    int undone = 0;
    int survived = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Pets wanted = Changed(held, random);
        bool committed = false;
        {
            jet::DatabaseFile file(kPath, jet::OpenMode::kReadWrite, disk);
            disk.StopAt(1 + random() % 12);
            committed = ErrorOf([&] { StorePets(file, held, wanted); }) == 0;
        }
        disk.LosePower(random);
        jet::DatabaseFile file(kPath, jet::OpenMode::kReadWrite, disk);
        const Pets found = LoadPets(file);
        ASSERT_TRUE(found == wanted || (!committed && found == held)) << "round " << round;
        ASSERT_FALSE(disk.Exists(kJournal));
        if (round % 20 == 0 || found != wanted) {
            ASSERT_EQ(Findings(file), "") << "round " << round;
        }
        undone += found != wanted ? 1 : 0;
        survived += found == wanted && !committed ? 1 : 0;
        held = found;
    }
    EXPECT_GT(undone, kRounds / 10);
    EXPECT_GT(survived, 0);
}

TEST_P(PowerLoss, WhileAChangeIsBeingUndoneLeavesTheStateBefore) {
    std::mt19937 random(7);
    for (std::size_t stop = 1; stop <= 8; ++stop) {
        MemoryDisk disk;
        disk.Put(kPath, PetDatabase(GetParam()));
        Pets before;
        before[1] = "Rex";
        before[2] = "Al";
        {
            jet::DatabaseFile file(kPath, jet::OpenMode::kReadWrite, disk);
            StorePets(file, {}, before);
            disk.StopAt(5);  // journal made, written, synced, its folder synced; not yet all of the pages
            EXPECT_NE(ErrorOf([&] { StorePets(file, before, Changed(before, random)); }), 0);
        }
        disk.LosePower(random);
        disk.StopAt(stop);
        ErrorOf([&] { jet::DatabaseFile(kPath, jet::OpenMode::kReadWrite, disk); });
        disk.LosePower(random);
        jet::DatabaseFile file(kPath, jet::OpenMode::kReadWrite, disk);
        EXPECT_EQ(LoadPets(file), before) << stop;
        EXPECT_EQ(Findings(file), "") << stop;
    }
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, PowerLoss, testing::Values(jet::Generation::kJet3, jet::Generation::kJet4),
                         [](const auto& param) { return param.param == jet::Generation::kJet3 ? "Jet3" : "Jet4"; });

}  // namespace

}  // namespace ledgix::test
