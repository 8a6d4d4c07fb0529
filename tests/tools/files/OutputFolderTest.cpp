// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "files/OutputFolder.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

std::ptrdiff_t CountIn(const fs::path& folder) { return std::distance(fs::directory_iterator(folder), {}); }

class OutputFolderTest : public testing::Test {
protected:
    std::string Wanted() const { return folder_.Narrow("out"); }

    // An older folder with an index that names `a.png`, and one more file.
    void MakeOlder(const std::string& other) const {
        fs::create_directory(Wanted());
        WriteBytes(folder_.Path() / "out" / "index.json", "{\"picture\": \"a.png\"}");
        WriteBytes(folder_.Path() / "out" / other, "old");
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

TEST_F(OutputFolderTest, IsThereWithAllItsFilesOnlyWhenItIsPublished) {
    OutputFolder folder(Wanted() + "/", "index.json", false);
    folder.Write("a.png", "new");
    EXPECT_FALSE(fs::exists(Wanted()));
    folder.Publish();
    EXPECT_EQ(folder.Path(), Wanted());
    EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "a.png"), "new");
    EXPECT_EQ(CountIn(folder_.Path()), 1);
}

TEST_F(OutputFolderTest, LeavesNothingBehindWithoutPublish) {
    {
        OutputFolder folder(Wanted(), "index.json", false);
        folder.Write("a.png", "new");
    }
    EXPECT_EQ(CountIn(folder_.Path()), 0);
}

TEST_F(OutputFolderTest, KeepsAnOlderFolderUnlessItIsToReplaceIt) {
    MakeOlder("a.png");
    EXPECT_THROW(OutputFolder(Wanted(), "index.json", false), OutputError);
    {
        OutputFolder folder(Wanted(), "index.json", true);
        folder.Write("b.png", "new");
        EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "a.png"), "old") << "before it is published";
        folder.Publish();
    }
    EXPECT_FALSE(fs::exists(folder_.Path() / "out" / "a.png"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "b.png"), "new");
    EXPECT_EQ(CountIn(folder_.Path()), 1);
}

TEST_F(OutputFolderTest, NeverReplacesWhatSomebodyElsePutThere) {
    MakeOlder("thesis.doc");
    try {
        const OutputFolder folder(Wanted(), "index.json", true);
        FAIL();
    } catch (const OutputError& error) {
        EXPECT_EQ(error.What(), "holds 'thesis.doc', which this command did not make");
    }
    EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "thesis.doc"), "old");
}

// The input of a run may lie in the folder of its results by now.
TEST_F(OutputFolderTest, KeepsFilesThatTheIndexNamesAsInputsOnly) {
    fs::create_directory(Wanted());
    WriteBytes(folder_.Path() / "out" / "index.json",
               R"({"frame": {"file": "tooth.raw"}, "values": ["1.5"], "picture": "a.png"})");
    for (const char* const leaf : {"tooth.raw", "values", "1.5"}) {
        WriteBytes(folder_.Path() / "out" / leaf, "mine");
        EXPECT_THROW(OutputFolder(Wanted(), "index.json", true), OutputError) << leaf;
        EXPECT_EQ(ReadBytes(folder_.Path() / "out" / leaf), "mine");
        fs::remove(folder_.Path() / "out" / leaf);
    }
    EXPECT_NO_THROW(OutputFolder(Wanted(), "index.json", true));
}

TEST_F(OutputFolderTest, TakesNothingForItsOwnByABrokenIndex) {
    MakeOlder("a.png");
    WriteBytes(folder_.Path() / "out" / "index.json", R"({"picture": "a.png")");
    EXPECT_THROW(OutputFolder(Wanted(), "index.json", true), OutputError);
}

TEST_F(OutputFolderTest, NeverReplacesAFolderWithAnotherInside) {
    MakeOlder("a.png");
    fs::create_directory(folder_.Path() / "out" / "sub");
    EXPECT_THROW(OutputFolder(Wanted(), "index.json", true), OutputError);
}

TEST_F(OutputFolderTest, ReplacesAnEmptyFolder) {
    fs::create_directory(Wanted());
    OutputFolder folder(Wanted(), "index.json", true);
    folder.Write("a.png", "new");
    folder.Publish();
    EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "a.png"), "new");
}

TEST_F(OutputFolderTest, ReplacesWhatALinkNamesAndNotTheLink) {
    MakeOlder("a.png");
    fs::create_directory_symlink("out", folder_.Path() / "link");
    OutputFolder folder(folder_.Narrow("link"), "index.json", true);
    folder.Write("b.png", "new");
    folder.Publish();
    EXPECT_TRUE(fs::is_symlink(folder_.Path() / "link"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "out" / "b.png"), "new");
    EXPECT_FALSE(fs::exists(folder_.Path() / "out" / "a.png"));
}

TEST_F(OutputFolderTest, IsRefusedIfItsNameIsTakenMeanwhile) {
    OutputFolder folder(Wanted(), "index.json", false);
    fs::create_directory(Wanted());
    EXPECT_THROW(folder.Publish(), OutputError);
}

TEST_F(OutputFolderTest, IsRefusedWhereItCannotBe) {
    WriteBytes(folder_.Path() / "file", "x");
    EXPECT_THROW(OutputFolder(folder_.Narrow("file"), "index.json", true), OutputError);
    EXPECT_THROW(OutputFolder(folder_.Narrow("missing/out"), "index.json", false), OutputError);
    EXPECT_THROW(OutputFolder("", "index.json", false), OutputError);
    try {
        const OutputFolder folder(folder_.Narrow(std::string(300, 'x')), "index.json", true);
        FAIL();
    } catch (const OutputError& error) {
        EXPECT_EQ(error.What(), "cannot be made: File name too long");
    }
    EXPECT_THROW(OutputFolder(folder_.Narrow("."), "index.json", true), OutputError);
}

}  // namespace
}  // namespace vastrelline
