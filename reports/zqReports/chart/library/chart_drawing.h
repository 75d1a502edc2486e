#pragma once

#include <QFont>
#include <QRectF>

#include "chart_sheet.h"
#include "chart_style.h"

class QPainter;

namespace ledgix::chart {

void DrawSheet(const Sheet& sheet, const ChartStyle& style, const QFont& font, QPainter& painter, const QRectF& place);

}  // namespace ledgix::chart
