#include "include_rules.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <sstream>
#include <string_view>

#include "temporary_folder.h"

namespace ledgix::test {

namespace {

namespace fs = std::filesystem;

constexpr const char* kBuildFile = "CMakeLists.txt";

// Files of the project in sorted order; what a build puts there is left out, and so are hidden folders.
std::vector<fs::path> ListFiles(const fs::path& project, const std::function<bool(const fs::path&)>& wanted) {
    std::vector<fs::path> files;
    for (auto entry = fs::recursive_directory_iterator(project); entry != fs::end(entry); ++entry) {
        const fs::path name = entry->path().filename();
        const bool output = entry.depth() == 0 && (name == "build" || name == "out");
        if (entry->is_directory() && (output || name.string().starts_with('.')))
            entry.disable_recursion_pending();
        else if (entry->is_regular_file() && wanted(entry->path()))
            files.push_back(entry->path().lexically_relative(project));
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Folders that look at the layers from outside, and find headers wherever they need them.
bool LooksFromOutside(const fs::path& path) {
    return *path.begin() == "tests" || *path.begin() == "fuzz" || *path.begin() == "bench";
}

bool IsSource(const fs::path& path) {
    return path.extension() == ".cpp" || path.extension() == ".h";
}

// A command of a build file, as "add_layer(target folder uses...)".
struct Command {
    std::string name;
    std::vector<std::string> arguments;
};

std::string WithoutComments(const std::string& build_file) {
    std::istringstream in(build_file);
    std::string text;
    for (std::string line; std::getline(in, line);)
        text += line.substr(0, line.find('#')) + "\n";
    return text;
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

std::vector<Command> ReadCommands(const std::string& build_file) {
    const std::string text = WithoutComments(build_file);
    std::vector<Command> commands;
    std::size_t start = 0;
    for (std::size_t open; (open = text.find('(', start)) != std::string::npos;) {
        const std::size_t close = std::min(text.find(')', open), text.size());
        const std::vector<std::string> before = Words(text.substr(start, open - start));
        if (!before.empty())
            commands.push_back({before.back(), Words(text.substr(open + 1, close - open - 1))});
        start = std::min(close + 1, text.size());
    }
    return commands;
}

// add_layer(target folder uses...), or add_window_layer. False when there is none.
bool ReadDeclaredLayers(const std::vector<Command>& commands, std::map<std::string, Layer>& layers) {
    bool any = false;
    for (const auto& [name, arguments] : commands) {
        if ((name != "add_layer" && name != "add_window_layer") || arguments.size() < 2)
            continue;
        layers[arguments[0]] = {arguments[1], {arguments.begin() + 2, arguments.end()}};
        any = true;
    }
    return any;
}

// add_library(target ...), add_executable(target ...), and the same with a prefix; every other word is what they use.
void ReadFolder(const std::string& folder, const std::vector<Command>& commands, std::map<std::string, Layer>& layers) {
    const auto makes_target = [](const Command& command) {
        return (command.name.ends_with("add_library") || command.name.ends_with("add_executable")) &&
               !command.arguments.empty();
    };
    const auto found = std::find_if(commands.begin(), commands.end(), makes_target);
    if (found == commands.end())
        return;
    const std::string& target = found->arguments.front();
    Layer& layer = layers[target];
    layer.folder = folder;
    for (const Command& command : commands)
        layer.uses.insert(command.arguments.begin(), command.arguments.end());
    layer.uses.erase(target);
}

void AddVisible(const std::map<std::string, Layer>& layers, const std::string& target, std::set<std::string>& seen) {
    const auto found = layers.find(target);
    if (found == layers.end() || !seen.insert(target).second)
        return;
    for (const std::string& used : found->second.uses)
        AddVisible(layers, used, seen);
}

struct Include {
    std::string name;
    std::size_t line = 0;
};

// Takes `start`, with the blanks before it, off the front of a text.
bool Take(std::string_view& text, std::string_view start) {
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    if (!text.substr(first).starts_with(start))
        return false;
    text.remove_prefix(first + start.size());
    return true;
}

std::vector<Include> QuotedIncludes(const std::string& source) {
    std::vector<Include> includes;
    std::istringstream in(source);
    std::size_t number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        std::string_view rest = line;
        if (Take(rest, "#") && Take(rest, "include") && Take(rest, "\""))
            includes.push_back({std::string(rest.substr(0, rest.find('"'))), number});
    }
    return includes;
}

// Headers that the build makes are not looked for.
bool IsMade(const std::string& name) {
    return name.ends_with(".moc") || name.starts_with("moc_") || name.starts_with("ui_");
}

bool Climbs(const std::string& name) {
    const fs::path path = name;
    return std::find(path.begin(), path.end(), "..") != path.end();
}

bool IsIn(const fs::path& project, const std::set<std::string>& folders, const std::string& header) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return fs::is_regular_file(project / folder / header); });
}

}  // namespace

std::map<std::string, Layer> ReadLayers(const std::string& project) {
    std::map<std::string, Layer> layers;
    for (const fs::path& path :
         ListFiles(project, [](const fs::path& file) { return file.filename() == kBuildFile; })) {
        const std::vector<Command> commands = ReadCommands(Content((fs::path(project) / path).string()));
        const std::string folder = path.parent_path().generic_string();
        if (!ReadDeclaredLayers(commands, layers) && !folder.empty() && !LooksFromOutside(path))
            ReadFolder(folder, commands, layers);
    }
    return layers;
}

std::set<std::string> VisibleFolders(const std::map<std::string, Layer>& layers, const std::string& target) {
    std::set<std::string> seen;
    AddVisible(layers, target, seen);
    std::set<std::string> folders;
    for (const std::string& name : seen)
        folders.insert(layers.at(name).folder);
    return folders;
}

std::vector<std::string> FindCycles(const std::map<std::string, Layer>& layers) {
    std::vector<std::string> cycles;
    for (const auto& [target, layer] : layers) {
        std::set<std::string> below;
        for (const std::string& used : layer.uses)
            AddVisible(layers, used, below);
        if (below.contains(target))
            cycles.push_back(target);
    }
    return cycles;
}

std::vector<std::string> FindWrongIncludes(const std::string& project) {
    std::map<std::string, std::set<std::string>> visible;  // by folder
    const std::map<std::string, Layer> layers = ReadLayers(project);
    for (const auto& [target, layer] : layers)
        visible[layer.folder] = VisibleFolders(layers, target);

    std::vector<std::string> findings;
    for (const fs::path& path : ListFiles(project, IsSource)) {
        const auto folders = visible.find(path.parent_path().generic_string());
        for (const Include& include : QuotedIncludes(Content((fs::path(project) / path).string()))) {
            const std::string where = path.generic_string() + ":" + std::to_string(include.line) + ": ";
            if (Climbs(include.name))
                findings.push_back(where + include.name + " climbs");
            else if (folders != visible.end() && !IsMade(include.name) && !IsIn(project, folders->second, include.name))
                findings.push_back(where + include.name + " is of no layer that this one uses");
        }
    }
    return findings;
}

std::vector<std::string> FindAmbiguousHeaders(const std::string& project) {
    std::map<std::string, std::vector<std::string>> folders;
    for (const fs::path& path : ListFiles(project, [](const fs::path& file) { return file.extension() == ".h"; }))
        folders[path.filename().string()].push_back(path.parent_path().generic_string());
    std::vector<std::string> findings;
    for (const auto& [name, places] : folders) {
        std::string finding = name + ":";
        for (const std::string& place : places)
            finding += " " + place;
        if (places.size() > 1)
            findings.push_back(finding);
    }
    return findings;
}

}  // namespace ledgix::test
