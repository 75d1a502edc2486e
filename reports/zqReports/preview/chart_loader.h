#pragma once

#include <QStringList>

#include "chart_library.h"

namespace ledgix::preview {

// There is a library of charts beside the program. It is not loaded by asking.
bool HasCharts();

// The drawer of the library, which is loaded by the first call and stays; nullptr when it, or Qt Charts, which it
// needs, is not installed.
const chart::ChartDrawer* Charts();

// The library's file in the first folder that has it, or empty; and its drawer, or nullptr.
QString FindChartLibrary(const QStringList& folders);
const chart::ChartDrawer* LoadCharts(const QString& file);

}  // namespace ledgix::preview
