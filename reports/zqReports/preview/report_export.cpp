#include "report_export.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include "file_proposal.h"
#include "files.h"
#include "message_box.h"
#include "pdf_output.h"
#include "report_csv.h"
#include "runtime_error.h"

namespace ledgix::preview {

namespace {

constexpr const char* kFolderKey = "Folders/Reports";

QSettings Store() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, "Vantreo", "Ledgix");
}

// The one used last, if it is still there.
QString Folder() {
    const QString kept = Store().value(kFolderKey).toString();
    return !kept.isEmpty() && QDir(kept).exists() ? kept
                                                  : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

void Save(const zq::Document& document, QWidget* owner, const FileChoice& choose, FileWish wish,
          const std::function<void(const std::string& path)>& write) {
    const QString name = ProposedFileName(QString::fromStdString(document.title));
    wish.proposal = QDir(Folder()).filePath(name + "." + wish.suffix);
    const QString path = choose(owner, wish);
    if (path.isEmpty())
        return;
    try {
        write(path.toStdString());
        Store().setValue(kFolderKey, QFileInfo(path).absolutePath());
    } catch (const runtime::RuntimeError& error) {
        std::string text = "The report could not be saved.\n\n";
        text += error.description();
        runtime::MsgBox(text, runtime::kExclamation);
    }
}

}  // namespace

QString AskForFile(QWidget* owner, const FileWish& wish) {
    QFileDialog dialog(owner, wish.title, QFileInfo(wish.proposal).absolutePath(),
                       wish.kind + " (*." + wish.suffix + ")");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(wish.suffix);
    dialog.selectFile(QFileInfo(wish.proposal).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void SaveAsPdf(const zq::Document& document, QWidget* owner, const FileChoice& choose) {
    Save(document, owner, choose, {"Save as PDF", {}, "pdf", "PDF files"},
         [&](const std::string& path) { zq::WritePdf(document, path); });
}

void SaveAsCsv(const zq::Document& document, QWidget* owner, const FileChoice& choose) {
    Save(document, owner, choose, {"Save as CSV", {}, "csv", "CSV files"},
         [&](const std::string& path) { runtime::WriteFile(path, zq::ToCsv(document)); });
}

}  // namespace ledgix::preview
