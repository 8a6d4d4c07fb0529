// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

TEST(ProfileFile, NumbersSectionsAndTheirLines) {
    const ProfileFile file("p.ini", "; first\n[A]\nx=1\n\n[B]\r\ny = 2\rz=3");
    ASSERT_EQ(file.Sections().size(), 2U);
    EXPECT_EQ(file.Sections()[0].name, "A");
    EXPECT_EQ(file.Sections()[0].lineNumber, 2U);
    EXPECT_EQ(file.Sections()[1].lineNumber, 5U);
    ASSERT_EQ(file.Sections()[1].entries.size(), 2U);
    EXPECT_EQ(file.Sections()[1].entries[0].key, "y");
    EXPECT_EQ(file.Sections()[1].entries[0].lineNumber, 6U);
    EXPECT_EQ(file.Sections()[1].entries[1].lineNumber, 7U);
    EXPECT_EQ(file.ValueOf(file.Sections()[1].entries[0]), L"2");
    EXPECT_THAT(file.SectionNames(), ElementsAre("A", "B"));
}

TEST(ProfileFile, KnowsWhichLineCounts) {
    const ProfileFile file("p.ini", "[A]\nKey=1\nkey=2\n[a]\nother=3\n");
    const std::span<const ProfileFileSection> sections = file.Sections();
    EXPECT_TRUE(sections[0].entries[0].counts);
    EXPECT_FALSE(sections[0].entries[1].counts);
    EXPECT_EQ(sections[0].entries[1].firstLineNumber, 2U);
    EXPECT_FALSE(sections[1].counts);
    EXPECT_FALSE(sections[1].entries[0].counts);
    EXPECT_EQ(file.FindEntry("a", "KEY"), &sections[0].entries[0]);
    EXPECT_EQ(file.FindEntry("A", "other"), nullptr);
    EXPECT_EQ(file.FindEntry("B", "Key"), nullptr);
    EXPECT_THAT(file.SectionNames(), ElementsAre("A"));
}

TEST(ProfileFile, LinesBeforeTheFirstHeadAreASectionWithoutName) {
    const ProfileFile file("p.ini", "x=1\n[A]\n");
    ASSERT_EQ(file.Sections().size(), 2U);
    EXPECT_EQ(file.Sections()[0].lineNumber, 0U);
    EXPECT_EQ(file.Sections()[0].entries[0].key, "x");
    EXPECT_FALSE(file.Sections()[0].counts);
    EXPECT_TRUE(ProfileFile("p.ini", "").Sections().empty());
    EXPECT_TRUE(ProfileFile("p.ini", "; nothing\n\n").Sections().empty());
}

TEST(ProfileFile, TellsColumnsInCharacters) {
    const std::string text = "[\xC3\x84]\n \xC3\xA4=1\n";
    const ProfileFile file("p.ini", text);
    EXPECT_EQ(file.PlaceOf(0), (TextPlace{1, 1}));
    EXPECT_EQ(file.PlaceOf(text.find('=')), (TextPlace{2, 3}));
    EXPECT_EQ(file.PlaceOf(text.find('1')), (TextPlace{2, 4}));
}

TEST(ProfileFile, ReadsUtf16BehindItsMark) {
    const std::string text("\xFF\xFE[\0A\0]\0\n\0k\0=\0v\0", 16);
    const ProfileFile file("p.ini", text);
    ASSERT_NE(file.FindEntry("A", "k"), nullptr);
    const ProfileEntry& entry = *file.FindEntry("A", "k");
    EXPECT_EQ(entry.lineNumber, 2U);
    EXPECT_EQ(file.ValueOf(entry), L"v");
    EXPECT_EQ(file.PlaceOf(entry.line.value.begin), (TextPlace{2, 3}));
}

TEST(ProfileFile, ALineWithoutEqualsSignHasNoValue) {
    const ProfileFile file("p.ini", "[A]\nword\nword=2\n");
    const ProfileEntry* const entry = file.FindEntry("A", "word");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->lineNumber, 2U);
    EXPECT_EQ(file.ValueOf(*entry), std::nullopt);
}

TEST(ProfileFile, RefusesWhatIsNoFile) {
    const TemporaryFolder folder;
    EXPECT_THROW(ProfileFile::Read(folder.Narrow("none.ini")), InputError);
    EXPECT_THROW(ProfileFile::Read(folder.Path().string()), InputError);
    WriteBytes(folder.Path() / "a.ini", "[A]\nk=v\n");
    EXPECT_EQ(ProfileFile::Read(folder.Narrow("a.ini")).Text().Bytes(), "[A]\nk=v\n");
}

}  // namespace
}  // namespace vastrelline
