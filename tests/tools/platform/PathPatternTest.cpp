// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/PathPattern.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class PathPattern : public testing::Test {
protected:
    PathPattern() {
        std::filesystem::create_directories(folder_.Path() / "one");
        std::filesystem::create_directories(folder_.Path() / "two");
        for (const char* const leaf :
             {"a1.raw", "a2.raw", "ab.png", ".hidden.raw", "one/x.raw", "two/x.raw", "two/y.raw"})
            WriteBytes(folder_.Path() / leaf, "");
    }

    // By their paths from the folder on, with "/".
    std::vector<std::string> Expand(const std::string& pattern) const {
        std::vector<std::string> found = ExpandPattern((folder_.Path() / pattern).string());
        for (std::string& path : found)
            path = std::filesystem::path(path).lexically_relative(folder_.Path()).generic_string();
        return found;
    }

private:
    TemporaryFolder folder_;
};

TEST_F(PathPattern, StarsAndQuestionMarksFitNames) {
    EXPECT_THAT(Expand("*.raw"), UnorderedElementsAre("a1.raw", "a2.raw"));
    EXPECT_THAT(Expand("a?.*"), UnorderedElementsAre("a1.raw", "a2.raw", "ab.png"));
    EXPECT_THAT(Expand("*a*a*"), UnorderedElementsAre("a1.raw", "a2.raw"));
    EXPECT_THAT(Expand("a*.png"), UnorderedElementsAre("ab.png"));
    EXPECT_THAT(Expand("?"), IsEmpty());
}

TEST_F(PathPattern, SetsFitOneCharacter) {
    EXPECT_THAT(Expand("a[12].raw"), UnorderedElementsAre("a1.raw", "a2.raw"));
    EXPECT_THAT(Expand("a[2-9].raw"), UnorderedElementsAre("a2.raw"));
    EXPECT_THAT(Expand("a[!1]*"), UnorderedElementsAre("a2.raw", "ab.png"));
}

TEST_F(PathPattern, EveryLevelMayHaveThem) {
    EXPECT_THAT(Expand("*/x.raw"), UnorderedElementsAre("one/x.raw", "two/x.raw"));
    EXPECT_THAT(Expand("t*/?.raw"), UnorderedElementsAre("two/x.raw", "two/y.raw"));
    EXPECT_THAT(Expand("missing/*.raw"), IsEmpty());
}

TEST_F(PathPattern, NamesWithADotInFrontAreAskedForByIt) {
    EXPECT_THAT(Expand(".h*"), UnorderedElementsAre(".hidden.raw"));
}

}  // namespace
}  // namespace vastrelline
