// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <iterator>

#include "files/OutputFolder.h"
#include "messages/ToolError.h"
#include "platform/windows/Handle.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

TEST(OutputFolder, LosesNothingWhereAnOlderOneIsInUse) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "out");
    WriteBytes(folder.Path() / "out" / "index.json", "{\"picture\": \"a.png\"}");
    WriteBytes(folder.Path() / "out" / "a.png", "old");
    {
        // As a viewer or a scanner has it: it may not be removed.
        const Handle inUse(CreateFileW((folder.Path() / "out" / "a.png").c_str(), GENERIC_READ,
                                       FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                       nullptr));
        ASSERT_TRUE(inUse.IsOpen());
        OutputFolder next(folder.Narrow("out"), "index.json", true);
        next.Write("index.json", "{}");
        // Windows refuses to rename such a folder, Wine does not: either way one whole folder has the name.
        try {
            next.Publish();
            EXPECT_EQ(ReadBytes(folder.Path() / "out" / "index.json"), "{}");
        } catch (const OutputError&) {
            EXPECT_EQ(ReadBytes(folder.Path() / "out" / "a.png"), "old");
            EXPECT_TRUE(fs::exists(folder.Path() / "out" / "index.json"));
        }
    }
    WriteBytes(folder.Path() / "out" / "index.json", "{}");
    fs::remove(folder.Path() / "out" / "a.png");
    OutputFolder last(folder.Narrow("out") + "\\", "index.json", true);
    last.Write("index.json", "last");
    last.Publish();
    EXPECT_EQ(ReadBytes(folder.Path() / "out" / "index.json"), "last");
    EXPECT_FALSE(fs::exists(folder.Path() / "out" / "a.png"));
}

}  // namespace
}  // namespace vastrelline
