#include "argument_text.h"
#include "ledgix_application.h"
#include "sub_main.h"

int main(int argc, char** argv) {
    // Before Qt takes its own options out.
    const std::string command_line = ledgix::shell::ArgumentText(argc, argv);
    ledgix::shell::LedgixApplication application(argc, argv);
    if (!ledgix::shell::SubMain(command_line))
        return 1;
    const int result = QApplication::exec();
    ledgix::shell::EndProgram();
    return result;
}
