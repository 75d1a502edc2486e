#pragma once

#include <QFrame>
#include <vector>

#include "profile_fields.h"

class QGridLayout;
class QListWidget;
class QPushButton;

namespace ledgix::controls {
class zqTextBox;
}

namespace ledgix::editors {

// The box of one amount.
struct ProfileBox {
    controls::zqTextBox* box;
    double model::clsProfile::*member;
};

// A page of amounts, which scrolls where the window is too small for it.
class AmountPage : public QFrame {
    Q_OBJECT

public:
    explicit AmountPage(const ProfilePage& page);

    const std::vector<ProfileBox>& boxes() const { return boxes_; }
    QGridLayout* grid() const { return grid_; }

private:
    QGridLayout* grid_;
    std::vector<ProfileBox> boxes_;
};

// The page of candidate purchases. Enter in the list presses cmdEdit, the Delete key cmdDelete.
class PurchasesPage : public QFrame {
    Q_OBJECT

public:
    explicit PurchasesPage(const ProfilePage& page);

    QListWidget* lstProperty;
    QPushButton* cmdAdd;
    QPushButton* cmdEdit;
    QPushButton* cmdDelete;
};

}  // namespace ledgix::editors
