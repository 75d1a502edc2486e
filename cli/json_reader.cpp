#include "json_reader.h"

#include <algorithm>
#include <set>
#include <vector>

#include "request_refused.h"
#include "text.h"

namespace ledgix::cli {

namespace {

using Json = nlohmann::json;

// What the parser says, without the number of the error and without the place, which it counts in bytes.
std::string Reason(std::string text) {
    const std::size_t number_end = text.find("] ");
    if (number_end != std::string::npos)
        text.erase(0, number_end + 2);
    if (text.starts_with("parse error at line"))
        text.erase(0, text.find(": ") + 2);
    return text;
}

// Goes through a document without keeping it.
class SyntaxCheck : public nlohmann::json_sax<Json> {
public:
    explicit SyntaxCheck(std::string_view text) : text_(text) {}

    bool null() override { return Value(); }
    bool boolean(bool) override { return Value(); }
    bool number_integer(number_integer_t) override { return Value(); }
    bool number_unsigned(number_unsigned_t) override { return Value(); }
    bool number_float(number_float_t, const string_t&) override { return Value(); }
    bool string(string_t&) override { return Value(); }
    bool binary(binary_t&) override { return Value(); }

    bool start_object(std::size_t) override { return Open(false); }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(true); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override {
        levels_.back().member = name;
        if (!levels_.back().members.insert(name).second)
            throw RequestRefused(Place() + ": the member stands there twice");
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const Json::exception& error) override {
        const std::string_view read = text_.substr(0, position);
        const auto lines = 1 + std::count(read.begin(), read.end(), '\n');
        const std::size_t line_start = read.rfind('\n') == std::string_view::npos ? 0 : read.rfind('\n') + 1;
        const std::size_t column = std::max<std::size_t>(1, runtime::ToUtf32(read.substr(line_start)).size());
        throw RequestRefused("line " + std::to_string(lines) + ", column " + std::to_string(column) + ": " +
                             Reason(error.what()));
    }

private:
    struct Level {
        bool is_array = false;
        std::size_t position = 0;  // of the present element
        std::string member;        // the present one
        std::set<std::string> members;
    };

    bool Value() {
        if (!levels_.empty() && levels_.back().is_array)
            ++levels_.back().position;
        return true;
    }

    bool Open(bool is_array) {
        levels_.push_back({.is_array = is_array, .position = 0, .member = {}, .members = {}});
        return true;
    }

    bool Close() {
        levels_.pop_back();
        return Value();
    }

    std::string Place() const {
        std::string place;
        for (const Level& level : levels_)
            place = level.is_array ? ElementPlace(place, level.position) : MemberPlace(place, level.member);
        return place;
    }

    std::string_view text_;
    std::vector<Level> levels_;
};

}  // namespace

nlohmann::json ReadJson(std::string_view text) {
    SyntaxCheck check(text);
    Json::sax_parse(text, &check);
    return Json::parse(text);
}

std::string MemberPlace(const std::string& place, std::string_view member) {
    return place + (place.empty() ? "" : ".") + std::string(member);
}

std::string ElementPlace(const std::string& place, std::size_t position) {
    return place + "[" + std::to_string(position) + "]";
}

}  // namespace ledgix::cli
