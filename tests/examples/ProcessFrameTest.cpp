// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/Frames.h"
#include "support/RealFrames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

namespace {

using testing::HasSubstr;

struct RawFrame {
    std::filesystem::path path;
    std::string size;  // "1300x1668"
    size_t pixelCount = 0;
};

std::vector<uint16_t> PixelsOf(const std::filesystem::path& path) {
    const std::string bytes = ReadBytes(path);
    std::vector<uint16_t> pixels(bytes.size() / sizeof(uint16_t));
    std::memcpy(pixels.data(), bytes.data(), pixels.size() * sizeof(uint16_t));
    return pixels;
}

int RunExample(const std::vector<std::string>& arguments) {
    std::string command = "\"" VASTRELLINE_PROCESS_FRAME "\"";
    for (const std::string& argument : arguments) command += " \"" + argument + "\"";
#ifdef _WIN32
    command = "\"" + command + "\"";  // the command interpreter takes the outermost pair away
#endif
    return std::system(command.c_str());
}

// A profile with one gamma stage of exponent 1, log and dumps on; the dumps go to the profile's folder.
std::string MakeProfile(const TemporaryFolder& folder) {
    WriteBytes(folder.Path() / "profile.ini",
               "[General]\nPROCMODE=2\nVERSION=7\nSAVE_LOG=1\nSAVE_IMAGE=1\nWRITE_PATH=" + folder.Narrow("") +
                   "\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\nOUTPUTRANGE=4095\nFunctionCount=1\n"
                   "00_Function_Number=10\n00_POST_GAMMA_RATIO=1\n");
    return folder.Narrow("profile.ini");
}

// With the exponent 1 the curve is a straight line from the lowest level to the highest.
uint16_t Stretched(uint16_t pixel, uint16_t low, uint16_t high) {
    const double share = static_cast<double>(pixel - low) / static_cast<double>(high - low);
    return static_cast<uint16_t>(4095.0 * share);
}

void ExpectEnhanced(const RawFrame& frame) {
    const TemporaryFolder folder;
    ASSERT_EQ(RunExample({frame.path.string(), frame.size, MakeProfile(folder), "General",
                          folder.Narrow("enhanced.raw")}),
              0);

    const std::vector<uint16_t> original = PixelsOf(folder.Path() / "00_originalimage.raw");
    const std::vector<uint16_t> afterGamma = PixelsOf(folder.Path() / "01_result_gamma.raw");
    const std::vector<uint16_t> result = PixelsOf(folder.Path() / "02_result.raw");
    const std::vector<uint16_t> enhanced = PixelsOf(folder.Path() / "enhanced.raw");
    ASSERT_EQ(original.size(), frame.pixelCount);
    EXPECT_TRUE(enhanced == result);
    EXPECT_TRUE(afterGamma == result);

    const auto [low, high] = std::minmax_element(original.begin(), original.end());
    std::vector<uint16_t> expected;
    expected.reserve(original.size());
    for (const uint16_t pixel : original) expected.push_back(Stretched(pixel, *low, *high));
    EXPECT_TRUE(enhanced == expected);

    const std::string curve = ReadBytes(folder.Path() / "01_GammaCurve.txt");
    EXPECT_THAT(curve, testing::StartsWith(std::to_string(*low) + "\t0\r\n"));
    EXPECT_THAT(curve, testing::EndsWith("\r\n" + std::to_string(*high) + "\t4095\r\n"));

    const std::string log = ReadBytes(folder.Path() / "ExtraOralLog.txt");
    EXPECT_THAT(log, HasSubstr("Start Vastrelline.dll [v7]\r\n\t\t\t Section Name [General]\r\n"));
    EXPECT_THAT(log, HasSubstr("Gamma Curve ( "));
    EXPECT_THAT(log, HasSubstr("End Post-Processing ( "));
}

}  // namespace

TEST(ProcessFrameExample, EnhancesAMadeFrameAndLeavesLogAndDumps) {
    const TemporaryFolder folder;
    std::string bytes;
    for (int level = 100; level < 100 + 64 * 48; ++level) {
        bytes += static_cast<char>(level % 256);
        bytes += static_cast<char>(level / 256);
    }
    WriteBytes(folder.Path() / "frame.raw", bytes);
    ExpectEnhanced({folder.Path() / "frame.raw", "64x48", size_t{64} * 48});
}

TEST(ProcessFrameExample, EnhancesEveryRealFrame) {
    const TemporaryFolder folder;
    for (const auto& [name, frame] : ReadRealFrames()) {
        SCOPED_TRACE(name);
        const auto* const bytes = reinterpret_cast<const char*>(frame.Data());
        WriteBytes(folder.Path() / "frame.raw", {bytes, frame.pixels.size() * sizeof(uint16_t)});
        ExpectEnhanced({folder.Path() / "frame.raw",
                        std::to_string(frame.width) + "x" + std::to_string(frame.height),
                        frame.pixels.size()});
    }
}

TEST(ProcessFrameExample, SaysWhenTheFrameHasAnotherSize) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "frame.raw", "12345678");
    for (const char* size : {"3x1", "5x1", "0x4", "4", "30000x30000"}) {
        SCOPED_TRACE(size);
        EXPECT_NE(RunExample({folder.Narrow("frame.raw"), size, MakeProfile(folder), "General",
                              folder.Narrow("enhanced.raw")}),
                  0);
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / "enhanced.raw"));
    }
}

TEST(ProcessFrameExample, FailsWithoutAProfile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "frame.raw", "12345678");
    EXPECT_NE(RunExample({folder.Narrow("frame.raw"), "2x2", folder.Narrow("missing.ini"), "General",
                          folder.Narrow("enhanced.raw")}),
              0);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "enhanced.raw"));
}

}  // namespace vastrelline
