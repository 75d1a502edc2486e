#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

// Reads the build files and the sources of a project and finds what goes against the direction of its dependencies.
// Paths are relative to the project's folder, with "/" between their parts.
namespace ledgix::test {

// A folder of sources that is built as one target.
struct Layer {
    std::string folder;
    std::set<std::string> uses;  // names of other targets, as the build file gives them
};

// By target: those that a CMakeLists.txt declares by add_layer(target folder uses...), and the folders whose own
// CMakeLists.txt declares none: they use every target that it names. Tests, fuzzers and benchmarks are no layers.
std::map<std::string, Layer> ReadLayers(const std::string& project);

// The folders whose headers a layer finds: its own and those of all that it uses, directly or not.
std::set<std::string> VisibleFolders(const std::map<std::string, Layer>& layers, const std::string& target);

// Layers that use themselves by way of others.
std::vector<std::string> FindCycles(const std::map<std::string, Layer>& layers);

// Quoted includes that climb by "..", and those of a layer's sources that name a header of no visible folder.
std::vector<std::string> FindWrongIncludes(const std::string& project);

// Names of headers that stand in more than one folder.
std::vector<std::string> FindAmbiguousHeaders(const std::string& project);

}  // namespace ledgix::test
