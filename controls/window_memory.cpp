#include "window_memory.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QWidget>

#include "user_settings.h"

namespace ledgix::controls {

namespace {

QString Key(const QWidget& window) {
    return "Windows/" + window.objectName();
}

void RestoreDocument(QWidget& document, const QRect& place) {
    const QWidget* area = document.parentWidget();
    if (area && area->rect().contains(place))
        document.setGeometry(place);
    else
        document.resize(place.size());
}

void Restore(QWidget& window) {
    const QVariant kept = UserSettings().value(Key(window));
    if (qobject_cast<QMdiSubWindow*>(&window)) {
        if (kept.toRect().isValid())
            RestoreDocument(window, kept.toRect());
    } else if (!kept.toByteArray().isEmpty()) {
        window.restoreGeometry(kept.toByteArray());
    }
}

void Keep(const QWidget& window) {
    QSettings store = UserSettings();
    if (!qobject_cast<const QMdiSubWindow*>(&window))
        store.setValue(Key(window), window.saveGeometry());
    else if (!window.isMaximized() && !window.isMinimized())
        store.setValue(Key(window), window.geometry());
}

class Keeper : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* window = qobject_cast<QWidget*>(watched);
        if (window && event->type() == QEvent::Hide && !event->spontaneous())
            Keep(*window);
        return false;
    }
};

}  // namespace

void KeepPlace(QWidget& window) {
    Restore(window);
    window.installEventFilter(new Keeper(&window));
}

}  // namespace ledgix::controls
