// SPDX-License-Identifier: Apache-2.0

// Calls that overlap: from several threads, and from within a message box.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "config/DoseRecord.h"
#include "platform/MessageDialog.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

constexpr int32_t kWidth = 40;
constexpr int32_t kHeight = 30;

// Sections of all chains, whose pictures all differ.
constexpr std::array<const char*, 4> kSections = {"Gamma", "Smooth", "Fixed", "Deciding"};

ProfileWriter MixedProfile() {
    ProfileWriter writer = ProfileFolder::SettledProfile();
    writer.Section("Gamma").Key("PROCMODE", "2").Stage("10", {{"POST_GAMMA_RATIO", "2"}});
    writer.Section("Smooth").Key("PROCMODE", "2").Stage("7", {{"MEDIAN_SIZE", "5"}}).Stage("8");
    writer.Section("Fixed").Key("PROCMODE", "1").Key("PRE_GAUSSIAN", "1").Key("POST_GAMMA_LUT", "1");
    writer.Section("Deciding")
        .Key("PROCMODE", "3")
        .Key("MSGBOX_ENABLE", "1")
        .Key("SETCLIPBIN", "0")
        .Stage("11");
    writer.Section("IP_LOWMODE").Key("OUTPUTRANGE", "4095").Key("03_BLOCK_SIZE", "16");
    return writer;
}

class OverlappingCallsTest : public testing::Test {
protected:
    OverlappingCallsTest() : profile_(folder_.Profile()) {
        MixedProfile().WriteTo(folder_.At("profile.ini"));
        for (const char* section : kSections) expected_.push_back(Process(section));
    }
    ~OverlappingCallsTest() override { SetSharedDoseRecord(recordBefore_); }
    OverlappingCallsTest(const OverlappingCallsTest&) = delete;
    OverlappingCallsTest& operator=(const OverlappingCallsTest&) = delete;

    Frame Process(const char* section) const {
        Frame input = Noise(kWidth, kHeight, 3000, 11);
        Frame output(kWidth, kHeight);
        EXPECT_EQ(ImageProcessingS(input.Data(), output.Data(), kWidth, kHeight, profile_.c_str(), section, 0,
                                   0, nullptr),
                  VASTRELLINE_OK);
        return output;
    }
    const Frame& Expected(size_t section) const { return expected_.at(section); }

private:
    const DoseRecord recordBefore_ = SharedDoseRecord();
    ProfileFolder folder_;
    std::string profile_;
    std::vector<Frame> expected_;
};

TEST_F(OverlappingCallsTest, SectionsGiveDifferentPictures) {
    for (size_t i = 0; i < kSections.size(); ++i)
        for (size_t k = 0; k < i; ++k) EXPECT_NE(Expected(i), Expected(k)) << kSections.at(i);
}

TEST_F(OverlappingCallsTest, EightThreadsGetTheirPictures) {
    constexpr size_t kThreads = 8;
    constexpr size_t kCalls = 12;
    SetMessageHandler([](const std::wstring& /*text*/, MessageIcon /*icon*/) {});
    std::atomic<size_t> wrong{0};
    std::vector<std::thread> threads;
    for (size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (size_t i = 0; i < kCalls; ++i) {
                const size_t section = (t + i) % kSections.size();
                if (Process(kSections.at(section)) != Expected(section)) ++wrong;
            }
        });
    }
    // These two need no turn of their own.
    const Frame whole = Noise(20, 10, 4095, 3);
    Frame turned = whole;
    std::array<int32_t, 4> figures{};
    double ratio = 0.0;
    for (size_t i = 0; i < 200; ++i) {
        EXPECT_EQ(RotateImage(turned.Data(), 20, 10, 3, 0), 1);
        Getdose_ImageInfo(figures.data(), &figures[1], &figures[2], &ratio, &figures[3]);
        // A limit of 0: whatever lies below the threshold makes the exposure low.
        EXPECT_EQ(figures[3], ratio > 0 ? 1 : 0);
        EXPECT_EQ(ratio, static_cast<double>(figures[2]) / figures[1]);
    }
    EXPECT_EQ(turned, whole);
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0U);
}

// What the handler below needs: a function alone holds nothing.
const std::string* nestedProfile = nullptr;
Frame nestedOutput(0, 0);

TEST_F(OverlappingCallsTest, ACallFromWithinAMessageBoxChangesNeitherPicture) {
    const ProfileFolder other;
    MixedProfile().WriteTo(other.At("profile.ini"));
    const std::string otherProfile = other.Profile();
    nestedProfile = &otherProfile;
    SetMessageHandler([](const std::wstring& /*text*/, MessageIcon /*icon*/) {
        const std::string* const profile = std::exchange(nestedProfile, nullptr);
        if (profile == nullptr) return;  // the inner call shows boxes of its own
        Frame input = Noise(kWidth, kHeight, 3000, 11);
        nestedOutput = Frame(kWidth, kHeight);
        EXPECT_EQ(ImageProcessing(input.Data(), nestedOutput.Data(), kWidth, kHeight, profile->c_str(),
                                  "Smooth", 0, 0),
                  VASTRELLINE_OK);
    });
    EXPECT_EQ(Process("Deciding"), Expected(3));
    EXPECT_EQ(nestedOutput, Expected(1));
}

}  // namespace
}  // namespace vastrelline
