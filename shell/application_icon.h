#pragma once

#include <QIcon>

namespace ledgix::shell {

// The program's own: a house whose wall holds rising bars. Drawn anew at every size, so it is sharp from 16 pixels on.
const QIcon& ApplicationIcon();

}  // namespace ledgix::shell
