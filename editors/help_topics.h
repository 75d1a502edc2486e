#pragma once

namespace ledgix::editors {

// Context numbers of the topics in the help file.
enum HelpTopic : int {
    kHelpContents = 1,
    kHelpMainWindow = 10,
    kHelpTaxRates = 20,
    kHelpProfile = 30,
    kHelpIncome = 31,
    kHelpExpenses = 32,
    kHelpAssets = 33,
    kHelpLiabilities = 34,
    kHelpPurchases = 35,
    kHelpCalculator = 36,
    kHelpProperty = 40,
    kHelpProfileReport = 50,
    kHelpAnalysisReport = 51,
    kHelpOutlookReport = 52,
    kHelpPreview = 60,
    kHelpExample = 70,
    kHelpMortgage = 71,
    kHelpLeftOut = 72,
};

}  // namespace ledgix::editors
