// SPDX-License-Identifier: Apache-2.0

// Two programs that process frames with one profile at the same time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "platform/Files.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/MaskedLog.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// Two ends of a pipe. Bytes only ever say that it is time.
class Signal {
public:
    Signal() { isMade_ = pipe(ends_.data()) == 0; }
    ~Signal() {
        for (const int end : ends_) close(end);
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    bool Give() const { return isMade_ && write(ends_[1], "", 1) == 1; }
    bool Await() const {
        char byte = 0;
        return isMade_ && read(ends_[0], &byte, 1) == 1;
    }

private:
    std::array<int, 2> ends_ = {-1, -1};
    bool isMade_ = false;
};

// A copy of this process that does a piece of work and ends.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<bool()>& work) : child_(fork()) {
        if (child_ != 0) return;
        // Nothing that the original owns may be destroyed here, files on the disk least of all.
        bool isDone = false;
        try {
            isDone = work();
        } catch (...) {
            _exit(2);
        }
        _exit(isDone ? 0 : 1);
    }
    ~OtherProcess() { Wait(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    // Whether the work was done, neither failed nor crashed.
    bool Wait() {
        if (child_ <= 0) return hasSucceeded_;
        int status = -1;
        hasSucceeded_ =
            waitpid(child_, &status, 0) == child_ && WIFEXITED(status) && WEXITSTATUS(status) == 0;
        child_ = -1;
        return hasSucceeded_;
    }

private:
    pid_t child_;
    bool hasSucceeded_ = false;
};

constexpr int32_t kWidth = 40;
constexpr int32_t kHeight = 30;

// Blanks, comments and a second section of another case: whatever a run writes, these lines stay.
constexpr const char* kProfile =
    "; made by hand\r\n\r\n[General]\r\nPROCMODE = 2\r\nSAVE_LOG=1\r\nFunctionCount=2\r\n"
    "00_Function_Number=8\r\n; the curve\r\n01_Function_Number=10\r\n01_POST_GAMMA_RATIO=2\r\n\r\n"
    "[Fixed]\r\nPROCMODE=1\r\nSAVE_LOG=1\r\nPRE_GAUSSIAN=1\r\nPOST_GAMMA_LUT=1\r\n\r\n"
    "[other]\r\nkey=value\r\n; the end\r\n";

constexpr const char* kSensor =
    "[Settings]\r\nRotation=1\r\nFlip=2\r\nRCCutOff=9\r\nRCCutOffR=8\r\nFrameWidth=40\r\nFrameHeight=30\r\n"
    "ImgCutLeft=3\r\nImgCutTop=4\r\nImgCutRight=5\r\nImgCutBottom=6\r\n";

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        lines.back() += c;
        if (c == '\n') lines.emplace_back();
    }
    lines.pop_back();  // what follows the last line end: nothing
    return lines;
}

// The lines of a profile that are not those of kProfile, sorted; those of kProfile must stand in their order.
std::vector<std::string> AddedLines(const std::string& profile) {
    const std::vector<std::string> original = LinesOf(kProfile);
    std::vector<std::string> added;
    size_t next = 0;
    for (const std::string& line : LinesOf(profile)) {
        if (next < original.size() && line == original[next])
            ++next;
        else
            added.push_back(line);
    }
    EXPECT_EQ(next, original.size()) << "lost: " << (next < original.size() ? original[next] : "");
    std::sort(added.begin(), added.end());
    return added;
}

std::vector<std::string> Sorted(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

class TwoProcessesTest : public testing::TestWithParam<const char*> {
protected:
    TwoProcessesTest() {
        folder_.Sensor().WritePlain(kSensor);
        WriteBytes(folder_.At("profile.ini"), kProfile);
    }
    ~TwoProcessesTest() override {
        SharedConfiguredState() = configuredBefore_;
        SharedFixedState() = fixedBefore_;
    }

    static bool IsConfigured() { return std::string(GetParam()) == "General"; }

    // One call; nothing but its code 0 gives its frame.
    static Frame Process(const ProfileFolder& folder) {
        Frame input = MadeRadiograph(kWidth, kHeight);
        Frame output(kWidth, kHeight);
        const int32_t code = ImageProcessing(input.Data(), output.Data(), kWidth, kHeight,
                                             folder.Profile().c_str(), GetParam(), 0, 0);
        return code == VASTRELLINE_OK ? output : Frame(0, 0);
    }

    struct Alone {
        Frame output;
        std::string log;  // its times masked
    };

    // What a run makes that nobody disturbs.
    static Alone RunAlone() {
        const ProfileFolder folder;
        folder.Sensor().WritePlain(kSensor);
        WriteBytes(folder.At("profile.ini"), kProfile);
        return {Process(folder), MaskTimes(folder.Log())};
    }

    const ProfileFolder& Folder() const { return folder_; }

private:
    const ConfiguredState configuredBefore_ = SharedConfiguredState();
    const FixedState fixedBefore_ = SharedFixedState();
    ProfileFolder folder_;
};

TEST_P(TwoProcessesTest, EachGetsItsFramesAndTheProfileKeepsItsLines) {
    constexpr int kCalls = 24;
    const Alone alone = RunAlone();
    ASSERT_EQ(alone.output.width, kWidth);
    const Signal start;
    const auto work = [&] {
        bool areRight = start.Await();
        for (int i = 0; i < kCalls; ++i) areRight = Process(Folder()) == alone.output && areRight;
        return areRight;
    };
    OtherProcess one(work);
    OtherProcess two(work);
    ASSERT_TRUE(start.Give() && start.Give());
    EXPECT_TRUE(one.Wait());
    EXPECT_TRUE(two.Wait());

    const std::string profile = ReadBytes(Folder().At("profile.ini"));
    EXPECT_EQ(AddedLines(profile), IsConfigured() ? Sorted(LinesOf(kSensor)) : std::vector<std::string>{});
    EXPECT_EQ(Folder().Files(), std::vector<std::string>{"ExtraOralLog.txt"});

    // Runs that found the log held by the other one have none; the others stand there whole, one after the
    // other. In one family each run starts the log anew.
    std::string log = MaskTimes(Folder().Log());
    int runs = 0;
    for (; !alone.log.empty() && log.starts_with(alone.log); ++runs) log.erase(0, alone.log.size());
    EXPECT_EQ(log, "");
    EXPECT_GE(runs, 1);
    EXPECT_LE(runs, IsConfigured() ? 2 * kCalls : 1);
}

TEST_P(TwoProcessesTest, LogThatTheOtherHoldsIsOffForThatRunOnly) {
    const Alone alone = RunAlone();
    const Signal held;
    const Signal release;
    OtherProcess other([&] {
        const OutputFile log(Folder().Wide(L"ExtraOralLog.txt"), OpenMode::AppendExclusive);
        return log.IsOpen() && held.Give() && release.Await();
    });
    ASSERT_TRUE(held.Await());
    EXPECT_THAT(Process(Folder()), EqualsFrame(alone.output));
    EXPECT_EQ(Folder().Log(), "");
    ASSERT_TRUE(release.Give());
    ASSERT_TRUE(other.Wait());
    EXPECT_THAT(Process(Folder()), EqualsFrame(alone.output));
    EXPECT_EQ(MaskTimes(Folder().Log()), alone.log);
}

INSTANTIATE_TEST_SUITE_P(Chains, TwoProcessesTest, testing::Values("General", "Fixed"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace vastrelline
