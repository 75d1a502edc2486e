#pragma once

class QWidget;

namespace ledgix::controls {

// Gives a window the place and size that it had when the user last closed it, and keeps them again when it is hidden or
// closed. Windows are told apart by their object names. To be called once, before the window is first shown, behind a
// resize to its initial size. What is kept belongs to the user, not to the database; when it cannot be kept, nothing
// is said.
//
// A document window keeps its size, and its place only if it lies inside its area.
void KeepPlace(QWidget& window);

}  // namespace ledgix::controls
