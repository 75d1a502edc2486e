#pragma once

#include <memory>

namespace ledgix::jet {
class Transaction;
}

namespace ledgix::dao {

class Database;

// Makes one change of several statements: all that was executed, updated and created since it began is in the file
// when Commit returns; nothing is when it is not called. Others wait meanwhile. The database must outlive it.
// Errors: 3260 when another program writes for too long, 3027 a file that may not be written.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Errors: 3043, 3026.
    void Commit();

private:
    std::unique_ptr<jet::Transaction> transaction_;
};

}  // namespace ledgix::dao
