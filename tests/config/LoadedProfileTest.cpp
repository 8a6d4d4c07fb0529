// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "config/LoadedProfile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class LoadedProfileTest : public testing::Test {
protected:
    std::filesystem::path File() const { return folder_.Path() / "profile.ini"; }
    void Write(const std::string& bytes) const { WriteBytes(File(), bytes); }
    std::string Read() const { return ReadBytes(File()); }
    LoadedProfile Load() {
        WaitBudget wait;
        return {folder_.Wide(L"profile.ini"), wait};
    }
    bool Store(LoadedProfile& profile) {
        WaitBudget wait;
        return profile.Store(wait);
    }
    // A file that is marked read-only takes nothing, whoever asks.
    void SetReadOnly(bool isReadOnly) const {
        std::filesystem::permissions(
            File(),
            std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                std::filesystem::perms::others_write,
            isReadOnly ? std::filesystem::perm_options::remove : std::filesystem::perm_options::add);
    }
    ~LoadedProfileTest() override {
        if (std::filesystem::exists(File())) SetReadOnly(false);
    }

    const TemporaryFolder& Folder() const { return folder_; }

    LoadedProfileTest() = default;
    LoadedProfileTest(const LoadedProfileTest&) = delete;
    LoadedProfileTest& operator=(const LoadedProfileTest&) = delete;

private:
    TemporaryFolder folder_;
};

TEST_F(LoadedProfileTest, WhatCannotBeReadIsAnEmptyProfile) {
    LoadedProfile missing = Load();
    EXPECT_EQ(missing.State(), ReadResult::Missing);
    EXPECT_EQ(missing.Text().Bytes(), "");
    std::filesystem::create_directory(File());
    LoadedProfile folder = Load();
    EXPECT_EQ(folder.State(), ReadResult::NoFile);
    EXPECT_EQ(folder.Text().Bytes(), "");
    EXPECT_TRUE(Store(folder));  // nothing was set
    folder.Set(L"a", L"k", L"1");
    EXPECT_EQ(folder.Text().FindValue(L"a", L"k"), L"1");
    EXPECT_FALSE(Store(folder));
    EXPECT_TRUE(std::filesystem::is_empty(File()));
}

TEST_F(LoadedProfileTest, MoreThan64MebibytesAreNoProfile) {
    constexpr uintmax_t kLargest = uintmax_t{64} << 20U;
    Write("[a]\nk=1\n");
    std::filesystem::resize_file(File(), kLargest + 1);
    EXPECT_EQ(Load().State(), ReadResult::NoFile);
    std::filesystem::resize_file(File(), kLargest);
    LoadedProfile largest = Load();
    EXPECT_EQ(largest.State(), ReadResult::Done);
    EXPECT_EQ(largest.Text().FindValue(L"a", L"k"), L"1");
    largest.Set(L"a", L"k", L"22");
    EXPECT_FALSE(Store(largest));  // the next call would find none
}

TEST_F(LoadedProfileTest, ValuesCountAtOnceAndTheFileIsAsItWasRead) {
    Write("[a]\nk=1\n");
    LoadedProfile profile = Load();
    profile.Set(L"a", L"k", L"2");
    EXPECT_EQ(profile.Text().Bytes(), "[a]\nk=2\n");
    profile.Set(L"b", L"m", L"3");
    profile.Set(L"a", L"k", L"4");
    EXPECT_EQ(profile.Text().Bytes(), "[a]\nk=4\n[b]\nm=3\n");
    EXPECT_EQ(profile.FileBytes(), "[a]\nk=1\n");
    EXPECT_EQ(Read(), "[a]\nk=1\n");
    EXPECT_TRUE(Store(profile));
    EXPECT_EQ(Read(), "[a]\nk=4\n[b]\nm=3\n");
}

TEST_F(LoadedProfileTest, ASaveInBetweenStays) {
    Write("[a]\nk=1\n");
    LoadedProfile profile = Load();
    profile.Set(L"a", L"k", L"2");
    Write("[a]\nk=1\nnew=1\n");
    EXPECT_FALSE(Store(profile));
    EXPECT_EQ(Read(), "[a]\nk=1\nnew=1\n");
    // It counts from the next call on, whatever this one had set.
    LoadedProfile next = Load();
    EXPECT_EQ(next.Text().Bytes(), "[a]\nk=1\nnew=1\n");
}

TEST_F(LoadedProfileTest, ValuesThatTheFileDidNotTakeCountInTheNextCall) {
    Write("[a]\nk=1\n");
    SetReadOnly(true);
    LoadedProfile first = Load();
    first.Set(L"a", L"k", L"2");
    EXPECT_FALSE(Store(first));
    LoadedProfile second = Load();
    EXPECT_EQ(second.Text().Bytes(), "[a]\nk=2\n");
    EXPECT_EQ(second.FileBytes(), "[a]\nk=1\n");
    EXPECT_FALSE(Store(second));
    // As soon as the file can take them, it does.
    SetReadOnly(false);
    LoadedProfile third = Load();
    EXPECT_TRUE(Store(third));
    EXPECT_EQ(Read(), "[a]\nk=2\n");
}

TEST_F(LoadedProfileTest, SeveralFilesKeepTheirValues) {
    const std::vector<std::wstring> names = {L"a.ini", L"b.ini", L"c.ini"};
    WaitBudget wait;
    const auto load = [&](const std::wstring& name) { return LoadedProfile(Folder().Wide(name), wait); };
    for (const std::wstring& name : names) {
        WriteBytes(Folder().Path() / name, "[a]\nk=1\n");
        std::filesystem::permissions(Folder().Path() / name, std::filesystem::perms::owner_read);
        LoadedProfile profile = load(name);
        profile.Set(L"a", L"k", name);
        EXPECT_FALSE(profile.Store(wait));
    }
    for (const std::wstring& name : names) EXPECT_EQ(load(name).Text().FindValue(L"a", L"k"), name);
}

TEST_F(LoadedProfileTest, ValuesThatTheFileDidNotTakeEndWithItsNextSave) {
    Write("[a]\nk=1\n");
    SetReadOnly(true);
    LoadedProfile first = Load();
    first.Set(L"a", L"k", L"2");
    EXPECT_FALSE(Store(first));
    SetReadOnly(false);
    Write("[a]\nk=3\n");
    EXPECT_EQ(Load().Text().Bytes(), "[a]\nk=3\n");
}

TEST_F(LoadedProfileTest, MissingFileIsMade) {
    LoadedProfile profile = Load();
    profile.Set(L"a", L"k", L"1");
    EXPECT_TRUE(Store(profile));
    EXPECT_EQ(Read(), "[a]\r\nk=1\r\n");
}

}  // namespace
}  // namespace vastrelline
