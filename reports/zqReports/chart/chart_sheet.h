#pragma once

#include <string>
#include <vector>

#include "document.h"
#include "regional_settings.h"

// A chart as it is drawn: figures in the unit of their scale, and all texts.
namespace ledgix::chart {

struct Tick {
    double place = 0;
    std::string label;
};

// Figures on one scale, which always has 0 on it.
struct Panel {
    std::string heading;  // with the unit: "Value ($ million)"
    double least = 0;
    double most = 0;
    std::vector<Tick> ticks;              // upwards, at even distances from `least` to `most`, if there is more than 0
    std::vector<zq::ChartSeries> series;  // values in the panel's unit
};

struct Sheet {
    std::string title;
    std::string category_title;
    std::vector<std::string> categories;
    std::vector<Panel> panels;  // the lines', then the bars'; one that would be empty is left out
};

Sheet ToSheet(const zq::Chart& chart, const runtime::RegionalSettings& region);

}  // namespace ledgix::chart
