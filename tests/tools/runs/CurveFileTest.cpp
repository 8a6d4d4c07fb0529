// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "messages/ToolError.h"
#include "runs/CurveFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

TEST(CurveFile, HasAPointInEachLine) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "c.txt", "-2\t-12\r\n-1\t 70000\r\n");
    EXPECT_THAT(ReadCurveFile(folder.Narrow("c.txt")),
                ElementsAre(CurvePoint{-2, -12}, CurvePoint{-1, 70000}));
}

TEST(CurveFile, OtherLinesArePassedOver) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "c.txt", "\nlevel\tvalue\n1\t\n2 3\n4\t5");
    EXPECT_THAT(ReadCurveFile(folder.Narrow("c.txt")), ElementsAre(CurvePoint{4, 5}));
}

TEST(CurveFile, ThatIsMissingIsAnError) {
    const TemporaryFolder folder;
    EXPECT_THROW(ReadCurveFile(folder.Narrow("c.txt")), InputError);
}

}  // namespace
}  // namespace vastrelline
