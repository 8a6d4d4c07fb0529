// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "files/InputFile.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(InputFile, IsReadWhole) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a", "123");
    EXPECT_EQ(ReadInputFile(folder.Narrow("a"), 3), (std::vector<uint8_t>{'1', '2', '3'}));
    EXPECT_THROW(ReadInputFile(folder.Narrow("a"), 2), InputError);
}

TEST(InputStream, IsReadToItsEnd) {
    const std::string text(200001, 'x');
    std::istringstream stream(text);
    EXPECT_EQ(ReadInputStream(stream, "it", 200001).size(), 200001U);
    std::istringstream empty;
    EXPECT_TRUE(ReadInputStream(empty, "it", 1).empty());
}

TEST(InputStream, ALongerOneIsRefusedOnTheWay) {
    std::istringstream stream(std::string(200001, 'x'));
    EXPECT_THROW(ReadInputStream(stream, "it", 100000), InputError);
    EXPECT_LT(stream.tellg(), 200001);
}

}  // namespace
}  // namespace vastrelline
