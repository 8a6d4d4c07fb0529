// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/StateFolder.h"
#include "support/SetVariable.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

#ifdef _WIN32
constexpr const char* kVariable = "LOCALAPPDATA";
constexpr const char* kLeaf = "Vastrelline";
#else
constexpr const char* kVariable = "XDG_STATE_HOME";
constexpr const char* kLeaf = "vastrelline";
#endif

TEST(StateFolder, IsMadeWhereTheVariableSays) {
    const TemporaryFolder folder;
    const std::filesystem::path parent = folder.Path() / "a" / "b";
    const SetVariable variable(kVariable, parent.string());
    EXPECT_EQ(StateFolder(), (parent / kLeaf).string());
    EXPECT_TRUE(std::filesystem::is_directory(parent / kLeaf));
    EXPECT_EQ(StateFolder(), (parent / kLeaf).string());
}

TEST(StateFolder, IsNoneWhereItCannotBeMade) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "x");
    const SetVariable variable(kVariable, folder.Narrow("file"));
    EXPECT_EQ(StateFolder(), "");
}

}  // namespace
}  // namespace vastrelline
