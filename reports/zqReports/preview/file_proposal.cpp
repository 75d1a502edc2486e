#include "file_proposal.h"

#include <QRegularExpression>

namespace ledgix::preview {

namespace {

// File systems take some 255 bytes, with an extension; a letter has up to four.
constexpr qsizetype kLongest = 60;

QString WithoutOuter(QString name) {
    static const QRegularExpression outer(R"(^[\s.\-]+|[\s.\-]+$)");
    return name.remove(outer);
}

// Names of devices, whatever their extension.
bool IsReserved(const QString& name) {
    static const QRegularExpression device(R"(^(CON|PRN|AUX|NUL|COM\d|LPT\d)(\..*)?$)",
                                           QRegularExpression::CaseInsensitiveOption);
    return device.match(name).hasMatch();
}

}  // namespace

QString ProposedFileName(const QString& title) {
    static const QRegularExpression forbidden(R"(\s*[<>:"/\\|?*\x00-\x1f\x7f][<>:"/\\|?*\x00-\x1f\x7f\s]*)");
    QString name = title;
    name.replace(forbidden, " - ");
    name = WithoutOuter(WithoutOuter(name.simplified()).left(kLongest));
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    if (name.isEmpty())
        return "Report";
    return IsReserved(name) ? "Report " + name : name;
}

}  // namespace ledgix::preview
