// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Options.h"

namespace vastrelline::digest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(DigestOptions, AreReadInAnyOrder) {
    const DigestOptions options = ReadOptions({"--threads", "3", "--only", "gamma", "--check", "list.txt",
                                               "--only", "clahe", "--x87-double", "--limit", "avx2"});
    EXPECT_EQ(options.task, DigestOptions::Task::Digest);
    EXPECT_EQ(options.threads, 3U);
    EXPECT_THAT(options.only, ElementsAre("gamma", "clahe"));
    EXPECT_EQ(options.check, "list.txt");
    EXPECT_EQ(options.limit, "avx2");
    EXPECT_TRUE(options.habits.x87Double);
    EXPECT_FALSE(options.habits.roundsUp);
    EXPECT_FALSE(options.habits.flushesDenormals);
}

TEST(DigestOptions, ARunIsNamedByGroupAndNumber) {
    const DigestOptions options = ReadOptions({"--show", "gamma", "17"});
    EXPECT_EQ(options.task, DigestOptions::Task::Show);
    EXPECT_EQ(options.group, "gamma");
    EXPECT_EQ(options.run, 17U);
}

TEST(DigestOptions, WhatIsNotUnderstoodIsRefused) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{{"gamma"},
                                                                                       {"--only"},
                                                                                       {"--threads", "0"},
                                                                                       {"--threads", "65"},
                                                                                       {"--threads", "2x"},
                                                                                       {"--limit", "sse"},
                                                                                       {"--show", "gamma"}})
        EXPECT_THROW(ReadOptions(words), std::invalid_argument) << words.front();
}

TEST(DigestOptions, HelpNamesEachOfThem) {
    for (const char* word :
         {"--check", "--write", "--only", "--list", "--runs", "--show", "--folder", "--threads", "--locale",
          "--x87-double", "--round-up", "--flush-denormals", "--limit"})
        EXPECT_THAT(kDigestHelp, HasSubstr(word));
}

}  // namespace
}  // namespace vastrelline::digest
