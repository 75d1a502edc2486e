#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include "commands.h"
#include "damage.h"
#include "database_file.h"
#include "layout_check.h"
#include "page_file.h"
#include "runtime_error.h"
#include "temporary_folder.h"

namespace ledgix {
namespace {

constexpr std::uint32_t kDamagesOfAKind = 80;

using Case = std::tuple<std::string, test::Damage>;

// Runs a command; true when it ended in an error that users are told of. Any other exception gets out.
template <class Command>
bool Refused(Command command) {
    try {
        command();
        return false;
    } catch (const runtime::RuntimeError&) {
        return true;
    } catch (const cli::NotUpgraded&) {
        return true;
    }
}

class DamagedExport : public testing::TestWithParam<Case> {};

TEST_P(DamagedExport, GivesAResultOrAnError) {
    const auto& [file, damage] = GetParam();
    const std::string sound = test::Content(LEDGIX_TEST_DATA "/mdb/household-" + file + ".mdb");
    std::size_t refused = 0;
    for (std::uint32_t seed = 0; seed < kDamagesOfAKind; ++seed) {
        SCOPED_TRACE(seed);
        std::ostringstream out;
        std::unique_ptr<dao::Database> database;
        const bool unopened = Refused([&] {
            database = std::make_unique<dao::Database>(
                file, std::make_unique<jet::DatabaseFile>(
                          jet::MakeMemoryFile(test::Damaged({sound.begin(), sound.end()}, damage, seed))));
        });
        if (unopened) {
            ++refused;
            continue;
        }
        const bool unlisted = Refused([&] { cli::ListProfiles(*database, cli::Format::kText, out); });
        const bool undescribed = Refused([&] { cli::DescribeFile(*database, cli::Format::kText, true, out); });
        const bool unexported = Refused([&] { cli::ExportContent(*database, out, out); });
        refused += unlisted || undescribed || unexported ? 1 : 0;
    }
    EXPECT_GT(refused, 0U);
}

std::string DamagedCaseName(const testing::TestParamInfo<Case>& damaged) {
    return std::get<0>(damaged.param) + "_" + test::DamageName(std::get<1>(damaged.param));
}

INSTANTIATE_TEST_SUITE_P(AllKinds, DamagedExport,
                         testing::Combine(testing::Values("2000", "older", "empty", "clutter", "nulls"),
                                          testing::ValuesIn(test::kAllDamages)),
                         DamagedCaseName);

}  // namespace
}  // namespace ledgix
