#include "report_export.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include "file_proposal.h"
#include "files.h"
#include "message_box.h"
#include "pdf_output.h"
#include "report_csv.h"
#include "runtime_error.h"
#include "user_settings.h"

namespace ledgix::preview {

namespace {

constexpr const char* kFolderKey = "Folders/Reports";

// The one used last, if it is still there.
QString Folder() {
    const QString kept = controls::UserSettings().value(kFolderKey).toString();
    return !kept.isEmpty() && QDir(kept).exists() ? kept
                                                  : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

}  // namespace

QString AskForFile(QWidget* owner, const FileWish& wish) {
    QList<FileKind> kinds{{wish.suffix, wish.kind}};
    kinds += wish.others;
    QStringList filters;
    for (const FileKind& kind : kinds)
        filters += kind.kind + " (*." + kind.suffix + ")";
    QFileDialog dialog(owner, wish.title, QFileInfo(wish.proposal).absolutePath());
    dialog.setNameFilters(filters);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(wish.suffix);
    // The name follows the kind that the user chooses.
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        const QString suffix = kinds[filters.indexOf(filter)].suffix;
        dialog.setDefaultSuffix(suffix);
        const QFileInfo name(dialog.selectedFiles().value(0));
        dialog.selectFile(name.completeBaseName() + "." + suffix);
    });
    dialog.selectFile(QFileInfo(wish.proposal).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

const std::string& FileTitle(const zq::Document& document) {
    return document.name.empty() ? document.title : document.name;
}

void SaveFile(const Saved& saved, QWidget* owner, const FileChoice& choose, FileWish wish,
              const std::function<void(const std::string& path)>& write) {
    const QString name = ProposedFileName(QString::fromStdString(saved.title));
    wish.proposal = QDir(Folder()).filePath(name + "." + wish.suffix);
    const QString path = choose(owner, wish);
    if (path.isEmpty())
        return;
    try {
        write(path.toStdString());
        controls::UserSettings().setValue(kFolderKey, QFileInfo(path).absolutePath());
    } catch (const runtime::RuntimeError& error) {
        std::string text = "The ";
        text += saved.what;
        text += " could not be saved.\n\n";
        text += error.description();
        runtime::MsgBox(text, runtime::kExclamation);
    }
}

void SaveAsPdf(const zq::Document& document, QWidget* owner, const FileChoice& choose) {
    SaveFile({"report", FileTitle(document)}, owner, choose, {"Save as PDF", {}, "pdf", "PDF files"},
             [&](const std::string& path) { zq::WritePdf(document, path); });
}

void SaveAsCsv(const zq::Document& document, QWidget* owner, const FileChoice& choose) {
    SaveFile({"report", FileTitle(document)}, owner, choose, {"Save as CSV", {}, "csv", "CSV files"},
             [&](const std::string& path) { runtime::WriteFile(path, zq::ToCsv(document)); });
}

}  // namespace ledgix::preview
