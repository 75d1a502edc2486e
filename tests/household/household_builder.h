#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "cases.h"
#include "cls_profile.h"
#include "cls_property.h"
#include "dao_database.h"

// Databases and records with the content of reference cases. Names of members are those of the program's own fields.
namespace ledgix::test {

// The bytes of a database with the tables of the current layout. Fields that a case leaves out are 0, empty or false.
class HouseholdBuilder {
public:
    HouseholdBuilder();
    ~HouseholdBuilder();

    HouseholdBuilder& AddProfile(std::int32_t number, const Json& fields);
    HouseholdBuilder& AddProperty(std::int32_t profile, std::int32_t number, const Json& fields);
    HouseholdBuilder& AddTaxRates(const Json& brackets);

    std::vector<std::uint8_t> Finish();

private:
    struct Tables;
    std::unique_ptr<Tables> tables_;
};

// Makes a built database the program's one, as long as the object lives.
class InstalledDatabase {
public:
    explicit InstalledDatabase(std::vector<std::uint8_t> content);
    explicit InstalledDatabase(const std::string& path);
    ~InstalledDatabase();
    InstalledDatabase(const InstalledDatabase&) = delete;
    InstalledDatabase& operator=(const InstalledDatabase&) = delete;
};

// The database of a case: its member `TaxRates`, and its `profile` and `property` as number 1 each.
std::vector<std::uint8_t> CaseContent(const Json& test_case);

model::clsProfile ProfileOf(const Json& fields);
model::clsProperty PropertyOf(const Json& fields);

}  // namespace ledgix::test
