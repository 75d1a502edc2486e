#pragma once

#include <memory>
#include <string_view>

namespace ledgix::jet {

class DatabaseFile;

// Several programs may have a file open. Whoever reads holds it shared, whoever writes exclusively, for one statement;
// who can't get it waits for a while (DatabaseFile::SetPatience). Both nest.

// The right to read, for as long as it lives. What is in memory of the file is right. Errors: 3260 when another one
// writes for too long, 3043.
class ReadAccess {
public:
    explicit ReadAccess(DatabaseFile& file);
    ~ReadAccess();
    ReadAccess(const ReadAccess&) = delete;
    ReadAccess& operator=(const ReadAccess&) = delete;

private:
    DatabaseFile& file_;
};

// The right to change the file. All changes since the last Transaction began are in the file, safe from a loss of
// power, when Commit returns; none are when it is not called or fails. One inside another one hands its changes to the
// outer one. Errors: 3260 as above, 3027 for a file that may not be written.
class Transaction {
public:
    explicit Transaction(DatabaseFile& file);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Errors: 3043, 3026.
    void Commit();

private:
    DatabaseFile& file_;
    bool open_ = true;
};

// What a program does with a table, or keeps others from doing.
enum class TableUse { kRead, kWrite, kDenyRead, kDenyWrite };

// Holds for as long as it lives, between all openers of the file; those of one opener never deny each other. Taken
// before access to the file. Error 3262 when another opener's use is in the way for too long.
class TableLock {
public:
    TableLock(DatabaseFile& file, std::string_view table, TableUse use);
    ~TableLock();
    TableLock(const TableLock&) = delete;
    TableLock& operator=(const TableLock&) = delete;

private:
    DatabaseFile& file_;
    std::uint64_t place_;
    bool exclusive_;
};

}  // namespace ledgix::jet
