#pragma once

#include <QListWidget>

#include "document.h"

namespace ledgix::preview {

// Small pictures of the pages, one of which is chosen. They are drawn when the list is first shown.
class PageList : public QListWidget {
    Q_OBJECT

public:
    // The document lives longer than the list.
    PageList(const zq::Document& document, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QIcon Picture(const zq::Drawing& page) const;

    const zq::Document& document_;
};

}  // namespace ledgix::preview
