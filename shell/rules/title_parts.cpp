#include "title_parts.h"

#include "runtime_error.h"

namespace ledgix::shell {

namespace {

constexpr TitlePart::Colour kRed{255, 0, 0};
constexpr TitlePart::Colour kBlack{0, 0, 0};
constexpr TitlePart::Colour kBlue{0, 0, 255};

const char* const kThirdFont = "Courier New";

}  // namespace

std::vector<TitlePart> SplashTitle(const FontTest& is_installed) {
    std::vector<TitlePart> title{{"Van", "Comic Sans MS", 36, true, kRed, 1800, 200, false},
                                 {"treo", "Arial", 36, true, kBlack, 0, 150, true}};
    const std::string font = is_installed(kThirdFont) ? kThirdFont : "Arial";
    title.push_back({"Ledgix", font, 40, true, kBlue, 1800, 1000, false});
    return title;
}

std::vector<TitlePart> AboutTitle(const FontTest& is_installed) {
    std::vector<TitlePart> title{{"Van", "Comic Sans MS", 28, true, kRed, 1800, 0, false},
                                 {"treo", "Arial", 28, true, kBlack, 0, 90, true}};
    std::string font = title.back().font;
    try {
        if (is_installed(kThirdFont))
            font = kThirdFont;
    } catch (const runtime::RuntimeError&) {
        // The font that is set stays.
    }
    title.push_back({"Ledgix", font, 28, true, kBlue, 1900, 600, false});
    return title;
}

}  // namespace ledgix::shell
