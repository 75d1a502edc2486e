#include "temporary_folder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <stdexcept>
#include <system_error>

namespace ledgix::test {

namespace {

namespace fs = std::filesystem;

constexpr int kAttempts = 100;

fs::path FromUtf8(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::string ToText(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        path_ = fs::temp_directory_path() / ("ledgix test " + std::to_string(random()));
        if (fs::create_directory(path_))
            return;
    }
    throw std::runtime_error("no temporary folder can be made");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::path() const {
    return ToText(path_);
}

std::string TemporaryFolder::File(const std::string& name) const {
    return ToText(path_ / FromUtf8(name));
}

std::string TemporaryFolder::Write(const std::string& name, std::string_view content) const {
    std::ofstream out(path_ / FromUtf8(name), std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    return File(name);
}

std::string TemporaryFolder::MakeFolder(const std::string& name) const {
    fs::create_directories(path_ / FromUtf8(name));
    return File(name);
}

std::string TemporaryFolder::List() const {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_))
        names.insert(ToText(entry.path().filename()));
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : " ") + name;
    return list;
}

std::string Content(const std::string& path) {
    std::ifstream in(FromUtf8(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace ledgix::test
