// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Findings.h"
#include "IncludeGraph.h"
#include "Modules.h"
#include "Rooms.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The tool's rooms have no order but what keeps them free of cycles.
const HouseRules kRooms{.rooms = {{.folder = "api", .rank = 0},
                                  {.folder = "batch", .rank = 0},
                                  {.folder = "commands", .rank = 0},
                                  {.folder = "comparison", .rank = 0},
                                  {.folder = "completion", .rank = 0},
                                  {.folder = "files", .rank = 0},
                                  {.folder = "formats", .rank = 0},
                                  {.folder = "frames", .rank = 0},
                                  {.folder = "keys", .rank = 0},
                                  {.folder = "library", .rank = 0},
                                  {.folder = "lint", .rank = 0},
                                  {.folder = "measure", .rank = 0},
                                  {.folder = "messages", .rank = 0},
                                  {.folder = "phantom", .rank = 0},
                                  {.folder = "pictures", .rank = 0},
                                  {.folder = "platform", .rank = 0, .inner = {"posix", "windows"}},
                                  {.folder = "profile", .rank = 0},
                                  {.folder = "provenance", .rank = 0},
                                  {.folder = "proof", .rank = 0},
                                  {.folder = "reports", .rank = 0},
                                  {.folder = "runs", .rank = 0},
                                  {.folder = "server", .rank = 0, .inner = {"without"}},
                                  {.folder = "sweep", .rank = 0},
                                  {.folder = "views", .rank = 0},
                                  {.folder = "workbench", .rank = 0}},
                        .arrowsOnOneFloor = {},
                        .guests = {}};
const std::vector<std::string> kTopFiles{"CMakeLists.txt", "main.cpp"};

const Mirror kTests{"Test.cpp", {}};

const Graph& OwnIncludes() {
    static const Graph includes = MakeIncludeGraph(OwnParsedTree("tools"));
    return includes;
}

// The tool knows the library as any other host does, by its public header; only the text of profiles, which
// knows nothing of frames, is shared beside that.
std::vector<std::string> FindForeignIncludes(const Graph& includes) {
    std::vector<std::string> foreign;
    for (const auto& [from, targets] : includes) {
        for (const std::string& to : targets) {
            if (includes.contains(to) || to == "vastrelline.h" || to.starts_with("profile_text/")) continue;
            foreign.push_back("tools/" + from + " includes " + to +
                              ": the tool has its own files, by their "
                              "path below tools/, and the library's public header");
        }
    }
    return foreign;
}

ParsedTree OwnTests() {
    ParsedTree tests;
    for (const auto& [path, file] : OwnParsedTree("tests"))
        if (path.starts_with("tools/")) tests.emplace(path.substr(path.find('/') + 1), file);
    return tests;
}

}  // namespace

TEST(HouseOfTools, IsRead) { EXPECT_GT(OwnIncludes().size(), 20U); }

TEST(HouseOfTools, HasNoFileOutsideItsRooms) {
    EXPECT_TRUE(IsKept(FindHomelessFiles(OwnTree("tools"), kRooms, kTopFiles)));
}

TEST(HouseOfTools, IncludesNothingOfTheLibraryButItsPublicHeader) {
    EXPECT_TRUE(IsKept(FindForeignIncludes(OwnIncludes())));
}

TEST(HouseOfTools, CallsTheSystemInItsPlatformRoomOnly) {
    EXPECT_TRUE(IsKept(FindSystemHeadersOutside(OwnParsedTree("tools"), kRooms, "platform")));
}

TEST(HouseOfTools, FilesFormNoCycle) { EXPECT_TRUE(IsKept(FindCycles(OwnIncludes()))); }

TEST(HouseOfTools, RoomsFormNoCycle) {
    // A file of the top folder stands for itself.
    const auto roomOf = [](const std::string& path) {
        return FolderOf(path).empty() ? path : FolderOf(path);
    };
    EXPECT_TRUE(IsKept(FindCycles(GroupGraph(OwnIncludes(), roomOf))));
}

TEST(HouseOfTools, HasEachBaseNameOnce) { EXPECT_TRUE(IsKept(FindRepeatedBaseNames(OwnTree("tools")))); }

TEST(HouseOfTools, KeepsTestsWhereTheirModulesAre) {
    const Modules modules = ListModules(OwnParsedTree("tools"));
    EXPECT_TRUE(IsKept(CompareFindings(FindStrayFiles(modules, OwnTests(), kTests), {})));
}

TEST(ForeignIncludes, AreThoseOfTheLibrarysInside) {
    EXPECT_THAT(FindForeignIncludes({{"main.cpp", {"vastrelline.h", "formats/A.h", "profile_text/Lines.h"}},
                                     {"formats/A.h", {}}}),
                IsEmpty());
    EXPECT_THAT(FindForeignIncludes({{"main.cpp", {"pixels/FrameView.h"}}, {"formats/A.h", {"B.h"}}}),
                ElementsAre(HasSubstr("formats/A.h includes B.h"), HasSubstr("main.cpp includes pixels/")));
}

}  // namespace vastrelline
