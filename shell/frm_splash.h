#pragma once

#include <QLabel>
#include <QWidget>

#include "title_drawing.h"

namespace ledgix::shell {

// What is seen while the program starts: the product's name and version, without a frame. A click, a key press or the
// wish to close it dismisses it; it goes when its owner deletes it.
class frmSplash : public QWidget {
    Q_OBJECT

public:
    // Loads the form. An error while it loads is shown, and the rest is left out.
    explicit frmSplash(const FontTest& is_installed = FontIsInstalled);

    bool dismissed() const { return dismissed_; }

    QLabel* const lblVersion;

signals:
    void Dismissed();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load(const FontTest& is_installed);
    void Form_Activate();
    void LayOut();
    void Dismiss();

    TitleDrawing title_;
    bool dismissed_ = false;
};

}  // namespace ledgix::shell
