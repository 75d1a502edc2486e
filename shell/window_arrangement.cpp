#include "window_arrangement.h"

#include <QActionGroup>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace ledgix::shell {

namespace {

void AddCommand(QMenu& menu, QMdiArea& area, const QString& name, const QString& caption, void (QMdiArea::*command)()) {
    QAction* action = menu.addAction(caption, &area, command);
    action->setObjectName(name);
    action->setEnabled(!area.subWindowList().isEmpty());
}

// Numbered documents up to 9 have their number as mnemonic.
QString DocumentCaption(int number, QString title) {
    title.replace('&', "&&");
    return QStringLiteral("%1%2 %3").arg(number <= 9 ? "&" : "").arg(number).arg(title);
}

void AddDocuments(QMenu& menu, QMdiArea& area) {
    const QList<QMdiSubWindow*> frames = area.subWindowList();
    if (frames.isEmpty())
        menu.addAction(QMenu::tr("No windows are open"))->setEnabled(false);
    for (int i = 0; i < frames.size(); ++i) {
        QMdiSubWindow* frame = frames[i];
        QAction* action = menu.addAction(DocumentCaption(i + 1, frame->windowTitle()));
        action->setCheckable(true);
        action->setChecked(frame == area.activeSubWindow());
        QObject::connect(action, &QAction::triggered, frame, [&area, frame] { area.setActiveSubWindow(frame); });
    }
}

void Fill(QMenu& menu, QMdiArea& area) {
    menu.clear();
    AddCommand(menu, area, "mnuWindowCascade", QMenu::tr("&Cascade"), &QMdiArea::cascadeSubWindows);
    AddCommand(menu, area, "mnuWindowTile", QMenu::tr("&Tile"), &QMdiArea::tileSubWindows);
    menu.addSeparator();
    AddCommand(menu, area, "mnuWindowCloseAll", QMenu::tr("Close &All"), &QMdiArea::closeAllSubWindows);
    menu.addSeparator();
    AddDocuments(menu, area);
}

}  // namespace

void AddWindowArrangement(QMenu& menu, QMdiArea& area) {
    QObject::connect(&menu, &QMenu::aboutToShow, &area, [&menu, &area] { Fill(menu, area); });
    Fill(menu, area);
}

}  // namespace ledgix::shell
