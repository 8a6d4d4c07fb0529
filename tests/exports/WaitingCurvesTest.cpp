#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "support/Frames.h"
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
            .Stage("8", {{"GAUSSIAN_SIZE", "0.9"}})
            .Stage("9", {{"POST_SIGMOID_RATIO", "0.4"}})
            .Stage("2", {{"STRETCH_SEPARATION_CNT", "3"}, {"RESTRETCH_OPTION", "2"}})
            .Stage("11", {{"POST_LINEAR_MODE", "1"}, {"POST_LINEAR_LIMITBIN", "20"}})
            .Stage("10", {{"POST_GAMMA_RATIO", "-1.15"}});
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

}  // namespace
}  // namespace vastrelline
