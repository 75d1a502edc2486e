#pragma once

#include <QWidget>

// A window that shows the program's own controls, each in its states.
class Gallery : public QWidget {
    Q_OBJECT

public:
    explicit Gallery(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* TextBoxes();
    QWidget* Calculator();
    QWidget* TabDialogs();
    QWidget* Skins();

    QWidget* first_ = nullptr;  // gets the focus
};
