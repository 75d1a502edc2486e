#pragma once

#include <QObject>

namespace ledgix::editors {
class Desktop;
}

namespace ledgix::shell {

// F1 in the windows beside the main one: the editors of properties and tax rates, the period calculator and the
// preview, where it opens the topic of the report that is shown. They need not know of the help. Works as long as the
// object lives.
class HelpKey : public QObject {
    Q_OBJECT

public:
    // The desktop outlives this object.
    explicit HelpKey(editors::Desktop& desktop);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    editors::Desktop& desktop_;
};

}  // namespace ledgix::shell
