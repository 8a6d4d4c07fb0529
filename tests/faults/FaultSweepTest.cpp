// SPDX-License-Identifier: Apache-2.0

// Whole calls on a system that fails: each allocation, each call on a file in turn, and all from one on. A
// call gives an error's code or the very result of a system that works; the profile and the bitmap are wholly
// the old or wholly the new ones; and nothing is left beside them.
//
// By itself the program tries a few of these faults. With VASTRELLINE_SWEEP=whole in its environment it tries
// them all, which takes minutes: scripts/sweep-faults.sh.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "faults/FaultInjector.h"
#include "platform/MessageDialog.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

constexpr int32_t kWidth = 40;
constexpr int32_t kHeight = 32;
constexpr const char* kOldBitmap = "what another program left there";

bool IsWholeSweep() {
    const char* const wish = std::getenv("VASTRELLINE_SWEEP");
    return wish != nullptr && std::string_view(wish) == "whole";
}

// The sensor's values differ from those of the profile, so that every call has some to store.
constexpr const char* kSensor =
    "[Settings]\r\nRotation=0\r\nFlip=0\r\nRCCutOff=6\r\nRCCutOffR=8\r\nFrameWidth=40\r\nFrameHeight=32\r\n"
    "ImgCutLeft=0\r\nImgCutTop=0\r\nImgCutRight=0\r\nImgCutBottom=0\r\n";

ProfileWriter Reports(ProfileWriter writer, const ProfileFolder& folder) {
    return writer.Key("SAVE_LOG", "1")
        .Key("SAVE_IMAGE", "1")
        .Key("WRITE_PATH", folder.Narrow("dumps/"))
        .Key("SAVE_BACKUP", "1")
        .Key("SAVE_BACKUPPATH", folder.Narrow("backup"));
}

// A stage of each kind that asks for memory in a way of its own, and two threads.
ProfileWriter ListedStages(const char* mode, const ProfileFolder& folder) {
    ProfileWriter writer;
    writer.Section("Settings").Key("TargetRange", "3500").Key("MaxCut", "0.01").Key("MinCut", "0.01");
    writer.Key("RCCutOff", "150");
    writer.Section("General").Key("PROCMODE", mode).Key("INVERSE_INTENSITY", "2");
    return Reports(writer, folder)
        .Stage("7", {{"MEDIAN_SIZE", "5"}})
        .Stage("8", {{"GAUSSIAN_SIZE", "0.8"}})
        .Stage("12", {{"PREPROCESSING_ENHANCESCALE", "1.3"}})
        .Stage("1")
        .Stage("2", {{"STRETCH_SEPARATION_CNT", "3"}, {"STRETCH_LIMITBIN", "2"}})
        .Stage("6", {{"APPLY_VARIABLE_RATIO", "1"}})
        .Stage("4", {{"MODE_CONTRAST", "1"}, {"NOISE_WIDTH_CONTRAST", "150"}})
        .Stage("3", {{"BLOCK_SIZE", "16"}})
        .Stage("5", {{"ADAPTIVESMOOTHING_MASK", "7"}})
        .Stage("9", {{"POST_SIGMOID_RATIO", "0.3"}})
        .Stage("10")
        .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-60"}})
        .Stage("13", {{"HDR_BLOCK_SIZE", "16"}});
}

ProfileWriter ConfiguredProfile(const ProfileFolder& folder) { return ListedStages("2", folder); }

// A threshold that the darkness of every frame passes.
ProfileWriter LowProfile(const ProfileFolder& folder) {
    ProfileWriter writer;
    writer.Section("Settings").Key("RCCutOff", "150");
    writer.Section("General").Key("PROCMODE", "3").Key("SETCLIPBIN", "-1");
    writer = Reports(writer, folder);
    return writer.Section("IP_LOWMODE").Key("03_BLOCK_SIZE", "32").Key("04_BLOCK_SIZE", "16");
}

ProfileWriter FixedProfile(const ProfileFolder& folder) {
    ProfileWriter writer;
    writer.Section("Settings").Key("RCCutOff", "150");
    writer.Section("General").Key("PROCMODE", "1").Key("POST_SIGMOID_RATIO", "0.3");
    for (const char* flag : {"HISTOGRAM_STRETCH", "PRE_MEDIAN", "PRE_GAUSSIAN", "POST_GAUSSIAN",
                             "POST_SIGMOID_LUT", "POST_GAMMA_LUT", "POST_MEDIAN", "CONTRAST_ENHANCE2",
                             "CONTRAST_ENHANCE", "PYRAMID_PROCESSING", "PRE_CONTRAST", "ADAPTIVE_SMOOTHING"})
        writer.Key(flag, "1");
    writer.Key("STRETCH_SEPARATION_CNT", "3").Key("MODE_CONTRAST", "3").Key("BLOCK_SIZE", "16");
    writer.Key("ADAPTIVESMOOTHING_MASK", "7");
    return Reports(writer, folder);
}

struct CallArguments {
    uint16_t* input;
    uint16_t* output;
    const char* profile;
    const char* bitmap;
};

struct SweptCall {
    const char* name;
    bool storesSensor;  // whether the chain brings the sensor's values into the profile
    ProfileWriter (*makeProfile)(const ProfileFolder& folder);
    int32_t (*call)(const CallArguments& a);
};

void PrintTo(const SweptCall& swept, std::ostream* out) { *out << swept.name; }

const SweptCall kCalls[] = {
    {"Configured", true, ConfiguredProfile,
     [](const CallArguments& a) {
         return ImageProcessing(a.input, a.output, kWidth, kHeight, a.profile, "General", 1, 1);
     }},
    {"LowExposure", true, LowProfile,
     [](const CallArguments& a) {
         return ImageProcessingS(a.input, a.output, kWidth, kHeight, a.profile, "General", 0, 0, nullptr);
     }},
    {"Extended", true, ConfiguredProfile,
     [](const CallArguments& a) {
         return ImageProcessing_NE(a.input, kWidth, kHeight, a.profile, "General", 0, 0, a.bitmap, "unit", 2);
     }},
    {"Fixed", false, FixedProfile,
     [](const CallArguments& a) {
         return ImageProcessing(a.input, a.output, kWidth, kHeight, a.profile, "General", 0, 0);
     }},
    {"Cr", false, FixedProfile,
     [](const CallArguments& a) {
         return ImageProcessingCR(a.input, a.output, kWidth, kHeight, a.profile, "General");
     }},
    {"Bitmap", false, FixedProfile,
     [](const CallArguments& a) {
         return ImageProcessing_N(a.input, kWidth, kHeight, a.profile, "General", 0, 0, a.bitmap);
     }},
    {"LowExposureBitmap", true, LowProfile,
     [](const CallArguments& a) {
         return ImageProcessing_NS(a.input, kWidth, kHeight, a.profile, "General", 0, 0, a.bitmap, nullptr);
     }},
};

// What a call leaves that a host may look at.
struct Outcome {
    int32_t code = -1;
    std::vector<uint16_t> pixels;
    std::string profile;
    std::string bitmap;
    std::vector<std::string> leftovers;
    int64_t callCount = 0;
    int64_t openBlocks = 0;
    std::string failedFunction;
    bool hasKeptFile = false;
};

std::string ReadIfThere(const std::filesystem::path& path) {
    return std::filesystem::is_regular_file(path) ? ReadBytes(path) : std::string();
}

// The names of what a call made beside the files it was asked for, and did not take away.
std::vector<std::string> FindLeftovers(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.front() == '.' || name.back() == '~' || name.ends_with(".tmp"))
            names.push_back(std::filesystem::relative(entry.path(), folder).string());
    }
    return names;
}

// The folder of one call after the other, each of which finds it as it was at first.
class SweptFolder {
public:
    explicit SweptFolder(const SweptCall& swept)
        : swept_(swept),
          profile_(swept.makeProfile(folder_).Text()),
          input_(MadeRadiograph(kWidth, kHeight)) {
        folder_.Sensor().WritePlain(kSensor);
        folder_.Sensor().WriteSensor("unit", kSensor);
    }

    const std::string& OldProfile() const { return profile_; }

    // Takes away what calls have made, but for what the caller wants to see gone by itself.
    void Restore() {
        const std::filesystem::path root = folder_.At("");
        for (const auto& entry : std::filesystem::directory_iterator(root))
            std::filesystem::remove_all(entry.path());
        std::filesystem::create_directory(folder_.At("dumps"));
        RestoreProfile();
        WriteBytes(folder_.At("picture.bmp"), kOldBitmap);
    }

    // The profile lies still for long, so that nobody waits for an editor to end.
    void RestoreProfile() {
        WriteBytes(folder_.At("profile.ini"), profile_);
        std::filesystem::last_write_time(
            folder_.At("profile.ini"), std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    }

    Outcome Call(const FaultPlan& plan) {
        Outcome outcome;
        Frame input = input_;
        Frame output(kWidth, kHeight);
        const std::string profile = folder_.Profile();
        const std::string bitmap = folder_.Narrow("picture.bmp");
        const MessageHandler before = SetMessageHandler([](const std::wstring&, MessageIcon) {});
        {
            const ScopedFaults faults(plan);
            outcome.code = swept_.call({input.Data(), output.Data(), profile.c_str(), bitmap.c_str()});
            outcome.callCount = faults.CallCount();
            outcome.openBlocks = faults.OpenBlocks();
            outcome.hasKeptFile = faults.HasKeptFile();
            if (faults.FailedFunction() != nullptr) outcome.failedFunction = faults.FailedFunction();
        }
        SetMessageHandler(before);
        outcome.pixels = output.pixels;
        outcome.profile = ReadIfThere(folder_.At("profile.ini"));
        outcome.bitmap = ReadIfThere(folder_.At("picture.bmp"));
        outcome.leftovers = FindLeftovers(folder_.At(""));
        return outcome;
    }

private:
    SweptCall swept_;
    ProfileFolder folder_;
    std::string profile_;
    Frame input_;
};

class FaultSweepTest : public testing::TestWithParam<SweptCall> {
protected:
    void SetUp() override {
        folder_.Restore();
        folder_.Call({});  // what is made once in a process
        folder_.Restore();
        expected_ = folder_.Call({});
        ASSERT_EQ(expected_.code, VASTRELLINE_OK);
        ASSERT_EQ(expected_.profile != folder_.OldProfile(), GetParam().storesSensor);
        ASSERT_EQ(expected_.openBlocks, 0) << "a call keeps no memory";
        ASSERT_TRUE(expected_.leftovers.empty());
    }

    // One call under the plan, from the start. Returns what is wrong with it; empty: nothing.
    std::string Try(const FaultPlan& plan) {
        folder_.Restore();
        const Outcome outcome = folder_.Call(plan);
        std::string wrong = FindWrong(outcome) + FindLeft(outcome, plan);
        if (!wrong.empty())
            wrong = "fault at call " + std::to_string(plan.first) + " (" + outcome.failedFunction +
                    "), code " + std::to_string(outcome.code) + ": " + wrong;
        return wrong;
    }

    std::string FindWrong(const Outcome& outcome) {
        std::string wrong;
        if (outcome.code < VASTRELLINE_OK || outcome.code > VASTRELLINE_INTERNAL_FAILURE)
            wrong += "no such code; ";
        if (outcome.code == VASTRELLINE_OK) {
            if (outcome.pixels != expected_.pixels) wrong += "other pixels; ";
            if (outcome.bitmap != expected_.bitmap) wrong += "another bitmap; ";
        }
        if (outcome.profile != folder_.OldProfile() && outcome.profile != expected_.profile)
            wrong += "the profile is neither old nor new; ";
        // An empty bitmap tells that there was an attempt without the memory for one.
        const bool isEmptyOnPurpose = outcome.code == VASTRELLINE_NO_BITMAP && outcome.bitmap.empty();
        if (outcome.bitmap != kOldBitmap && outcome.bitmap != expected_.bitmap && !isEmptyOnPurpose)
            wrong += "the bitmap is neither old nor new; ";
        return wrong;
    }

    // Where everything fails from some call on nothing can be taken away either, but the next call does it.
    // Not in the folder of the backups, whose names tell the time, so that no call meets one of them again.
    std::string FindLeft(const Outcome& outcome, const FaultPlan& plan) {
        std::string wrong;
        // Values that did not get to the file, or of which a call cannot see that they did, are kept for the
        // next one.
        const bool mayKeepValues =
            outcome.profile != expected_.profile || (plan.kind == FaultKind::Files && plan.isForGood);
        if (outcome.openBlocks > 0 && !mayKeepValues) wrong += "memory was kept; ";
        if (outcome.leftovers.empty()) return wrong;
        if (!plan.isForGood && !outcome.hasKeptFile) wrong += outcome.leftovers.front() + " was left; ";
        folder_.RestoreProfile();
        for (const std::string& left : folder_.Call({}).leftovers)
            if (!left.starts_with("backup/")) wrong += left + " stays for good; ";
        return wrong;
    }

    // Every step-th call of the kind, from the first to the last of a call without faults.
    void Sweep(FaultPlan plan, int64_t step) {
        folder_.Restore();
        const int64_t callCount = folder_.Call(plan).callCount;
        ASSERT_GT(callCount, 0);
        const int64_t stride = IsWholeSweep() ? 1 : step;
        std::vector<std::string> complaints;
        int64_t tried = 0;
        for (plan.first = 1; plan.first <= callCount; plan.first += stride, ++tried) {
            const std::string wrong = Try(plan);
            if (!wrong.empty()) complaints.push_back(wrong);
        }
        constexpr size_t kShown = 12;
        for (size_t i = 0; i < std::min(complaints.size(), kShown); ++i) ADD_FAILURE() << complaints[i];
        EXPECT_TRUE(complaints.empty()) << complaints.size() << " of " << tried << " faults";
        RecordProperty("faults", static_cast<int>(tried));
        folder_.Restore();
        const Outcome last = folder_.Call({});
        EXPECT_EQ(FindWrong(last) + FindLeft(last, {}), "") << "the call after all faults";
    }

    SweptFolder folder_{GetParam()};
    Outcome expected_;
};

TEST_P(FaultSweepTest, EachAllocationFails) { Sweep({.kind = FaultKind::Memory}, 29); }

TEST_P(FaultSweepTest, AllAllocationsFromOneOnFail) {
    Sweep({.kind = FaultKind::Memory, .isForGood = true}, 61);
}

TEST_P(FaultSweepTest, EachCallOnAFileFails) { Sweep({.kind = FaultKind::Files}, 17); }

TEST_P(FaultSweepTest, EachCallOnAFileIsRefused) {
    Sweep({.kind = FaultKind::Files, .reason = FaultReason::Refused}, 19);
}

TEST_P(FaultSweepTest, AllCallsOnFilesFromOneOnFail) {
    Sweep({.kind = FaultKind::Files, .isForGood = true}, 37);
}

TEST_P(FaultSweepTest, TheDiskIsFullFromOneCallOn) {
    Sweep({.kind = FaultKind::Files, .isForGood = true, .reason = FaultReason::Refused}, 41);
}

TEST_P(FaultSweepTest, NoThreadStarts) {
    for (const bool isForGood : {false, true})
        EXPECT_EQ(Try({.kind = FaultKind::Threads, .first = 1, .isForGood = isForGood}), "");
}

// A host may have closed the handles of its terminal: the files of a call then get their numbers.
TEST_P(FaultSweepTest, TheStandardHandlesAreClosed) {
    constexpr int kFirstFreeNumber = 100;
    std::vector<int> kept;
    for (const int standard : {0, 1, 2}) {
        kept.push_back(fcntl(standard, F_DUPFD_CLOEXEC, kFirstFreeNumber));
        close(standard);
    }
    folder_.Restore();
    const Outcome outcome = folder_.Call({});
    for (const int standard : {0, 1, 2}) {
        dup2(kept[static_cast<size_t>(standard)], standard);
        close(kept[static_cast<size_t>(standard)]);
    }
    EXPECT_EQ(outcome.code, VASTRELLINE_OK);
    EXPECT_EQ(FindWrong(outcome) + FindLeft(outcome, {}), "");
}

INSTANTIATE_TEST_SUITE_P(Chains, FaultSweepTest, testing::ValuesIn(kCalls),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline
