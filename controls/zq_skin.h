#pragma once

#include <QPointer>
#include <QWidget>

#include "gradient_bands.h"

namespace ledgix::controls {

// Paints a colour gradient onto the background of its parent widget, the container, beneath all that the container
// draws and holds. Hiding the skin takes the gradient away. The skin itself is not seen, takes no focus and no mouse.
// Where the bands run and how thick they are: gradient_bands.h. Nothing is painted on a device of 15 bits or fewer.
class zqSkin : public QWidget {
    Q_OBJECT
    // Declared in the order in which a form file keeps them. Colours have red in the low byte, then green, then blue.
    Q_PROPERTY(int EndColour READ EndColour WRITE setEndColour)
    Q_PROPERTY(int StartColour READ StartColour WRITE setStartColour)
    Q_PROPERTY(int Style READ Style WRITE setStyle)
    Q_PROPERTY(int ColourBandCount READ ColourBandCount WRITE setColourBandCount)
    Q_PROPERTY(bool UserMode READ UserMode WRITE setUserMode DESIGNABLE false STORED false)

public:
    explicit zqSkin(QWidget* container = nullptr);
    ~zqSkin() override;

    int StartColour() const { return gradient_.start_colour(); }
    void setStartColour(int newValue);
    int EndColour() const { return gradient_.end_colour(); }
    void setEndColour(int newValue);

    int Style() const { return style_; }
    void setStyle(int newValue);
    using QWidget::setStyle;

    // Without bands (a count below 1) nothing is painted. Error 6 beyond 16 bits.
    int ColourBandCount() const { return band_count_; }
    void setColourBandCount(int newValue);

    // False in a form designer, where the skin shows its name so that it can be found. True at first.
    bool UserMode() const { return user_mode_; }
    void setUserMode(bool on);

    // Bits per pixel of the container's device times its colour planes; 0 without a container.
    int ColourDepth() const;

    QSize sizeHint() const override;

protected:
    virtual int BitsPerPixel() const;
    virtual int ColourPlanes() const;

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Attach();
    void Detach();
    bool CoversContainer() const;
    void RepaintContainer();
    void PaintGradient(const QRect& exposed);
    QString Label() const;

    QPointer<QWidget> container_;
    bool container_was_opaque_ = false;
    Gradient gradient_;
    qint32 style_ = 0;
    qint16 band_count_ = 100;
    bool user_mode_ = true;
};

}  // namespace ledgix::controls
