#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cls_profiles.h"
#include "message_box.h"
#include "profile_measures.h"

namespace ledgix::shell {

// One row of the profile list.
struct ProfileRow {
    std::string Caption;
    std::string Tag;  // the profile's number
    int Top = 0;      // twips
    bool Visible = false;
    bool FontUnderline = false;
    std::int32_t BackColor = kRowColour;
};

// The rows of the profile list as they stand in their panel: what they show, which one is selected and which one lies
// under the mouse, and how far they are scrolled. Rows count from 0. A row once made is never dropped: a list that has
// grown shorter hides it, and it still takes part in the scroll range. Measures are twips.
class ProfileRows {
public:
    ProfileRows(int row_height, int panel_height) : row_height_(row_height), panel_height_(panel_height) {}

    // Makes a row of every saved profile, in the collection's order, and scrolls to the top. The index of the selected
    // row stays. No collection is an empty one.
    void LoadProfiles(const model::clsProfiles* profiles);

    int UBound() const { return static_cast<int>(rows_.size()) - 1; }  // at least 0
    int ShownCount() const { return shown_; }
    // Error 9 when there is no such row, as everywhere where a row is given.
    ProfileRow Row(int index) const;
    const std::string& Caption(int index) const { return TextOf(index).caption; }
    const std::string& Tag(int index) const { return TextOf(index).tag; }
    // The row that is shown for a profile's number.
    std::optional<int> RowOf(std::string_view tag) const;

    // The selected row; -1 for none.
    int iSelectMenu() const { return selected_; }
    void SelectProfile(int index);
    void DeSelectProfile(int index);

    // The row whose caption is underlined; -1 for none.
    int UnderlinedRow() const { return underlined_; }
    void Underline(int index);
    // Takes the underline from every row but `index`; -1 keeps none.
    void Unhighlight(int index);

    int row_height() const { return row_height_; }
    void SetRowHeight(int height) { row_height_ = height; }
    int panel_height() const { return panel_height_; }
    void SetPanelHeight(int height) { panel_height_ = height; }

    // How far the rows are moved up.
    int offset() const { return offset_; }
    void ScrollTo(int value, int min) { offset_ = value - min; }
    int Top(int index) const { return RowTop(index, row_height_, offset_, 0); }

    // The scroll bar for the rows in the panel, wherever they are scrolled to.
    ScrollRange ScrollBar() const;
    // The nearest offset at which a row is seen as a whole, with the gaps around it.
    int OffsetShowing(int index) const;
    // How many rows a page moves; at least 1.
    int RowsPerPage() const;

    // The shown row at a height of the panel; nothing in a gap.
    std::optional<int> RowAt(int y) const;
    // The first shown row that ends below a height of the panel; ShownCount() when there is none.
    int FirstRowBelow(int y) const;

private:
    struct Text {
        std::string caption;
        std::string tag;
    };

    int Pitch() const { return row_height_ + kRowGap; }
    const Text& TextOf(int index) const;

    std::vector<Text> rows_ = std::vector<Text>(1);
    int shown_ = 0;
    int selected_ = -1;
    int underlined_ = -1;
    int row_height_;
    int panel_height_;
    int offset_ = 0;
};

// What is asked before a profile is deleted, and the style of that message box: No is the default.
std::string DeleteQuestion(std::string_view profile_name);
inline constexpr int kDeleteQuestionStyle = runtime::kYesNo + runtime::kQuestion + runtime::kSecondButtonIsDefault;

}  // namespace ledgix::shell
