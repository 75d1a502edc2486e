#pragma once

namespace ledgix::shell {

// Makes every ProfileList known to assistive technology as a list, whose items are the shown rows with their captions
// and states. An item can be pressed, which selects it, and opened. Further calls do nothing.
void InstallProfileListAccessible();

}  // namespace ledgix::shell
