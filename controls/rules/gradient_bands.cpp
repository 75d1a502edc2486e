#include "gradient_bands.h"

#include <algorithm>

#include "conversions.h"
#include "rounding.h"

namespace ledgix::controls {

Gradient::Components Gradient::ComponentsOf(std::int32_t colour) {
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

void Gradient::SetStartColour(std::int32_t colour) {
    start_colour_ = colour;
    Separate();
}

void Gradient::SetEndColour(std::int32_t colour) {
    end_colour_ = colour;
    Separate();
}

void Gradient::Separate() {
    start_ = ComponentsOf(start_colour_);
    const Components end = ComponentsOf(end_colour_);
    difference_ = {end.red - start_.red, end.green - start_.green, end.blue - start_.blue};
}

std::int32_t Gradient::BandColour(double t) const {
    const auto component = [t](std::int32_t start, std::int32_t difference) {
        return runtime::ToInt32(start + t * difference);
    };
    return component(start_.red, difference_.red) | component(start_.green, difference_.green) << 8 |
           component(start_.blue, difference_.blue) << 16;
}

std::int32_t Gradient::BandColour(int band, int band_count) const {
    return BandColour(static_cast<double>(band) / band_count);
}

int ColourDepth(int bits_per_pixel, int colour_planes) {
    return bits_per_pixel * colour_planes;
}

bool PaintsGradient(int colour_depth) {
    return colour_depth > 15;
}

BandDirection DirectionOf(std::int32_t style) {
    switch (style) {
        case 0:
            return BandDirection::kDown;
        case 1:
            return BandDirection::kRight;
        case 2:
            return BandDirection::kUp;
        case 3:
            return BandDirection::kLeft;
        default:
            return BandDirection::kFromMiddle;
    }
}

std::int16_t BandThickness(double extent, int band_count) {
    return static_cast<std::int16_t>(std::min(runtime::Round(extent / band_count, 0), 32767.0));
}

namespace {

// A band from `from` to `to`, counted from the start edge, laid into the container.
void AddStrips(std::vector<BandStrip>& strips, BandDirection direction, int band, double from, double to, double width,
               double height) {
    switch (direction) {
        case BandDirection::kDown:
            strips.push_back({band, 0, from, width, to - from});
            break;
        case BandDirection::kUp:
            strips.push_back({band, 0, height - to, width, to - from});
            break;
        case BandDirection::kRight:
            strips.push_back({band, from, 0, to - from, height});
            break;
        case BandDirection::kLeft:
            strips.push_back({band, width - to, 0, to - from, height});
            break;
        case BandDirection::kFromMiddle:
            strips.push_back({band, 0, (height - to) / 2, width, (to - from) / 2});
            strips.push_back({band, 0, (height + from) / 2, width, (to - from) / 2});
            break;
    }
}

}  // namespace

std::vector<BandStrip> BandStrips(BandDirection direction, double width, double height, int band_count) {
    std::vector<BandStrip> strips;
    if (band_count < 1 || width <= 0 || height <= 0) {
        return strips;
    }
    const bool across = direction == BandDirection::kRight || direction == BandDirection::kLeft;
    const double extent = across ? width : height;
    const double last_start = extent - std::min<double>(BandThickness(extent, band_count), extent / 2);
    const auto start = [&](int band) { return band > band_count ? extent : last_start * band / band_count; };
    for (int band = 0; band <= band_count; ++band) {
        AddStrips(strips, direction, band, start(band), start(band + 1), width, height);
    }
    return strips;
}

}  // namespace ledgix::controls
