// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "comparison/FolderPairs.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

std::string At(const std::string& folder, const char* leaf) {
    return (std::filesystem::path(folder) / leaf).make_preferred().string();
}

class FolderPairsTest : public testing::Test {
protected:
    std::string Make(const std::string& folder, const std::vector<std::string>& names) const {
        const std::filesystem::path path = folder_.Path() / folder;
        std::filesystem::create_directories(path);
        for (const std::string& name : names) {
            std::filesystem::create_directories((path / name).parent_path());
            WriteBytes(path / name, "x");
        }
        return path.string();
    }

private:
    TemporaryFolder folder_;
};

TEST_F(FolderPairsTest, GoTogetherByName) {
    const std::string first = Make("first", {"b.raw", "a.png", "deep/c.tif", "only.raw", "notes.txt"});
    const std::string second =
        Make("second", {"a.png", "b.raw", "deep/c.tif", "new.raw", ".hidden.raw", ".x/d.raw"});
    EXPECT_THAT(ListFolderPairs(first, second),
                ElementsAre(FolderPair{"a.png", At(first, "a.png"), At(second, "a.png")},
                            FolderPair{"b.raw", At(first, "b.raw"), At(second, "b.raw")},
                            FolderPair{"deep/c.tif", At(first, "deep/c.tif"), At(second, "deep/c.tif")},
                            FolderPair{"new.raw", "", At(second, "new.raw")},
                            FolderPair{"only.raw", At(first, "only.raw"), ""}));
}

TEST_F(FolderPairsTest, GoTogetherByTheNameWithoutItsEndingIfThatIsClear) {
    const std::string first = Make("first", {"a.raw", "b.raw", "c.png"});
    const std::string second = Make("second", {"a.png", "b.png", "b.tif", "c.png", "c.raw"});
    EXPECT_THAT(
        ListFolderPairs(first, second),
        ElementsAre(FolderPair{"a.raw", At(first, "a.raw"), At(second, "a.png")},
                    FolderPair{"b.png", "", At(second, "b.png")}, FolderPair{"b.raw", At(first, "b.raw"), ""},
                    FolderPair{"b.tif", "", At(second, "b.tif")},
                    FolderPair{"c.png", At(first, "c.png"), At(second, "c.png")},
                    FolderPair{"c.raw", "", At(second, "c.raw")}));
}

TEST_F(FolderPairsTest, FolderWithoutFramesIsNoFinding) {
    const std::string first = Make("first", {"a.raw"});
    EXPECT_THROW(ListFolderPairs(first, Make("second", {"a.txt"})), InputError);
    EXPECT_THROW(ListFolderPairs(Make("third", {}), first), InputError);
    EXPECT_THROW(ListFolderPairs(first, At(first, "missing")), InputError);
}

// A name that goes to no file is the reader's to report, as a frame that cannot be read.
TEST_F(FolderPairsTest, BrokenLinksAreListed) {
    const std::string first = Make("first", {"a.raw"});
    const std::string second = Make("second", {"b.raw"});
    std::filesystem::create_symlink("nowhere", At(second, "a.raw"));
    EXPECT_EQ(ListFolderPairs(first, second).front(),
              (FolderPair{"a.raw", At(first, "a.raw"), At(second, "a.raw")}));
}

}  // namespace
}  // namespace vastrelline
