#pragma once

#include <exception>
#include <initializer_list>
#include <string>

#include "dao_database.h"
#include "schema.h"

namespace ledgix::cli {

// The file is of an older layout.
class NotUpgraded : public std::exception {
public:
    explicit NotUpgraded(std::string text) : text_(std::move(text)) {}
    const char* what() const noexcept override { return text_.c_str(); }

private:
    std::string text_;
};

// Raises NotUpgraded, with the name of every table and column that is missing, unless the file holds these tables in
// the current layout.
void RequireLayout(dao::Database& database, std::initializer_list<const store::SchemaTable*> tables);

}  // namespace ledgix::cli
