#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "side_by_side.h"

// Many PDF reports, each by a process of its own, one after the other.
namespace {

using ledgix::bench::Command;

constexpr int kReports = 1000;

Command Report(int number, const std::string& file) {
    constexpr const char* kKinds[] = {"profile", "analysis", "outlook"};
    const std::string kind = kKinds[number % 3];
    Command command{LEDGIX_CLI, "--database", LEDGIX_HOUSEHOLD, "report", kind, "--profile", "1"};
    if (kind != "profile")
        command.insert(command.end(), {"--property", "1"});
    command.insert(command.end(), {"--format", "pdf", "--output", file});
    return command;
}

// Of the largest child so far, in MB.
double PeakMemory() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
#ifdef __APPLE__
    constexpr double kPerMegabyte = 1e6;
#else
    constexpr double kPerMegabyte = 1e6 / 1024;
#endif
    return double(usage.ru_maxrss) / kPerMegabyte;
}

}  // namespace

int main() {
    std::string place = (std::filesystem::temp_directory_path() / "ledgix-batch-XXXXXX").string();
    if (!mkdtemp(place.data()))
        return 1;
    std::size_t written = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kReports; ++i) {
        const std::string file = place + "/report-" + std::to_string(i) + ".pdf";
        ledgix::bench::Process(Report(i, file))();
        written += std::filesystem::file_size(file);
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::filesystem::remove_all(place);
    std::printf("%d PDF reports by ledgix-cli: %.1f s, %.1f a second, %.0f kB each; peak memory of a process %.1f MB\n",
                kReports, taken.count(), kReports / taken.count(), double(written) / kReports / 1000, PeakMemory());
    return 0;
}
