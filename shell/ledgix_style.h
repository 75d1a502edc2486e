#pragma once

#include <QProxyStyle>

namespace ledgix::shell {

// The Fusion style with pictures of our own in message boxes, sharp at every scale.
class LedgixStyle : public QProxyStyle {
    Q_OBJECT

public:
    LedgixStyle();

    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace ledgix::shell
