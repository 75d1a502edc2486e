#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <set>
#include <string>

#include "cls_profiles.h"
#include "command_messages.h"
#include "commands.h"
#include "conversions.h"
#include "dao_transaction.h"
#include "date_time.h"
#include "import_document.h"
#include "json_reader.h"
#include "layout_check.h"
#include "request_refused.h"

namespace ledgix::cli {

namespace {

using Json = nlohmann::json;

struct PropertyAmount {
    std::string_view column;
    double model::clsProperty::*member;
};

constexpr std::array<PropertyAmount, 15> kPropertyAmounts{{
    {"PurchasePrice", &model::clsProperty::PurchasePrice},
    {"PurchaseCosts", &model::clsProperty::PurchaseCosts},
    {"DepositValue", &model::clsProperty::DepositValue},
    {"Rates", &model::clsProperty::Rates},
    {"RentIncome", &model::clsProperty::RentIncome},
    {"OtherCosts", &model::clsProperty::OtherCosts},
    {"Insurance", &model::clsProperty::Insurance},
    {"InflationRate", &model::clsProperty::InflationRate},
    {"HouseValue", &model::clsProperty::HouseValue},
    {"Chattelvalue", &model::clsProperty::ChattelValue},
    {"HouseDepn", &model::clsProperty::HouseDepn},
    {"ChattelDepn", &model::clsProperty::ChattelDepn},
    {"PriceIncreases", &model::clsProperty::PriceIncreases},
    {"ExpFees", &model::clsProperty::Fees},
    {"expRepair", &model::clsProperty::Repairs},
}};

const Json& ListIn(const Json& record, const char* member) {
    static const Json kEmpty = Json::array();
    const auto list = record.find(member);
    return list == record.end() ? kEmpty : *list;
}

void Fill(model::clsProfile& profile, const Json& from) {
    const auto take = [&](const auto& amounts) {
        for (const model::ProfileAmount& amount : amounts)
            profile.*amount.member = NumberIn(from, amount.column);
    };
    profile.ProfileName = TextIn(from, "profile_name");
    take(model::kIncomeAmounts);
    take(model::kExpenseAmounts);
    take(model::kAssetAmounts);
    take(model::kLiabilityAmounts);
}

void Fill(model::clsProperty& property, const Json& from) {
    property.PropertyName = TextIn(from, "PropertyName");
    property.MortgageRate = static_cast<float>(NumberIn(from, "MortgageRate"));
    property.MortgageTerm = runtime::ToInt16(NumberIn(from, "MortgageTerm"));
    property.InterestOnly = from.value("InterestOnly", false);
    for (const PropertyAmount& amount : kPropertyAmounts)
        property.*amount.member = NumberIn(from, amount.column);
}

// Saves the records of a document, each of them by itself, inside one transaction of the caller.
class Importer {
public:
    Importer(dao::Database& database, const CommandMessages& messages)
        : database_(database), messages_(messages), messages_before_(messages.Count()) {}

    void Import(const Json& document) {
        CheckNumbersFree(document["profiles"]);
        for (const Json& profile : document["profiles"])
            ImportProfile(profile);
        if (!ListIn(document, "taxRates").empty())
            ReplaceBrackets(document["taxRates"]);
    }

    void Report(std::ostream& out) const {
        out << "Imported: profiles " << profile_count_ << ", properties " << property_count_ << ", tax brackets "
            << bracket_count_ << ".\n";
    }

private:
    void CheckNumbersFree(const Json& profiles) {
        std::set<std::int32_t> held;
        const auto rows = database_.OpenRecordset("select ProfileNumber from Profiles", dao::kOpenForwardOnly);
        for (; !rows->Eof(); rows->MoveNext()) {
            if (!runtime::IsNull((*rows)[0]))
                held.insert(runtime::ToInt32((*rows)[0]));
        }
        for (std::size_t i = 0; i < profiles.size(); ++i) {
            const std::int32_t number = runtime::ToInt32(NumberIn(profiles[i], "ProfileNumber"));
            if (held.contains(number))
                throw RequestRefused("import: " + MemberPlace(ElementPlace("profiles", i), "ProfileNumber") +
                                     ": the database holds the profile " + std::to_string(number) + " already");
        }
    }

    void ImportProfile(const Json& from) {
        std::int32_t number = runtime::ToInt32(NumberIn(from, "ProfileNumber"));
        model::clsProfile& profile = profiles_.AddItem(number);
        Fill(profile, from);
        profile.Save();
        CheckSaved();
        SetLastModified(number, TextIn(from, "last_modified"));
        ++profile_count_;
        for (const Json& property : ListIn(from, "properties"))
            ImportProperty(profile, property);
    }

    void ImportProperty(model::clsProfile& profile, const Json& from) {
        std::int32_t number = runtime::ToInt32(NumberIn(from, "PropertyNumber"));
        model::clsProperty& property = profile.AddProperty(profile.ProfileNumber, number);
        Fill(property, from);
        property.Save();
        CheckSaved();
        ++property_count_;
    }

    // Saving has put the present time there.
    void SetLastModified(std::int32_t profile, const std::string& moment) {
        const auto date = runtime::ParseIso8601(moment);
        if (!date)
            return;
        const auto row = database_.OpenRecordset("select last_modified from Profiles where ProfileNumber = " +
                                                 runtime::ToText(profile));
        row->Edit();
        row->Set("last_modified", *date);
        row->Update();
    }

    void ReplaceBrackets(const Json& brackets) {
        database_.Execute("delete from Tax_Rates");
        const auto rows = database_.OpenRecordset("select upper, rate from Tax_Rates");
        for (const Json& bracket : brackets) {
            rows->AddNew();
            rows->Set("upper", runtime::ToInt32(NumberIn(bracket, "upper")));
            rows->Set("rate", static_cast<float>(NumberIn(bracket, "rate")));
            rows->Update();
            ++bracket_count_;
        }
    }

    // The records trap their errors and show them.
    void CheckSaved() const {
        if (messages_.Count() != messages_before_)
            throw RequestRefused("import: an error while saving; nothing was imported");
    }

    dao::Database& database_;
    const CommandMessages& messages_;
    std::size_t messages_before_;
    model::clsProfiles profiles_;
    std::size_t profile_count_ = 0;
    std::size_t property_count_ = 0;
    std::size_t bracket_count_ = 0;
};

}  // namespace

void ImportContent(dao::Database& database, const std::string& path, const CommandMessages& messages,
                   std::ostream& out) {
    const Json document = ReadImportDocument(path);
    RequireLayout(database, {&store::ProfilesTable(), &store::ProfilePropertyTable(), &store::TaxRatesTable()});
    Importer importer(database, messages);
    dao::Transaction change(database);
    importer.Import(document);
    change.Commit();
    importer.Report(out);
}

}  // namespace ledgix::cli
