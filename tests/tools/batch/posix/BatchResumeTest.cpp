// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "ToolWorkers.h"
#include "batch/BatchManifest.h"
#include "platform/MemoryLimit.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

// The built program with its workers: sudden ends of both.
namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr int kFrames = 12;

class BatchResume : public testing::Test {
protected:
    BatchResume() {
        fs::create_directories(folder_.Path() / "in/a");
        fs::create_directories(folder_.Path() / "temporary");
        WriteBytes(
            folder_.Path() / "p.ini",
            "[General]\nPROCMODE=2\nBITSTORED=12\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\nFunctionCount=1\n"
            "00_Function_Number=10\n");
        // A median that takes more than a minute on a whole radiograph.
        WriteBytes(folder_.Path() / "slow.ini",
                   "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\nFunctionCount=1\n00_Function_Number=7\n"
                   "00_MEDIAN_SIZE=301\n00_MEDIAN_REPEAT=2000000000\n");
        std::mt19937 random(20240501);
        for (int i = 0; i < kFrames; ++i) {
            std::string pixels;
            for (int k = 0; k < 32 * 24; ++k) {
                const uint32_t level = random() % 4096;
                pixels += static_cast<char>(level & 255U);
                pixels += static_cast<char>(level >> 8U);
            }
            WriteBytes(
                folder_.Path() / "in" / (i % 2 == 0 ? "a" : ".") / (std::to_string(i / 2) + "_32x24.raw"),
                pixels);
        }
    }

    pid_t Begin(const std::vector<std::string>& arguments) const {
        std::vector<std::string> words{VASTRELLINE_TOOL, "batch"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        // What a killed process leaves among temporary files goes with the test.
        std::vector<std::string> variables{"TMPDIR=" + folder_.Narrow("temporary")};
        for (char** each = environ; *each != nullptr; ++each)
            if (!std::string_view(*each).starts_with("TMPDIR=")) variables.emplace_back(*each);
        std::vector<char*> environment;
        environment.reserve(variables.size() + 1);
        for (std::string& variable : variables) environment.push_back(variable.data());
        environment.push_back(nullptr);

        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        const int flags = O_WRONLY | O_CREAT | O_TRUNC;
        const std::string report = folder_.Narrow("report");
        const std::string errors = folder_.Narrow("errors");
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, report.c_str(), flags, 0600);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), flags, 0600);
        pid_t child = 0;
        const int failure =
            posix_spawn(&child, VASTRELLINE_TOOL, &actions, nullptr, pointers.data(), environment.data());
        posix_spawn_file_actions_destroy(&actions);
        if (failure != 0) throw std::runtime_error("the tool does not start");
        return child;
    }

    static int Await(pid_t child) {
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::vector<std::string> Words(const std::string& out, const std::vector<std::string>& more) const {
        std::vector<std::string> words{folder_.Narrow("in"), "--profile", folder_.Narrow("p.ini"),
                                       "--section",          "General",   "--out",
                                       folder_.Narrow(out),  "--jobs",    "2"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    // A process that was killed in the middle of starting a worker holds its lock a moment longer.
    int ResumeToTheEnd(const std::string& out) const {
        constexpr int kAttempts = 200;
        for (int attempt = 0;; ++attempt) {
            const int code = Await(Begin(Words(out, {"--resume", "--json"})));
            const bool isLocked =
                ReadBytes(folder_.Path() / "errors").find("another batch") != std::string::npos;
            if (!isLocked || attempt == kAttempts) return code;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    }

    std::map<std::string, std::string> Results(const std::string& out, bool withDrafts) const {
        std::map<std::string, std::string> results;
        const fs::path folder = folder_.Path() / out;
        if (!fs::exists(folder)) return results;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const std::string leaf = entry.path().filename().string();
            if (!entry.is_regular_file() || leaf == kManifestLeaf) continue;
            if (withDrafts || !leaf.starts_with('.'))
                results[entry.path().lexically_relative(folder).string()] = ReadBytes(entry.path());
        }
        return results;
    }

    nlohmann::json Summary() const {
        std::istringstream report(ReadBytes(folder_.Path() / "report"));
        std::string last;
        for (std::string line; std::getline(report, line);) last = line;
        return nlohmann::json::parse(last);
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

TEST_F(BatchResume, DoesEveryFrameOnceAfterSuddenEnds) {
    ASSERT_EQ(Await(Begin(Words("whole", {}))), 0) << ReadBytes(folder_.Path() / "errors");
    const std::map<std::string, std::string> wanted = Results("whole", true);
    ASSERT_EQ(wanted.size(), size_t{kFrames});

    std::mt19937 random(20240501);
    constexpr int kKills = 8;
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t tool = Begin(Words("out", {"--resume"}));
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 120));
        ::kill(tool, SIGKILL);
        Await(tool);
        for (const auto& [leaf, bytes] : Results("out", false))
            EXPECT_EQ(bytes == wanted.at(leaf), true) << leaf << " is not whole";
    }
    EXPECT_EQ(ResumeToTheEnd("out"), 0) << ReadBytes(folder_.Path() / "errors");
    EXPECT_EQ(Results("out", true) == wanted, true) << "also no draft is left";
    const nlohmann::json summary = Summary();
    EXPECT_EQ(summary["done"].get<int>() + summary["before"].get<int>(), kFrames);
    EXPECT_EQ(ResumeToTheEnd("out"), 0);
    EXPECT_EQ(Summary()["before"], kFrames);
}

TEST_F(BatchResume, RefusesASecondBatchInTheFolderOfARunningOne) {
    const BatchManifest running(folder_.Narrow("out"), BatchManifest::Opening::New, {});
    for (const char* const how : {"--resume", "--force"}) EXPECT_EQ(Await(Begin(Words("out", {how}))), 5);
    EXPECT_NE(ReadBytes(folder_.Path() / "errors").find("another batch works"), std::string::npos);
    EXPECT_TRUE(Results("out", true).empty());
}

class SlowBatch : public BatchResume {
protected:
    std::vector<std::string> SlowWords(const std::vector<std::string>& more) const {
        const std::string frame = (SourceTreeFolder() / "tests/data/frames/bitewing_1300x1668.png").string();
        std::vector<std::string> words{frame,     "--profile", folder_.Narrow("slow.ini"), "--section",
                                       "General", "--out",     folder_.Narrow("out")};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
};

TEST_F(SlowBatch, TellsOfAWorkerThatWasKilled) {
    const pid_t tool = Begin(SlowWords({}));
    int status = 0;
    while (waitpid(tool, &status, WNOHANG) == 0) {
        for (const pid_t worker : WorkersOf(tool)) kill(worker, SIGKILL);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 4);
    EXPECT_NE(ReadBytes(folder_.Path() / "errors").find("ended by signal 9"), std::string::npos);
    EXPECT_TRUE(Results("out", true).empty());
}

TEST_F(SlowBatch, EndsAWorkerThatTakesTooLong) {
    EXPECT_EQ(Await(Begin(SlowWords({"--timeout", "0.1"}))), 4);
    EXPECT_NE(ReadBytes(folder_.Path() / "errors").find("took longer than 100 ms"), std::string::npos);
}

// A radiograph needs several megabytes for its scratch alone.
TEST_F(SlowBatch, AFrameThatTakesTooMuchMemoryFails) {
    if (!CanLimitMemory()) GTEST_SKIP() << "this build watches memory";
    std::vector<std::string> words = SlowWords({"--memory", "1", "--json"});
    words[2] = folder_.Narrow("p.ini");
    EXPECT_EQ(Await(Begin(words)), 4);
    EXPECT_EQ(Summary()["failed"], 1);
    EXPECT_TRUE(Results("out", true).empty());
    words.insert(words.end(), {"--memory", "256", "--resume"});
    words.erase(words.begin() + 7, words.begin() + 9);
    EXPECT_EQ(Await(Begin(words)), 0) << ReadBytes(folder_.Path() / "errors");
}
TEST_F(SlowBatch, CancelsAtOnce) {
    const pid_t tool = Begin(SlowWords({"--keep-going", "--json"}));
    while (WorkersOf(tool).empty()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    kill(tool, SIGINT);
    EXPECT_EQ(Await(tool), 130);
    EXPECT_TRUE(Results("out", true).empty());
    EXPECT_EQ(Summary()["exit"], 130);
    EXPECT_EQ(Summary()["left"], 1);
}

}  // namespace
}  // namespace vastrelline
