#pragma once

#include <QString>
#include <QUrl>

#include "help_file.h"

namespace ledgix::shell {

// One topic as a hypertext page, with links to what there is to see besides.
QString PageText(const HelpFile& file, const HelpPage& page);

// "topic:31", and back; 0 for the address of something else.
QUrl TopicAddress(int context);
int TopicOf(const QUrl& address);

}  // namespace ledgix::shell
