// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "profile/MissingSection.h"

namespace vastrelline {
namespace {

TEST(MissingSection, IsWrongUseWithTheNameThatMayBeMeant) {
    const ProfileFile file("p.ini", "[General]\nx=1\n[Low]\nx=1\n");
    const ToolError error = MissingSection(file, "Generl");
    EXPECT_EQ(error.Code(), ExitCode::WrongUse);
    EXPECT_STREQ(error.what(), "p.ini: has no section 'Generl'; did you mean 'General'?");
    EXPECT_STREQ(MissingSection(file, "Surgery").what(),
                 "p.ini: has no section 'Surgery'; it has General, Low");
    EXPECT_STREQ(MissingSection(ProfileFile("q.ini", ""), "A").what(), "q.ini: has no section 'A'");
}

}  // namespace
}  // namespace vastrelline
