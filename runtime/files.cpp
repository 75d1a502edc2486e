#include "files.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "runtime_error.h"
#include "text.h"

namespace ledgix::runtime {

namespace {

namespace fs = std::filesystem;

constexpr std::streamsize kChunkSize = 65536;

void WriteStream(const fs::path& path, std::string_view content, std::ios::openmode mode, const std::string& shown) {
    std::ofstream out(path, mode | std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out)
        RaiseError(ErrorNumber::kDeviceIo, "The file cannot be written: " + shown);
}

// Gives a written file the permissions and the name of the one that it replaces.
bool TakePlaceOf(const fs::path& target, const fs::path& written) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status))
        fs::permissions(written, status.permissions(), error);
    fs::rename(written, target, error);
    return !error;
}

}  // namespace

fs::path ToPath(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

std::string PathText(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::optional<std::string> FindFile(const std::string& path) {
    std::error_code error;
    const fs::path wanted = ToPath(path);
    if (fs::is_regular_file(wanted, error))
        return path;
    const std::string name = PathText(wanted.filename());
    const fs::path folder = wanted.has_parent_path() ? wanted.parent_path() : fs::path(".");
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) && EqualsIgnoringCase(PathText(entry->path().filename()), name))
            return PathText(wanted.has_parent_path() ? folder / entry->path().filename() : entry->path().filename());
    }
    return std::nullopt;
}

std::string ReadFile(const std::string& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(ToPath(path), ignored))
        RaiseError(ErrorNumber::kFileNotFound, "File not found: " + path);
    std::ifstream in(ToPath(path), std::ios::binary);
    std::string content;
    std::vector<char> chunk(kChunkSize);
    while (in.read(chunk.data(), kChunkSize) || in.gcount() > 0)
        content.append(chunk.data(), static_cast<std::size_t>(in.gcount()));
    if (in.bad() || !in.eof())
        RaiseError(ErrorNumber::kDeviceIo, "The file cannot be read: " + path);
    return content;
}

void WriteFile(const std::string& path, std::string_view content) {
    std::error_code error;
    fs::path target = ToPath(path);
    if (fs::is_symlink(target, error))
        target = fs::weakly_canonical(target, error);
    // A device or a pipe cannot be replaced by renaming.
    if (fs::exists(target, error) && !fs::is_regular_file(target, error))
        return WriteStream(target, content, std::ios::trunc, path);
    fs::path temporary = target;
    temporary += ".part";
    try {
        WriteStream(temporary, content, std::ios::trunc, path);
        if (!TakePlaceOf(target, temporary))
            RaiseError(ErrorNumber::kDeviceIo, "The file cannot be written: " + path);
    } catch (const RuntimeError&) {
        fs::remove(temporary, error);
        throw;
    }
}

void AppendFile(const std::string& path, std::string_view content) {
    WriteStream(ToPath(path), content, std::ios::app, path);
}

}  // namespace ledgix::runtime
