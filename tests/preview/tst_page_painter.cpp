#include "page_painter.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <cmath>

#include "typeset.h"

using ledgix::zq::Alignment;
using ledgix::zq::Document;
using ledgix::zq::Drawing;
using ledgix::zq::PrintedText;

// Pages drawn in pixels: sharp, and where the layout has them, at every scale.
class tst_PagePainter : public QObject {
    Q_OBJECT

private slots:
    void init();

    void textsKeepTheirPlaceInEveryScale_data() { AddScales(); }
    void textsKeepTheirPlaceInEveryScale();
    void setBackTextsKeepTheirRightEdge_data() { AddScales(); }
    void setBackTextsKeepTheirRightEdge();
    void boxesFillWholePixels_data() { AddScales(); }
    void boxesFillWholePixels();
    void thinLinesAreOnePixel_data() { AddScales(); }
    void thinLinesAreOnePixel();
    void brokenPicturesLeaveTheirPlaceEmpty();
    void thePaintersStateIsKept();
    void aScreenOfManyPixelsIsUsedToTheFull();

private:
    static void AddScales() {
        QTest::addColumn<double>("scale");
        for (double scale : {0.7, 1.0, 4.0 / 3, 1.5, 2.0, 2.5, 8.0 / 3, 5.3})
            QTest::addRow("%.2f", scale) << scale;
    }
    QImage Painted(double scale) const;

    Document document_;
    Drawing page_;
};

namespace {

constexpr double kWidth = 220;
constexpr double kHeight = 60;

// The smallest rectangle around all that is darker than paper.
QRect Ink(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).lightness() < 200)
                ink = ink.united(QRect(x, y, 1, 1));
    return ink;
}

// Liberation Sans has this text at this width.
PrintedText Amount(Alignment alignment) {
    return {10, 40, 0, 10, false, alignment, {}, "$123,450.00"};
}

double NaturalWidth(const Document& document, PrintedText text) {
    text.width = 1;
    text.alignment = Alignment::kLeft;
    return QFontMetricsF(ledgix::zq::TypefaceOf(document, text)).horizontalAdvance(ledgix::zq::FromUtf8(text.text)) *
           text.size / ledgix::zq::kTypefacePixels;
}

}  // namespace

void tst_PagePainter::init() {
    document_ = {};
    document_.typeface = "Liberation Sans";
    document_.page_width = kWidth;
    document_.page_height = kHeight;
    page_ = {};
}

QImage tst_PagePainter::Painted(double scale) const {
    QImage image(QSizeF(kWidth * scale, kHeight * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    ledgix::zq::PaintPage(painter, document_, page_);
    return image;
}

void tst_PagePainter::textsKeepTheirPlaceInEveryScale() {
    QFETCH(double, scale);
    PrintedText text = Amount(Alignment::kLeft);
    text.text = "How long a line of a paragraph is: 1,234.56";
    text.width = NaturalWidth(document_, text);
    page_.texts.push_back(text);
    const QRect ink = Ink(Painted(scale));
    QVERIFY(std::abs(ink.left() - 10 * scale) < 1.5 + 0.1 * 10 * scale);
    QVERIFY2(std::abs(ink.right() + 1 - (10 + text.width) * scale) < 1.5 + 0.08 * 10 * scale,
             qPrintable(QString("%1 for %2").arg(ink.right() + 1).arg((10 + text.width) * scale)));
}

void tst_PagePainter::setBackTextsKeepTheirRightEdge() {
    QFETCH(double, scale);
    for (double narrower : {1.0, 0.7}) {
        PrintedText text = Amount(Alignment::kRight);
        text.width = NaturalWidth(document_, text) * narrower;
        text.left = 200 - text.width;
        page_.texts = {text};
        const QRect ink = Ink(Painted(scale));
        QVERIFY(std::abs(ink.right() + 1 - 200 * scale) < 1.5 + 0.08 * 10 * scale);
        QVERIFY(std::abs(ink.left() - text.left * scale) < 1.5 + 0.08 * 10 * scale);
    }
}

void tst_PagePainter::boxesFillWholePixels() {
    QFETCH(double, scale);
    page_.boxes.push_back({10.3, 10.3, 50.4, 12.9, {0, 0, 0}});
    page_.boxes.push_back({10.3, 23.2, 50.4, 10.1, {0, 0, 0}});
    const QImage image = Painted(scale);
    const QRect ink = Ink(image);
    QCOMPARE(ink.left(), qRound(10.3 * scale));
    QCOMPARE(ink.bottom() + 1, qRound(33.3 * scale));
    for (int y = ink.top(); y <= ink.bottom(); ++y)
        for (int x = ink.left(); x <= ink.right(); ++x)
            QCOMPARE(image.pixelColor(x, y), QColor(Qt::black));
    QCOMPARE(image.pixelColor(ink.right() + 1, ink.top()), QColor(Qt::white));
}

void tst_PagePainter::thinLinesAreOnePixel() {
    QFETCH(double, scale);
    page_.lines.push_back({10, 20.2, 100, 20.2, 0.25, {0, 0, 0}});
    const QImage image = Painted(scale);
    const QRect ink = Ink(image);
    QCOMPARE(ink.height(), 1);
    QCOMPARE(image.pixelColor(ink.center()), QColor(Qt::black));
    QVERIFY(std::abs(ink.center().y() + 0.5 - 20.2 * scale) <= 1);
    page_.lines[0].weight = 3;
    QCOMPARE(Ink(Painted(scale)).height(), qRound(3 * scale));
}

void tst_PagePainter::brokenPicturesLeaveTheirPlaceEmpty() {
    page_.pictures.push_back({10, 10, 40, 40, Alignment::kLeft, std::make_shared<const std::string>("BM and no more")});
    QVERIFY(Ink(Painted(2)).isNull());
}

void tst_PagePainter::thePaintersStateIsKept() {
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.translate(3, 4);
    painter.scale(2, 2);
    const QTransform before = painter.worldTransform();
    ledgix::zq::PaintPage(painter, document_, page_);
    QCOMPARE(painter.worldTransform(), before);
}

void tst_PagePainter::aScreenOfManyPixelsIsUsedToTheFull() {
    page_.boxes.push_back({10.5, 10.5, 20, 20, {0, 0, 0}});
    page_.texts.push_back(Amount(Alignment::kLeft));
    page_.texts[0].width = NaturalWidth(document_, page_.texts[0]);
    QImage image(QSizeF(kWidth * 2, kHeight * 2).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::white);
    QPainter painter(&image);
    ledgix::zq::PaintPage(painter, document_, page_);
    painter.end();
    image.setDevicePixelRatio(1);
    QCOMPARE(image, Painted(2));
}

QTEST_MAIN(tst_PagePainter)
#include "tst_page_painter.moc"
