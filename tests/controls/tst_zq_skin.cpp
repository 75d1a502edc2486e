#include <QJsonArray>
#include <QLabel>
#include <QMetaProperty>
#include <QPainter>
#include <QTest>
#include <QVBoxLayout>

#include "case_list.h"
#include "runtime_error.h"
#include "zq_skin.h"

using ledgix::controls::zqSkin;

namespace {

constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kYellow = qRgb(255, 255, 0);

// A skin on a device of a given depth.
class SkinOnDevice : public zqSkin {
public:
    SkinOnDevice(QWidget* container, int bits, int planes) : zqSkin(container), bits_(bits), planes_(planes) {}

protected:
    int BitsPerPixel() const override { return bits_; }
    int ColourPlanes() const override { return planes_; }

private:
    int bits_;
    int planes_;
};

class Panel : public QWidget {
public:
    explicit Panel(QSize size) { resize(size); }

    QImage picture(double scale = 1) {
        QImage image((QSizeF(size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        render(&image);
        return image;
    }
};

int Colour(QRgb pixel) {
    return qRed(pixel) | qGreen(pixel) << 8 | qBlue(pixel) << 16;
}

// The colours from the top to the bottom, each once.
QList<int> ColoursDown(const QImage& image) {
    QList<int> colours;
    for (int y = 0; y < image.height(); ++y) {
        const int colour = Colour(image.pixel(image.width() / 2, y));
        if (colours.isEmpty() || colours.last() != colour) {
            colours << colour;
        }
    }
    return colours;
}

}  // namespace

class tst_zqSkin : public QObject {
    Q_OBJECT

private slots:
    void colours_data();
    void colours();
    void depths_data();
    void depths();

    void startsWithBlackToYellowIn100Bands();
    void aFormFileKeepsTheProperties();
    void stylesRunTheirOwnWay_data();
    void stylesRunTheirOwnWay();
    void everyPixelHasTheColourOfItsBand_data();
    void everyPixelHasTheColourOfItsBand();
    void equalColoursPaintOneFlatColour();
    void aResizedContainerIsPaintedAnew();
    void changesAreSeen();
    void withoutBandsNothingIsPainted();
    void hidingTheSkinTakesTheGradientAway();
    void theContainerIsNotErasedFirst();
    void theGradientLiesBeneathTheContent();
    void aMovedSkinPaintsItsNewContainer();
    void aDeletedSkinLeavesAnOrdinaryPanel();
    void isInvisibleAtRunTime();
    void showsItsNameInADesigner();
    void depthIsThatOfTheContainer();
    void bandCountsBeyond16BitsAreAnError();
};

void tst_zqSkin::colours_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray list = ledgix::test::CasesOf("gradient.json")["bands"].toArray();
    QVERIFY(!list.isEmpty());
    for (const QJsonValue& one : list) {
        QTest::newRow(qPrintable(one["name"].toString())) << one.toObject();
    }
}

void tst_zqSkin::colours() {
    QFETCH(QJsonObject, given);
    Panel panel({20, 500});
    zqSkin skin(&panel);
    skin.setStartColour(given["StartColour"].toInt());
    skin.setEndColour(given["EndColour"].toInt());
    skin.setColourBandCount(given["ColourBandCount"].toInt());
    panel.show();
    QList<int> expected;
    for (const QJsonValue& band : given["bands"].toArray()) {
        if (expected.isEmpty() || expected.last() != band.toInt()) {
            expected << band.toInt();
        }
    }
    QCOMPARE(ColoursDown(panel.picture()), expected);
}

void tst_zqSkin::depths_data() {
    QTest::addColumn<QJsonObject>("given");
    const QJsonArray list = ledgix::test::CasesOf("gradient.json")["painted"].toArray();
    QVERIFY(!list.isEmpty());
    for (const QJsonValue& one : list) {
        QTest::addRow("%d bits, %d planes", one["bitsPerPixel"].toInt(), one["planes"].toInt()) << one.toObject();
    }
}

void tst_zqSkin::depths() {
    QFETCH(QJsonObject, given);
    Panel panel({20, 200});
    const SkinOnDevice skin(&panel, given["bitsPerPixel"].toInt(), given["planes"].toInt());
    panel.show();
    const QRgb bottom = panel.picture().pixel(10, 199);
    QCOMPARE(bottom, given["painted"].toBool() ? kYellow : panel.palette().color(QPalette::Window).rgb());
}

void tst_zqSkin::startsWithBlackToYellowIn100Bands() {
    Panel panel({20, 500});
    const zqSkin skin(&panel);
    QCOMPARE(skin.StartColour(), 0);
    QCOMPARE(skin.EndColour(), 65535);
    QCOMPARE(skin.Style(), 0);
    QCOMPARE(skin.ColourBandCount(), 100);
    panel.show();
    const QImage image = panel.picture();
    QCOMPARE(image.pixel(10, 0), kBlack);
    QCOMPARE(image.pixel(10, 499), kYellow);
    QCOMPARE(ColoursDown(image).size(), 101);
}

void tst_zqSkin::aFormFileKeepsTheProperties() {
    const QMetaObject& meta = zqSkin::staticMetaObject;
    QStringList stored;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        if (meta.property(i).isStored()) {
            stored << meta.property(i).name();
        }
    }
    QCOMPARE(stored, QStringList({"EndColour", "StartColour", "Style", "ColourBandCount"}));
    zqSkin skin;
    for (const QString& name : stored) {
        QVERIFY(skin.setProperty(qPrintable(name), 3));
        QCOMPARE(skin.property(qPrintable(name)).toInt(), 3);
    }
}

void tst_zqSkin::stylesRunTheirOwnWay_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<QPoint>("end");
    QTest::newRow("downwards") << 0 << QPoint(200, 0) << QPoint(200, 299);
    QTest::newRow("to the right") << 1 << QPoint(0, 150) << QPoint(399, 150);
    QTest::newRow("upwards") << 2 << QPoint(200, 299) << QPoint(200, 0);
    QTest::newRow("to the left") << 3 << QPoint(399, 150) << QPoint(0, 150);
    QTest::newRow("from the middle up") << 4 << QPoint(200, 150) << QPoint(200, 0);
    QTest::newRow("from the middle down") << -7 << QPoint(200, 150) << QPoint(200, 299);
}

void tst_zqSkin::stylesRunTheirOwnWay() {
    QFETCH(int, style);
    QFETCH(QPoint, start);
    QFETCH(QPoint, end);
    Panel panel({400, 300});
    zqSkin skin(&panel);
    skin.setStyle(style);
    panel.show();
    const QImage image = panel.picture();
    QCOMPARE(image.pixel(start), kBlack);
    QCOMPARE(image.pixel(end), kYellow);
    const int middle = qRed(image.pixel((start + end) / 2));
    QVERIFY2(middle > 115 && middle < 140, qPrintable(QString::number(middle)));
}

void tst_zqSkin::everyPixelHasTheColourOfItsBand_data() {
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("scale");
    for (int style = 0; style <= 4; ++style) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("style %d at %g", style, scale) << style << scale;
        }
    }
}

void tst_zqSkin::everyPixelHasTheColourOfItsBand() {
    using namespace ledgix::controls;
    QFETCH(int, style);
    QFETCH(double, scale);
    Panel panel({230, 170});
    zqSkin skin(&panel);
    skin.setStyle(style);
    skin.setColourBandCount(13);
    panel.show();
    const QImage image = panel.picture(scale);
    QImage expected(image.size(), image.format());
    expected.fill(Qt::cyan);
    const Gradient gradient;
    const auto pixel = [scale](double twips) { return qRound(twips / 15 * scale); };
    for (const BandStrip& strip : BandStrips(DirectionOf(style), 230 * 15, 170 * 15, 13)) {
        const QRgb shade = static_cast<QRgb>(gradient.BandColour(strip.band, 13));
        for (int y = pixel(strip.top); y < qMin(pixel(strip.top + strip.height), image.height()); ++y) {
            for (int x = pixel(strip.left); x < qMin(pixel(strip.left + strip.width), image.width()); ++x) {
                expected.setPixel(x, y, qRgb(shade & 255, shade >> 8 & 255, shade >> 16 & 255));
            }
        }
    }
    expected.setDevicePixelRatio(scale);
    QCOMPARE(image, expected);
}

void tst_zqSkin::equalColoursPaintOneFlatColour() {
    Panel panel({30, 200});
    zqSkin skin(&panel);
    skin.setStartColour(0x336699);
    skin.setEndColour(0x336699);
    panel.show();
    QCOMPARE(ColoursDown(panel.picture()), QList<int>{0x336699});
}

void tst_zqSkin::aResizedContainerIsPaintedAnew() {
    Panel panel({30, 200});
    const zqSkin skin(&panel);
    panel.show();
    panel.resize(60, 700);
    const QImage image = panel.picture();
    QCOMPARE(image.pixel(50, 0), kBlack);
    QCOMPARE(image.pixel(50, 699), kYellow);
    QCOMPARE(ColoursDown(image).size(), 101);
}

void tst_zqSkin::changesAreSeen() {
    Panel panel({30, 200});
    zqSkin skin(&panel);
    panel.show();
    skin.setStartColour(0x0000FF);
    QCOMPARE(Colour(panel.picture().pixel(10, 0)), 0x0000FF);
    skin.setEndColour(0xFF0000);
    QCOMPARE(Colour(panel.picture().pixel(10, 199)), 0xFF0000);
    skin.setStyle(2);
    QCOMPARE(Colour(panel.picture().pixel(10, 199)), 0x0000FF);
    skin.setColourBandCount(4);
    QCOMPARE(ColoursDown(panel.picture()).size(), 5);
}

void tst_zqSkin::withoutBandsNothingIsPainted() {
    Panel panel({30, 200});
    zqSkin skin(&panel);
    panel.show();
    for (const int count : {0, -5}) {
        skin.setColourBandCount(count);
        QCOMPARE(ColoursDown(panel.picture()), QList<int>{Colour(panel.palette().color(QPalette::Window).rgb())});
    }
}

void tst_zqSkin::hidingTheSkinTakesTheGradientAway() {
    Panel panel({30, 200});
    zqSkin skin(&panel);
    panel.show();
    skin.hide();
    QCOMPARE(panel.picture().pixel(10, 199), panel.palette().color(QPalette::Window).rgb());
    QVERIFY(!panel.testAttribute(Qt::WA_OpaquePaintEvent));
    skin.show();
    QCOMPARE(panel.picture().pixel(10, 199), kYellow);
}

void tst_zqSkin::theContainerIsNotErasedFirst() {
    Panel panel({30, 200});
    const zqSkin skin(&panel);
    panel.show();
    QVERIFY(panel.testAttribute(Qt::WA_OpaquePaintEvent));
    Panel shallow({30, 200});
    const SkinOnDevice none(&shallow, 8, 1);
    shallow.show();
    QVERIFY(!shallow.testAttribute(Qt::WA_OpaquePaintEvent));
}

void tst_zqSkin::theGradientLiesBeneathTheContent() {
    class Drawn : public Panel {
    public:
        using Panel::Panel;

    protected:
        void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(0, 0, 10, 10, Qt::red); }
    };
    Drawn panel({100, 200});
    const zqSkin skin(&panel);
    QWidget child(&panel);
    child.setGeometry(50, 50, 10, 10);
    child.setAutoFillBackground(true);
    child.setPalette(QPalette(Qt::blue));
    panel.show();
    const QImage image = panel.picture();
    QCOMPARE(image.pixel(5, 5), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(55, 55), child.palette().color(QPalette::Window).rgb());
    QCOMPARE(image.pixel(20, 0), kBlack);
}

void tst_zqSkin::aMovedSkinPaintsItsNewContainer() {
    Panel one({30, 200});
    Panel two({30, 200});
    zqSkin skin(&one);
    one.show();
    two.show();
    skin.setParent(&two);
    skin.show();
    QCOMPARE(one.picture().pixel(10, 199), one.palette().color(QPalette::Window).rgb());
    QCOMPARE(two.picture().pixel(10, 199), kYellow);
}

void tst_zqSkin::aDeletedSkinLeavesAnOrdinaryPanel() {
    Panel panel({30, 200});
    auto* skin = new zqSkin(&panel);
    panel.show();
    delete skin;
    QCOMPARE(panel.picture().pixel(10, 199), panel.palette().color(QPalette::Window).rgb());
}

void tst_zqSkin::isInvisibleAtRunTime() {
    Panel panel({100, 100});
    zqSkin skin(&panel);
    skin.setObjectName("zqSkin1");
    skin.setStyle(1);
    panel.show();
    QCOMPARE(skin.size(), QSize(0, 0));
    skin.resize(80, 80);
    const QImage image = panel.picture();
    for (int y = 1; y < 100; ++y) {
        QCOMPARE(image.pixel(40, y), image.pixel(40, 0));
    }
    QCOMPARE(skin.focusPolicy(), Qt::NoFocus);
    QVERIFY(panel.childAt(10, 10) == nullptr);
}

void tst_zqSkin::showsItsNameInADesigner() {
    Panel panel({200, 100});
    zqSkin skin(&panel);
    skin.setObjectName("zqSkin1");
    skin.setStyle(1);
    skin.setUserMode(false);
    panel.show();
    QVERIFY(skin.width() >= skin.fontMetrics().horizontalAdvance("zqSkin1"));
    const QImage image = panel.picture();
    QSet<QRgb> row_colours;
    for (int x = 0; x < skin.width(); ++x) {
        row_colours << image.pixel(x, skin.height() / 2);
    }
    QVERIFY(row_colours.contains(skin.palette().color(QPalette::ToolTipBase).rgb()));
    QVERIFY(row_colours.size() > 1);
    QCOMPARE(image.pixel(199, 50), kYellow);
}

void tst_zqSkin::depthIsThatOfTheContainer() {
    Panel panel({20, 20});
    QCOMPARE(zqSkin(&panel).ColourDepth(), panel.depth());
    QCOMPARE(SkinOnDevice(&panel, 4, 3).ColourDepth(), 12);
    QCOMPARE(zqSkin().ColourDepth(), 0);
}

void tst_zqSkin::bandCountsBeyond16BitsAreAnError() {
    zqSkin skin;
    QVERIFY_THROWS_EXCEPTION(ledgix::runtime::RuntimeError, skin.setColourBandCount(32768));
    QCOMPARE(skin.ColourBandCount(), 100);
}

QTEST_MAIN(tst_zqSkin)
#include "tst_zq_skin.moc"
