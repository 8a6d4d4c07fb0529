// SPDX-License-Identifier: Apache-2.0

// Processes that call in a loop beside people who save the profile, and processes that are killed: whatever
// happens, the profile is one that somebody saved, with the sensor's values or without them.
//
// By itself the program makes a few saves and kills. With VASTRELLINE_SWEEP=whole in its environment it makes
// 1,000 saves in each way and 500 kills: scripts/sweep-faults.sh.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

constexpr int32_t kSide = 16;
constexpr int kSensors = 7;

using std::chrono::microseconds;
using std::chrono::milliseconds;

int CountOf(int usual, int whole) {
    const char* const wish = std::getenv("VASTRELLINE_SWEEP");
    return wish != nullptr && std::string_view(wish) == "whole" ? whole : usual;
}

// A copy of this process that works until it is killed.
class EndlessProcess {
public:
    explicit EndlessProcess(const std::function<void()>& work) : child_(fork()) {
        EXPECT_GE(child_, 0);
        if (child_ != 0) return;
        for (;;) work();
    }
    ~EndlessProcess() {
        if (child_ <= 0) return;  // a signal to -1 would go to everybody
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    EndlessProcess(const EndlessProcess&) = delete;
    EndlessProcess& operator=(const EndlessProcess&) = delete;

private:
    pid_t child_;
};

// A host whose sensor may change from call to call: sensor n has n + 1 for each of its ten values.
class ProfileStress {
public:
    ProfileStress() {
        for (int sensor = 0; sensor < kSensors; ++sensor) {
            std::string text = "[Settings]\n";
            for (const char* key : kKeys) text += std::string(key) + "=" + std::to_string(sensor + 1) + "\n";
            folder_.Sensor().WriteSensor(std::to_string(sensor), text);
        }
    }

    int32_t Call(int sensor) const {
        Frame input = Noise(kSide, kSide, 4095, 5);
        const std::string profile = folder_.Profile();
        const std::string name = std::to_string(sensor);
        return ImageProcessing_NE(input.Data(), kSide, kSide, profile.c_str(), "General", 0, 0, nullptr,
                                  name.c_str(), 0);
    }

    void Write(const std::string& text) const { WriteBytes(File(), text); }
    std::string Read() const { return ReadBytes(File()); }
    std::filesystem::path File() const { return folder_.At("profile.ini"); }
    std::vector<std::string> OtherFiles() const { return folder_.Files(); }

    // Whether a profile is this text, with all ten values of one sensor behind it or none.
    static bool IsWhole(const std::string& profile, const std::string& text) {
        if (!profile.starts_with(text)) return false;
        std::istringstream lines(profile.substr(text.size()));
        std::multiset<std::string> values;
        size_t keyCount = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line == "[Settings]") continue;
            const size_t equals = line.find('=');
            if (equals == std::string::npos) return false;
            values.insert(line.substr(equals + 1));
            ++keyCount;
        }
        return keyCount == 0 || (keyCount == kKeys.size() && values.count(*values.begin()) == keyCount);
    }

private:
    static constexpr std::array kKeys = {"ImgCutLeft", "ImgCutTop",  "ImgCutRight", "ImgCutBottom",
                                         "Rotation",   "Flip",       "RCCutOff",    "RCCutOffR",
                                         "FrameWidth", "FrameHeight"};

    ProfileFolder folder_;
};

std::string EditedProfile(int save) {
    std::string text = "[General]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n";
    for (int line = 0; line < 60; ++line)
        text += "; line " + std::to_string(line) + " of " + std::to_string(save) + "\n";
    return text + "EDIT=" + std::to_string(save) + "\n";
}

// How an editor saves.
struct Way {
    const char* name;
    void (*save)(const std::filesystem::path& file, const std::string& text);
};

class Descriptor {
public:
    Descriptor(const std::filesystem::path& file, int flags) : number_(open(file.c_str(), flags, 0644)) {
        EXPECT_GE(number_, 0);
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void Write(std::string_view text) const {
        EXPECT_EQ(write(number_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

private:
    int number_;
};

constexpr int kCut = O_WRONLY | O_CREAT | O_TRUNC;

const Way kWays[] = {
    {"TwoPartsApart",
     [](const std::filesystem::path& file, const std::string& text) {
         const Descriptor out(file, kCut);
         out.Write(std::string_view(text).substr(0, text.size() / 2));
         std::this_thread::sleep_for(milliseconds(3));
         out.Write(std::string_view(text).substr(text.size() / 2));
     }},
    {"AtOnce",
     [](const std::filesystem::path& file, const std::string& text) { Descriptor(file, kCut).Write(text); }},
    {"CutThenWritten",
     [](const std::filesystem::path& file, const std::string& text) {
         EXPECT_EQ(truncate(file.c_str(), 0), 0);
         std::this_thread::sleep_for(milliseconds(1));
         Descriptor(file, O_WRONLY).Write(text);
     }},
    {"WrittenBesideAndRenamed",
     [](const std::filesystem::path& file, const std::string& text) {
         const std::filesystem::path beside = file.parent_path() / "editor.tmp";
         Descriptor(beside, kCut).Write(text);
         std::filesystem::rename(beside, file);
     }},
};

struct StressCase {
    Way way;
    bool isChanging;
};

class EditedProfileTest : public testing::TestWithParam<StressCase> {};

TEST_P(EditedProfileTest, KeepsEverySave) {
    const ProfileStress stress;
    stress.Write(EditedProfile(0));
    int call = 0;
    const EndlessProcess host([&] {
        const int32_t code = stress.Call(GetParam().isChanging ? ++call % kSensors : 0);
        if (code != VASTRELLINE_OK) _exit(1);  // and no save will get the sensor's values
    });
    std::mt19937 random(7);
    int withValues = 0;
    const int saves = CountOf(12, 1000);
    for (int save = 1; save <= saves; ++save) {
        const std::string text = EditedProfile(save);
        GetParam().way.save(stress.File(), text);
        std::this_thread::sleep_for(microseconds(random() % 60'000));
        // A replacement that met the save may be on its way back; what is lost never comes.
        std::string profile = stress.Read();
        for (int i = 0; i < 200 && !ProfileStress::IsWhole(profile, text); ++i) {
            std::this_thread::sleep_for(milliseconds(10));
            profile = stress.Read();
        }
        ASSERT_TRUE(ProfileStress::IsWhole(profile, text)) << "save " << save << "\n" << profile;
        withValues += profile.size() > text.size() ? 1 : 0;
    }
    RecordProperty("saves", saves);
    RecordProperty("savesWithTheSensorsValues", withValues);
    // The host did take part: sooner or later its values stand behind the last save.
    for (int i = 0; i < 1000 && stress.Read().size() == EditedProfile(saves).size(); ++i)
        std::this_thread::sleep_for(milliseconds(10));
    EXPECT_GT(stress.Read().size(), EditedProfile(saves).size());
}

std::vector<StressCase> AllStressCases() {
    std::vector<StressCase> cases;
    for (const Way& way : kWays)
        for (const bool isChanging : {false, true}) cases.push_back({way, isChanging});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Ways, EditedProfileTest, testing::ValuesIn(AllStressCases()), [](const auto& test) {
    return std::string(test.param.way.name) + (test.param.isChanging ? "Changing" : "Stable");
});

TEST(KilledProcess, LeavesTheOldOrTheNewProfileAndTheNextCallNothingBeside) {
    const ProfileStress stress;
    const std::string text = EditedProfile(0);
    stress.Write(text);
    std::mt19937 random(11);
    const int kills = CountOf(12, 500);
    int leftovers = 0;
    for (int i = 0; i < kills; ++i) {
        {
            int call = i;
            const EndlessProcess host([&] { stress.Call(++call % kSensors); });
            std::this_thread::sleep_for(microseconds(random() % 40'000));
        }
        const std::string profile = stress.Read();
        ASSERT_TRUE(ProfileStress::IsWhole(profile, text)) << profile;
        leftovers += stress.OtherFiles().empty() ? 0 : 1;
    }
    RecordProperty("kills", kills);
    RecordProperty("leftovers", leftovers);
    EXPECT_EQ(stress.Call(0), VASTRELLINE_OK);
    EXPECT_EQ(stress.OtherFiles(), std::vector<std::string>());
}

}  // namespace
}  // namespace vastrelline
