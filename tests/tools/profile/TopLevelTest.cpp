// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "profile/TopLevel.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(TopLevel, IsThatOfTheSection) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "p.ini",
               "[A]\nOUTPUTRANGE=1023\n[B]\nOUTPUTRANGE=0\n[C]\nOUTPUTRANGE=65536\n[D]\n");
    const ProfileFile file = ProfileFile::Read(folder.Narrow("p.ini"));
    EXPECT_EQ(ReadTopLevel(file, "A"), 1023);
    for (const char* const section : {"B", "C", "D"}) EXPECT_EQ(ReadTopLevel(file, section), 4095) << section;
}

}  // namespace
}  // namespace vastrelline
