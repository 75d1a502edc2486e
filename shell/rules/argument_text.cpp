#include "argument_text.h"

namespace ledgix::shell {

std::string ArgumentText(int argc, const char* const* argv) {
    std::string text;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (i > 1)
            text += ' ';
        text += argument.empty() ? "\"\"" : argument;
    }
    return text;
}

}  // namespace ledgix::shell
