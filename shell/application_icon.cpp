#include "application_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <array>
#include <cmath>

#include "drawn_icon.h"

namespace ledgix::shell {

namespace {

constexpr QRgb kWall = 0x1F6AAE;
constexpr QRgb kRoof = 0x144A7C;
constexpr QRgb kBar = 0xFFFFFF;
constexpr QRgb kHighestBar = 0xFFC94D;
constexpr int kBars = 3;
// Where the roof ends.
constexpr double kEaves = 0.46;
// Smaller pictures have sharp corners, in pixels.
constexpr double kRoundedFrom = 32;

// Measures are parts of the picture's edge. Lines of small pictures are put on whole pixels.
class HouseDrawing {
public:
    HouseDrawing(QPainter& painter, const QRectF& place) : painter_(painter), place_(place) {
        pixels_ = std::max(1.0, place.width() * Scale());
    }

    void Draw() {
        painter_.translate(place_.topLeft());
        painter_.scale(place_.width() / pixels_, place_.height() / pixels_);
        DrawWall();
        DrawBars();
        DrawRoof();
    }

private:
    double Scale() const {
        const QTransform transform = painter_.deviceTransform();
        return std::hypot(transform.m11(), transform.m12());
    }

    double Pixel(double part) const { return std::round(part * pixels_); }

    void DrawWall() {
        const double left = Pixel(0.125);
        const double top = Pixel(0.4);
        const QRectF wall(left, top, pixels_ - 2 * left, Pixel(0.94) - top);
        const double round = pixels_ >= kRoundedFrom ? pixels_ * 0.05 : 0;
        painter_.setBrush(QColor(kWall));
        painter_.drawRoundedRect(wall, round, round);
    }

    void DrawBars() {
        const double foot = Pixel(0.85);
        const double room = foot - Pixel(kEaves) - std::max(1.0, Pixel(0.04));
        const double width = std::max(2.0, Pixel(0.14));
        const double gap = std::max(1.0, Pixel(0.07));
        const double all = kBars * width + (kBars - 1) * gap;
        double left = std::floor((pixels_ - all) / 2);
        const std::array<double, kBars> heights{0.36, 0.68, 1};
        for (std::size_t i = 0; i < heights.size(); ++i, left += width + gap) {
            const double height = std::max(2.0, std::round(room * heights[i]));
            painter_.fillRect(QRectF(left, foot - height, width, height),
                              QColor(i + 1 == heights.size() ? kHighestBar : kBar));
        }
    }

    void DrawRoof() {
        const double middle = pixels_ / 2;
        const double eaves = Pixel(kEaves);
        QPainterPath roof(QPointF(middle, pixels_ * 0.05));
        roof.lineTo(pixels_ * 0.98, eaves);
        roof.lineTo(pixels_ * 0.02, eaves);
        roof.closeSubpath();
        painter_.setBrush(QColor(kRoof));
        if (pixels_ >= kRoundedFrom) {
            QPen edge(QColor(kRoof), pixels_ * 0.03);
            edge.setJoinStyle(Qt::RoundJoin);
            painter_.setPen(edge);
        }
        painter_.drawPath(roof);
    }

    QPainter& painter_;
    QRectF place_;
    double pixels_;
};

void DrawHouse(QPainter& painter, const QRectF& square) {
    HouseDrawing(painter, square).Draw();
}

}  // namespace

const QIcon& ApplicationIcon() {
    static const QIcon icon(new DrawnIcon("ledgix-house", {16, 22, 24, 32, 48, 64, 128, 256, 512}, DrawHouse));
    return icon;
}

}  // namespace ledgix::shell
