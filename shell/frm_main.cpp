#include "frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <string>

#include "cls_profiles.h"
#include "database.h"
#include "event_trap.h"
#include "frm_about.h"
#include "frm_tax_rates.h"
#include "help_topics.h"
#include "help_window.h"
#include "message_box.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::shell {

namespace {

// Error 91 before there is a collection.
model::clsProfiles& Profiles() {
    if (!model::gProfiles)
        runtime::RaiseError(runtime::ErrorNumber::kObjectNotSet);
    return *model::gProfiles;
}

}  // namespace

void frmMain::OpenDatabase() {
    store::StartADO();
    store::UpgradeSchema(model::CheckDefaultTaxRates);
}

void frmMain::MDIForm_Load() {
    try {
        if (iSelectMenu() >= 0)
            DeSelectProfile(iSelectMenu());
        OpenDatabase();
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "MDIForm_Load");
    }
    ShowDatabase();
}

void frmMain::MDIForm_Activate() {
    if (activated_)
        return;
    activated_ = true;
    LoadProfiles();
    if (focusWidget() == picMenu && picMenu->rows().ShownCount() == 0)
        cmdNew->setFocus();
    // Behind the activation, which a modal window would interrupt.
    if (model::TaxRatesSeeded)
        QTimer::singleShot(0, this, controls::Handler(this, &frmMain::mnuTaxRates_Click));
}

void frmMain::LoadProfiles() {
    picMenu->LoadProfiles(model::gProfiles.get());
    ShowCount();
    EnableButtons(iSelectMenu() >= 0);
}

void frmMain::EnableButtons(bool enabled) {
    cmdDelete->setEnabled(enabled);
    cmdEdit->setEnabled(enabled);
}

void frmMain::SelectProfile(int index) {
    picMenu->SelectProfile(index);
    EnableButtons(true);
}

void frmMain::DeSelectProfile(int index) {
    picMenu->DeSelectProfile(index);
    EnableButtons(false);
}

void frmMain::Unhighlight(int index) {
    picMenu->Unhighlight(index);
}

void frmMain::ScrollBack(int offset) {
    VScroll->setValue(VScroll->minimum() + offset);
}

void frmMain::ReloadProfileList() {
    const int offset = picMenu->rows().offset();
    const int selected = iSelectMenu();
    const std::string tag = selected >= 0 ? picMenu->rows().Tag(selected) : std::string();
    LoadProfiles();
    ScrollBack(offset);
    if (selected < 0)
        return;
    DeSelectProfile(selected);
    if (const std::optional<int> row = picMenu->rows().RowOf(tag))
        SelectProfile(*row);
}

void frmMain::ShowHelpTopic(int context) {
    OpenHelp(context, this);
}

void frmMain::lblMenu_MouseMove(int Index) {
    Unhighlight(Index);
    if (!picMenu->rows().Row(Index).FontUnderline)
        picMenu->Underline(Index);
}

void frmMain::picMargin_MouseMove() {
    Unhighlight(-1);
}

void frmMain::picMenu_MouseMove() {
    Unhighlight(-1);
}

void frmMain::VScroll_Change() {
    picMenu->FollowScrollBar();
}

void frmMain::lblMenu_Click(int Index) {
    if (iSelectMenu() >= 0)
        DeSelectProfile(iSelectMenu());
    SelectProfile(Index);
}

void frmMain::lblMenu_DblClick(int Index) {
    if (Index != iSelectMenu())
        lblMenu_Click(Index);
    cmdEdit_Click();
}

void frmMain::cmdNew_Click() {
    std::int32_t number = -1;
    Profiles().AddItem(number);
    Profiles().Item(model::ProfileKey(number)).Display();
}

void frmMain::cmdEdit_Click() {
    Profiles().Item("P" + picMenu->rows().Tag(iSelectMenu())).Display();
}

void frmMain::cmdDelete_Click() {
    const std::string question = DeleteQuestion(picMenu->rows().Caption(iSelectMenu()));
    if (runtime::MsgBox(question, kDeleteQuestionStyle) != runtime::MessageAnswer::kYes)
        return;
    const std::string key = "P" + picMenu->rows().Tag(iSelectMenu());
    const int offset = picMenu->rows().offset();
    Profiles().Item(key).CloseForm();
    Profiles().Remove(key);
    DeSelectProfile(iSelectMenu());
    LoadProfiles();
    ScrollBack(offset);
}

void frmMain::mnuFileExit_Click() {
    close();
    QApplication::quit();
}

void frmMain::mnuTaxRates_Click() {
    editors::frmTaxRates(this).exec();
}

void frmMain::mnuHelpAbout_Click() {
    frmAbout(this).exec();
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        controls::RunHandler([this] { MDIForm_Activate(); });
    return QMainWindow::event(event);
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    MDIForm_Resize();
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1)
        controls::RunHandler([this] { ShowHelpTopic(editors::kHelpMainWindow); });
    else
        QMainWindow::keyPressEvent(event);
}

void frmMain::closeEvent(QCloseEvent* event) {
    area->closeAllSubWindows();
    // Closing one window may destroy others.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QPointer<QWidget>& window : QList<QPointer<QWidget>>(windows.begin(), windows.end())) {
        if (window && window != this && window->isVisible())
            window->close();
    }
    event->accept();
}

}  // namespace ledgix::shell
