// SPDX-License-Identifier: Apache-2.0

// Whole chains with every stage they can hold, on a made frame: pinned by the hash of their result, and the
// same with every instruction set and any number of threads. The hashes came from these very chains, so they
// prove no result right, which is what the tests of the single stages do; they tell that one has changed.

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "config/ConfiguredState.h"
#include "config/DoseRecord.h"
#include "config/FixedState.h"
#include "platform/InstructionSet.h"
#include "stages/median/RowBands.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

constexpr int32_t kWidth = 150;
constexpr int32_t kHeight = 110;

// Rounded corners of 20 pixels on a frame that is not cut: the sensor's profile, and the head of each other,
// so that no run has anything to write there.
constexpr const char* kSensor =
    "[Settings]\r\nRotation=0\r\nFlip=0\r\nRCCutOff=20\r\nRCCutOffR=20\r\nFrameWidth=150\r\nFrameHeight="
    "110\r\n"
    "ImgCutLeft=0\r\nImgCutTop=0\r\nImgCutRight=0\r\nImgCutBottom=0\r\n";

// The state of the process as it was, whatever a chain makes of it.
class ProcessState {
public:
    ProcessState()
        : configured_(SharedConfiguredState()),
          fixed_(SharedFixedState()),
          dose_(SharedDoseRecord()),
          threads_(MedianThreadCount()) {}
    ~ProcessState() {
        SharedConfiguredState() = configured_;
        SharedFixedState() = fixed_;
        SetSharedDoseRecord(dose_);
        MedianThreadCount() = threads_;
    }
    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

private:
    ConfiguredState configured_;
    FixedState fixed_;
    DoseRecord dose_;
    int32_t threads_;
};

// The stages of the configured chain, all twelve of them, in an order that a sensor might have them in.
void AddTwelveStages(ProfileWriter& writer) {
    writer.Stage("7", {{"MEDIAN_SIZE", "5"}})
        .Stage("8", {{"GAUSSIAN_SIZE", "0.8"}})
        .Stage("12", {{"PREPROCESSING_ENHANCESCALE", "1.3"}})
        .Stage("1")
        .Stage("2", {{"STRETCH_SEPARATION_CNT", "3"}, {"STRETCH_LIMITBIN", "2"}})
        .Stage("6", {{"APPLY_VARIABLE_RATIO", "1"}})
        .Stage("4", {{"MODE_CONTRAST", "1"}, {"NOISE_WIDTH_CONTRAST", "150"}})
        .Stage("3", {{"BLOCK_SIZE", "32"}})
        .Stage("5", {{"ADAPTIVESMOOTHING_MASK", "7"}})
        .Stage("9", {{"POST_SIGMOID_RATIO", "0.3"}})
        .Stage("10")
        .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-60"}});
}

ProfileWriter TwelveStages() {
    ProfileWriter writer;
    writer.Key("TargetRange", "3500").Key("MaxCut", "0.01").Key("MinCut", "0.01");
    writer.Section("General").Key("PROCMODE", "2");
    AddTwelveStages(writer);
    return writer;
}

// The first curve takes the levels to 16 bits, so that what follows runs in the wide forms of its kernels.
ProfileWriter SixteenBits() {
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "2").Key("BITSTORED", "16").Key("OUTPUTRANGE", "65535");
    writer.Stage("10", {{"POST_GAMMA_RATIO", "1"}});
    AddTwelveStages(writer);
    return writer;
}

ProfileWriter ThirteenStages() {
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "2").Key("INVERSE_INTENSITY", "2");
    AddTwelveStages(writer);
    writer.Stage("13", {{"HDR_BLOCK_SIZE", "32"}});
    return writer;
}

// A threshold that the darkness of every frame passes.
ProfileWriter LowSequence() {
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "3").Key("SETCLIPBIN", "-1");
    writer.Section("IP_LOWMODE").Key("03_BLOCK_SIZE", "32").Key("04_BLOCK_SIZE", "16");
    return writer;
}

ProfileWriter AllSwitches() {
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "1").Key("POST_SIGMOID_RATIO", "0.3");
    for (const char* flag : {"HISTOGRAM_STRETCH", "PRE_MEDIAN", "PRE_GAUSSIAN", "POST_GAUSSIAN",
                             "POST_SIGMOID_LUT", "POST_GAMMA_LUT", "POST_MEDIAN", "CONTRAST_ENHANCE2",
                             "CONTRAST_ENHANCE", "PYRAMID_PROCESSING", "PRE_CONTRAST", "ADAPTIVE_SMOOTHING"})
        writer.Key(flag, "1");
    writer.Key("STRETCH_SEPARATION_CNT", "3").Key("MODE_CONTRAST", "3").Key("BLOCK_SIZE", "32");
    return writer.Key("ADAPTIVESMOOTHING_MASK", "7");
}

struct WholeChain {
    const char* name;
    std::string_view exportName;
    ProfileWriter (*makeProfile)();
    uint64_t hash;  // of the output's bytes, of the bitmap's where there is no output
};

// What the export hands over.
std::string Process(const WholeChain& chain) {
    const ProfileFolder folder;
    folder.Sensor().WritePlain(kSensor);
    WriteBytes(folder.At("profile.ini"), kSensor + chain.makeProfile().Text());
    const std::string profile = folder.Profile();
    const std::string bitmap = folder.Narrow("picture.bmp");
    Frame input = MadeRadiograph(kWidth, kHeight);
    Frame output(kWidth, kHeight);
    for (const ProcessingExport& processing : ProcessingExports()) {
        if (processing.name != chain.exportName) continue;
        EXPECT_EQ(processing.call({input.Data(), output.Data(), kWidth, kHeight, profile.c_str(), "General",
                                   0, bitmap.c_str()}),
                  VASTRELLINE_OK);
        return processing.hasOutput ? RawBytes(output.pixels) : ReadBytes(folder.At("picture.bmp"));
    }
    ADD_FAILURE() << "no export of this name";
    return {};
}

class WholeChainTest : public testing::TestWithParam<WholeChain> {
private:
    ProcessState before_;
};

TEST_P(WholeChainTest, HasItsHashWithEverySetAndAnyNumberOfThreads) {
    constexpr size_t kFewestBytes = 40;  // of a picture; flat or black it would have hardly any
    const std::string usual = Process(GetParam());
    EXPECT_GE(std::set<char>(usual.begin(), usual.end()).size(), kFewestBytes);
    if (kHasUsualFunctions) {
        EXPECT_EQ(HashOf(usual), GetParam().hash);
    }
    for (const int32_t threads : {1, 31}) {
        MedianThreadCount() = threads;
        EXPECT_TRUE(Process(GetParam()) == usual) << threads << " threads";
    }
    for (const InstructionSet set : {InstructionSet::Reference, InstructionSet::Baseline,
                                     InstructionSet::Avx2, InstructionSet::Avx512}) {
        const ScopedInstructionSet limit(set);
        if (AllowedInstructionSet() != set) continue;  // it would be one of the others once more
        EXPECT_TRUE(Process(GetParam()) == usual) << "set " << static_cast<int32_t>(set);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Chains, WholeChainTest,
    testing::Values(WholeChain{"TwelveStages", "ImageProcessing", TwelveStages, 6700064701889330154U},
                    WholeChain{"SixteenBits", "ImageProcessing", SixteenBits, 14695509818317215042U},
                    WholeChain{"ThirteenStages", "ImageProcessing_NE", ThirteenStages, 15862519176466026836U},
                    WholeChain{"LowSequence", "ImageProcessingS", LowSequence, 981198605919888874U},
                    WholeChain{"AllSwitches", "ImageProcessing", AllSwitches, 5344423727440298884U},
                    WholeChain{"CompleteFrame", "ImageProcessingCR", AllSwitches, 13398905166707027371U}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline
