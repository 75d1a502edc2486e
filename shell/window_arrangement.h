#pragma once

#include <QMenu>

class QMdiArea;

namespace ledgix::shell {

// Fills the menu of a multi-document window each time that it is opened: the commands that arrange the frames of the
// area, and the open documents, of which the active one is checked. The area must outlive the menu.
void AddWindowArrangement(QMenu& menu, QMdiArea& area);

}  // namespace ledgix::shell
