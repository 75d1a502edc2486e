#pragma once

#include <QIconEngine>
#include <QList>

class QPainter;

namespace ledgix::shell {

// An icon that a function draws anew at every size, as large as fits into a square.
class DrawnIcon : public QIconEngine {
public:
    using Drawing = void (*)(QPainter& painter, const QRectF& square);

    // `name` tells its pictures from those of other icons; `edges` are the sizes that a platform may ask for.
    DrawnIcon(const QString& name, const QList<int>& edges, Drawing draw) : name_(name), edges_(edges), draw_(draw) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override { return new DrawnIcon(*this); }
    QString key() const override { return name_; }
    bool isNull() override { return false; }

private:
    QString name_;
    QList<int> edges_;
    Drawing draw_;
};

}  // namespace ledgix::shell
