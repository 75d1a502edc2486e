#include "dao_transaction.h"

#include "access.h"
#include "dao_database.h"

namespace ledgix::dao {

Transaction::Transaction(Database& database) : transaction_(std::make_unique<jet::Transaction>(*database.file_)) {}

Transaction::~Transaction() = default;

void Transaction::Commit() {
    transaction_->Commit();
}

}  // namespace ledgix::dao
