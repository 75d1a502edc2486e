#pragma once

#include <QMainWindow>

#include "desktop.h"
#include "document_area.h"
#include "profile_list.h"
#include "zq_skin.h"

class QAction;
class QLabel;
class QMenu;
class QPushButton;

namespace ledgix::shell {

class ElidedText;

// The program's main window: the list of saved profiles beside the multi-document area. Closing it closes every open
// form without a question.
class frmMain : public QMainWindow, public editors::Desktop {
    Q_OBJECT

public:
    frmMain();

    // To be called once, before the window is shown. Opens the database and brings its schema up to date; an error that
    // gets this far is shown, and the rest is skipped.
    void MDIForm_Load();

    // Rebuilds the rows from gProfiles, which may be none. The selected index stays.
    void LoadProfiles();
    void SelectProfile(int index);
    void DeSelectProfile(int index);
    void Unhighlight(int index);
    int iSelectMenu() const { return picMenu->rows().iSelectMenu(); }

    void AddDocument(QWidget& form) override { area->AddDocument(form); }
    void RaiseDocument(QWidget& form) override { area->RaiseDocument(form); }
    // What LoadProfiles does; the selection stays with its profile, and the list where it is scrolled to.
    void ReloadProfileList() override;
    void ShowHelpTopic(int context) override;
    QWidget* Owner() override { return this; }

    QWidget* picMargin;
    QPushButton* cmdDelete;
    QPushButton* cmdEdit;
    QPushButton* cmdNew;
    PanelScrollBar* VScroll;
    ProfileList* picMenu;
    controls::zqSkin* zqSkin1;
    controls::zqSkin* zqSkin2;
    DocumentArea* area;

public slots:
    void lblMenu_MouseMove(int Index);
    void lblMenu_Click(int Index);
    void lblMenu_DblClick(int Index);
    void picMargin_MouseMove();
    void picMenu_MouseMove();
    void VScroll_Change();
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void mnuFileExit_Click();
    void mnuTaxRates_Click();
    void mnuHelpAbout_Click();

protected:
    virtual void OpenDatabase();

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeMargin();
    QPushButton* MakeButton(const char* name, const QString& caption, void (frmMain::*handler)());
    void MakeMenus();
    void MakeStatusBar();
    void ConnectList();
    void ChooseColours();
    void ChooseFonts();
    void FitMargin();

    void MDIForm_Activate();
    void MDIForm_Resize();
    void PlaceList();
    void ShowCount();
    void ShowDatabase();
    void EnableButtons(bool enabled);
    void ScrollBack(int offset);

    QLabel* heading_;
    QWidget* buttons_;
    QLabel* count_;
    ElidedText* database_;
    bool activated_ = false;
};

}  // namespace ledgix::shell
