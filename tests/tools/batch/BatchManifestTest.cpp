// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "batch/BatchManifest.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using Opening = BatchManifest::Opening;

class BatchManifestTest : public testing::Test {
protected:
    void Write(const std::string& result) const {
        BatchManifest manifest(Folder(), Opening::Resume, settings_);
        manifest.Announce(result);
        manifest.TellDone(result, "in/" + result, {"f", "r"});
    }

    std::string Folder() const { return folder_.Narrow("new/out"); }
    std::filesystem::path File() const { return folder_.Path() / "new/out" / kManifestLeaf; }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    BatchSettings settings_{"p", "General", "l", "--format png"};
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(BatchManifestTest, TellsWhatAnEarlierBatchHasDone) {
    Write("a/x.png");
    const BatchManifest manifest(Folder(), Opening::Resume, settings_);
    ASSERT_NE(manifest.FindDone("a/x.png"), nullptr);
    EXPECT_EQ(manifest.FindDone("a/x.png")->frame, "f");
    EXPECT_EQ(manifest.FindDone("a/x.png")->result, "r");
    EXPECT_TRUE(manifest.IsOwn("a/x.png"));
    EXPECT_EQ(manifest.FindDone("x.png"), nullptr);
    EXPECT_FALSE(manifest.IsOwn("x.png"));
}

TEST_F(BatchManifestTest, CountsNothingOfOtherSettings) {
    Write("x.png");
    for (std::string* const text :
         {&settings_.profileHash, &settings_.section, &settings_.libraryHash, &settings_.options}) {
        const std::string before = *text;
        *text += "2";
        const BatchManifest manifest(Folder(), Opening::Resume, settings_);
        EXPECT_EQ(manifest.FindDone("x.png"), nullptr) << *text;
        EXPECT_TRUE(manifest.IsOwn("x.png"));
        *text = before;
    }
}

TEST_F(BatchManifestTest, AResultThatIsBeingReplacedIsNotDone) {
    Write("x.png");
    BatchManifest(Folder(), Opening::Resume, settings_).Announce("x.png");
    const BatchManifest manifest(Folder(), Opening::Resume, settings_);
    EXPECT_EQ(manifest.FindDone("x.png"), nullptr);
    EXPECT_TRUE(manifest.IsOwn("x.png"));
}

// However much of the file a sudden end has left.
TEST_F(BatchManifestTest, PassesOverALineThatWasCutOff) {
    Write("x.png");
    Write("y.png");
    const std::string whole = ReadBytes(File());
    const size_t lastLine = whole.rfind("\n", whole.size() - 2) + 1;
    for (size_t size = lastLine; size < whole.size(); ++size) {
        WriteBytes(File(), whole.substr(0, size));
        {
            const BatchManifest manifest(Folder(), Opening::Resume, settings_);
            EXPECT_NE(manifest.FindDone("x.png"), nullptr) << size;
            EXPECT_EQ(manifest.FindDone("y.png"), nullptr) << size;
        }
        Write("z.png");
        const BatchManifest manifest(Folder(), Opening::Resume, settings_);
        EXPECT_NE(manifest.FindDone("z.png"), nullptr) << size;
        EXPECT_NE(manifest.FindDone("x.png"), nullptr) << size;
    }
}

TEST_F(BatchManifestTest, BeginsAnewOnlyWhenAsked) {
    Write("x.png");
    EXPECT_THROW(BatchManifest(Folder(), Opening::New, settings_), OutputError);
    {
        const BatchManifest manifest(Folder(), Opening::Anew, settings_);
        EXPECT_EQ(manifest.FindDone("x.png"), nullptr);
        EXPECT_TRUE(manifest.IsOwn("x.png"));
    }
    const BatchManifest manifest(Folder(), Opening::Resume, settings_);
    EXPECT_EQ(manifest.FindDone("x.png"), nullptr);
    EXPECT_TRUE(manifest.IsOwn("x.png"));
}

TEST_F(BatchManifestTest, LetsOneBatchWorkInAFolder) {
    const BatchManifest manifest(Folder(), Opening::New, settings_);
    for (const Opening opening : {Opening::New, Opening::Resume, Opening::Anew})
        EXPECT_THROW(BatchManifest(Folder(), opening, settings_), OutputError);
}

TEST_F(BatchManifestTest, KnowsNamesThatAreNoUtf8) {
    const std::string odd = "\xE9\\x.png";
    Write(odd);
    const BatchManifest manifest(Folder(), Opening::Resume, settings_);
    EXPECT_NE(manifest.FindDone(odd), nullptr);
    EXPECT_FALSE(manifest.IsOwn("\\xE9\\\\x.png"));
    EXPECT_FALSE(manifest.IsOwn("\xE8\\x.png"));
}

TEST_F(BatchManifestTest, RefusesAFolderThatIsNone) {
    WriteBytes(folder_.Path() / "file", "x");
    EXPECT_THROW(BatchManifest(folder_.Narrow("file"), Opening::New, settings_), OutputError);
    EXPECT_THROW(BatchManifest(folder_.Narrow("file/out"), Opening::New, settings_), OutputError);
}

}  // namespace
}  // namespace vastrelline
