#include <chrono>
#include <cstddef>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "conversions.h"
#include "dao_database.h"
#include "dao_transaction.h"
#include "recordset.h"
#include "runtime_error.h"
#include "workspace.h"

// A program that has a database open beside others, for the tests that let several write, and end one in between.
namespace {

using namespace ledgix;

constexpr int kLogLength = 200;

void Say(int number) {
    std::cout << number << std::endl;
}

std::string Letters(int seed, int most) {
    const auto length = static_cast<std::size_t>(seed * 7919 % most);
    return std::string(length, static_cast<char>('a' + seed % 26));
}

// One change: every row of two tables carries the counter, and a third one has a row for each of the last counters.
void Count(dao::Database& database, int counter) {
    const std::string number = std::to_string(counter);
    dao::Transaction change(database);
    database.Execute("update Memos set Counter = " + number + ", Note = '" + Letters(counter, 3000) + "'");
    database.Execute("update Names set Counter = " + number + ", Name = '" + Letters(counter, 255) + "'");
    database.Execute("insert into Log (Counter, Name) values (" + number + ", '" + Letters(counter, 100) + "')");
    database.Execute("delete from Log where Counter <= " + std::to_string(counter - kLogLength));
    change.Commit();
}

// Says the counter that it finds, and then each that is committed.
int CountForEver(dao::Database& database) {
    int counter = runtime::ToInt32((*database.OpenRecordset("select Counter from Names"))["Counter"]);
    for (;; ++counter) {
        Say(counter);
        Count(database, counter + 1);
    }
}

// Writes for most of the time, with no more than a moment between. Says how often.
int WriteWithoutRest(dao::Database& database) {
    constexpr std::chrono::milliseconds kTimeOfAChange{30};
    for (int changes = 1;; ++changes) {
        dao::Transaction change(database);
        database.Execute("delete from Things where Number < 0");
        std::this_thread::sleep_for(kTimeOfAChange);
        change.Commit();
        Say(changes);
    }
}

bool IsInUse(const runtime::RuntimeError& error) {
    return error.Is(runtime::ErrorNumber::kLockedByOther) || error.Is(runtime::ErrorNumber::kTableInUse);
}

// Tries again for as long as another program is in the way.
template <class Step>
void Insist(const Step& step) {
    for (;;) {
        try {
            step();
            return;
        } catch (const runtime::RuntimeError& error) {
            if (!IsInUse(error))
                throw;
        }
    }
}

int Insert(dao::Database& database, int first, int count) {
    std::unique_ptr<dao::Recordset> rows;
    Insist([&] { rows = database.OpenRecordset("select * from Things where Number < 0"); });
    for (int number = first; number < first + count; ++number) {
        rows->AddNew();
        rows->Set("Number", number);
        rows->Set("Name", Letters(number, 100));
        Insist([&] { rows->Update(); });
    }
    return 0;
}

// Counts rows until there are so many. Failure: 2 when there were more before.
int Watch(dao::Database& database, std::size_t wanted) {
    for (std::size_t seen = 0; seen != wanted;) {
        std::size_t now = 0;
        Insist([&] { now = database.CountRows("Things"); });
        if (now < seen)
            return 2;
        seen = now;
        Insist([&] { now = database.OpenRecordset("Things", dao::kOpenSnapshot)->RecordCount(); });
        if (now < seen)
            return 2;
        seen = now;
    }
    return 0;
}

int Run(const std::vector<std::string>& words) {
    const auto database = dao::DefaultWorkspace().OpenDatabase(words.at(1));
    if (words.at(0) == "count")
        return CountForEver(*database);
    if (words.at(0) == "hold")
        return WriteWithoutRest(*database);
    if (words.at(0) == "insert")
        return Insert(*database, std::stoi(words.at(2)), std::stoi(words.at(3)));
    return Watch(*database, std::stoul(words.at(2)));
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "durability_program: " << error.what() << std::endl;
        return 1;
    }
}
