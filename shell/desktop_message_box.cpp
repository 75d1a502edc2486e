#include "desktop_message_box.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpacerItem>

#include "text.h"

namespace ledgix::shell {

namespace {

// The bits of a style that say which picture it has.
constexpr int kPictures = 0x70;
// So that a box with little or no text still shows its title.
constexpr int kLeastTextWidth = 280;

QString Text(std::string_view text) {
    const std::string lines = runtime::ReplaceAll(text, runtime::kLineBreak, "\n");
    return QString::fromStdString(lines);
}

QWidget* WindowInUse() {
    QWidget* modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

QMessageBox::Icon Picture(int style) {
    switch (style & kPictures) {
        case runtime::kQuestion:
            return QMessageBox::Question;
        case runtime::kExclamation:
            return QMessageBox::Warning;
        default:
            return QMessageBox::NoIcon;
    }
}

void SetButtons(QMessageBox& box, int style) {
    if ((style & runtime::kYesNo) == 0) {
        box.setStandardButtons(QMessageBox::Ok);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
        return;
    }
    const bool second = (style & runtime::kSecondButtonIsDefault) != 0;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(second ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
}

void Widen(QMessageBox& box) {
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(kLeastTextWidth, 0, QSizePolicy::Minimum, QSizePolicy::Minimum), grid->rowCount(),
                      0, 1, grid->columnCount());
}

}  // namespace

runtime::MessageAnswer DesktopMessageBox::Show(std::string_view text, int style, std::string_view title) {
    // The window under the box may go while it is open, and takes the box along.
    const QPointer<QMessageBox> box = new QMessageBox(WindowInUse());
    box->setObjectName("MessageBox");
    box->setTextFormat(Qt::PlainText);
    box->setText(Text(text));
    box->setWindowTitle(Text(title));
    box->setIcon(Picture(style));
    SetButtons(*box, style);
    Widen(*box);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box->setWindowModality(Qt::ApplicationModal);
    const int pressed = box->exec();
    delete box;
    if ((style & runtime::kYesNo) == 0)
        return runtime::MessageAnswer::kOk;
    return pressed == QMessageBox::Yes ? runtime::MessageAnswer::kYes : runtime::MessageAnswer::kNo;
}

}  // namespace ledgix::shell
