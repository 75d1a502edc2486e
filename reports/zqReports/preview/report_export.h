#pragma once

#include <QString>
#include <functional>

#include "document.h"

class QWidget;

namespace ledgix::preview {

// What is asked of the user who saves a report.
struct FileWish {
    QString title;     // of the dialog
    QString proposal;  // the file's whole path
    QString suffix;    // "pdf"
    QString kind;      // "PDF files"
};

// The path that the user chooses; empty when the user does not want to save after all.
using FileChoice = std::function<QString(QWidget* owner, const FileWish& wish)>;

// The system's dialog, which asks before it takes an existing file.
QString AskForFile(QWidget* owner, const FileWish& wish);

// Saves a report where the user wants it: as pages, or as a table of its bands. The folder is kept per user and
// proposed the next time, with a file name made of the report's title. A failure is told in a message box, and what was
// in the file before is still there.
void SaveAsPdf(const zq::Document& document, QWidget* owner, const FileChoice& choose);
void SaveAsCsv(const zq::Document& document, QWidget* owner, const FileChoice& choose);

}  // namespace ledgix::preview
