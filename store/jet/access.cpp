#include "access.h"

#include "database_file.h"

namespace ledgix::jet {

namespace {

bool Denies(TableUse use) {
    return use == TableUse::kDenyRead || use == TableUse::kDenyWrite;
}

}  // namespace

ReadAccess::ReadAccess(DatabaseFile& file) : file_(file) {
    file_.BeginReading();
}

ReadAccess::~ReadAccess() {
    file_.EndReading();
}

Transaction::Transaction(DatabaseFile& file) : file_(file) {
    file_.BeginTransaction();
}

Transaction::~Transaction() {
    if (open_)
        file_.RollBack();
}

void Transaction::Commit() {
    open_ = false;
    file_.CommitTransaction();
}

TableLock::TableLock(DatabaseFile& file, std::string_view table, TableUse use)
    : file_(file), place_(FileSharing::PlaceOf(table, use)), exclusive_(Denies(use)) {
    file_.sharing().LockPlace(place_, exclusive_);
}

TableLock::~TableLock() {
    file_.sharing().UnlockPlace(place_, exclusive_);
}

}  // namespace ledgix::jet
