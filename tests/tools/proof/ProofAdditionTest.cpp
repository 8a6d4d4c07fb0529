// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "messages/ToolError.h"
#include "proof/ProofAddition.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(PhantomRecipe, IsReadFromWords) {
    EXPECT_EQ(ReadPhantomRecipe("phantom"), (PhantomRecipe{{1300, 1668}, 1.0, 1}));
    EXPECT_EQ(ReadPhantomRecipe("phantom:10x20"), (PhantomRecipe{{10, 20}, 1.0, 1}));
    EXPECT_EQ(ReadPhantomRecipe("phantom:10x20:0.12:7"), (PhantomRecipe{{10, 20}, 0.12, 7}));
    for (const char* const text : {"phantom:", "phantom:10", "phantom:10x20:0", "phantom:10x20:x",
                                   "phantom:10x20:1:-1", "phantom:10x20:1:1:1", "phantom:10x20:nan"})
        EXPECT_THROW(ReadPhantomRecipe(text), UsageError) << text;
}

class ProofAdditionTest : public testing::Test {
protected:
    ProofAdditionTest() {
        WriteBytes(folder_.Path() / "a_1x1.raw", "ab");
        WriteBytes(folder_.Path() / "p.ini",
                   "[Settings]\nRCCutOff=1\n[A]\nPROCMODE=2\n[B]\nPROCMODE=3\n[ip_lowmode]\nX=1\n[E]\n");
        manifest_.path = folder_.Narrow("m.json");
    }

    void Add(const ProofWishes& wishes) { AddProofEntries(manifest_, wishes); }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
    ProofManifest manifest_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(ProofAdditionTest, TakesEverySectionThatAHostMayName) {
    Add({{folder_.Narrow("a_1x1.raw"), "phantom:2x3"}, {folder_.Narrow("p.ini")}, {}, ""});
    ASSERT_EQ(manifest_.entries.size(), 4U);
    EXPECT_EQ(manifest_.entries[0].frame.file, "a_1x1.raw");
    EXPECT_EQ(manifest_.entries[0].profile, "p.ini");
    EXPECT_EQ(manifest_.entries[0].section, "A");
    EXPECT_EQ(manifest_.entries[0].exportKind, ExportKind::Plain);
    EXPECT_EQ(manifest_.entries[1].frame.phantom, (PhantomRecipe{{2, 3}, 1.0, 1}));
    EXPECT_EQ(manifest_.entries[2].section, "B");
    EXPECT_EQ(manifest_.entries[2].exportKind, ExportKind::S);
    EXPECT_FALSE(manifest_.entries[0].facts);
}

TEST_F(ProofAdditionTest, RefusesWhatIsNotThereOrThereAlready) {
    const std::string frame = folder_.Narrow("a_1x1.raw");
    const std::string profile = folder_.Narrow("p.ini");
    EXPECT_THROW(Add({{frame}, {profile}, {"C"}, ""}), ToolError);
    EXPECT_THROW(Add({{frame}, {profile}, {"E"}, ""}), ToolError);
    EXPECT_THROW(Add({{frame}, {profile}, {"A"}, "X"}), UsageError);
    EXPECT_THROW(Add({{folder_.Narrow("none.raw")}, {profile}, {"A"}, ""}), InputError);
    EXPECT_THROW(Add({{frame}, {frame + "x"}, {"A"}, ""}), InputError);
    EXPECT_TRUE(manifest_.entries.empty());
    Add({{frame}, {profile}, {"A"}, "CR"});
    EXPECT_THROW(Add({{frame}, {profile}, {"A"}, "cr"}), UsageError);
    EXPECT_EQ(manifest_.entries.size(), 1U);
}

}  // namespace
}  // namespace vastrelline
