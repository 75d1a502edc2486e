#pragma once

#include <QWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "cls_profile.h"
#include "desktop.h"
#include "profile_pages.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLineEdit;

namespace ledgix::controls {
class zqTabDialog;
}

namespace ledgix::editors {

// The editor of one profile: a form for the multi-document area. Closed through the profile's CloseForm alone; closing
// its frame does what Cancel does. The profile's name follows every keystroke, its amounts a save or an analysis.
class frmProfile : public QWidget {
    Q_OBJECT

public:
    // The desktop outlives the form, the profile its Unload.
    frmProfile(model::clsProfile& profile, Desktop& desktop);
    ~frmProfile() override;

    // Fills lstProperty afresh; the selected property stays so if it is still there.
    void LoadProperties();
    // The number of the property of the selected line. Error 9 when there is none.
    std::int32_t SelPropertyNumber() const;

    // Hides the form with its frame and has the event loop delete it. The profile is not touched from here on.
    void Unload();

    QLabel* Label5;
    QLineEdit* txtName;
    QLabel* Label6;
    QLineEdit* txtLastModified;
    QLabel* Label32;
    controls::zqTabDialog* zqTabDialog1;
    QListWidget* lstProperty;
    QPushButton* cmdAdd;
    QPushButton* cmdEdit;
    QPushButton* cmdDelete;
    QPushButton* cmdAnalyse;
    QPushButton* cmdHelp;
    QPushButton* cmdCancel;
    QPushButton* cmdSave;

public slots:
    void Form_Load();
    void Form_Activate();
    void txtName_Change();
    void cmdSave_Click();
    void cmdCancel_Click();
    void cmdAnalyse_Click();
    void cmdHelp_Click();
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void lstProperty_DblClick();
    void zqTabDialog1_Click();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QGridLayout* NewHeader();
    void AddPages();
    QBoxLayout* NewButtons();
    void ConnectHandlers();
    void OrderFields();

    void CopyAmounts();
    void SaveProfile();
    void FirstSaveDone();
    // The key of the selected property; empty, and said so, when no line is selected.
    std::string AskSelectedKey() const;
    void ForgetUnsaved(const model::clsProperty* added);
    void FollowFrame();

    model::clsProfile* objProfile_;  // null once unloaded
    Desktop& desktop_;
    std::vector<ProfileBox> boxes_;
};

}  // namespace ledgix::editors
