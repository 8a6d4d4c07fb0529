// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "completion/TypedLine.h"

namespace vastrelline {
namespace {

class TypedLineTest : public testing::Test {
protected:
    TypedLineTest() {
        CLI::App* const group = app_.add_subcommand("profile");
        set_ = group->add_subcommand("set");
        set_->add_option("FILE", text_);
        set_->add_option("KEY=VALUE", texts_);
        section_ = set_->add_option("--section", text_);
        pair_ = set_->add_option("--pair", texts_)->expected(2);
        flag_ = set_->add_flag("-f,--force", isSet_);
    }

    TypedLine Read(const std::vector<std::string>& words, const std::string& current) {
        return ReadTypedLine(app_, words, current);
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    CLI::App app_;
    CLI::App* set_ = nullptr;
    CLI::Option* section_ = nullptr;
    CLI::Option* pair_ = nullptr;
    CLI::Option* flag_ = nullptr;
    std::string text_;
    std::vector<std::string> texts_;
    bool isSet_ = false;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(TypedLineTest, FindsTheCommandAndItsNextArgument) {
    EXPECT_EQ(Read({}, "pro").command, &app_);
    EXPECT_EQ(Read({"profile"}, "").command->get_name(), "profile");
    const TypedLine line = Read({"profile", "set"}, "a");
    EXPECT_EQ(line.command, set_);
    EXPECT_EQ(line.current, "a");
    EXPECT_EQ(NextArgument(line)->get_name(), "FILE");
    EXPECT_EQ(NextArgument(Read({"profile", "set", "p.ini"}, ""))->get_name(), "KEY=VALUE");
    EXPECT_EQ(NextArgument(Read({"profile", "set", "p.ini", "A=1", "B=2"}, ""))->get_name(), "KEY=VALUE");
    EXPECT_EQ(NextArgument(Read({"profile"}, "")), nullptr);
}

TEST_F(TypedLineTest, AnOptionWaitsForItsValues) {
    EXPECT_EQ(Read({"profile", "set", "--section"}, "").pending, section_);
    const TypedLine given = Read({"profile", "set", "--section", "General", "-f"}, "");
    EXPECT_EQ(given.pending, nullptr);
    EXPECT_EQ(given.values.at("section"), "General");
    EXPECT_EQ(given.given, (std::vector<const CLI::Option*>{section_, flag_}));
    EXPECT_EQ(Read({"profile", "set", "--pair", "1"}, "").pending, pair_);
    EXPECT_EQ(Read({"profile", "set", "--pair", "1", "2"}, "").pending, nullptr);
}

TEST_F(TypedLineTest, AValueMayStandInTheSameWord) {
    const TypedLine line = Read({"profile", "set", "--section=Low", "p.ini"}, "--section=Ge");
    EXPECT_EQ(line.values.at("section"), "Low");
    EXPECT_EQ(line.arguments, std::vector<std::string>{"p.ini"});
    EXPECT_EQ(line.pending, section_);
    EXPECT_EQ(line.current, "Ge");
    EXPECT_EQ(line.valuePrefix, "--section=");
}

TEST_F(TypedLineTest, BehindTwoDashesThereAreArgumentsOnly) {
    const TypedLine line = Read({"profile", "set", "--", "--section"}, "--section=a");
    EXPECT_TRUE(line.isOptionsEnd);
    EXPECT_EQ(line.arguments, std::vector<std::string>{"--section"});
    EXPECT_EQ(line.pending, nullptr);
}

TEST_F(TypedLineTest, UnknownWordsAreNoHindrance) {
    EXPECT_EQ(Read({"profile", "set", "--nonsense", "-x", "a"}, "").arguments, std::vector<std::string>{"a"});
    EXPECT_EQ(Read({"nothing", "like", "this"}, "").command, &app_);
}

}  // namespace
}  // namespace vastrelline
