#pragma once

#include <cstdint>
#include <vector>

namespace ledgix::controls {

// A colour has red in the low byte, then green, then blue; the high byte is ignored.
class Gradient {
public:
    // From black to yellow.
    Gradient() { Separate(); }

    std::int32_t start_colour() const { return start_colour_; }
    std::int32_t end_colour() const { return end_colour_; }
    void SetStartColour(std::int32_t colour);
    void SetEndColour(std::int32_t colour);

    // The colour at a fraction of the way, 0 at the first band and 1 at the last; each component rounded half to even.
    std::int32_t BandColour(double t) const;
    // The colour of a band of 0 to `band_count`: that at band / band_count.
    std::int32_t BandColour(int band, int band_count) const;

private:
    struct Components {
        std::int32_t red = 0;
        std::int32_t green = 0;
        std::int32_t blue = 0;
    };

    static Components ComponentsOf(std::int32_t colour);
    void Separate();

    std::int32_t start_colour_ = 0;
    std::int32_t end_colour_ = 0xFFFF;
    Components start_;
    Components difference_;
};

// Bits per pixel of a device.
int ColourDepth(int bits_per_pixel, int colour_planes);
// A gradient needs a colour depth of more than 15 bits.
bool PaintsGradient(int colour_depth);

// Which way the bands run: the edge of the start colour and where the end colour is reached.
enum class BandDirection { kDown, kRight, kUp, kLeft, kFromMiddle };

// Values of the property Style: 0 from top to bottom, 1 from left to right, 2 from bottom to top, 3 from right to
// left; any other value from the middle line to the top and to the bottom at once.
BandDirection DirectionOf(std::int32_t style);

// Thickness of a band in twips: the container's extent divided by the number of bands, halves to the even number; at
// most 32767. The count is at least 1.
std::int16_t BandThickness(double extent, int band_count);

// A strip of one colour; twips from the container's top left corner.
struct BandStrip {
    int band = 0;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    bool operator==(const BandStrip&) const = default;
};

// The strips of bands 0 to `band_count`, in this order. The first band begins at the start edge, the last one ends at
// the far edge and is BandThickness thick (half the extent at most), and the starts of the others lie evenly between;
// so the strips cover a container of any size from edge to edge, each beginning where the one before it ends.
// kFromMiddle gives two strips a band. No strips for a count below 1 and for an empty container.
std::vector<BandStrip> BandStrips(BandDirection direction, double width, double height, int band_count);

}  // namespace ledgix::controls
