#include "find_bar.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "event_trap.h"
#include "page_view.h"

namespace ledgix::preview {

FindBar::FindBar(PageView* view, QWidget* parent) : QToolBar("Find", parent), view_(view) {
    setObjectName("findBar");
    setMovable(false);
    auto* caption = new QLabel("Fi&nd:", this);
    caption->setMargin(4);
    txtFind = new QLineEdit(this);
    txtFind->setObjectName("txtFind");
    txtFind->setAccessibleName("Find");
    txtFind->setPlaceholderText("Text in the report");
    txtFind->setClearButtonEnabled(true);
    txtFind->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    txtFind->installEventFilter(this);
    caption->setBuddy(txtFind);
    addWidget(caption);
    addWidget(txtFind);
    cmdFindPrevious = AddStep("cmdFindPrevious", "The place before", Qt::SHIFT | Qt::Key_F3, Qt::UpArrow);
    cmdFindNext = AddStep("cmdFindNext", "The next place", Qt::Key_F3, Qt::DownArrow);
    lblHits = new QLabel(this);
    lblHits->setObjectName("lblHits");
    lblHits->setAccessibleName("Places found");
    lblHits->setMargin(4);
    addWidget(lblHits);
    connect(txtFind, &QLineEdit::textChanged, this, controls::Handler(this, &FindBar::txtFind_Change));
    connect(cmdFindNext, &QAction::triggered, this, controls::Handler(this, &FindBar::cmdFindNext_Click));
    connect(cmdFindPrevious, &QAction::triggered, this, controls::Handler(this, &FindBar::cmdFindPrevious_Click));
    ShowHits(-1);
    hide();
}

QAction* FindBar::AddStep(const char* name, const char* help, const QKeySequence& key, Qt::ArrowType arrow) {
    QAction* action = addAction(help);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setToolTip(QString(help) + " (" + key.toString(QKeySequence::NativeText) + ")");
    auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
    button->setObjectName(name);
    button->setAccessibleName(help);
    button->setArrowType(arrow);
    return action;
}

void FindBar::Begin() {
    const QString selected = view_->SelectedText();
    show();
    if (!selected.isEmpty() && !selected.contains('\n'))
        txtFind->setText(selected.simplified());
    txtFind->setFocus(Qt::ShortcutFocusReason);
    txtFind->selectAll();
    txtFind_Change();
}

void FindBar::End() {
    hide();
    ShowHits(-1);
    view_->ShowHits({}, -1);
    view_->setFocus(Qt::OtherFocusReason);
}

// Stays at the current place while that still matches, else takes the next one, from the page looked at on.
void FindBar::txtFind_Change() {
    const TextMarks& marks = view_->Marks();
    const auto before = static_cast<std::size_t>(marks.current());
    const qsizetype from =
        before < marks.hits().size() ? marks.hits()[before].start : view_->Text().Position(view_->Page(), 0, 0);
    std::vector<TextRange> hits = view_->Text().Find(txtFind->text());
    const auto next = std::find_if(hits.begin(), hits.end(), [&](const TextRange& hit) { return hit.start >= from; });
    const int current = hits.empty() ? -1 : next == hits.end() ? 0 : static_cast<int>(next - hits.begin());
    view_->ShowHits(std::move(hits), current);
    ShowHits(current);
}

void FindBar::ShowHits(int current) {
    const std::size_t count = view_->Marks().hits().size();
    const bool wanted = !txtFind->text().simplified().isEmpty();
    lblHits->setText(current >= 0 ? QString("%1 of %2").arg(current + 1).arg(count) : wanted ? "Not found" : "");
    cmdFindNext->setEnabled(isVisible() ? current >= 0 : true);
    cmdFindPrevious->setEnabled(cmdFindNext->isEnabled());
}

void FindBar::Step(int by) {
    if (!isVisible()) {
        Begin();
        return;
    }
    const int count = static_cast<int>(view_->Marks().hits().size());
    if (count == 0)
        return;
    const int current = (view_->Marks().current() + by + count) % count;
    view_->ShowHits(view_->Marks().hits(), current);
    ShowHits(current);
}

void FindBar::cmdFindNext_Click() {
    Step(1);
}

void FindBar::cmdFindPrevious_Click() {
    Step(-1);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QToolBar::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return QToolBar::eventFilter(watched, event);
    Step(key->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    return true;
}

}  // namespace ledgix::preview
