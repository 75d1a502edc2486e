#include <windows.h>

#include "regional_settings.h"
#include "text.h"

namespace ledgix::runtime {

namespace {

std::string LocaleText(LCTYPE item) {
    wchar_t buffer[128]{};
    const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, item, buffer, 128);
    std::u16string text;
    for (int i = 0; i + 1 < length; ++i)
        text.push_back(static_cast<char16_t>(buffer[i]));
    return Utf16ToUtf8(text);
}

int LocaleNumber(LCTYPE item) {
    DWORD number = 0;
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, item | LOCALE_RETURN_NUMBER, reinterpret_cast<wchar_t*>(&number),
                    sizeof number / sizeof(wchar_t));
    return static_cast<int>(number);
}

}  // namespace

RegionalSettings ReadUserSettings() {
    RegionalSettings settings = UnitedStates();
    settings.currency_symbol = LocaleText(LOCALE_SCURRENCY);
    const int positive = LocaleNumber(LOCALE_ICURRENCY);
    settings.symbol_first = positive == 0 || positive == 2;
    settings.space_between = positive >= 2;
    settings.decimal_separator = LocaleText(LOCALE_SMONDECIMALSEP);
    settings.group_separator = LocaleText(LOCALE_SMONTHOUSANDSEP);
    settings.group_sizes = {3};
    if (LocaleText(LOCALE_SMONGROUPING).starts_with("3;2"))
        settings.group_sizes = {3, 2};
    using Minus = RegionalSettings::Minus;
    const int negative = LocaleNumber(LOCALE_INEGCURR);
    const bool parentheses = negative == 0 || negative == 4 || negative == 14 || negative == 15;
    settings.minus = parentheses ? Minus::kParentheses : Minus::kBeforeAll;
    settings.short_date = LocaleText(LOCALE_SSHORTDATE);
    for (std::size_t month = 0; month < settings.month_abbreviations.size(); ++month)
        settings.month_abbreviations[month] = LocaleText(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month));
    settings.paper = LocaleText(LOCALE_IPAPERSIZE) == "1" ? Paper::kLetter : Paper::kA4;
    return settings;
}

}  // namespace ledgix::runtime
