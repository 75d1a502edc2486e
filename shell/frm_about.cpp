#include "frm_about.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QPainter>
#include <QUrl>
#include <QVBoxLayout>

#include "application_icon.h"
#include "event_trap.h"
#include "program_version.h"

namespace ledgix::shell {

namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8;
constexpr int kTitleRight = 36;
constexpr int kIconSize = 72;
// The column left of the title, 1800 twips, holds the icon.
constexpr int kTitleLeft = 120;

const char* const kWebSite = "https://www.vantreo.example/ledgix";

}  // namespace

frmAbout::frmAbout(QWidget* parent, const FontTest& is_installed)
    : QDialog(parent),
      lblVersion(new QLabel(this)),
      lblWebSite(new LinkLabel(kWebSite, this)),
      cmdClose(new QPushButton(tr("&Close"), this)) {
    setObjectName("frmAbout");
    setWindowTitle(tr("About Vantreo Ledgix"));
    lblVersion->setObjectName("lblVersion");
    lblWebSite->setObjectName("lblWebSite");
    lblWebSite->setToolTip(tr("Opens the web site in your browser"));
    cmdClose->setObjectName("cmdClose");
    cmdClose->setAccessibleName(tr("Close"));
    cmdClose->setDefault(true);
    Form_Load(is_installed);
    LayOut();
    connect(lblWebSite, &LinkLabel::clicked, this, controls::Handler(this, &frmAbout::lblWebSite_Click));
    connect(cmdClose, &QPushButton::clicked, this, controls::Handler(this, &frmAbout::cmdClose_Click));
    cmdClose->setFocus();
}

void frmAbout::Form_Load(const FontTest& is_installed) {
    title_ = TitleDrawing(AboutTitle(is_installed));
    lblVersion->setText(QString::fromStdString(FullVersionText(kProgramVersion)));
}

int frmAbout::BandHeight() const {
    return qMax(qCeil(title_.extent().height()), kIconSize + kMargin) + kMargin;
}

void frmAbout::LayOut() {
    auto* copyright = new QLabel(tr("Copyright © 2026 the Vantreo Ledgix authors"), this);
    copyright->setObjectName("lblCopyright");
    auto* licence = new QLabel(tr("Free software under the GNU General Public License,\n"
                                  "version 3 or later (GPL-3.0-or-later).\n"
                                  "It comes without any warranty."),
                               this);
    licence->setObjectName("lblLicence");
    for (QLabel* label : {lblVersion, copyright, licence}) {
        label->setAccessibleName(label->text());
        label->setIndent(LinkLabel::kFocusMargin);
    }
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdClose, QDialogButtonBox::RejectRole);

    auto* texts = new QVBoxLayout;
    texts->setContentsMargins(kTitleLeft - LinkLabel::kFocusMargin, kMargin, kMargin, kMargin);
    texts->setSpacing(kSpacing);
    texts->addWidget(lblVersion);
    texts->addWidget(lblWebSite);
    texts->addSpacing(kSpacing);
    texts->addWidget(copyright);
    texts->addWidget(licence);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(kMargin, 0, kMargin, kMargin);
    foot->addWidget(buttons);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(0);
    page->addItem(new QSpacerItem(qCeil(title_.extent().width()) + kTitleRight, BandHeight()));
    page->addLayout(texts, 1);
    page->addLayout(foot);
    setTabOrder(lblWebSite, cmdClose);
}

void frmAbout::lblWebSite_Click() {
    QDesktopServices::openUrl(QUrl(lblWebSite->text()));
    accept();
}

void frmAbout::cmdClose_Click() {
    reject();
}

void frmAbout::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    PaintTitleGround(painter, QRect(0, 0, width(), BandHeight()), Qt::BottomEdge);
    const QRect icon((kTitleLeft - kIconSize) / 2, (BandHeight() - kIconSize) / 2, kIconSize, kIconSize);
    ApplicationIcon().paint(&painter, icon);
    title_.Paint(painter);
}

}  // namespace ledgix::shell
