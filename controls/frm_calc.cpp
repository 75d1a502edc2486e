#include "frm_calc.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

#include "popup_place.h"
#include "zq_text_box.h"

namespace ledgix::controls {

namespace {

constexpr int kDigitsShown = 12;
constexpr float kBorderInk = 0.4F;

QPointer<frmCalc>& SharedInstance() {
    static QPointer<frmCalc> instance;
    return instance;
}

zqTextBox* MakeField(frmCalc* form, const char* name) {
    auto* field = new zqTextBox(form);
    field->setObjectName(name);
    field->setIsNumeric(true);
    field->setText("0");
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QString(kDigitsShown, u'0')));
    return field;
}

QPushButton* MakeButton(frmCalc* form, const char* name, const QString& caption) {
    auto* button = new QPushButton(caption, form);
    button->setObjectName(name);
    return button;
}

Area ToArea(const QRect& rect) {
    return {{rect.left(), rect.top()}, {rect.width(), rect.height()}};
}

}  // namespace

frmCalc::frmCalc()
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      txtWeek(MakeField(this, "txtWeek")),
      cmdCancel(MakeButton(this, "cmdCancel", tr("&Cancel"))),
      cmdSave(MakeButton(this, "cmdSave", tr("&Save"))),
      txtMonth(MakeField(this, "txtMonth")),
      txtYear(MakeField(this, "txtYear")) {
    setObjectName("frmCalc");
    setWindowTitle(tr("Period calculator"));
    LayOut();
    cmdSave->setDefault(true);
    connect(cmdSave, &QPushButton::clicked, this, &frmCalc::cmdSave_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmCalc::cmdCancel_Click);
    for (const Period period : {Period::kWeek, Period::kMonth, Period::kYear})
        connect(Field(period), &zqTextBox::Change, this, [this, period] { Changed(period); });
}

frmCalc& frmCalc::Instance() {
    QPointer<frmCalc>& instance = SharedInstance();
    if (!instance) {
        instance = new frmCalc;
        qAddPostRoutine([] { delete SharedInstance(); });
    }
    return *instance;
}

void frmCalc::LayOut() {
    struct Row {
        const char* name;
        QString caption;
        zqTextBox* field;
    };
    const Row rows[] = {{"Label1", tr("Per &Week"), txtWeek},
                        {"Label2", tr("Per &Month"), txtMonth},
                        {"Label3", tr("Per &Year"), txtYear}};
    auto* grid = new QGridLayout(this);
    int line = 0;
    for (const Row& row : rows) {
        auto* label = new QLabel(row.caption, this);
        label->setObjectName(row.name);
        label->setBuddy(row.field);
        grid->addWidget(label, line, 0);
        grid->addWidget(row.field, line++, 1);
    }
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdSave, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    grid->addWidget(buttons, line, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    QWidget* const page[] = {txtWeek, txtMonth, txtYear, cmdSave, cmdCancel};
    for (std::size_t i = 1; i < std::size(page); ++i)
        setTabOrder(page[i - 1], page[i]);
}

zqTextBox* frmCalc::Field(Period period) const {
    return period == Period::kWeek ? txtWeek : period == Period::kMonth ? txtMonth : txtYear;
}

void frmCalc::Changed(Period period) {
    if (busy_)
        return;
    const QScopedValueRollback<bool> busy(busy_, true);
    amounts_.Enter(period, Field(period)->Text().toStdString());
    for (const Period other : {Period::kYear, Period::kMonth, Period::kWeek})
        if (other != period)
            Field(other)->setText(QString::fromStdString(amounts_.Text(other)));
}

void frmCalc::ShowModalAt(const QWidget& field) {
    bCancel = true;
    ensurePolished();
    winId();
    if (QWindow* owner = field.window()->windowHandle())
        windowHandle()->setTransientParent(owner);
    const QRect place(field.mapToGlobal(QPoint(0, 0)), field.size());
    const QScreen* found = QGuiApplication::screenAt(place.center());
    const QScreen* screen = found ? found : field.screen();
    const QSize size = sizeHint();
    const Place corner = PlacePopup(ToArea(place), {size.width(), size.height()}, ToArea(screen->availableGeometry()));
    move(corner.left, corner.top);
    exec();
}

void frmCalc::cmdSave_Click() {
    bCancel = false;
    accept();
}

void frmCalc::cmdCancel_Click() {
    reject();
}

void frmCalc::reject() {
    bCancel = true;
    QDialog::reject();
}

void frmCalc::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    txtWeek->setFocus();
}

// A border of one pixel of the layout, sharp at every scale.
void frmCalc::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Window);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(kBorderInk);
    painter.fillRect(rect(), ground);
    painter.fillRect(rect(), line);
    painter.fillRect(rect().adjusted(1, 1, -1, -1), ground);
}

}  // namespace ledgix::controls
