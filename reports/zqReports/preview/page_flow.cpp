#include "page_flow.h"

#include <algorithm>

namespace ledgix::preview {

namespace {

// Around the pages and between them.
constexpr int kRoom = 16;
constexpr double kLeastScale = 0.1;

double Fit(int room, double points) {
    return points > 0 ? std::max((room - 2 * kRoom) / points, kLeastScale) : 1;
}

}  // namespace

void PageFlow::Arrange(double scale, QSize viewport) {
    scale_ = scale;
    viewport_ = viewport;
}

QSize PageFlow::PagePixels() const {
    return {qRound(page_size_.width() * scale_), qRound(page_size_.height() * scale_)};
}

QSize PageFlow::Size() const {
    const QSize page = PagePixels();
    return QSize(page.width() + 2 * kRoom, pages_ * (page.height() + kRoom) + kRoom).expandedTo(viewport_);
}

QRect PageFlow::Page(int index) const {
    const QSize page = PagePixels();
    const QSize size = Size();
    const int all = pages_ * (page.height() + kRoom) - kRoom;
    return {QPoint((size.width() - page.width()) / 2, (size.height() - all) / 2 + index * (page.height() + kRoom)),
            page};
}

PageFlow::Range PageFlow::Visible(const QRect& part) const {
    Range range{pages_, -1};
    for (int i = 0; i < pages_; ++i) {
        if (!Page(i).intersects(part))
            continue;
        range.first = std::min(range.first, i);
        range.last = i;
    }
    return range;
}

int PageFlow::Foremost(const QRect& part) const {
    int foremost = 0;
    int most = 0;
    for (int i = 0; i < pages_; ++i) {
        const int height = Page(i).intersected(part).height();
        if (height > most) {
            most = height;
            foremost = i;
        }
    }
    return foremost;
}

double PageFlow::ToFitWidth(QSize viewport) const {
    return Fit(viewport.width(), page_size_.width());
}

double PageFlow::ToFitPage(QSize viewport) const {
    return std::min(ToFitWidth(viewport), Fit(viewport.height(), page_size_.height()));
}

}  // namespace ledgix::preview
