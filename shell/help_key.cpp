#include "help_key.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <optional>

#include "desktop.h"
#include "event_trap.h"
#include "help_topics.h"

namespace ledgix::shell {

namespace {

using editors::HelpTopic;

struct Place {
    const char* window;  // name of the window
    const char* title;   // what its title begins with
    HelpTopic topic;
};

// The first one that fits counts. A preview's title begins with that of its report.
constexpr Place kPlaces[]{
    {"frmProperty", "", editors::kHelpProperty},
    {"frmTaxRates", "", editors::kHelpTaxRates},
    {"frmCalc", "", editors::kHelpCalculator},
    {"frmPreview", "Profile Property Analysis", editors::kHelpAnalysisReport},
    {"frmPreview", "Long Term Outlook", editors::kHelpOutlookReport},
    {"frmPreview", "Profile : ", editors::kHelpProfileReport},
    {"frmPreview", "", editors::kHelpPreview},
};

std::optional<HelpTopic> TopicOfWindow(const QWidget& window) {
    for (const Place& place : kPlaces)
        if (window.objectName() == QLatin1String(place.window) &&
            window.windowTitle().startsWith(QLatin1String(place.title)))
            return place.topic;
    return std::nullopt;
}

}  // namespace

HelpKey::HelpKey(editors::Desktop& desktop) : desktop_(desktop) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
        return false;
    const std::optional<HelpTopic> topic = TopicOfWindow(*widget->window());
    if (!topic)
        return false;
    controls::RunHandler([&] { desktop_.ShowHelpTopic(*topic); });
    return true;
}

}  // namespace ledgix::shell
