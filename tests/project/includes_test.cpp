#include <gtest/gtest.h>

#include "include_rules.h"
#include "temporary_folder.h"

namespace ledgix::test {
namespace {

using Findings = std::vector<std::string>;

TEST(Project, HasIncludesThatPointDownwardsOnly) {
    EXPECT_EQ(FindWrongIncludes(LEDGIX_SOURCE), Findings());
}

TEST(Project, HasNoCycleOfLayers) {
    EXPECT_EQ(FindCycles(ReadLayers(LEDGIX_SOURCE)), Findings());
}

TEST(Project, HasHeadersThatTheirNameTellsApart) {
    EXPECT_EQ(FindAmbiguousHeaders(LEDGIX_SOURCE), Findings());
}

TEST(Project, HasTheLayersThatTheseTestsReadFromItsBuildFiles) {
    const std::map<std::string, Layer> layers = ReadLayers(LEDGIX_SOURCE);
    ASSERT_TRUE(layers.contains("ledgix_runtime"));
    EXPECT_EQ(VisibleFolders(layers, "ledgix_runtime"), std::set<std::string>{"runtime"});
    ASSERT_TRUE(layers.contains("ledgix_model"));
    EXPECT_EQ(VisibleFolders(layers, "ledgix_model"),
              (std::set<std::string>{"model", "runtime", "shell/services", "store", "store/dao", "store/jet"}));
}

// A small project of three layers: ground, house on it, and roof, with a build file of its own, on both.
class SmallProject : public testing::Test {
protected:
    SmallProject() {
        for (const char* folder : {"ground", "house", "house/roof", "tests", "build", ".hidden"})
            folder_.MakeFolder(folder);
        Write("CMakeLists.txt", "add_layer(ground ground)\nadd_layer(house house # add_layer(x y)\n ground)\n");
        Write("house/roof/CMakeLists.txt", "qt_add_library(roof STATIC roof.cpp)\ntarget_link_libraries(roof house)\n");
        Write("ground/stone.h", "");
        Write("house/wall.h", "#include \"stone.h\"\n");
        Write("house/roof/tile.h", "#include <wall.h>\n# include \"wall.h\"  // see wall\n#include \"stone.h\"\n");
    }

    void Write(const std::string& name, const std::string& content) { folder_.Write(name, content); }
    Findings WrongIncludes() const { return FindWrongIncludes(folder_.path()); }

    const TemporaryFolder folder_;
};

TEST_F(SmallProject, IsInOrder) {
    EXPECT_EQ(WrongIncludes(), Findings());
    EXPECT_EQ(FindCycles(ReadLayers(folder_.path())), Findings());
    EXPECT_EQ(FindAmbiguousHeaders(folder_.path()), Findings());
    EXPECT_EQ(VisibleFolders(ReadLayers(folder_.path()), "roof"),
              (std::set<std::string>{"ground", "house", "house/roof"}));
}

TEST_F(SmallProject, ReportsAnIncludeThatPointsUpwards) {
    Write("ground/sand.cpp", "#include <vector>\n\n#include \"wall.h\"\n");
    Write("house/door.h", "  #include\"tile.h\"\n");
    EXPECT_EQ(WrongIncludes(), (Findings{"ground/sand.cpp:3: wall.h is of no layer that this one uses",
                                         "house/door.h:1: tile.h is of no layer that this one uses"}));
}

TEST_F(SmallProject, ReportsAnIncludeThatNamesAFolder) {
    Write("house/door.h", "#include \"roof/tile.h\"\n");
    EXPECT_EQ(WrongIncludes(), Findings());
    Write("ground/sand.h", "#include \"house/wall.h\"\n");
    EXPECT_EQ(WrongIncludes(), Findings{"ground/sand.h:1: house/wall.h is of no layer that this one uses"});
}

TEST_F(SmallProject, ReportsAnIncludeThatClimbsFromAnyFolder) {
    Write("tests/wall_test.cpp", "#include \"../house/wall.h\"\n");
    Write("house/wall.cpp", "#include \"wall.h\"\n#include \"roof/../wall.h\"\n");
    EXPECT_EQ(WrongIncludes(),
              (Findings{"house/wall.cpp:2: roof/../wall.h climbs", "tests/wall_test.cpp:1: ../house/wall.h climbs"}));
}

TEST_F(SmallProject, DoesNotLookAtWhatABuildMakes) {
    Write("build/made.cpp", "#include \"../ground/stone.h\"\n");
    Write(".hidden/made.cpp", "#include \"../ground/stone.h\"\n");
    Write("house/wall.cpp", "#include \"wall.moc\"\n");
    EXPECT_EQ(WrongIncludes(), Findings());
}

TEST_F(SmallProject, ReportsLayersThatUseEachOther) {
    Write("CMakeLists.txt", "add_layer(ground ground roof)\nadd_layer(house house ground)\n");
    EXPECT_EQ(FindCycles(ReadLayers(folder_.path())), (Findings{"ground", "house", "roof"}));
}

TEST_F(SmallProject, ReportsHeadersOfTheSameName) {
    Write("tests/stone.h", "");
    EXPECT_EQ(FindAmbiguousHeaders(folder_.path()), Findings{"stone.h: ground tests"});
}

}  // namespace
}  // namespace ledgix::test
