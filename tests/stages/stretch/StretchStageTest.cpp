// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "operators/curves/StretchCurve.h"
#include "stages/stretch/StretchStage.h"
#include "support/ConfiguredRun.h"
#include "support/CountedLevels.h"
#include "support/FixedRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MappedByLevel.h"
#include "support/MaskedLog.h"

namespace vastrelline {
namespace {

// What a run of either chain leaves behind.
struct Outcome {
    Frame frame;
    Frame mask{0, 0};  // of the fixed chain
    std::string log;
    std::vector<std::string> names;  // of the files it wrote
    std::vector<std::string> files;  // their contents
    int32_t nextDump = 0;
};

template <typename Run>
void CollectFiles(const Run& run, Outcome& outcome) {
    outcome.names = run.DumpedNames();
    for (const std::string& name : outcome.names) outcome.files.push_back(run.Dumped(name.c_str()));
}

enum class Traces { Off, On };

Outcome RunConfigured(Frame frame, int32_t maxValue, const std::string& keys, Traces traces = Traces::Off) {
    ConfiguredRun run;
    std::string profile = "[Molar]\nSTRETCH_SEPARATION_CNT=6\n07_RESTRETCH_OPTION=1\n";
    for (size_t start = 0; start < keys.size();) {
        const size_t end = keys.find('\n', start);
        profile += "08_" + keys.substr(start, end - start) + "\n";
        start = end + 1;
    }
    run.WriteProfile(profile);
    SharedConfiguredState().SaveLog = traces == Traces::On ? 1 : 0;
    SharedConfiguredState().SaveImage = traces == Traces::On ? 1 : 0;
    RunStretchStage(frame.Data(), frame.width, frame.height, frame.width * frame.height, maxValue, run.Log(),
                    8);
    Outcome outcome{frame, Frame(0, 0), MaskTimes(run.LogText()), {}, {}, SharedConfiguredState().DumpNumber};
    CollectFiles(run, outcome);
    return outcome;
}

Outcome RunFixed(Frame frame, int32_t maxValue, const FixedSettings& settings, Traces traces = Traces::Off) {
    FixedRun run;
    run.settings = settings;
    run.settings.SAVE_LOG = traces == Traces::On ? 1 : 0;
    SharedFixedState().SaveImage = traces == Traces::On ? 1 : 0;
    Frame mask = Flat(frame.width, frame.height, 3);
    RunFixedStretch(frame.Data(), mask.Data(), frame.width, frame.height, frame.width * frame.height,
                    maxValue, run.dumpCounter, run.Log(), run.settings);
    Outcome outcome{frame, mask, MaskTimes(run.LogText()), {}, {}, run.dumpCounter};
    CollectFiles(run, outcome);
    return outcome;
}

FixedSettings FixedMode(int32_t mode, int32_t restretch) {
    FixedSettings settings;
    settings.STRETCH_SEPARATION_CNT = mode;
    settings.RESTRETCH_OPTION = restretch;
    return settings;
}

std::string RawBytes(const Frame& frame) {
    std::string bytes;
    for (const uint16_t pixel : frame.pixels) {
        bytes += static_cast<char>(pixel & 0xFF);
        bytes += static_cast<char>(pixel >> 8);
    }
    return bytes;
}

// The frame through the curve with these bounds and lengths.
Frame Stretched(Frame frame, int32_t maxValue, int32_t left, int32_t right, int32_t leftLen,
                int32_t rightLen) {
    const std::vector<int32_t> table =
        BuildStretchCurve(frame.Data(), frame.width, frame.height, maxValue, left, right, 4.0, 4.0, leftLen,
                          maxValue + 1 - leftLen - rightLen, rightLen);
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(table[pixel] & 0xFFFF);
    return frame;
}

// Two halves of one level each.
Frame Halves(int32_t width, int32_t height, uint16_t upper, uint16_t lower) {
    Frame frame = Flat(width, height, lower);
    for (int32_t y = 0; y < height / 2; ++y)
        for (int32_t x = 0; x < width; ++x) frame.At(x, y) = upper;
    return frame;
}

// Its valleys are 251 and 651 at a limit of 10; see the test of the segmentation.
Frame TwoValleys() {
    return FromCounts({{0, 5000},
                       {150, 303},
                       {300, 202},
                       {400, 2020},
                       {498, 2020},
                       {600, 404},
                       {700, 303},
                       {781, 3030},
                       {879, 3030},
                       {885, 101},
                       {900, 1}});
}

// ---- the second step, which runs in every mode

struct RestretchCase {
    const char* name;
    int32_t option;
    Frame frame;
};

const std::vector<RestretchCase> kRestretches{{"None", 0, FromRows({{5, 20}, {10, 7}})},
                                              {"Minimum", 1, FromRows({{0, 15}, {5, 2}})},
                                              {"Linear", 2, FromRows({{7, 31}, {15, 10}})},
                                              {"Unknown", 3, FromRows({{5, 20}, {10, 7}})}};

// In a table of 32 levels the smoothing is a copy: the highest level, 20, becomes 31.
TEST(StretchStage, SecondStepActsAloneInAModeWithoutCurve) {
    for (const RestretchCase& c : kRestretches) {
        SCOPED_TRACE(c.name);
        const Frame frame = FromRows({{5, 20}, {10, 7}});
        const std::string keys =
            "STRETCH_SEPARATION_CNT=6\nRESTRETCH_OPTION=" + std::to_string(c.option) + "\n";
        EXPECT_THAT(RunConfigured(frame, 31, keys).frame, EqualsFrame(c.frame));
        for (const int32_t mode : {3, 5, -1})
            EXPECT_THAT(RunFixed(frame, 31, FixedMode(mode, c.option)).frame, EqualsFrame(c.frame));
    }
}

// ---- modes 0 to 2

// Dark tail: -9 / (1 + e^(-4 / 9)) is -5. Ramp 21i / 20 - 5: 5 at level 10, 16 at 20. Then 31 / 16 times
// that.
TEST(StretchStage, ModeZeroStretchesFromBlackToTheTopAndFillsTheRange) {
    EXPECT_THAT(RunConfigured(Halves(20, 30, 10, 20), 31, "RESTRETCH_OPTION=0\n").frame,
                EqualsFrame(Halves(20, 30, 5, 16)));
    EXPECT_THAT(RunConfigured(Halves(20, 30, 10, 20), 31, "").frame, EqualsFrame(Halves(20, 30, 9, 31)));
}

// Dark tail: one level, raised to 10. Ramp 1.1i - 1 to 21.
TEST(StretchStage, FixedModeZeroStretchesBetweenItsOwnEnds) {
    EXPECT_THAT(RunFixed(Halves(20, 30, 10, 20), 31, FixedMode(0, 0)).frame,
                EqualsFrame(Halves(20, 30, 10, 21)));
    EXPECT_THAT(RunFixed(Halves(20, 30, 10, 20), 31, FixedMode(0, 2)).frame,
                EqualsFrame(Halves(20, 30, 14, 31)));
}

// Up to a width of 999 an average of 999 / 21 is above the limit of 10. From 1000 on the limit is 100: then
// no level is occupied, both bounds are 0, and every level above 0 becomes black.
TEST(StretchStage, LargeFramesNeedMorePixelsToALevel) {
    EXPECT_THAT(RunConfigured(Halves(999, 2, 10, 20), 31, "RESTRETCH_OPTION=0\n").frame,
                EqualsFrame(Halves(999, 2, 5, 16)));
    EXPECT_THAT(RunConfigured(Halves(1000, 2, 10, 20), 31, "RESTRETCH_OPTION=0\n").frame,
                EqualsFrame(Flat(1000, 2, 0)));
}

struct SegmentModeCase {
    const char* name;
    int32_t mode;
    int32_t left;
    int32_t right;
    int32_t leftLen;
    int32_t rightLen;
};

// The width is above 1000. At 900 only 1 pixel is within reach of 20 levels, so the average is not above the
// limit of 100; at 885, which reaches down to 875, it is (3030 + 101) / 21.
const std::vector<SegmentModeCase> kSegmentModes{{"WholeRange", 0, 0, 885, 0, 138},
                                                 {"LeftValley", 1, 251, 885, 251, 138},
                                                 {"BothValleys", 2, 251, 651, 251, 372}};

TEST(StretchStage, SegmentModesTakeTheirBoundsAndShortenTheTails) {
    for (const SegmentModeCase& c : kSegmentModes) {
        SCOPED_TRACE(c.name);
        const Outcome outcome = RunConfigured(TwoValleys(), 1023,
                                              "STRETCH_SEPARATION_CNT=" + std::to_string(c.mode) +
                                                  "\nSTRETCH_LIMITBIN=10\nRESTRETCH_OPTION=0\n",
                                              Traces::On);
        EXPECT_THAT(outcome.frame,
                    EqualsFrame(Stretched(TwoValleys(), 1023, c.left, c.right, c.leftLen, c.rightLen)));
        // The log shows both valleys also where the curve ignored them.
        EXPECT_EQ(outcome.log, "#### hh:mm:ss \t: StretchCurve ( S.SSS sec )\r\n\t\t\t SeparateMode   : " +
                                   std::to_string(c.mode) +
                                   "\r\n\t\t\t Segment        : 251,  651\r\n"
                                   "\t\t\t Limit Range    : 1000,  500\r\n");
    }
}

const std::vector<SegmentModeCase> kFixedSegmentModes{{"WholeRange", 0, 0, 900, 0, 123},
                                                      {"LeftValley", 1, 251, 900, 200, 123},
                                                      {"BothValleys", 2, 251, 651, 200, 372}};

TEST(StretchStage, FixedSegmentModesMarkTheDarkTail) {
    for (const SegmentModeCase& c : kFixedSegmentModes) {
        SCOPED_TRACE(c.name);
        FixedSettings settings = FixedMode(c.mode, 0);
        settings.STRETCH_LIMITBIN = 10;
        settings.LEFT_LEN_LIMIT = 200;
        const Outcome outcome = RunFixed(TwoValleys(), 1023, settings, Traces::On);
        EXPECT_THAT(outcome.frame,
                    EqualsFrame(Stretched(TwoValleys(), 1023, c.left, c.right, c.leftLen, c.rightLen)));
        EXPECT_EQ(outcome.log, "#### hh:mm:ss \t: StretchCurve ( N ms )\r\n\t\t\t SeparateMode   : " +
                                   std::to_string(c.mode) +
                                   "\r\n\t\t\t Segment        : 251,  651\r\n"
                                   "\t\t\t Limit Range    : 200,  500\r\n");
        // Below 251 lie the levels 0 and 150; the rest of the mask keeps what stood there.
        Frame mask = TwoValleys();
        for (uint16_t& pixel : mask.pixels) pixel = pixel < 251 ? 255 : 3;
        EXPECT_THAT(outcome.mask, EqualsFrame(mask));
    }
}

TEST(StretchStage, LevelAtTheValleyIsNotInTheDarkTail) {
    // Nothing is found, so the valley is the frame's lowest level, 7.
    EXPECT_THAT(RunFixed(FromRows({{7, 8}, {9, 7}}), 31, FixedMode(2, 0)).mask, EqualsFrame(Flat(2, 2, 3)));
}

TEST(StretchStage, OneLevelInModeTwoHasNoRamp) {
    // Both valleys are that level in the fixed chain: 1 / (1 + e^4) + 0.5 is 0, raised to leftLen 9.
    EXPECT_THAT(RunFixed(Flat(4, 4, 9), 31, FixedMode(2, 0)).frame, EqualsFrame(Flat(4, 4, 9)));
    // In the configured chain 16 pixels do not pass the limit: both fallbacks are 0, which stands for the
    // frame's own ends, so for its level again.
    EXPECT_THAT(RunConfigured(Flat(4, 4, 9), 31, "STRETCH_SEPARATION_CNT=2\nRESTRETCH_OPTION=0\n").frame,
                EqualsFrame(Flat(4, 4, 9)));
}

// ---- modes 3 to 5

struct PercentCase {
    const char* name;
    int32_t mode;
    int32_t percent;
    int32_t left;
    int32_t right;
};

const std::vector<PercentCase> kPercentModes{
    {"BothEnds", 3, 10, 4, 20},
    // 5 percent are 150 pixels, which the first 150 do not pass; 9 percent are 270.
    {"CountMustBePassed", 3, 5, 4, 28},
    {"CountMustBePassedFromAbove", 3, 9, 4, 20},
    {"TopOfTheRange", 4, 10, 4, 28},
    {"BottomOfTheRange", 5, 10, 1, 20},
    // At the default 50 percent both walks pass 1500: level 10 from below with 1530, and from
    // above with 2670.
    {"HalfOfThePixelsMeet", 3, 50, 10, 10},
    {"AllPixelsAreNeverPassed", 3, 100, -1, -1},
    {"AllPixelsButTheTop", 4, 100, -1, 28},
    {"AllPixelsButTheBottom", 5, 100, 1, -1},
    {"NegativePercentIsPassedAtOnce", 3, -1, 0, 31}};

// 3000 pixels; from below 150, 330, 1530; from above 270, 1470. All five levels are occupied.
TEST(StretchStage, PercentModesCountPixelsFromOutside) {
    for (const PercentCase& c : kPercentModes) {
        SCOPED_TRACE(c.name);
        Frame frame = FromCounts({{1, 150}, {4, 180}, {10, 1200}, {20, 1200}, {28, 270}});
        frame = Frame(60, 50, frame.pixels);
        const Outcome outcome =
            RunConfigured(frame, 31,
                          "STRETCH_SEPARATION_CNT=" + std::to_string(c.mode) +
                              "\nSTRETCH_LIMITBIN=" + std::to_string(c.percent) +
                              "\nLEFT_LEN_LIMIT=3\nRIGHT_LEN_LIMIT=4\nRESTRETCH_OPTION=0\n",
                          Traces::On);
        EXPECT_THAT(outcome.frame, EqualsFrame(Stretched(frame, 31, c.left, c.right, 3, 4)));
        EXPECT_TRUE(outcome.names.empty());
        EXPECT_EQ(outcome.nextDump, 5);
        EXPECT_EQ(outcome.log, "#### hh:mm:ss \t: StretchCurve ( S.SSS sec )\r\n\t\t\t SeparateMode   : " +
                                   std::to_string(c.mode) +
                                   "\r\n\t\t\t Segment        : 0,  0\r\n"
                                   "\t\t\t Limit Range    : 3,  4\r\n");
    }
}

// ---- traces

// Ramp 21i / 20 - 5, clamped to the dark tail's top -5; below the frame -9 / (1 + e^4), which is 0. Above the
// frame the value of its highest level.
constexpr const char* kCurveOfHalves =
    "0\t0\r\n1\t-3\r\n2\t-2\r\n3\t-1\r\n4\t0\r\n5\t0\r\n6\t1\r\n7\t2\r\n8\t3\r\n9\t4\r\n10\t5\r\n11\t6\r\n"
    "12\t7\r\n13\t8\r\n14\t9\r\n15\t10\r\n16\t11\r\n17\t12\r\n18\t13\r\n19\t14\r\n20\t16\r\n21\t16\r\n"
    "22\t16\r\n23\t16\r\n24\t16\r\n25\t16\r\n26\t16\r\n27\t16\r\n28\t16\r\n29\t16\r\n30\t16\r\n31\t16\r\n";

TEST(StretchStage, WritesCurveAndBothSteps) {
    const Outcome outcome = RunConfigured(Halves(20, 30, 10, 20), 31, "", Traces::On);
    EXPECT_EQ(outcome.names, (std::vector<std::string>{"05_stretchimage0.raw", "06_stretchimage2.raw",
                                                       "AdjustCurve_Sigmoid.txt"}));
    ASSERT_EQ(outcome.files.size(), 3U);
    EXPECT_EQ(outcome.files[0], RawBytes(Halves(20, 30, 5, 16)));
    EXPECT_EQ(outcome.files[1], RawBytes(Halves(20, 30, 9, 31)));
    EXPECT_EQ(outcome.files[2], kCurveOfHalves);
    EXPECT_EQ(outcome.nextDump, 7);
    EXPECT_THAT(outcome.frame, EqualsFrame(Halves(20, 30, 9, 31)));
}

TEST(StretchStage, FixedChainWritesTheMaskBesideTheFirstStep) {
    Frame frame = TwoValleys();
    FixedSettings settings = FixedMode(2, 1);
    settings.STRETCH_LIMITBIN = 10;
    const Outcome outcome = RunFixed(frame, 1023, settings, Traces::On);
    EXPECT_EQ(outcome.names, (std::vector<std::string>{"05_stretchimage0.raw", "05_unsharpmasking.raw",
                                                       "06_stretchimage2.raw", "AdjustCurve_Sigmoid.txt"}));
    ASSERT_EQ(outcome.files.size(), 4U);
    // Level 0 becomes 0, so the minimum that the second step subtracts changes nothing.
    EXPECT_EQ(outcome.files[0], RawBytes(Stretched(frame, 1023, 251, 651, 251, 372)));
    EXPECT_EQ(outcome.files[1], RawBytes(outcome.mask));
    EXPECT_EQ(outcome.files[2], RawBytes(outcome.frame));
    EXPECT_EQ(outcome.nextDump, 7);
}

TEST(StretchStage, EachStepWithoutDumpTakesNoNumber) {
    EXPECT_EQ(RunConfigured(Flat(2, 2, 9), 31, "RESTRETCH_OPTION=0\n", Traces::On).nextDump, 6);
    const Outcome alone = RunConfigured(Flat(2, 2, 9), 31, "STRETCH_SEPARATION_CNT=3\n", Traces::On);
    EXPECT_EQ(alone.names, std::vector<std::string>{"05_stretchimage2.raw"});
    EXPECT_EQ(alone.nextDump, 6);
    EXPECT_EQ(RunFixed(Flat(2, 2, 9), 31, FixedMode(3, 1), Traces::On).nextDump, 6);
}

TEST(StretchStage, LeavesNoTraceWithItsSwitchesOff) {
    const Outcome configured = RunConfigured(Halves(20, 30, 10, 20), 31, "");
    const Outcome fixed = RunFixed(Halves(20, 30, 10, 20), 31, FixedMode(0, 2));
    for (const Outcome& outcome : {configured, fixed}) {
        EXPECT_EQ(outcome.log, "");
        EXPECT_TRUE(outcome.names.empty());
        EXPECT_EQ(outcome.nextDump, 5);
    }
}

TEST(StretchStage, DumpsChangeNoPixel) {
    const Frame frame = Noise(31, 23, 255, 5);
    for (const int32_t mode : {1, 2, 4}) {
        const std::string keys = "STRETCH_SEPARATION_CNT=" + std::to_string(mode) + "\nSTRETCH_LIMITBIN=3\n";
        EXPECT_THAT(RunConfigured(frame, 255, keys, Traces::On).frame,
                    EqualsFrame(RunConfigured(frame, 255, keys).frame));
    }
}

// ---- whatever a profile or a frame holds

struct HostileKeys {
    const char* keys;  // of the configured chain
    FixedSettings settings;
};

std::vector<HostileKeys> ListHostileKeys() {
    constexpr int32_t kMax32 = std::numeric_limits<int32_t>::max();
    constexpr int32_t kMin32 = std::numeric_limits<int32_t>::min();
    HostileKeys lengths{
        "LEFT_LEN_LIMIT=2147483647\nRIGHT_LEN_LIMIT=-2147483648\nSTRETCH_LIMITBIN=2147483647\n", {}};
    lengths.settings.LEFT_LEN_LIMIT = kMax32;
    lengths.settings.RIGHT_LEN_LIMIT = kMin32;
    lengths.settings.STRETCH_LIMITBIN = kMax32;
    HostileKeys weights{
        "LEFT_LEN_LIMIT=-2147483648\nRIGHT_LEN_LIMIT=2147483647\nSTRETCH_LIMITBIN=-2147483648\n"
        "STRETCH_LEFT_WEIGHT=nan\nSTRETCH_RIGHT_WEIGHT=-1e308\n",
        {}};
    weights.settings.LEFT_LEN_LIMIT = kMin32;
    weights.settings.RIGHT_LEN_LIMIT = kMax32;
    weights.settings.STRETCH_LIMITBIN = kMin32;
    weights.settings.STRETCH_LEFT_WEIGHT = std::numeric_limits<double>::quiet_NaN();
    weights.settings.STRETCH_RIGHT_WEIGHT = -1e308;
    return {lengths, weights};
}

const std::vector<Frame>& SmallFrames() {
    static const std::vector<Frame> frames{Flat(1, 1, 17),     Noise(1, 9, 31, 2),  Noise(9, 1, 31, 3),
                                           Noise(2, 2, 31, 4), Flat(5, 4, 0),       Flat(5, 4, 31),
                                           Flat(5, 4, 40),     Noise(19, 17, 31, 5)};
    return frames;
}

TEST(StretchStage, HostileKeysStayACurve) {
    for (const HostileKeys& hostile : ListHostileKeys())
        for (const char* mode : {"0", "2", "3", "4", "5", "-2147483648"}) {
            SCOPED_TRACE(testing::Message() << mode << ' ' << hostile.keys);
            const Frame& frame = SmallFrames().back();
            const std::string keys = std::string(hostile.keys) + "STRETCH_SEPARATION_CNT=" + mode + "\n";
            ExpectMappedByLevel(frame, RunConfigured(frame, 31, keys).frame);
        }
}

TEST(StretchStage, SmallFramesStayACurve) {
    for (const Frame& frame : SmallFrames())
        for (const char* mode : {"2", "4"}) {
            SCOPED_TRACE(testing::Message() << mode << ' ' << frame.width << " x " << frame.height);
            ExpectMappedByLevel(
                frame, RunConfigured(frame, 31, std::string("STRETCH_SEPARATION_CNT=") + mode + "\n").frame);
        }
}

TEST(StretchStage, FixedHostileKeysAndSmallFramesStayACurve) {
    FixedRun run;
    for (const HostileKeys& hostile : ListHostileKeys())
        for (const int32_t mode : {0, 2})
            for (const Frame& frame : SmallFrames()) {
                SCOPED_TRACE(testing::Message() << mode << ' ' << frame.width << " x " << frame.height);
                run.settings = hostile.settings;
                run.settings.STRETCH_SEPARATION_CNT = mode;
                Frame mapped = frame;
                Frame mask = Flat(frame.width, frame.height, 0);
                RunFixedStretch(mapped.Data(), mask.Data(), frame.width, frame.height,
                                frame.width * frame.height, 31, run.dumpCounter, run.Log(), run.settings);
                ExpectMappedByLevel(frame, mapped);
                ExpectMappedByLevel(frame, mask);
            }
}

// 29 percent of 100 pixels: 0.29 * 100 is just below 29, and 29 pixels pass 28.
TEST(StretchStage, PercentIsMadeAShareFirst) {
    const Frame frame(10, 10, FromCounts({{1, 29}, {20, 71}}).pixels);
    EXPECT_THAT(RunConfigured(frame, 31,
                              "STRETCH_SEPARATION_CNT=3\nSTRETCH_LIMITBIN=29\nLEFT_LEN_LIMIT=3\n"
                              "RIGHT_LEN_LIMIT=4\nRESTRETCH_OPTION=0\n")
                    .frame,
                EqualsFrame(Stretched(frame, 31, 1, 20, 3, 4)));
}

}  // namespace
}  // namespace vastrelline
