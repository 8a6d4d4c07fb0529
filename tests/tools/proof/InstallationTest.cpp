// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/Sha256.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "proof/Installation.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

class InstallationTest : public testing::Test {
protected:
    InstallationTest() {
        fs::create_directories(folder_.Path() / "bin");
        fs::create_directories(folder_.Path() / "share/vastrelline");
        for (const char* const leaf : {"bin/tool", "bin/same", "bin/gone"})
            WriteBytes(folder_.Path() / leaf, leaf);
        List(Line("bin/tool") + Line("bin/same") + Line("bin/gone"));
    }

    static std::string Line(const std::string& leaf) { return Sha256Of(leaf) + "  " + leaf + "\n"; }

    void List(const std::string& text) const {
        WriteBytes(folder_.Path() / "share/vastrelline/installed-files.txt", text);
    }

    Installation Find() const { return FindInstallation(folder_.Narrow("bin/tool")); }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
};

TEST_F(InstallationTest, IsFoundFromTheToolsFile) {
    EXPECT_EQ(PathOf(Find().list), folder_.Path() / "share/vastrelline/installed-files.txt");
    EXPECT_EQ(PathOf(Find().manifest), folder_.Path() / "share/vastrelline/proof/manifest.json");
    EXPECT_FALSE(Find().isBuildTree);
    WriteBytes(folder_.Path() / "share/vastrelline/build-tree.txt", "");
    EXPECT_TRUE(Find().isBuildTree);
}

TEST_F(InstallationTest, TellsChangedAndMissingFiles) {
    WriteBytes(folder_.Path() / "bin/tool", "bin/tooL");
    fs::remove(folder_.Path() / "bin/gone");
    const std::vector<CheckedFile> files = CheckInstalledFiles(Find());
    ASSERT_EQ(files.size(), 3U);
    EXPECT_EQ(files[0].path, "bin/tool");
    EXPECT_EQ(files[0].state, FileState::Changed);
    EXPECT_EQ(files[1].state, FileState::AsInstalled);
    EXPECT_EQ(files[2].state, FileState::Missing);
    EXPECT_STREQ(FileStateName(files[2].state), "missing");
    fs::create_directory(folder_.Path() / "bin/gone");
    EXPECT_EQ(CheckInstalledFiles(Find())[2].state, FileState::Unreadable);
}

TEST_F(InstallationTest, KnowsItsOwnFilesByWhateverName) {
    const std::vector<CheckedFile> files = CheckInstalledFiles(Find());
    EXPECT_TRUE(IsOfInstallation(Find(), files, folder_.Narrow("bin/../bin/same")));
    EXPECT_FALSE(IsOfInstallation(Find(), files, folder_.Narrow("share/vastrelline/installed-files.txt")));
    EXPECT_FALSE(IsOfInstallation(Find(), files, folder_.Narrow("bin/none")));
}

TEST_F(InstallationTest, HasNoUseForAListThatIsNone) {
    for (const std::string text : {"", "short\n", "\n"}) {
        List(text);
        EXPECT_THROW(CheckInstalledFiles(Find()), InputError) << text;
    }
    List(Line("bin/tool") + std::string(70, 'x') + "\n");
    EXPECT_THROW(CheckInstalledFiles(Find()), InputError);
    fs::remove(Find().list);
    EXPECT_THROW(CheckInstalledFiles(Find()), InputError);
}

}  // namespace
}  // namespace vastrelline
