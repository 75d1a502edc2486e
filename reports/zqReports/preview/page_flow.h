#pragma once

#include <QRect>
#include <QSize>
#include <QSizeF>

namespace ledgix::preview {

// Where the pages lie on the desk: one below the other, centred, with room around them. Sizes of pages are points, all
// else are pixels from the desk's upper left corner; a scale is pixels to a point.
class PageFlow {
public:
    struct Range {
        int first = 0;
        int last = -1;  // below `first`: none
        bool operator==(const Range&) const = default;
    };

    PageFlow(int pages, QSizeF page_size) : pages_(pages), page_size_(page_size) {}

    void Arrange(double scale, QSize viewport);

    int pages() const { return pages_; }
    double scale() const { return scale_; }

    // Of the desk, not below the viewport's.
    QSize Size() const;
    QRect Page(int index) const;

    // The pages of which `part` shows something.
    Range Visible(const QRect& part) const;
    // The page that takes the most of `part`; the upper one of two.
    int Foremost(const QRect& part) const;

    // The scale at which a page is as wide as the viewport, or can be seen as a whole.
    double ToFitWidth(QSize viewport) const;
    double ToFitPage(QSize viewport) const;

private:
    QSize PagePixels() const;

    int pages_;
    QSizeF page_size_;
    double scale_ = 1;
    QSize viewport_;
};

}  // namespace ledgix::preview
