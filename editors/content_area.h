#pragma once

#include <QScrollArea>

class QBoxLayout;
class QDialog;

namespace ledgix::editors {

// The content of a dialog. It asks for the room that it needs. In a window that is too narrow its columns, if it has
// some, stand one below the other. What is still cut off can be scrolled to; the field with the focus always is.
class ContentArea : public QScrollArea {
public:
    // Becomes the owner of the content. The columns are a layout in it.
    explicit ContentArea(QWidget* content, QBoxLayout* columns = nullptr);
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QBoxLayout* columns_;
};

// The size in which a dialog with such a content first appears: all of it, as far as the screen is large enough.
QSize InitialSize(const QDialog& form);

}  // namespace ledgix::editors
