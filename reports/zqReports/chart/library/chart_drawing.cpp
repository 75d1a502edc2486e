#include "chart_drawing.h"

#include <QAreaSeries>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QFontMetricsF>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QLegend>
#include <QLineSeries>
#include <QPainter>
#include <QScatterSeries>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

#include "chart_legend.h"

namespace ledgix::chart {

namespace {

constexpr double kMargin = 12;
constexpr double kSpace = 8;
constexpr double kHeadroom = 12;        // above a plot, for half of its highest label
constexpr double kLabelSpace = 8;       // between an axis and its labels
constexpr double kShareOfLines = 0.64;  // of the height that both panels have

using Kind = zq::ChartSeries::Kind;

// One panel in a scene of its own. Axes and series belong to the chart, the chart to the scene.
class PanelChart {
public:
    PanelChart(const Sheet& sheet, const Panel& panel, const ChartStyle& style, const QFont& font)
        : sheet_(sheet), panel_(panel), style_(style), font_(font) {
        scene_.addItem(chart_);
        chart_->setBackgroundVisible(false);
        chart_->legend()->hide();
        chart_->setMargins({});
        chart_->layout()->setContentsMargins(0, 0, 0, 0);
        AddAxes();
        AddSeries();
    }

    // The labels stand to the left of `place` and below it.
    void Draw(QPainter& painter, const QRectF& place) {
        chart_->setGeometry(QRectF(QPointF(0, 0), place.size()));
        chart_->layout()->activate();
        scene_.render(&painter, place, QRectF(QPointF(0, 0), place.size()));
        const QRectF plot = chart_->plotArea().translated(place.topLeft());
        painter.setPen(QPen(style_.text, 1));
        const double zero = PlaceOf(0, 0, place).y();
        painter.drawLine(QPointF(plot.left(), zero), QPointF(plot.right(), zero));
        painter.setFont(font_);
        LabelTicks(painter, place, plot);
        LabelCategories(painter, place, plot);
    }

private:
    void AddAxes() {
        QStringList categories;
        for (const std::string& category : sheet_.categories)
            categories += QString::fromStdString(category);
        across_ = new QBarCategoryAxis;
        across_->append(categories);
        across_->setGridLineVisible(false);
        upwards_ = new QValueAxis;
        upwards_->setRange(panel_.least, panel_.most);
        upwards_->setTickCount(static_cast<int>(std::max<std::size_t>(panel_.ticks.size(), 2)));
        upwards_->setGridLinePen(QPen(style_.grid, 1));
        for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(across_), static_cast<QAbstractAxis*>(upwards_)}) {
            axis->setLabelsVisible(false);
            axis->setLineVisible(false);
        }
        chart_->addAxis(across_, Qt::AlignBottom);
        chart_->addAxis(upwards_, Qt::AlignLeft);
    }

    QPointF PlaceOf(double category, double value, const QRectF& place) const {
        return chart_->mapToPosition({category, value}, chart_->series().front()) + place.topLeft();
    }

    void LabelTicks(QPainter& painter, const QRectF& place, const QRectF& plot) const {
        const double height = QFontMetricsF(font_).height();
        for (const Tick& tick : panel_.ticks) {
            const double y = PlaceOf(0, tick.place, place).y();
            painter.drawText(QRectF(0, y - height / 2, plot.left() - kLabelSpace, height),
                             Qt::AlignRight | Qt::AlignVCenter, QString::fromStdString(tick.label));
        }
    }

    // As many as there is room for.
    void LabelCategories(QPainter& painter, const QRectF& place, const QRectF& plot) const {
        const QFontMetricsF metrics(font_);
        double widest = 1;
        for (const std::string& category : sheet_.categories)
            widest = std::max(widest, metrics.horizontalAdvance(QString::fromStdString(category)) + kLabelSpace);
        const double room = plot.width() / static_cast<double>(sheet_.categories.size());
        const auto step = static_cast<std::size_t>(std::max(std::ceil(widest / room), 1.0));
        for (std::size_t i = 0; i < sheet_.categories.size(); i += step) {
            const QPointF centre = PlaceOf(static_cast<double>(i), panel_.least, place);
            painter.drawText(QRectF(centre.x() - widest, plot.bottom() + kLabelSpace / 2, 2 * widest, metrics.height()),
                             Qt::AlignCenter, QString::fromStdString(sheet_.categories[i]));
        }
    }

    void Add(QAbstractSeries* series) {
        chart_->addSeries(series);
        series->attachAxis(across_);
        series->attachAxis(upwards_);
    }

    template <class Points>
    void Fill(Points& points, const std::vector<double>& values) const {
        for (std::size_t i = 0; i < values.size(); ++i)
            points.append(static_cast<double>(i), values[i]);
    }

    // Grounds first, so that lines and marks lie on them.
    void AddSeries() {
        const auto is_line = [](const zq::ChartSeries& series) { return series.kind == Kind::kLine; };
        for (auto series = panel_.series.begin(); series != panel_.series.end(); ++series)
            if (series->kind == Kind::kBetween)
                AddBetween(std::vector<zq::ChartSeries>(panel_.series.begin(), series));
            else if (series->kind == Kind::kBars)
                AddBars(*series);
        qsizetype number = 0;
        for (const zq::ChartSeries& series : panel_.series)
            if (is_line(series))
                AddLine(series, style_.Line(number++));
    }

    // Between the last two of the lines.
    void AddBetween(const std::vector<zq::ChartSeries>& before) {
        std::vector<const zq::ChartSeries*> lines;
        for (const zq::ChartSeries& series : before)
            if (series.kind == Kind::kLine)
                lines.push_back(&series);
        if (lines.size() < 2)
            return;
        auto* area = new QAreaSeries;
        auto* upper = new QLineSeries(area);
        auto* lower = new QLineSeries(area);
        Fill(*upper, lines[lines.size() - 2]->values);
        Fill(*lower, lines[lines.size() - 1]->values);
        area->setUpperSeries(upper);
        area->setLowerSeries(lower);
        area->setPen(Qt::NoPen);
        area->setBrush(style_.between);
        Add(area);
    }

    void AddBars(const zq::ChartSeries& series) {
        auto* set = new QBarSet(QString::fromStdString(series.name));
        for (const double value : series.values)
            set->append(value);
        set->setPen(Qt::NoPen);
        set->setBrush(style_.bars);
        auto* bars = new QBarSeries;
        bars->setBarWidth(0.6);
        bars->append(set);
        Add(bars);
    }

    void AddLine(const zq::ChartSeries& series, const LineStyle& style) {
        auto* line = new QLineSeries;
        Fill(*line, series.values);
        line->setPen(style.pen);
        Add(line);
        auto* marks = new QScatterSeries;
        Fill(*marks, series.values);
        marks->setMarkerShape(style.mark);
        marks->setMarkerSize(kMarkSize);
        marks->setPen(Qt::NoPen);
        marks->setBrush(style.pen.color());
        Add(marks);
    }

    const Sheet& sheet_;
    const Panel& panel_;
    const ChartStyle& style_;
    QFont font_;
    QGraphicsScene scene_;
    QChart* chart_ = new QChart;
    QBarCategoryAxis* across_ = nullptr;
    QValueAxis* upwards_ = nullptr;
};

double WidestLabel(const Sheet& sheet, const QFontMetricsF& metrics) {
    double widest = 0;
    for (const Panel& panel : sheet.panels)
        for (const Tick& tick : panel.ticks)
            widest = std::max(widest, metrics.horizontalAdvance(QString::fromStdString(tick.label)));
    return widest;
}

double DrawTitle(const Sheet& sheet, const ChartStyle& style, const QFont& font, QPainter& painter,
                 const QRectF& inner) {
    QFont bold = font;
    bold.setBold(true);
    bold.setPixelSize(qRound(font.pixelSize() * 1.2));
    const QFontMetricsF metrics(bold);
    painter.setFont(bold);
    painter.setPen(style.text);
    painter.drawText(QRectF(inner.topLeft(), QSizeF(inner.width(), metrics.height())), Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(QString::fromStdString(sheet.title), Qt::ElideRight, inner.width()));
    return metrics.height();
}

}  // namespace

void DrawSheet(const Sheet& sheet, const ChartStyle& style, const QFont& font, QPainter& painter, const QRectF& place) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.fillRect(place, style.ground);
    const QRectF inner = place.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QFontMetricsF metrics(font);
    const double labels = metrics.height() + kLabelSpace;  // below a plot
    const double left = inner.left() + WidestLabel(sheet, metrics) + kLabelSpace;
    double y = inner.top() + DrawTitle(sheet, style, font, painter, inner) + kSpace;
    std::vector<PanelLegend> legends;
    double rest = inner.bottom() - y - metrics.height();  // for the plots
    for (const Panel& panel : sheet.panels) {
        legends.emplace_back(panel, font, inner.width());
        rest -= legends.back().Height() + labels + kHeadroom + kSpace;
    }
    for (std::size_t i = 0; i < sheet.panels.size(); ++i) {
        const double share = sheet.panels.size() == 1 ? 1 : i == 0 ? kShareOfLines : 1 - kShareOfLines;
        const double height = std::max(rest * share, 1.0);
        legends[i].Draw(painter, {inner.left(), y}, style);
        y += legends[i].Height() + kHeadroom;
        PanelChart(sheet, sheet.panels[i], style, font).Draw(painter, QRectF(left, y, inner.right() - left, height));
        y += height + labels + kSpace;
    }
    painter.setPen(style.text);
    painter.setFont(font);
    painter.drawText(QRectF(left, inner.bottom() - metrics.height(), inner.right() - left, metrics.height()),
                     Qt::AlignCenter, QString::fromStdString(sheet.category_title));
}

}  // namespace ledgix::chart
