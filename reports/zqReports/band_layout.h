#pragma once

#include <memory>
#include <string>
#include <vector>

#include "document.h"
#include "report_template.h"

namespace ledgix::zq {

// A band as it was printed, one text and one picture for each item of its template.
struct BandInstance {
    const BandTemplate* band = nullptr;
    std::vector<std::string> texts;  // a label's own text, a picture's path
    std::vector<std::shared_ptr<const std::string>> pictures;
};

// What one instance looks like: drawn with its left margin at x 0 and its content's top at y 0.
struct BandImage {
    double before = 0;  // space above the content, and below
    double after = 0;
    double height = 0;  // of the content
    Drawing drawing;

    // Nothing to be seen: an empty line.
    bool IsBlank() const;
};

// How far the even fields of this instance must shrink to fit: 1 when they need not.
double EvenScale(const BandInstance& instance);

// `even_scale` is the smallest EvenScale of all instances of the band.
BandImage LayOutBand(const BandInstance& instance, double even_scale);

// The instance as one of a document's printed bands.
PrintedBand ToPrintedBand(const BandInstance& instance);

}  // namespace ledgix::zq
