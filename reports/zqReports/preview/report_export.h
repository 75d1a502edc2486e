#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <string>

#include "document.h"

class QWidget;

namespace ledgix::preview {

struct FileKind {
    QString suffix;  // "pdf"
    QString kind;    // "PDF files"
};

// What is asked of the user who saves a report.
struct FileWish {
    QString title;     // of the dialog
    QString proposal;  // the file's whole path
    QString suffix;    // as in FileKind
    QString kind;
    QList<FileKind> others = {};  // what may be chosen instead
};

// The path that the user chooses; empty when the user does not want to save after all.
using FileChoice = std::function<QString(QWidget* owner, const FileWish& wish)>;

// The system's dialog, which asks before it takes an existing file.
QString AskForFile(QWidget* owner, const FileWish& wish);

// What the proposed names of a report's files are made of.
const std::string& FileTitle(const zq::Document& document);

// What is saved: its kind, as a message names it, and its title.
struct Saved {
    std::string what;
    std::string title;
};

// Asks the user for a file, for whose name the title is proposed in the folder used last, and has it written. A
// RuntimeError of `write` is told in a message box.
void SaveFile(const Saved& saved, QWidget* owner, const FileChoice& choose, FileWish wish,
              const std::function<void(const std::string& path)>& write);

// Saves a report where the user wants it: as pages, or as a table of its bands. The folder is kept per user and
// proposed the next time, with a file name made of FileTitle. A failure is told in a message box, and what was
// in the file before is still there.
void SaveAsPdf(const zq::Document& document, QWidget* owner, const FileChoice& choose);
void SaveAsCsv(const zq::Document& document, QWidget* owner, const FileChoice& choose);

}  // namespace ledgix::preview
