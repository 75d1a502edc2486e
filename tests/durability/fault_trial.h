#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dao_database.h"
#include "faulty_files.h"

namespace ledgix::test {

// What the program does to store::gDatabase, raising nothing. Gives what it says otherwise than in message boxes.
using DatabaseChange = std::function<std::string()>;

// A change, and the states of the file that it may lead through.
struct FaultTrial {
    std::string content;  // of the file before
    DatabaseChange change;
    std::vector<std::string> between = {};  // states between its parts, when it has some that stand for themselves
    bool says_when_full = true;             // a disk that is full is reported as error 3026
};

// Makes the change with every one of its operations on files failing in turn, until none does. Each time the file must
// be in the state before, in the one after, or in one between, its structure sound, and a change that is not there must
// have been reported. A program that goes on must see what the file holds, and bring the change about when it tries
// again.
void FailAtEveryOperation(const FaultTrial& trial, Fault fault);

// All user tables of a database with their columns, keys and rows.
std::string StateOf(dao::Database& database);
// Of a file with this content, once the change is made.
std::string StateAfter(const std::string& content, const DatabaseChange& change);

// Broken rules of the file's structure, one a line; the journal of an incomplete change is undone first.
std::string FindingsIn(const std::string& path);

}  // namespace ledgix::test
