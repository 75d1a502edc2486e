#include <langinfo.h>
#include <locale.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "regional_settings.h"
#include "text.h"

namespace ledgix::runtime {

namespace {

// The user's locale, current for this thread as long as the object lives.
class UserLocale {
public:
    UserLocale() : locale_(newlocale(LC_ALL_MASK, "", nullptr)) {
        if (locale_)
            previous_ = uselocale(locale_);
    }
    ~UserLocale() {
        if (!locale_)
            return;
        uselocale(previous_);
        freelocale(locale_);
    }
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;

    bool known() const { return locale_ != nullptr; }

private:
    locale_t locale_;
    locale_t previous_ = nullptr;
};

// The variable that decides a category, as the C library looks it up.
bool IsPlainLocale(const char* category) {
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value)
            return std::strcmp(value, "C") == 0 || std::strcmp(value, "POSIX") == 0 ||
                   std::strncmp(value, "C.", 2) == 0;
    }
    return true;
}

// Text in the encoding of the current locale. Wide characters are code points on the platforms that build this file.
std::string FromLocale(const char* text) {
    std::wstring wide(std::strlen(text), L'\0');
    const std::size_t count = std::mbstowcs(wide.data(), text, wide.size());
    if (count == static_cast<std::size_t>(-1))
        return text;
    std::string out;
    for (const wchar_t c : std::wstring_view(wide).substr(0, count))
        AppendUtf8(out, static_cast<char32_t>(c));
    return out;
}

void ReadCurrency(RegionalSettings& settings) {
    const lconv& conventions = *localeconv();
    settings.currency_symbol = FromLocale(conventions.currency_symbol);
    settings.symbol_first = conventions.p_cs_precedes == 1;
    settings.space_between = conventions.p_sep_by_space != 0 && conventions.p_sep_by_space != CHAR_MAX;
    settings.decimal_separator = FromLocale(conventions.mon_decimal_point);
    settings.group_separator = FromLocale(conventions.mon_thousands_sep);
    settings.group_sizes.clear();
    for (const char* size = conventions.mon_grouping; *size > 0 && *size != CHAR_MAX; ++size)
        settings.group_sizes.push_back(*size);
    if (settings.decimal_separator.empty())
        settings.decimal_separator.push_back('.');
    using Minus = RegionalSettings::Minus;
    constexpr Minus kPositions[] = {Minus::kParentheses, Minus::kBeforeAll, Minus::kAfterAll, Minus::kBeforeSymbol,
                                    Minus::kAfterSymbol};
    const int position = conventions.n_sign_posn;
    settings.minus = position >= 0 && position <= 4 ? kPositions[position] : Minus::kBeforeAll;
}

// What FormatDate calls a conversion of strftime. Empty where it has no counterpart.
std::string_view DatePattern(char conversion, bool padded) {
    switch (conversion) {
        case 'd':
            return padded ? "dd" : "d";
        case 'e':
            return "d";
        case 'm':
            return padded ? "mm" : "m";
        case 'b':
        case 'h':
            return "mmm";
        case 'y':
            return "yy";
        case 'Y':
            return "yyyy";
        case 'F':
            return "yyyy-mm-dd";
        default:
            return {};
    }
}

// A conversion without a counterpart leaves the setting as it is.
void ReadShortDate(RegionalSettings& settings) {
    const std::string format = FromLocale(nl_langinfo(D_FMT));
    std::string pattern;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] != '%') {
            pattern.push_back(format[at]);
            continue;
        }
        const char flag = at + 2 < format.size() ? format[at + 1] : '\0';
        at += flag == '-' || flag == 'E' || flag == 'O' ? 2 : 1;
        const std::string_view part = at < format.size() ? DatePattern(format[at], flag != '-') : std::string_view();
        if (part.empty())
            return;
        pattern += part;
    }
    settings.short_date = pattern;
}

void ReadMonths(RegionalSettings& settings) {
    constexpr nl_item kMonths[] = {ABMON_1, ABMON_2, ABMON_3, ABMON_4,  ABMON_5,  ABMON_6,
                                   ABMON_7, ABMON_8, ABMON_9, ABMON_10, ABMON_11, ABMON_12};
    for (std::size_t month = 0; month < settings.month_abbreviations.size(); ++month)
        settings.month_abbreviations[month] = FromLocale(nl_langinfo(kMonths[month]));
}

void ReadPaper(RegionalSettings& settings) {
#ifdef __GLIBC__
    // The item holds the number itself, in millimetres, where others hold a pointer.
    constexpr std::uintptr_t kLetterHeight = 279;
    const auto height = reinterpret_cast<std::uintptr_t>(nl_langinfo(_NL_PAPER_HEIGHT));
    settings.paper = (height & 0xFFFFFFFFU) == kLetterHeight ? Paper::kLetter : Paper::kA4;
#else
    settings.paper = Paper::kA4;
#endif
}

}  // namespace

RegionalSettings ReadUserSettings() {
    RegionalSettings settings = UnitedStates();
    const UserLocale locale;
    if (!locale.known())
        return settings;
    if (!IsPlainLocale("LC_MONETARY"))
        ReadCurrency(settings);
    if (!IsPlainLocale("LC_TIME")) {
        ReadShortDate(settings);
        ReadMonths(settings);
    }
    if (!IsPlainLocale("LC_PAPER"))
        ReadPaper(settings);
    return settings;
}

}  // namespace ledgix::runtime
