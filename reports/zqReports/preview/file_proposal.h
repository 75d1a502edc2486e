#pragma once

#include <QString>

namespace ledgix::preview {

// A file name without an extension that every system takes, made of a report's title.
QString ProposedFileName(const QString& title);

}  // namespace ledgix::preview
