// SPDX-License-Identifier: Apache-2.0

// Whole calls: what a host waits for, the reading of the profile included, without log and without dumps.
// Each runs on a made frame and on a radiograph.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "BenchFrames.h"
#include "config/SensorSettings.h"
#include "support/BenchSets.h"
#include "support/ProfileWriter.h"
#include "support/RealBenchFrame.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// The sensor's values stand in the profile already: no call writes to it.
ProfileWriter SettledProfile(const BenchFrame& frame) {
    ProfileWriter writer;
    writer.Section("Settings")
        .Key("FrameWidth", std::to_string(frame.width))
        .Key("FrameHeight", std::to_string(frame.height));
    for (const char* key : {"ImgCutLeft", "ImgCutTop", "ImgCutRight", "ImgCutBottom", "Rotation", "Flip"})
        writer.Key(key, "0");
    for (const char* key : {"RCCutOff", "RCCutOffR"}) writer.Key(key, "20");
    return writer;
}

// A list for everyday dental frames.
void AddDentalList(ProfileWriter& writer) {
    writer.Section("dental").Key("PROCMODE", "2");
    writer.Stage("8", {{"GAUSSIAN_SIZE", "0.9"}})
        .Stage("10", {{"POST_GAMMA_RATIO", "-1.15"}})
        .Stage("11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-80"}})
        .Stage("6", {{"PYRAMID_LAYER", "4"}, {"APPLY_VARIABLE_RATIO", "1"}, {"ENHANCED_RATIO", "1.3"}})
        .Stage("3", {{"BLOCK_SIZE", "256"}});
}

// The fixed chain with a switch of each kind.
void AddFixedChain(ProfileWriter& writer) {
    writer.Section("fixed").Key("PROCMODE", "1").Key("MODE_CONTRAST", "1").Key("NOISE_WIDTH_CONTRAST", "150");
    for (const char* flag : {"PRE_MEDIAN", "HISTOGRAM_STRETCH", "PYRAMID_PROCESSING", "CONTRAST_ENHANCE",
                             "CONTRAST_ENHANCE2", "POST_GAUSSIAN", "POST_GAMMA_LUT"})
        writer.Key(flag, "1");
}

// A threshold that every frame passes, and so the sequence for dark ones.
void AddLowSequence(ProfileWriter& writer) {
    writer.Section("low").Key("PROCMODE", "3").Key("SETCLIPBIN", "-1");
    writer.Section("IP_LOWMODE").Key("03_BLOCK_SIZE", "256").Key("04_BLOCK_SIZE", "128");
}

void BenchChain(benchmark::State& state, const std::string& section, BenchFrame (*makeFrame)()) {
    const TemporaryFolder folder;
    const BenchFrame source = makeFrame();
    ProfileWriter writer = SettledProfile(source);
    AddDentalList(writer);
    AddFixedChain(writer);
    AddLowSequence(writer);
    const std::string text = writer.Text();
    WriteBytes(folder.Path() / "profile.ini", text);
    WriteBytes(folder.Path() / "Brindmap.ini", text);
    const std::wstring rootBefore = SetSensorProfileRoot(folder.Path().wstring());
    const std::string profile = folder.Narrow("profile.ini");
    BenchFrame input = source;
    BenchFrame output = source;
    for (auto _ : state) {
        // A call changes its input. The copy is a small share of the time.
        input.pixels = source.pixels;
        const int32_t code = ImageProcessingS(input.pixels.data(), output.pixels.data(), input.width,
                                              input.height, profile.c_str(), section.c_str(), 0, 0, nullptr);
        if (code != VASTRELLINE_OK) {
            state.SkipWithError("the frame was not processed");
            break;
        }
        benchmark::ClobberMemory();
    }
    SetSensorProfileRoot(rootBefore);
    ReportPixels(state, input);
}

const bool kRegistered = [] {
    for (const std::string section : {"dental", "fixed", "low"}) {
        RegisterForAllSets("Chain", section + "/soft", BenchChain, section, MakeSoftFrame);
        RegisterForAllSets("Chain", section + "/bitewing", BenchChain, section, ReadBitewingForBench);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
