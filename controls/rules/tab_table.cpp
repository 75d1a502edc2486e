#include "tab_table.h"

#include <utility>

#include "bar_list.h"
#include "runtime_error.h"

namespace ledgix::controls {

TabTable::TabTable() {
    SetTabs("Tab1|Tab2|Tab3|");
}

void TabTable::SetTabs(std::string_view text) {
    tabs_text_ = text.empty() ? "Tab1|" : text;
    if (!tabs_text_.ends_with('|')) {
        tabs_text_ += '|';
    }
    Rebuild();
}

void TabTable::SetFrames(std::string_view text) {
    frames_text_ = text;
    Rebuild();
}

void TabTable::Rebuild() {
    std::vector<std::string> captions = SplitBars(tabs_text_);
    std::vector<std::string> frame_names = SplitBars(frames_text_);
    frame_names.resize(captions.size());
    table_.clear();
    for (std::size_t i = 0; i < captions.size(); ++i) {
        table_.push_back({std::move(captions[i]), false, true, std::move(frame_names[i])});
    }
    current_ = 1;
    table_.front().selected = true;
}

std::size_t TabTable::IndexOf(int number) const {
    if (number < 1 || number > count()) {
        runtime::RaiseError(runtime::ErrorNumber::kSubscript);
    }
    return static_cast<std::size_t>(number) - 1;
}

bool TabTable::SetCurrentTab(int number) {
    Tab& chosen = table_[IndexOf(number)];
    if (!chosen.enabled) {
        return false;
    }
    table_[IndexOf(current_)].selected = false;
    chosen.selected = true;
    current_ = static_cast<std::int16_t>(number);
    return true;
}

bool TabTable::SetTabEnabled(int number, bool enabled) {
    Tab& changed = table_[IndexOf(number)];
    if (number == current_) {
        return false;
    }
    changed.enabled = enabled;
    return true;
}

std::int16_t TabTable::Choose(int number) {
    const std::int16_t previous = current_;
    if (number == 0 || number == previous || !SetCurrentTab(number)) {
        return 0;
    }
    return previous;
}

std::int16_t TabTable::NeighbourOf(int number, int direction) const {
    for (int next = number + direction; next >= 1 && next <= count(); next += direction) {
        if (tab(next).enabled) {
            return static_cast<std::int16_t>(next);
        }
    }
    return static_cast<std::int16_t>(number);
}

std::int16_t TabTable::NextInCircle(int direction) const {
    const std::int16_t next = NeighbourOf(current_, direction);
    if (next != current_) {
        return next;
    }
    return direction > 0 ? FirstEnabled() : LastEnabled();
}

std::int16_t TabTable::FirstEnabled() const {
    return NeighbourOf(0, 1);
}

std::int16_t TabTable::LastEnabled() const {
    return NeighbourOf(count() + 1, -1);
}

}  // namespace ledgix::controls
