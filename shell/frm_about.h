#pragma once

#include <QDialog>
#include <QPushButton>

#include "link_label.h"
#include "title_drawing.h"

namespace ledgix::shell {

// The product's name, its version, web site and licence. A click on the web site opens it in the browser and closes the
// window; whether a browser comes up is not looked at.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr) : frmAbout(parent, FontIsInstalled) {}
    frmAbout(QWidget* parent, const FontTest& is_installed);

    QLabel* const lblVersion;
    LinkLabel* const lblWebSite;
    QPushButton* const cmdClose;

public slots:
    void lblWebSite_Click();
    void cmdClose_Click();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Form_Load(const FontTest& is_installed);
    void LayOut();
    int BandHeight() const;

    TitleDrawing title_;
};

}  // namespace ledgix::shell
