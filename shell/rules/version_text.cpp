#include "version_text.h"

#include "conversions.h"

namespace ledgix::shell {

std::string ShortVersionText(const Version& version) {
    std::string text = "Version ";
    text += runtime::ToText(version.major);
    text += '.';
    text += runtime::ToText(version.minor);
    return text;
}

std::string FullVersionText(const Version& version) {
    std::string text = ShortVersionText(version);
    text += '.';
    text += runtime::ToText(version.revision);
    return text;
}

}  // namespace ledgix::shell
