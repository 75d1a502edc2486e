#include <iostream>

#include "command_line.h"

int main(int argc, char** argv) {
    return ledgix::cli::RunCommandLine(argc, argv, std::cout, std::cerr);
}
