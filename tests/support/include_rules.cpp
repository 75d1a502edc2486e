#include "include_rules.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <regex>
#include <sstream>

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

std::string WithoutComments(const std::string& build_file) {
    return std::regex_replace(build_file, std::regex("#[^\n]*"), "");
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// add_layer(target folder uses...). False when there is none.
bool ReadDeclaredLayers(const std::string& build_file, std::map<std::string, Layer>& layers) {
    const std::regex call("\\badd_layer\\s*\\(([^)]*)\\)");
    for (std::sregex_iterator at(build_file.begin(), build_file.end(), call), end; at != end; ++at) {
        const std::vector<std::string> words = Words((*at)[1]);
        if (words.size() >= 2)
            layers[words[0]] = {words[1], {words.begin() + 2, words.end()}};
    }
    return build_file.find("add_layer") != std::string::npos;
}

// add_library(target ...), add_executable(target ...), and the same with a prefix.
std::optional<std::string> FirstTarget(const std::string& build_file) {
    std::smatch found;
    if (!std::regex_search(build_file, found, std::regex("add_(?:library|executable)\\s*\\(\\s*([\\w-]+)")))
        return std::nullopt;
    return found[1];
}

void ReadFolder(const std::string& folder, const std::string& build_file, std::map<std::string, Layer>& layers) {
    const std::optional<std::string> target = FirstTarget(build_file);
    if (!target)
        return;
    Layer& layer = layers[*target];
    layer.folder = folder;
    const std::regex word("[\\w-]+");
    for (std::sregex_iterator at(build_file.begin(), build_file.end(), word), end; at != end; ++at)
        if (at->str() != *target)
            layer.uses.insert(at->str());
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

std::vector<Include> QuotedIncludes(const std::string& source) {
    static const std::regex directive("^\\s*#\\s*include\\s*\"([^\"]*)\".*");
    std::vector<Include> includes;
    std::istringstream in(source);
    std::smatch found;
    std::size_t number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (std::regex_match(line, found, directive))
            includes.push_back({found[1], number});
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
        const std::string text = WithoutComments(Content((fs::path(project) / path).string()));
        const std::string folder = path.parent_path().generic_string();
        if (!ReadDeclaredLayers(text, layers) && !folder.empty() && !LooksFromOutside(path))
            ReadFolder(folder, text, layers);
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
