#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ledgix::test {

// The program beside these tests (program/main.cpp), run with arguments. It is killed when the object goes.
class ChildProcess {
public:
    explicit ChildProcess(const std::vector<std::string>& arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The next whole line of its standard output; waits for one. Nothing when it has ended.
    std::optional<std::string> ReadLine();

    // Ends it at once, whatever it is doing; lines that it wrote can still be read.
    void Kill();
    // Waits for its end. Its exit status, -1 when it was killed.
    int Wait();

private:
    int output_ = -1;
    int process_ = 0;
    int status_ = -1;
    std::string read_;
};

}  // namespace ledgix::test
