#include "mdbtools_judge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <variant>

#include "date_time.h"
#include "process.h"

namespace ledgix::test {

namespace {

using nlohmann::json;

constexpr std::size_t kLongestBinary = 510;

std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char c : argument)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// What the command prints, with its complaints left out.
std::string Printed(const std::string& command) {
    return OutputOfSuccess("LC_ALL=C.UTF-8 " + command + " 2>/dev/null");
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

runtime::Binary DecodeBase64(const std::string& text) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    runtime::Binary bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos)
            break;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    return bytes;
}

bool IsNear(double theirs, double ours, double tolerance) {
    return std::abs(theirs - ours) <= tolerance * std::abs(ours);
}

// In braces and without a hyphen before the last 12 digits, as mdb-json prints it.
std::string GuidText(const runtime::Guid& guid) {
    std::string text = "{";
    for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
        std::array<char, 3> digits;
        std::snprintf(digits.data(), digits.size(), "%02X", guid.bytes[i]);
        text += i == 4 || i == 6 || i == 8 ? "-" : "";
        text += digits.data();
    }
    return text + "}";
}

// mdb-json ends a value of a text, memo or binary column at its first zero byte.
template <typename Content>
Content UpToZero(const Content& content) {
    return Content(content.begin(), std::find(content.begin(), content.end(), 0));
}

double ToDouble(const runtime::Decimal& number) {
    double value = 0;
    for (const std::uint32_t word : number.magnitude)
        value = value * 4294967296.0 + word;
    return (number.negative ? -value : value) / std::pow(10.0, number.scale);
}

// How mdb-json prints a value of each type.
struct ValueComparison {
    const json& theirs;

    bool operator()(const runtime::Null&) const { return false; }
    bool operator()(bool ours) const { return theirs == (ours ? 1 : 0); }
    bool operator()(std::uint8_t ours) const { return theirs == ours; }
    bool operator()(std::int16_t ours) const { return theirs == ours; }
    bool operator()(std::int32_t ours) const { return theirs == ours; }
    bool operator()(runtime::Currency ours) const {
        return IsNumber() && IsNear(theirs.get<double>(), static_cast<double>(ours.ten_thousandths) / 10000, 1e-15);
    }
    // 8 and 16 digits.
    bool operator()(float ours) const { return IsNumber() && IsNear(theirs.get<double>(), ours, 1e-7); }
    bool operator()(double ours) const { return IsNumber() && IsNear(theirs.get<double>(), ours, 1e-15); }
    // It gives up on days before 30 December 1899.
    bool operator()(runtime::Date ours) const {
        return theirs == (ours.days < 0 ? "1900-01-00T00:00:00" : runtime::ToIso8601(ours));
    }
    bool operator()(const std::string& ours) const { return theirs == UpToZero(ours); }
    // It does not cut OLE values, and these may be longer than binary columns.
    bool operator()(const runtime::Binary& ours) const {
        const bool may_be_cut = ours.size() <= kLongestBinary;
        return IsBinary() && (TheirBytes() == ours || (may_be_cut && TheirBytes() == UpToZero(ours)));
    }
    // The text form, as if it were binary data.
    bool operator()(const runtime::Guid& ours) const {
        const std::string text = GuidText(ours);
        return IsBinary() && TheirBytes() == runtime::Binary(text.begin(), text.end());
    }
    bool operator()(const runtime::Decimal& ours) const {
        return IsNumber() && IsNear(theirs.get<double>(), ToDouble(ours), 1e-15);
    }

    bool IsNumber() const { return theirs.is_number(); }
    bool IsBinary() const { return theirs.is_object() && theirs.contains("$binary"); }
    runtime::Binary TheirBytes() const { return DecodeBase64(theirs.at("$binary").get<std::string>()); }
};

// mdb-json leaves out a value that is empty (or begins with the zero byte that ends it), as if it were null.
bool IsLeftOut(const runtime::Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return UpToZero(*text).empty();
    if (const auto* bytes = std::get_if<runtime::Binary>(&value))
        return UpToZero(*bytes).empty();
    return runtime::IsNull(value);
}

testing::AssertionResult SameRow(const json& theirs, const NamedRow& ours) {
    std::size_t present = 0;
    for (const auto& [name, value] : ours) {
        if (!theirs.contains(name)) {
            if (!IsLeftOut(value))
                return testing::AssertionFailure() << name << " is null for them and a value for us";
            continue;
        }
        ++present;
        if (!std::visit(ValueComparison{theirs[name]}, value))
            return testing::AssertionFailure() << name << " is " << theirs[name] << " for them, and not for us";
    }
    if (theirs.size() != present)
        return testing::AssertionFailure() << "they have " << theirs.size() << " columns, we have " << present;
    return testing::AssertionSuccess();
}

// Takes those out that stand in the same place in both.
void TakeOutSame(std::vector<const json*>& theirs, std::vector<const NamedRow*>& ours) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < ours.size(); ++i) {
        if (SameRow(*theirs[i], *ours[i]))
            continue;
        theirs[kept] = theirs[i];
        ours[kept++] = ours[i];
    }
    theirs.resize(kept);
    ours.resize(kept);
}

template <typename Row>
std::vector<const Row*> PointersTo(const std::vector<Row>& rows) {
    std::vector<const Row*> pointers;
    for (const Row& row : rows)
        pointers.push_back(&row);
    return pointers;
}

}  // namespace

bool HaveMdbtools() {
    return std::system("mdb-tables --version >/dev/null 2>&1 && mdb-json --version >/dev/null 2>&1") == 0;
}

std::vector<std::string> JudgeTables(const std::string& path, bool with_system_tables) {
    return Lines(Printed(std::string("mdb-tables -1 ") + (with_system_tables ? "-S " : "") + Quoted(path)));
}

std::vector<json> JudgeRows(const std::string& path, const std::string& table) {
    constexpr char kDates[] = "-D %Y-%m-%dT%H:%M:%S -T %Y-%m-%dT%H:%M:%S ";
    std::vector<json> rows;
    for (const std::string& line :
         Lines(Printed(std::string("mdb-json ") + kDates + Quoted(path) + " " + Quoted(table))))
        rows.push_back(json::parse(line));
    return rows;
}

testing::AssertionResult SameRows(const std::vector<json>& theirs, const std::vector<NamedRow>& ours) {
    if (theirs.size() != ours.size())
        return testing::AssertionFailure() << "they have " << theirs.size() << " rows, we have " << ours.size();
    std::vector<const json*> their_rest = PointersTo(theirs);
    std::vector<const NamedRow*> our_rest = PointersTo(ours);
    TakeOutSame(their_rest, our_rest);
    for (std::size_t i = 0; i < our_rest.size(); ++i) {
        const auto same = std::find_if(their_rest.begin(), their_rest.end(),
                                       [&](const json* row) { return bool(SameRow(*row, *our_rest[i])); });
        if (same == their_rest.end())
            return testing::AssertionFailure()
                   << "no row of theirs is like row " << our_rest[i] - ours.data()
                   << " of ours; in the first that differs, " << SameRow(*their_rest.front(), *our_rest[i]).message();
        their_rest.erase(same);
    }
    return testing::AssertionSuccess();
}

}  // namespace ledgix::test
