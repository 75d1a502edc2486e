#include <gtest/gtest.h>

#include <map>
#include <set>

#include "cases.h"
#include "tab_pages.h"
#include "tab_strip.h"
#include "tab_table.h"

namespace ledgix::controls {
namespace {

using test::Json;

// A form with frames, and the tab dialog's rules at work on it.
class Form {
public:
    explicit Form(const Json& given) : width_(given.at("width").get<int>()), frames_(given.at("hostFrames")) {
        view_ = {given.at("FrameTop").get<std::int16_t>(), given.at("FrameLeft").get<std::int16_t>(), false};
        table_.SetTabs(given.at("Tabs").get<std::string>());
        table_.SetFrames(given.at("Frames").get<std::string>());
        ShowPage();
    }

    const TabTable& table() const { return table_; }
    int tab_width() const { return TabWidth(width_, table_.count()); }
    const Json& visible() const { return visible_; }
    const Json& placed() const { return placed_; }

    // The previous tab as the event tells it; null without an event.
    Json Press(const Json& point) {
        const double x = point.at(0).get<double>();
        const double y = point.at(1).get<double>();
        const std::int16_t previous = table_.Choose(TabAt(x, y, width_, table_.count()));
        if (previous == 0) {
            return nullptr;
        }
        ShowPage();
        return previous;
    }

    void Do(const Json& step) {
        if (step.contains("press")) {
            EXPECT_EQ(Press(step.at("press")), step.at("Click")) << step;
        } else if (step.contains("CurrentTab")) {
            if (table_.SetCurrentTab(step.at("CurrentTab").get<int>())) {
                ShowPage();
            }
        } else if (step.contains("Frames")) {
            table_.SetFrames(step.at("Frames").get<std::string>());
        } else {
            table_.SetTabEnabled(step.at("TabEnabled").at(0).get<int>(), step.at("TabEnabled").at(1).get<bool>());
        }
        EXPECT_EQ(table_.current_tab(), step.at("CurrentTabNow").get<int>()) << step;
    }

private:
    void ShowPage() {
        for (const PageStep& step : PageSteps(table_, view_)) {
            if (!frames_.contains(step.frame_name)) {
                continue;
            }
            visible_[step.frame_name] = step.shown;
            if (step.shown) {
                Place(placed_[step.frame_name], step);
            }
        }
    }

    static void Place(Json& frame, const PageStep& step) {
        frame["BorderStyle"] = 0;
        if (step.left) {
            frame["Left"] = *step.left;
        }
        if (step.top) {
            frame["Top"] = *step.top;
        }
    }

    int width_;
    std::set<std::string> frames_;
    TabTable table_;
    PageView view_;
    Json visible_ = Json::object();
    Json placed_ = Json::object();
};

class TabDialog : public testing::TestWithParam<Json> {};
TEST_P(TabDialog, DoesAsListed) {
    const Json& given = GetParam();
    Form form(given);
    for (const Json& step : given.at("steps")) {
        form.Do(step);
    }
    Json captions = Json::array();
    Json frame_names = Json::array();
    Json enabled = Json::array();
    for (const TabTable::Tab& tab : form.table().list()) {
        captions.push_back(tab.caption);
        frame_names.push_back(tab.frame_name);
        enabled.push_back(tab.enabled);
    }
    EXPECT_EQ(form.table().tabs(), given.at("TabsRead"));
    EXPECT_EQ(captions, given.at("captions"));
    EXPECT_EQ(frame_names, given.at("frameNames"));
    EXPECT_EQ(enabled, given.at("enabled"));
    EXPECT_EQ(form.tab_width(), given.at("tabWidth"));
    EXPECT_EQ(form.visible(), given.at("visible"));
    EXPECT_EQ(form.placed(), given.at("placed"));
}
INSTANTIATE_TEST_SUITE_P(, TabDialog, testing::ValuesIn(test::CaseList(test::LoadCases("tab_dialog.json"))),
                         test::CaseName);

}  // namespace
}  // namespace ledgix::controls
