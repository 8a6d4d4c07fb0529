// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "config/CRegistryIO.h"
#include "config/CallProfile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class CallProfileTest : public testing::Test {
protected:
    void Write(const std::string& bytes) const { WriteBytes(folder_.Path() / "profile.ini", bytes); }
    std::string Read() const { return ReadBytes(folder_.Path() / "profile.ini"); }
    std::wstring Path() const { return folder_.Wide(L"profile.ini"); }
    CRegistryIO Profile() const { return {nullptr, Path().c_str(), 1}; }
    int32_t Value() const { return Profile().ReadProfileInt(L"a", L"k", -1); }

private:
    TemporaryFolder folder_;
};

TEST_F(CallProfileTest, ReadsOnceForTheWholeCall) {
    Write("[a]\nk=1\n");
    {
        const CallProfile call(Path());
        EXPECT_EQ(call.State(), ReadResult::Done);
        Write("[a]\nk=2\n");
        EXPECT_EQ(Value(), 1);
    }
    EXPECT_EQ(Value(), 2);
}

TEST_F(CallProfileTest, AFileThatAppearsDuringTheCallIsForTheNextOne) {
    const CallProfile call(Path());
    EXPECT_EQ(call.State(), ReadResult::Missing);
    Write("[a]\nk=2\n");
    EXPECT_EQ(Value(), -1);
}

TEST_F(CallProfileTest, OtherProfilesAreReadAsTheyAre) {
    Write("[a]\nk=1\n");
    const CallProfile call(Path() + L"x");
    Write("[a]\nk=2\n");
    EXPECT_EQ(Value(), 2);
}

TEST_F(CallProfileTest, WhatOneReaderWritesTheOthersOfTheCallRead) {
    Write("[a]\nk=1\n");
    const CallProfile call(Path());
    Profile().WriteProfileInt(L"a", L"k", 5);
    EXPECT_EQ(Value(), 5);
    EXPECT_EQ(Read(), "[a]\nk=1\n");
    EXPECT_TRUE(Profile().StoreValues());
    EXPECT_EQ(Read(), "[a]\nk=5\n");
}

TEST_F(CallProfileTest, ACallWithinACallReadsAnewAndLeavesTheOuterOneAlone) {
    Write("[a]\nk=1\n");
    const CallProfile outer(Path());
    Write("[a]\nk=2\n");
    {
        const CallProfile inner(Path());
        EXPECT_EQ(Value(), 2);
    }
    EXPECT_EQ(Value(), 1);
}

}  // namespace
}  // namespace vastrelline
