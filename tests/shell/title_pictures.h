#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

// What a window paints, looked at by colour.
namespace ledgix::test {

inline constexpr QRgb kRed = qRgb(255, 0, 0);
inline constexpr QRgb kBlack = qRgb(0, 0, 0);
inline constexpr QRgb kBlue = qRgb(0, 0, 255);

inline QImage PictureOf(QWidget& window) {
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// The smallest rectangle that holds every pixel of just this colour; empty when there is none.
inline QRect InkOf(const QImage& picture, QRgb colour) {
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) == colour)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

}  // namespace ledgix::test
