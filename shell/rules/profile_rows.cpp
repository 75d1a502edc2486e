#include "profile_rows.h"

#include <algorithm>

#include "conversions.h"
#include "runtime_error.h"

namespace ledgix::shell {

void ProfileRows::LoadProfiles(const model::clsProfiles* profiles) {
    shown_ = 0;
    offset_ = 0;
    const std::size_t count = profiles ? profiles->Count() : 0;
    for (std::size_t i = 1; i <= count; ++i) {
        const model::clsProfile& profile = profiles->Item(i);
        if (!profile.Saved)
            continue;
        ++shown_;
        if (shown_ > static_cast<int>(rows_.size()))
            rows_.emplace_back();
        rows_[static_cast<std::size_t>(shown_) - 1] = {profile.ProfileName, runtime::ToText(profile.ProfileNumber)};
    }
}

const ProfileRows::Text& ProfileRows::TextOf(int index) const {
    if (index < 0 || index > UBound())
        runtime::RaiseError(runtime::ErrorNumber::kSubscript);
    return rows_[static_cast<std::size_t>(index)];
}

ProfileRow ProfileRows::Row(int index) const {
    const Text& text = TextOf(index);
    return {text.caption,         text.tag,
            Top(index),           index < shown_,
            index == underlined_, index == selected_ ? kSelectedRowColour : kRowColour};
}

std::optional<int> ProfileRows::RowOf(std::string_view tag) const {
    const auto end = rows_.begin() + shown_;
    const auto found = std::find_if(rows_.begin(), end, [&](const Text& row) { return row.tag == tag; });
    if (found == end)
        return std::nullopt;
    return static_cast<int>(found - rows_.begin());
}

void ProfileRows::SelectProfile(int index) {
    static_cast<void>(TextOf(index));
    selected_ = index;
}

void ProfileRows::DeSelectProfile(int index) {
    static_cast<void>(TextOf(index));
    selected_ = -1;
}

void ProfileRows::Underline(int index) {
    static_cast<void>(TextOf(index));
    underlined_ = index;
}

void ProfileRows::Unhighlight(int index) {
    if (underlined_ != index)
        underlined_ = -1;
}

ScrollRange ProfileRows::ScrollBar() const {
    return ScrollRangeOf(RowTop(UBound(), row_height_, 0, 0), row_height_, panel_height_, row_height_);
}

int ProfileRows::OffsetShowing(int index) const {
    static_cast<void>(TextOf(index));
    const int highest = index * Pitch();
    const int lowest = highest + kRowGap + Pitch() - panel_height_;
    return std::min(std::max(offset_, lowest), highest);
}

int ProfileRows::RowsPerPage() const {
    return std::max(1, panel_height_ / Pitch());
}

std::optional<int> ProfileRows::RowAt(int y) const {
    const int row = FirstRowBelow(y);
    if (row >= shown_ || Top(row) > y)
        return std::nullopt;
    return row;
}

int ProfileRows::FirstRowBelow(int y) const {
    return std::clamp((y + offset_) / Pitch(), 0, shown_);
}

std::string DeleteQuestion(std::string_view profile_name) {
    std::string question = "Delete profile '";
    question += profile_name;
    question += "'?";
    return question;
}

}  // namespace ledgix::shell
