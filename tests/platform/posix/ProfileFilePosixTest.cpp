#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>
#include <string>
#include <vector>

#include "platform/ProfileFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class ProfileFilePosixTest : public testing::Test {
protected:
    void Fill(std::string_view bytes) const { WriteBytes(folder_.Path() / "p.ini", bytes); }
    std::string Bytes() const { return ReadBytes(folder_.Path() / "p.ini"); }
    bool Write(const wchar_t* section, const wchar_t* key, const wchar_t* value) const {
        return PlatformWriteProfile(section, key, value, path_.c_str());
    }
    int32_t Int(const wchar_t* key) const { return PlatformProfileInt(L"a", key, -1, path_.c_str()); }

    TemporaryFolder folder_;
    std::wstring path_ = folder_.Wide(L"p.ini");
};

TEST_F(ProfileFilePosixTest, OneLineChangesAndTheOthersStayByteForByte) {
    Fill("; first\n\n [A] \n k\t= 1 \nm = \xE9\xFF\r\n");
    EXPECT_TRUE(Write(L"a", L"k", L"2"));
    EXPECT_EQ(Bytes(), "; first\n\n [A] \n k\t= 2 \nm = \xE9\xFF\r\n");
}

TEST_F(ProfileFilePosixTest, TheSameValueLeavesTheFileUntouched) {
    Fill("[a]\nk = 1\n");
    struct stat before {};
    ASSERT_EQ(stat(folder_.Narrow("p.ini").c_str(), &before), 0);
    EXPECT_TRUE(Write(L"a", L"k", L"1"));
    EXPECT_TRUE(Write(L"a", L"none", nullptr));
    struct stat after {};
    ASSERT_EQ(stat(folder_.Narrow("p.ini").c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
}

TEST_F(ProfileFilePosixTest, AReadOnlyFileIsNotWrittenWhoeverAsks) {
    Fill("[a]\nk=1\n");
    ASSERT_EQ(chmod(folder_.Narrow("p.ini").c_str(), 0444), 0);
    EXPECT_FALSE(Write(L"a", L"k", L"2"));
    EXPECT_FALSE(Write(L"a", L"k", L"1"));
    EXPECT_EQ(Bytes(), "[a]\nk=1\n");
    EXPECT_EQ(Int(L"k"), 1);
}

TEST_F(ProfileFilePosixTest, ALinkedProfileStaysALink) {
    WriteBytes(folder_.Path() / "real.ini", "[a]\nk=1\n");
    std::filesystem::create_symlink("real.ini", folder_.Path() / "p.ini");
    EXPECT_TRUE(Write(L"a", L"k", L"2"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path() / "p.ini"));
    EXPECT_EQ(ReadBytes(folder_.Path() / "real.ini"), "[a]\nk=2\n");
}

TEST_F(ProfileFilePosixTest, AFolderAsProfileIsAnEmptyOneThatCannotBeWritten) {
    const std::wstring path = folder_.Path().wstring();
    EXPECT_EQ(PlatformProfileInt(L"a", L"k", 5, path.c_str()), 5);
    EXPECT_FALSE(PlatformWriteProfile(L"a", L"k", L"1", path.c_str()));
}

TEST_F(ProfileFilePosixTest, NullArgumentsAreHarmless) {
    Fill("[a]\nk=1\n");
    std::vector<wchar_t> buffer(4, L'#');
    EXPECT_EQ(PlatformProfileInt(L"a", L"k", 5, nullptr), 5);
    EXPECT_EQ(PlatformProfileInt(nullptr, nullptr, 5, path_.c_str()), 5);
    EXPECT_EQ(PlatformProfileString(L"a", L"k", nullptr, buffer.data(), 4, nullptr), 0U);
    EXPECT_EQ(PlatformProfileSection(nullptr, buffer.data(), 4, path_.c_str()), 0U);
    EXPECT_FALSE(PlatformWriteProfile(L"a", L"k", L"2", nullptr));
    EXPECT_FALSE(Write(nullptr, L"k", L"2"));
    EXPECT_FALSE(Write(nullptr, nullptr, nullptr));
    EXPECT_EQ(Bytes(), "[a]\nk=1\n");
}

TEST_F(ProfileFilePosixTest, EachReadSeesTheFileAsItIsNow) {
    Fill("[a]\nk=1\n");
    EXPECT_EQ(Int(L"k"), 1);
    Fill("[a]\nk=2\n");
    EXPECT_EQ(Int(L"k"), 2);
    std::filesystem::remove(folder_.Path() / "p.ini");
    EXPECT_EQ(Int(L"k"), -1);
}

TEST_F(ProfileFilePosixTest, ATenMegabyteProfileIsReadAndWritten) {
    std::string bytes = "[a]\r\n";
    while (bytes.size() < 10'000'000) bytes += "some_key_" + std::to_string(bytes.size()) + " = 1\r\n";
    Fill(bytes + "last=3\r\n");
    EXPECT_EQ(Int(L"last"), 3);
    EXPECT_TRUE(Write(L"a", L"last", L"4"));
    EXPECT_TRUE(Bytes() == bytes + "last=4\r\n");
}

TEST_F(ProfileFilePosixTest, BinaryProfilesAreReadAndComeThroughAWrite) {
    std::mt19937 random(20240501);
    std::string junk(100'000, '\0');
    for (char& byte : junk) byte = static_cast<char>(random() & 0xFFU);
    junk[0] = '\0';  // no byte order mark
    Fill(junk);
    EXPECT_EQ(Int(L"k"), -1);
    ASSERT_TRUE(Write(L"a", L"k", L"7"));
    EXPECT_EQ(Int(L"k"), 7);
    EXPECT_TRUE(Bytes().starts_with(junk));
    std::vector<wchar_t> buffer(32767);
    for (const wchar_t* section : {L"a", L""})
        EXPECT_LE(PlatformProfileSection(section, buffer.data(), 32767, path_.c_str()), 32765U);
}

}  // namespace
}  // namespace vastrelline
