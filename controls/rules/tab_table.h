#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ledgix::controls {

// The tabs of a tab dialog and the one that is selected. Tabs are counted from 1; exactly one is current, and the
// current one is always enabled. A tab number that no tab has is error 9.
class TabTable {
public:
    struct Tab {
        std::string caption;
        bool selected = false;
        bool enabled = true;
        std::string frame_name;  // the host's control that is the tab's page; empty for none
    };

    // "Tab1|Tab2|Tab3|" without frames.
    TabTable();

    // Captions, each followed by "|". An empty text becomes "Tab1|", a missing last "|" is added.
    // Setting the captions or the frames makes the table anew: every tab enabled, the first one current.
    const std::string& tabs() const { return tabs_text_; }
    void SetTabs(std::string_view text);

    // Names of frames in the order of the tabs, each followed by "|". Names beyond the last tab are ignored, and so is
    // text behind the last "|".
    const std::string& frames() const { return frames_text_; }
    void SetFrames(std::string_view text);

    std::int16_t count() const { return static_cast<std::int16_t>(table_.size()); }
    const Tab& tab(int number) const { return table_[IndexOf(number)]; }
    const std::vector<Tab>& list() const { return table_; }

    std::int16_t current_tab() const { return current_; }
    // False, and nothing changes, for a disabled tab.
    bool SetCurrentTab(int number);

    // The current tab cannot be disabled: false, and nothing changes.
    bool SetTabEnabled(int number, bool enabled);

    // The user chooses a tab. Gives the tab that was current before, or 0 when nothing changes: for the current tab, a
    // disabled one and 0, which is no tab.
    std::int16_t Choose(int number);

    // The nearest enabled tab behind a tab (direction 1) or before it (-1); `number` itself when there is none.
    std::int16_t NeighbourOf(int number, int direction) const;
    // The same from the current tab on, going round at the ends.
    std::int16_t NextInCircle(int direction) const;
    std::int16_t FirstEnabled() const;
    std::int16_t LastEnabled() const;

private:
    void Rebuild();
    std::size_t IndexOf(int number) const;

    std::string tabs_text_;
    std::string frames_text_;
    std::vector<Tab> table_;
    std::int16_t current_ = 1;
};

}  // namespace ledgix::controls
