// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/WholeFile.h"
#include "platform/posix/FileReplacement.h"
#include "platform/posix/ReadLease.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

class FileReplacementTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::string Narrow(std::string_view name) const { return folder_.Narrow(name); }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    std::filesystem::path Folder() const { return folder_.Path(); }
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    }
    // With a budget that is spent only if the machine stands still.
    bool Replace(std::string_view name, const std::string& oldBytes, const std::string& newBytes) const {
        WaitBudget wait(1min);
        return ReplaceVersion(FindPlace(Narrow(name)), oldBytes, newBytes, wait);
    }

private:
    TemporaryFolder folder_;
};

TEST_F(FileReplacementTest, ModeAndOwnerStay) {
    WriteBytes(At("file"), "one");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0664), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chown(Narrow("file").c_str(), 1234, 2345), 0);
    }
    EXPECT_TRUE(Replace("file", "one", "two"));
    struct stat after {};
    ASSERT_EQ(stat(Narrow("file").c_str(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777U, 0664U);
    if (isRoot) {
        EXPECT_EQ(after.st_uid, 1234U);
        EXPECT_EQ(after.st_gid, 2345U);
    }
    EXPECT_EQ(ReadBytes(At("file")), "two");
}

TEST_F(FileReplacementTest, LinksStayAndTheirEndChanges) {
    WriteBytes(At("file"), "one");
    std::filesystem::create_symlink("file", At("link"));
    EXPECT_TRUE(Replace("link", "one", "two"));
    EXPECT_TRUE(is_symlink(At("link")));
    EXPECT_FALSE(is_symlink(At("file")));
    EXPECT_EQ(ReadBytes(At("file")), "two");
}

TEST_F(FileReplacementTest, NamesAndPathsMayBeAsLongAsTheyCanBe) {
    const std::string longest(255, 'n');
    WriteBytes(At(longest), "one");
    EXPECT_TRUE(Replace(longest, "one", "two"));
    EXPECT_EQ(ReadBytes(At(longest)), "two");
    // The path of a short name with as many characters as a path has at most.
    constexpr size_t kLongestPath = 4095;
    std::string path = Folder().string();
    while (path.size() + 2 < kLongestPath) {
        path += "/" + std::string(std::min<size_t>(200, kLongestPath - path.size() - 3), 'f');
        ASSERT_EQ(mkdir(path.c_str(), 0700), 0) << path.size();
    }
    path += "/p";
    ASSERT_LE(path.size(), kLongestPath);
    { std::ofstream(path) << "one"; }
    WaitBudget wait(1min);
    EXPECT_TRUE(ReplaceVersion(FindPlace(path), "one", "two", wait));
    EXPECT_EQ(ReadBytes(path), "two");
}

// A new file under one of them would part them.
TEST_F(FileReplacementTest, AFileOfTwoNamesStays) {
    WriteBytes(At("file"), "one");
    std::filesystem::create_hard_link(At("file"), At("other"));
    WaitBudget wait;
    EXPECT_FALSE(ReplaceWholeFile(Wide(L"file"), "one", "two", wait));
    EXPECT_EQ(ReadBytes(At("other")), "one");
    EXPECT_TRUE(std::filesystem::equivalent(At("file"), At("other")));
}

// Its half would be another picture.
TEST_F(FileReplacementTest, AFileThatAStalledWriterHoldsCannotBeRead) {
    WriteBytes(At("file"), "half");
    const FileDescriptor writer = OpenFile((At("file")).string(), O_WRONLY);
    if (ReadLease(OpenFile(At("file").string(), O_RDONLY)).Get() != ReadLease::State::HasWriters)
        GTEST_SKIP() << "this file system does not tell of writers";
    std::string bytes;
    WaitBudget wait;
    EXPECT_EQ(ReadWholeFile(Wide(L"file"), 100, wait, bytes), ReadResult::Failed);
}

TEST_F(FileReplacementTest, AnotherProgramsLeaseIsWaitedFor) {
    WriteBytes(At("file"), "whole");
    const auto open = [&](int flags) { return OpenFile(At("file").string(), flags); };
    FileDescriptor holder = open(O_RDWR);
    if (fcntl(holder.Get(), F_SETSIG, SIGURG) != 0 || fcntl(holder.Get(), F_SETLEASE, F_WRLCK) != 0)
        GTEST_SKIP() << "this file system has no leases";
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        holder = FileDescriptor();
    });
    std::string bytes;
    WaitBudget wait;
    EXPECT_EQ(ReadWholeFile(Wide(L"file"), 100, wait, bytes), ReadResult::Done);
    EXPECT_EQ(bytes, "whole");
    other.join();
}

TEST_F(FileReplacementTest, AFolderThatTakesNoFileKeepsTheOldOne) {
    if (geteuid() != 0) GTEST_SKIP() << "becomes another user, which only root can";
    std::filesystem::permissions(Folder(), static_cast<std::filesystem::perms>(0755));
    WriteBytes(At("file"), "kept");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0666), 0);
    constexpr uid_t kNobody = 65534;
    ASSERT_EQ(seteuid(kNobody), 0);
    const bool isReplaced = Replace("file", "kept", "other");
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_FALSE(isReplaced);
    EXPECT_EQ(ReadBytes(At("file")), "kept");
}

TEST_F(FileReplacementTest, AnotherWritersLockIsWaitedForWithinTheBudget) {
    WriteBytes(At("file"), "kept");
    const FileDescriptor other = OpenFile(Narrow("file"), O_RDONLY);
    ASSERT_EQ(flock(other.Get(), LOCK_EX), 0);
    WaitBudget wait(5ms);
    EXPECT_FALSE(ReplaceVersion(FindPlace(Narrow("file")), "kept", "other", wait));
    EXPECT_FALSE(wait.Wait(1ms));
    EXPECT_EQ(ReadBytes(At("file")), "kept");
    std::thread releaser([&] {
        std::this_thread::sleep_for(20ms);
        flock(other.Get(), LOCK_UN);
    });
    EXPECT_TRUE(Replace("file", "kept", "other"));
    releaser.join();
    EXPECT_EQ(ReadBytes(At("file")), "other");
}

TEST_F(FileReplacementTest, AFileThatSomebodyWritesStays) {
    WriteBytes(At("file"), "kept");
    if (ReadLease(OpenFile(Narrow("file"), O_RDONLY)).Get() != ReadLease::State::Taken)
        GTEST_SKIP() << "no leases on this file system";
    {
        const FileDescriptor editor = OpenFile(Narrow("file"), O_WRONLY);
        WaitBudget wait(50ms);
        EXPECT_FALSE(ReplaceVersion(FindPlace(Narrow("file")), "kept", "other", wait));
    }
    EXPECT_TRUE(Replace("file", "kept", "other"));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileReplacementTest, NoChangeOfManyWritersIsLost) {
    constexpr int kThreads = 4;
    constexpr int kChanges = 10;
    WriteBytes(At("file"), "");
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int change = 0; change < kChanges;) {
                WaitBudget wait;
                std::string bytes;
                if (ReadWholeFile(Wide(L"file"), 1000, wait, bytes) == ReadResult::Done &&
                    ReplaceWholeFile(Wide(L"file"), bytes, bytes + "x", wait))
                    ++change;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(ReadBytes(At("file")), std::string(kThreads * kChanges, 'x'));
    EXPECT_EQ(CountFiles(), 1);
}

// How an editor puts a text in the place of a file's contents.
struct EditorCase {
    const char* name;
    void (*save)(const std::string& path, const std::string& text);
};

void SaveInTwoParts(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::trunc);
    file << text.substr(0, text.size() / 2) << std::flush;
    std::this_thread::sleep_for(3ms);
    file << text.substr(text.size() / 2);
}

void SaveAtOnce(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::trunc) << text;
}

void TruncateThenWrite(const std::string& path, const std::string& text) {
    EXPECT_EQ(truncate(path.c_str(), 0), 0);
    std::ofstream(path, std::ios::in | std::ios::out) << text;
}

void WriteAndRename(const std::string& path, const std::string& text) {
    std::ofstream(path + ".new") << text;
    EXPECT_EQ(std::rename((path + ".new").c_str(), path.c_str()), 0);
}

void OpenThenTruncateAndWrite(const std::string& path, const std::string& text) {
    std::fstream file(path, std::ios::in | std::ios::out);
    std::this_thread::sleep_for(3ms);
    EXPECT_EQ(truncate(path.c_str(), 0), 0);
    file << text;
}

class EditorTest : public FileReplacementTest, public testing::WithParamInterface<EditorCase> {
protected:
    // A profile with the editor's number in every line, and a value of the library's in the last one.
    static std::string Text(int save, int value) {
        std::string text;
        for (int line = 0; line < 200; ++line) text += "key=" + std::to_string(save) + "\n";
        return text + kValueKey + std::to_string(value) + "\n";
    }
    static std::string WithValue(const std::string& text, int value) {
        const size_t start = text.find(kValueKey);
        return text.substr(0, start) + kValueKey + std::to_string(value) + "\n";
    }
    static constexpr const char* kValueKey = "value=";

    // What a host does: reads the file and stores its value, again and again.
    void ChangeValues(bool isStable) {
        for (int call = 1; !isOver_; ++call) {
            WaitBudget wait;
            std::string bytes;
            if (ReadWholeFile(Wide(L"file"), size_t{1} << 20U, wait, bytes) != ReadResult::Done) continue;
            const std::string wanted = WithValue(bytes, isStable ? 1 : call);
            if (wanted != bytes) static_cast<void>(ReplaceWholeFile(Wide(L"file"), bytes, wanted, wait));
        }
    }

    // The file but for the value, once it holds what is expected, or at last. The host needs a moment to put
    // back a save that it has just taken away.
    std::string ReadUntil(const std::string& expected) const {
        std::string now;
        for (int i = 0; i < 2000; ++i) {
            now = WithValue(ReadBytes(At("file")), 0);
            if (now == expected) break;
            std::this_thread::sleep_for(1ms);
        }
        return now;
    }

    void Run(bool isStable) {
        WriteBytes(At("file"), Text(0, 0));
        if (ReadLease(OpenFile(Narrow("file"), O_RDONLY)).Get() != ReadLease::State::Taken)
            GTEST_SKIP() << "no leases on this file system: what is promised is less";
        std::thread host([&] { ChangeValues(isStable); });
        std::mt19937 random(1);
        for (int save = 1; save <= 25; ++save) {
            GetParam().save(Narrow("file"), Text(save, 0));
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
            EXPECT_EQ(ReadUntil(Text(save, 0)), Text(save, 0));
        }
        isOver_ = true;
        host.join();
        isOver_ = false;
        EXPECT_EQ(CountFiles(), 1);
    }

private:
    std::atomic<bool> isOver_{false};
};

TEST_P(EditorTest, NoSaveIsTornOrLostBesideChangingValues) { Run(false); }
TEST_P(EditorTest, NoSaveIsTornOrLostBesideAStableValue) { Run(true); }

INSTANTIATE_TEST_SUITE_P(Ways, EditorTest,
                         testing::Values(EditorCase{"TwoParts", SaveInTwoParts},
                                         EditorCase{"AtOnce", SaveAtOnce},
                                         EditorCase{"TruncateThenWrite", TruncateThenWrite},
                                         EditorCase{"WriteAndRename", WriteAndRename},
                                         EditorCase{"OpenThenTruncate", OpenThenTruncateAndWrite}),
                         [](const auto& test) { return test.param.name; });

TEST_F(FileReplacementTest, AKilledProcessLeavesTheOldOrTheNewFile) {
    const std::string even(20000, 'e');
    const std::string odd(30000, 'o');
    WriteBytes(At("file"), even);
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (bool isEven = ReadBytes(At("file")) == even;; isEven = !isEven) {
                WaitBudget wait;
                static_cast<void>(
                    ReplaceWholeFile(Wide(L"file"), isEven ? even : odd, isEven ? odd : even, wait));
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(20000 + random() % 20000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const std::string bytes = ReadBytes(At("file"));
        EXPECT_TRUE(bytes == even || bytes == odd) << bytes.size();
        RemoveLeftover(Wide(L"file"));
        EXPECT_EQ(CountFiles(), 1);
    }
}

}  // namespace
}  // namespace vastrelline
