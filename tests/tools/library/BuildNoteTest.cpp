// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "library/BuildNote.h"
#include "library/MadeLibraries.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

const BuildNote kNote = {"1.2.3-dev", "0123abc-changed", "GNU 1, x86_64", "Release", "-O3 -D=1", "plain"};

TEST(BuildNote, IsTheSameOfBothSystems) {
    EXPECT_EQ(FindBuildNote(MadeElf(true, false, "vastrelline",
                                    "version=1.2.3-dev\ncommit=0123abc-changed\ncompiler=GNU 1, x86_64\n"
                                    "build=Release\nflags=-O3 -D=1\nforms=plain\nlater=x\n")),
              kNote);
    EXPECT_EQ(FindBuildNote(MadeDll(true, {{u"InternalName", u"Vastrelline"},
                                           {u"FileVersion", u"1.2.3-dev"},
                                           {u"ProductVersion", u"1.2.3-dev (0123abc-changed)"},
                                           {u"Commit", u"0123abc-changed"},
                                           {u"Compiler", u"GNU 1, x86_64"},
                                           {u"Build", u"Release"},
                                           {u"Flags", u"-O3 -D=1"},
                                           {u"Forms", u"plain"}})),
              kNote);
}

TEST(BuildNote, IsNoneOfOtherLibraries) {
    EXPECT_FALSE(FindBuildNote(MadeElf(true, false, "GNU2", "version=1")));
    EXPECT_FALSE(FindBuildNote(MadeElf(true, false, "vastrelline", "nothing")));
    EXPECT_FALSE(FindBuildNote(MadeDll(true, {{u"InternalName", u"Other"}, {u"FileVersion", u"1"}})));
    EXPECT_FALSE(FindBuildNote(MadeDll(true, {{u"FileVersion", u"1"}})));
}

std::string ReadingFails(const std::string& path) {
    try {
        ReadBuildNote(path);
    } catch (const InputError& error) {
        return error.What();
    }
    return "";
}

TEST(BuildNote, TellsWhyAFileHasNone) {
    const TemporaryFolder folder;
    const std::string path = folder.Narrow("file");
    EXPECT_EQ(ReadingFails(path), "does not exist");
    WriteBytes(path, "text");
    EXPECT_EQ(ReadingFails(path), "is no library of Linux or Windows");
    const auto other = MadeElf(true, false, "GNU2", "version=1");
    WriteBytes(path, std::string(other.begin(), other.end()));
    EXPECT_EQ(ReadingFails(path), "says nothing of its build");
}

}  // namespace
}  // namespace vastrelline
