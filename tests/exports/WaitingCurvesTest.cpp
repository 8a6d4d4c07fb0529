// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "platform/MessageDialog.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/KeptDoseRecord.h"
#include "support/MadeFrame.h"
#include "support/ProfileWriter.h"
#include "support/SensorRoot.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// Level curves wait for the first step that asks for pixels. A dump does, so a call that writes dumps takes
// one step after the other; the frames must come out the same without.

struct Frames {
    std::vector<uint16_t> buffer;  // holds the input and the output, perhaps in part in the same place
    size_t outputAt = 0;
};

class WaitingCurvesTest : public testing::Test {
protected:
    // Curve stages one after the other, and some behind a filter.
    void WriteProfile(const std::string& mode, int32_t inversion, const std::string& bits, bool isMasked,
                      bool areDumpsOn) {
        ProfileWriter writer;
        writer.Section("Settings").Key("TargetRange", "3000").Key("MaxCut", "0.001").Key("MinCut", "0.001");
        writer.Section("Molar")
            .Key("PROCMODE", mode)
            .Key("BITSTORED", bits)
            .Key("SATURATION_VALUE", "3900")
            .Key("INVERSE_INTENSITY", std::to_string(inversion))
            .Key("INTRAORAL_MASK", isMasked ? "1" : "0")
            .Key("SETCLIPBIN", "2")
            .Key("SAVE_IMAGE", areDumpsOn ? "1" : "0")
            .Key("WRITE_PATH", folder_.Narrow("") + "/")
            .Key("POST_GAMMA_LUT", "1")
            .Stage("10", {{"POST_GAMMA_RATIO", "0.2"}})
            .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-80"}})
            .Stage("2", {{"STRETCH_SEPARATION_CNT", "2"}, {"RESTRETCH_OPTION", "1"}})
            .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-50"}})
            .Stage("6", {{"PYRAMID_LAYER", "1"}})
            .Stage("8", {{"GAUSSIAN_SIZE", "0.9"}})
            .Stage("9", {{"POST_SIGMOID_RATIO", "0.4"}})
            .Stage("2", {{"STRETCH_SEPARATION_CNT", "3"}, {"RESTRETCH_OPTION", "2"}})
            .Stage("11", {{"POST_LINEAR_MODE", "1"}, {"POST_LINEAR_LIMITBIN", "20"}})
            .Stage("10", {{"POST_GAMMA_RATIO", "-1.15"}})
            .Stage("6", {{"PYRAMID_LAYER", "2"}})
            .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-40"}});
        writer.WriteTo(folder_.Path() / "profile.ini");
    }

    // outputAt   places between the first pixels of input and output
    Frames Run(const Frame& frame, size_t outputAt, const SensorGeometry& geometry) {
        const auto count = frame.pixels.size();
        Frames frames{std::vector<uint16_t>(outputAt + count, 77), outputAt};
        std::copy(frame.pixels.begin(), frame.pixels.end(), frames.buffer.begin());
        EXPECT_EQ(
            ImageProcessingS(frames.buffer.data(), frames.buffer.data() + outputAt, frame.width, frame.height,
                             folder_.Narrow("profile.ini").c_str(), "Molar", 0, 0, &geometry),
            VASTRELLINE_OK);
        return frames;
    }

    // How many dumps there are; none afterwards.
    size_t TakeDumps() const {
        std::vector<std::filesystem::path> dumps;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            if (entry.path().extension() == ".raw") dumps.push_back(entry.path());
        for (const std::filesystem::path& dump : dumps) std::filesystem::remove(dump);
        return dumps.size();
    }

private:
    KeptDoseRecord record_;
    TemporaryFolder folder_;
    SensorRoot root_;
};

TEST_F(WaitingCurvesTest, GiveTheFramesOfACallThatDumpsEachStep) {
    std::mt19937 random(20240501);
    for (const Frame& frame : {MadeRadiograph(120, 90), Noise(61, 47, 65535, 2), Noise(50, 40, 800, 3)}) {
        SensorGeometry upright{};
        upright.FrameWidth = frame.width;
        upright.FrameHeight = frame.height;
        upright.RCCutOff = 9;
        upright.RCCutOffR = 12;
        SensorGeometry unknown = upright;
        unknown.Rotation = -10;
        const size_t count = frame.pixels.size();
        for (const std::string mode : {"1", "2", "3"})
            for (const int32_t inversion : {0, 1, 2, 3})
                for (const bool isApart : {true, false}) {
                    // The same frame, or one that shares half of its pixels.
                    const size_t outputAt = isApart ? count : random() % 2 * count / 2;
                    const bool isMasked = random() % 4 != 0;
                    const std::string bits = random() % 8 == 0 ? "18" : "12";
                    const SensorGeometry& geometry = random() % 3 == 0 ? unknown : upright;
                    SCOPED_TRACE(testing::Message()
                                 << frame.width << ", mode " << mode << ", inversion " << inversion
                                 << ", output at " << outputAt << ", bits " << bits << ", mask " << isMasked);
                    WriteProfile(mode, inversion, bits, isMasked, true);
                    const Frames dumped = Run(frame, outputAt, geometry);
                    EXPECT_GT(TakeDumps(), 2U);
                    WriteProfile(mode, inversion, bits, isMasked, false);
                    const Frames waited = Run(frame, outputAt, geometry);
                    EXPECT_EQ(waited.buffer, dumped.buffer);
                    EXPECT_EQ(TakeDumps(), 0U);
                }
    }
}

// The frame that a host works on while a message stands, in place of a person.
Frame* shownFrame = nullptr;

// Levels that the frame had not before.
uint16_t ChangedLevel(size_t i) { return static_cast<uint16_t>(i % 700 + 50); }

class ChangingHost {
public:
    explicit ChangingHost(Frame& frame)
        : before_(SetMessageHandler([](const std::wstring&, MessageIcon) {
              for (size_t i = 0; i < shownFrame->pixels.size(); ++i) shownFrame->pixels[i] = ChangedLevel(i);
          })) {
        shownFrame = &frame;
    }
    ~ChangingHost() { SetMessageHandler(before_); }
    ChangingHost(const ChangingHost&) = delete;
    ChangingHost& operator=(const ChangingHost&) = delete;
    ChangingHost(ChangingHost&&) = delete;
    ChangingHost& operator=(ChangingHost&&) = delete;

private:
    MessageHandler before_;
};

class ChangedFrameTest : public testing::Test {
protected:
    // The output of a frame of 1000 to 2999 that the host changes during the message.
    Frame Run(ProfileWriter& profile, const SensorGeometry& geometry) {
        profile.WriteTo(folder_.Path() / "profile.ini");
        Frame input(60, 50);
        for (size_t i = 0; i < input.pixels.size(); ++i)
            input.pixels[i] = static_cast<uint16_t>(1000 + i % 2000);
        Frame output(60, 50);
        const ChangingHost host(output);
        EXPECT_EQ(ImageProcessingS(input.Data(), output.Data(), 60, 50, folder_.Narrow("profile.ini").c_str(),
                                   "Molar", 0, 0, &geometry),
                  VASTRELLINE_OK);
        return output;
    }

    static Frame ExpectedInversion() {
        Frame frame(60, 50);
        for (size_t i = 0; i < frame.pixels.size(); ++i)
            frame.pixels[i] = static_cast<uint16_t>(4095 - ChangedLevel(i));
        return frame;
    }

    KeptDoseRecord record_;
    TemporaryFolder folder_;
    SensorRoot root_;
};

TEST_F(ChangedFrameTest, DuringTheDecisionIsWorkedOnAsItIs) {
    ProfileWriter profile;
    profile.Section("Molar")
        .Key("PROCMODE", "3")
        .Key("SETCLIPBIN", "2")
        .Key("MSGBOX_ENABLE", "1")
        .Key("INTRAORAL_MASK", "0")
        .Key("INVERSE_INTENSITY", "1");
    EXPECT_THAT(Run(profile, {}), EqualsFrame(ExpectedInversion()));
}

TEST_F(ChangedFrameTest, DuringAMessageOnItsCornersIsWorkedOnAsItIs) {
    ProfileWriter profile;
    profile.Section("Molar").Key("PROCMODE", "2").Key("INTRAORAL_MASK", "1").Key("INVERSE_INTENSITY", "1");
    SensorGeometry tooLarge{};
    tooLarge.FrameWidth = 60;
    tooLarge.FrameHeight = 50;
    tooLarge.RCCutOff = 1000;
    EXPECT_THAT(Run(profile, tooLarge), EqualsFrame(ExpectedInversion()));
}

// A flat frame of 2000 has an exposure curve that clips at 2000; the mapping makes 2047 of 2000.
TEST(EarlyEnd, TheMappingComesBehindTheExposureCurveInOneFrame) {
    const TemporaryFolder folder;
    Frame frame = Flat(5, 4, 2000);
    EXPECT_EQ(ImageProcessing(frame.Data(), frame.Data(), 5, 4, folder.Narrow("missing.ini").c_str(), "Molar",
                              1, 0),
              VASTRELLINE_NO_PROFILE);
    EXPECT_THAT(frame, EqualsFrame(Flat(5, 4, 2047)));
}

}  // namespace
}  // namespace vastrelline
