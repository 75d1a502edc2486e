#include "text_fitting.h"

#include "characters.h"
#include "font_widths.h"

namespace ledgix::zq {

namespace {

// Takes up what summing up widths loses, in points.
constexpr double kTolerance = 1e-6;

}  // namespace

std::size_t FittingLength(std::string_view text, double width, double size, bool bold) {
    double used = 0;
    std::size_t behind_blanks = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        if (const std::size_t line_break = LineBreakAt(text, at))
            return at + line_break;
        const Character c = CharacterAt(text, at);
        const double advance = AdvanceWidth(c.code_point, bold) * size;
        used += advance;
        const bool blank = IsBlank(c.code_point);
        if (!blank && advance > 0 && at > 0 && used > width + kTolerance)
            return behind_blanks > 0 ? behind_blanks : at;
        at += c.size;
        if (blank)
            behind_blanks = at;
    }
    return at;
}

std::vector<std::string> WrappedLines(std::string_view text, double width, double size, bool bold) {
    std::vector<std::string> lines;
    do {
        const std::size_t length = FittingLength(text, width, size, bold);
        lines.push_back(OneLine(text.substr(0, length)));
        text.remove_prefix(length);
    } while (!text.empty());
    return lines;
}

}  // namespace ledgix::zq
