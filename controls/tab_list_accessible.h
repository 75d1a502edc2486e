#pragma once

namespace ledgix::controls {

// Makes every zqTabDialog known to assistive technology as a list of page tabs, whose children are the tabs with their
// captions and states and then the widgets that the control holds. Further calls do nothing.
void InstallTabListAccessible();

}  // namespace ledgix::controls
