#pragma once

#include "main_form.h"

namespace ledgix::test {

// The list alone, with as many profiles, in a panel of 3000 twips.
class Panel {
public:
    explicit Panel(int count) : Panel(NumberedProfiles(count)) {}
    explicit Panel(const std::vector<NamedProfile>& profiles) : bar(Qt::Vertical, &window), list(bar, &window) {
        for (const auto& [number, name] : profiles) {
            std::int32_t given = number;
            model::clsProfile& profile = held.AddItem(given);
            profile.ProfileName = name;
            profile.Saved = true;
        }
        list.setGeometry(0, 0, 300, 200);
        bar.setGeometry(300, 0, 20, 200);
        list.SetPanelHeight(3000);
        list.LoadProfiles(&held);
        QObject::connect(&bar, &QScrollBar::valueChanged, &list, &shell::ProfileList::FollowScrollBar);
        window.resize(320, 200);
        window.show();
    }

    QImage Picture() {
        QImage image(list.size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        list.render(&image);
        return image;
    }
    // Of a row's fill, left of its text.
    QColor Fill(int row) { return Picture().pixelColor(list.RowRect(row).left() + 3, list.RowRect(row).center().y()); }

    model::clsProfiles held;
    QWidget window;
    shell::PanelScrollBar bar;
    shell::ProfileList list;
};

}  // namespace ledgix::test
