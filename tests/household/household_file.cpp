#include "household_file.h"

#include <memory>

#include "database.h"
#include "database_file.h"
#include "page_file.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::test {

HouseholdFile::HouseholdFile(std::string_view content) : path_(folder_.Write("property.mdb", content)) {}

HouseholdFile::HouseholdFile(const std::vector<std::uint8_t>& content)
    : HouseholdFile(std::string(content.begin(), content.end())) {}

HouseholdFile::~HouseholdFile() {
    Close();
}

void HouseholdFile::Open() const {
    Close();
    store::OpenDatabaseFile(path_);
}

void HouseholdFile::OpenReadOnly() const {
    Close();
    store::gDatabase =
        std::make_unique<dao::Database>(path_, std::make_unique<jet::DatabaseFile>(path_, jet::OpenMode::kRead));
}

void HouseholdFile::Close() const {
    store::gDatabase.reset();
}

std::vector<std::vector<runtime::Variant>> HouseholdFile::Rows(const std::string& sql) const {
    std::vector<std::vector<runtime::Variant>> rows;
    const auto database = dao::DefaultWorkspace().OpenDatabase(path_);
    for (const auto records = database->OpenRecordset(sql); !records->Eof(); records->MoveNext()) {
        std::vector<runtime::Variant>& row = rows.emplace_back();
        for (std::size_t i = 0; i < records->fields().Count(); ++i)
            row.push_back((*records)[i]);
    }
    return rows;
}

std::vector<runtime::Variant> HouseholdFile::Column(const std::string& sql) const {
    std::vector<runtime::Variant> values;
    for (const std::vector<runtime::Variant>& row : Rows(sql))
        values.push_back(row.front());
    return values;
}

std::size_t HouseholdFile::Execute(const std::string& sql) const {
    return dao::DefaultWorkspace().OpenDatabase(path_)->Execute(sql);
}

std::string SampleContent(const std::string& name) {
    return Content(LEDGIX_TEST_DATA "/mdb/" + name);
}

std::string EmptyContent(dao::FileFormat format) {
    const TemporaryFolder folder;
    const std::string path = folder.File("new.mdb");
    dao::CreateDatabase(path, format);
    return Content(path);
}

std::string UpgradedContent(dao::FileFormat format) {
    const HouseholdFile file(EmptyContent(format));
    file.Open();
    const bool seeded_before = model::TaxRatesSeeded;
    store::UpgradeSchema(model::CheckDefaultTaxRates);
    model::TaxRatesSeeded = seeded_before;
    file.Close();
    return file.bytes();
}

std::vector<int> DiagnosisRecorder::Numbers() const {
    std::vector<int> numbers;
    for (const std::string& diagnosis : diagnoses_)
        numbers.push_back(std::stoi(diagnosis));
    return numbers;
}

}  // namespace ledgix::test
