// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/OutputEnding.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

TEST(OutputEnding, TakesTheEndingInAnyCaseAndNoReport) {
    for (const char* const path : {"", "r.xml", "R.XML", "a.b/r.Xml"})
        EXPECT_NO_THROW(TestEnding(path, ".xml", "--junit")) << path;
}

TEST(OutputEnding, RefusesWhatASlipWouldReplace) {
    for (const char* const path : {"p.ini", "frame.raw", "xml", ".xml", "r.xml.png", "folder.xml/"}) {
        try {
            TestEnding(path, ".xml", "--junit");
            ADD_FAILURE() << path;
        } catch (const UsageError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr("--junit writes a file that ends in .xml, not '" +
                                                         std::string(path) + "'"));
        }
    }
}

}  // namespace
}  // namespace vastrelline
