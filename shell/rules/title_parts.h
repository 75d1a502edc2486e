#pragma once

#include <functional>
#include <string>
#include <vector>

// The product's name as its windows draw it: "Van" "treo" over "Ledgix".
namespace ledgix::shell {

struct TitlePart {
    struct Colour {
        int red = 0;
        int green = 0;
        int blue = 0;
        bool operator==(const Colour&) const = default;
    };

    std::string text;
    std::string font;
    int points = 0;
    bool bold = false;
    Colour colour;
    // Twips from the window's top left corner to that of the part's line of text.
    int x = 0;
    int y = 0;
    // The part stands directly behind the one before; x means nothing, and y is how far below that one's top.
    bool continues = false;
};

// Whether a font of this name can be set, and no other comes in its place.
using FontTest = std::function<bool(const std::string& font)>;

// "Courier New" gives way to "Arial" when it cannot be set. Errors of the test pass to the caller.
std::vector<TitlePart> SplashTitle(const FontTest& is_installed);

// "Courier New" gives way to the font of the part before when it cannot be set, for whatever reason.
std::vector<TitlePart> AboutTitle(const FontTest& is_installed);

}  // namespace ledgix::shell
