// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using testing::IsEmpty;

constexpr uint8_t kMapped = 1;

// A profile whose section "General" squares the range 0..100 by its list, and a frame for it.
class ExportTest : public testing::Test {
protected:
    ExportTest() {
        ProfileFolder::PlainSection()
            .Key("OUTPUTRANGE", "100")
            .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
            .WriteTo(folder_.At("profile.ini"));
    }

    ExportArguments Arguments() {
        return {input_.Data(), output_.Data(), 5, 1, profile_.c_str(), "General", 0, nullptr};
    }
    Frame& Input() { return input_; }
    const Frame& Output() const { return output_; }
    // In place: the arguments point to these pixels.
    void SetOutput(const std::vector<uint16_t>& pixels) {
        std::copy(pixels.begin(), pixels.end(), output_.Data());
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
    std::string profile_ = folder_.Profile();
    Frame input_ = FromRows({{0, 25, 50, 75, 100}});
    Frame output_ = Flat(5, 1, 2000);
};

class EveryExportTest : public ExportTest, public testing::WithParamInterface<ProcessingExport> {
protected:
    // What a run makes of the output. One chain has no list; its linear curve ends at
    // trunc(100 * (100 / 65535)) = 0.
    static Frame Processed() {
        if (!GetParam().hasOutput) return Flat(5, 1, 2000);
        return GetParam().name == "ImageProcessingCR" ? Flat(5, 1, 0) : FromRows({{0, 6, 25, 56, 100}});
    }
};

TEST_P(EveryExportTest, ProcessesTheFrame) {
    EXPECT_EQ(GetParam().call(Arguments()), VASTRELLINE_OK);
    EXPECT_THAT(Input(), EqualsFrame(FromRows({{0, 25, 50, 75, 100}})));
    EXPECT_THAT(Output(), EqualsFrame(Processed()));
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// All combinations of three faults: the first one in the order profile, input, output gives the code.
TEST_P(EveryExportTest, ArgumentTestsAreMadeInTheirOrder) {
    const std::string missing = Folder().Narrow("missing.ini");
    for (int faults = 0; faults < 8; ++faults) {
        const bool hasProfile = (faults & 1) == 0;
        const bool hasInput = (faults & 2) == 0;
        const bool hasOutput = (faults & 4) == 0 || !GetParam().hasOutput;
        SCOPED_TRACE(testing::Message()
                     << "profile " << hasProfile << ", input " << hasInput << ", output " << hasOutput);
        ExportArguments arguments = Arguments();
        if (!hasProfile) arguments.iniPath = missing.c_str();
        if (!hasInput) arguments.input = nullptr;
        if (!hasOutput) arguments.output = nullptr;
        int32_t expected = VASTRELLINE_OK;
        if (!hasOutput) expected = VASTRELLINE_NO_OUTPUT;
        if (!hasInput) expected = VASTRELLINE_NO_INPUT;
        if (!hasProfile) expected = VASTRELLINE_NO_PROFILE;
        SetOutput({2000, 2000, 2000, 2000, 2000});
        EXPECT_EQ(GetParam().call(arguments), expected);
        EXPECT_THAT(Output(), EqualsFrame(expected == VASTRELLINE_OK ? Processed() : Flat(5, 1, 2000)));
    }
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// No section holds a mode, and without one the fixed chain runs, for which any section is as good.
TEST_P(EveryExportTest, EmptyOrNullSectionRunsTheFixedChainOnItsDefaults) {
    for (const char* section : {"", static_cast<const char*>(nullptr)}) {
        SetOutput({2000, 2000, 2000, 2000, 2000});
        ExportArguments arguments = Arguments();
        arguments.sectionName = section;
        EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_OK);
        if (GetParam().name != "ImageProcessingCR") continue;
        // Inverted; the linear curve from 0..4095 to 0..4095 is none.
        EXPECT_THAT(Output(), EqualsFrame(FromRows({{4095, 4070, 4045, 4020, 3995}})));
    }
}

TEST_P(EveryExportTest, NullPathCountsAsEmpty) {
    ExportArguments noProfile = Arguments();
    noProfile.iniPath = nullptr;
    EXPECT_EQ(GetParam().call(noProfile), VASTRELLINE_NO_PROFILE);
    noProfile.iniPath = "";
    EXPECT_EQ(GetParam().call(noProfile), VASTRELLINE_NO_PROFILE);
}

TEST_P(EveryExportTest, MappingFollowsOnSuccessAndOnCode1) {
    if (!GetParam().hasMapping || !GetParam().hasOutput) return;
    ExportArguments arguments = Arguments();
    for (const uint8_t applyMapping : {uint8_t{1}, uint8_t{2}, uint8_t{255}}) {
        arguments.applyMapping = applyMapping;
        EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_OK);
        // (3000 + 0, 6, 25, 56, 100) * 0.4095 = 1228.5, 1230.96, 1238.74, 1251.43, 1269.45
        EXPECT_THAT(Output(), EqualsFrame(FromRows({{1228, 1230, 1238, 1251, 1269}})));
    }
    arguments = Arguments();
    arguments.applyMapping = kMapped;
    arguments.iniPath = nullptr;
    SetOutput({0, 2000, 4095, 65535, 1000});
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_PROFILE);
    EXPECT_THAT(Output(), EqualsFrame(FromRows({{1228, 2047, 2905, 2905, 1638}})));
}

TEST_P(EveryExportTest, MappingIsSkippedWithoutInputOrOutput) {
    ExportArguments arguments = Arguments();
    arguments.applyMapping = kMapped;
    arguments.input = nullptr;
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_INPUT);
    EXPECT_THAT(Output(), EqualsFrame(Flat(5, 1, 2000)));
    if (!GetParam().hasOutput) return;
    arguments = Arguments();
    arguments.applyMapping = kMapped;
    arguments.output = nullptr;
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_OUTPUT);
}

TEST_P(EveryExportTest, SizesOfZeroOrLessAreNoWork) {
    for (const auto& [width, height] : {std::pair{0, 1},
                                        {5, 0},
                                        {0, 0},
                                        {-1, 1},
                                        {5, -1},
                                        {-5, -1},
                                        {INT32_MIN, INT32_MIN},
                                        {INT32_MIN, INT32_MAX},
                                        {INT32_MAX, 0}}) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        ExportArguments arguments = Arguments();
        arguments.width = width;
        arguments.height = height;
        arguments.applyMapping = kMapped;
        const std::string bitmap = Folder().Narrow("a.bmp");
        arguments.bitmapPath = bitmap.c_str();
        EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_OK);
        arguments.sectionName = "";
        EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_OK);
        arguments.iniPath = "";
        EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_PROFILE);
    }
    EXPECT_THAT(Output(), EqualsFrame(Flat(5, 1, 2000)));
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_P(EveryExportTest, SizesThatNoMemoryHoldsGiveCode6) {
    for (const auto& [width, height] :
         {std::pair{INT32_MAX, INT32_MAX}, {INT32_MAX, 1}, {1, INT32_MAX}, {65536, 65536}, {1, 536870912}}) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        for (const uint8_t applyMapping : {uint8_t{0}, kMapped}) {
            ExportArguments arguments = Arguments();
            arguments.width = width;
            arguments.height = height;
            arguments.applyMapping = applyMapping;
            EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_INTERNAL_FAILURE);
        }
    }
    EXPECT_THAT(Output(), EqualsFrame(Flat(5, 1, 2000)));
}

// The driver gives up before it looks at the size; the mapping behind it must not trust that.
TEST_P(EveryExportTest, HostileSizeIsSafeAlsoWhenAnArgumentTestFails) {
    ExportArguments arguments = Arguments();
    arguments.width = INT32_MAX;
    arguments.height = INT32_MAX;
    arguments.applyMapping = kMapped;
    arguments.iniPath = "";
    const int32_t code = GetParam().call(arguments);
    EXPECT_EQ(code, GetParam().hasMapping ? VASTRELLINE_INTERNAL_FAILURE : VASTRELLINE_NO_PROFILE);
    EXPECT_THAT(Output(), EqualsFrame(Flat(5, 1, 2000)));
}

INSTANTIATE_TEST_SUITE_P(Exports, EveryExportTest, testing::ValuesIn(ProcessingExports()),
                         [](const auto& test) { return test.param.name; });

// A section name may be as long as anything; only ImageProcessing_NS has a limit. Whether
// the section was found shows in the log that it asks for.
class LongTextTest : public ExportTest {
protected:
    bool FindsSection(const ProcessingExport& processing, const std::string& section) {
        ProfileFolder::SettledProfile()
            .Section(section)
            .Key("SAVE_LOG", "1")
            .Key("INTRAORAL_MASK", "0")
            .WriteTo(Folder().At("profile.ini"));
        std::filesystem::remove(Folder().At("ExtraOralLog.txt"));
        ExportArguments arguments = Arguments();
        arguments.sectionName = section.c_str();
        EXPECT_EQ(processing.call(arguments), VASTRELLINE_OK);
        return std::filesystem::exists(Folder().At("ExtraOralLog.txt"));
    }
};

TEST_F(LongTextTest, SectionOfMoreThan260CharactersIsEmptyForOneExportOnly) {
    for (const ProcessingExport& processing : ProcessingExports()) {
        SCOPED_TRACE(processing.name);
        EXPECT_TRUE(FindsSection(processing, std::string(260, 's')));
        EXPECT_EQ(FindsSection(processing, std::string(261, 's')), processing.name != "ImageProcessing_NS");
    }
}

// A bitmap's path of so many characters is longer than a file's name can be, unless it counts as empty.
TEST_F(ExportTest, BitmapPathOfMoreThan260CharactersIsEmptyForOneExportOnly) {
    const std::string fits(260, 's');
    const std::string tooLong(261, 's');
    for (const ProcessingExport& processing : ProcessingExports()) {
        if (processing.hasOutput) continue;
        SCOPED_TRACE(processing.name);
        const bool isLimited = processing.name == "ImageProcessing_NS";
        ExportArguments arguments = Arguments();
        arguments.bitmapPath = fits.c_str();
        EXPECT_EQ(processing.call(arguments), VASTRELLINE_NO_BITMAP);
        arguments.bitmapPath = tooLong.c_str();
        EXPECT_EQ(processing.call(arguments), isLimited ? VASTRELLINE_OK : VASTRELLINE_NO_BITMAP);
    }
}

// U+1D11E takes four bytes of UTF-8 and two UTF-16 units, U+00E9 two bytes and one unit.
TEST_F(LongTextTest, LimitCountsUtf16Units) {
    const std::vector<ProcessingExport> exports = ProcessingExports();
    const auto limited = std::find_if(exports.begin(), exports.end(), [](const ProcessingExport& processing) {
        return processing.name == "ImageProcessing_NS";
    });
    const auto repeat = [](const std::string& character, int count) {
        std::string section;
        for (int i = 0; i < count; ++i) section += character;
        return section;
    };
    EXPECT_TRUE(FindsSection(*limited, repeat("\xF0\x9D\x84\x9E", 130)));
    EXPECT_FALSE(FindsSection(*limited, repeat("\xF0\x9D\x84\x9E", 131)));
    EXPECT_TRUE(FindsSection(*limited, repeat("\xC3\xA9", 260)));
    EXPECT_FALSE(FindsSection(*limited, repeat("\xC3\xA9", 261)));
}

TEST(SensorGeometryRecord, IsTenIntegersInTheirOrder) {
    const SensorGeometry geometry = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    EXPECT_EQ(sizeof geometry, 40U);
    EXPECT_EQ(geometry.Rotation, 1);
    EXPECT_EQ(geometry.Flip, 2);
    EXPECT_EQ(geometry.RCCutOff, 3);
    EXPECT_EQ(geometry.RCCutOffR, 4);
    EXPECT_EQ(geometry.FrameWidth, 5);
    EXPECT_EQ(geometry.FrameHeight, 6);
    EXPECT_EQ(geometry.ImgCutLeft, 7);
    EXPECT_EQ(geometry.ImgCutTop, 8);
    EXPECT_EQ(geometry.ImgCutRight, 9);
    EXPECT_EQ(geometry.ImgCutBottom, 10);
}

TEST(DoseExport, FiguresAreZeroBeforeAnyDecision) {
    int32_t median = 1;
    int32_t total = 2;
    int32_t lowSignal = 3;
    double ratio = 4.0;
    int32_t lowExposure = 5;
    Getdose_ImageInfo(&median, &total, &lowSignal, &ratio, &lowExposure);
    EXPECT_EQ(median, 0);
    EXPECT_EQ(total, 0);
    EXPECT_EQ(lowSignal, 0);
    EXPECT_EQ(ratio, 0.0);
    EXPECT_EQ(lowExposure, 0);
}

TEST(DoseExport, NullPointerLeavesItsFigureOut) {
    int32_t total = 2;
    double ratio = 4.0;
    Getdose_ImageInfo(nullptr, &total, nullptr, &ratio, nullptr);
    EXPECT_EQ(total, 0);
    EXPECT_EQ(ratio, 0.0);
    Getdose_ImageInfo(nullptr, nullptr, nullptr, nullptr, nullptr);
}

TEST(RotateExport, TurnsThenMirrorsTheFrameInPlace) {
    Frame frame = FromRows({{1, 2}, {3, 4}});
    // Clockwise: {3, 1}, {4, 2}; then left to right.
    EXPECT_EQ(RotateImage(frame.Data(), 2, 2, 1, 1), 1);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 3}, {2, 4}})));
}

// A frame of 3 by 2 is one of 2 by 3 afterwards.
TEST(RotateExport, QuarterTurnSwapsTheSides) {
    std::vector<uint16_t> pixels = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(RotateImage(pixels.data(), 3, 2, 1, 0), 1);
    EXPECT_EQ(pixels, (std::vector<uint16_t>{4, 1, 5, 2, 6, 3}));
    EXPECT_EQ(RotateImage(pixels.data(), 2, 3, 2, 0), 1);
    EXPECT_EQ(pixels, (std::vector<uint16_t>{1, 2, 3, 4, 5, 6}));
}

TEST(RotateExport, UnknownCodesDoNothingAndSucceed) {
    Frame frame = FromRows({{1, 2}, {3, 4}});
    for (const int32_t code : {0, 4, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(RotateImage(frame.Data(), 2, 2, code, code), 1) << code;
    }
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 2}, {3, 4}})));
}

TEST(RotateExport, NullFrameGives0) { EXPECT_EQ(RotateImage(nullptr, INT32_MAX, -1, 3, 3), 0); }

TEST(RotateExport, SizesThatNoMemoryHoldsGive0) {
    Frame frame = FromRows({{1, 2}, {3, 4}});
    for (const int32_t rotation : {0, 1, 2, 3}) {
        EXPECT_EQ(RotateImage(frame.Data(), INT32_MAX, INT32_MAX, rotation, 3), 0) << rotation;
        EXPECT_EQ(RotateImage(frame.Data(), 1, 536870912, rotation, 0), 0) << rotation;
    }
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 2}, {3, 4}})));
}

// The calling example of the public header, as it stands there, in a folder with a profile of that name.
TEST(PublicHeader, ItsExampleProcessesAFrame) {
    const ProfileFolder folder;
    ProfileFolder::PlainSection().Key("SAVE_LOG", "1").Stage("10").WriteTo(folder.At("profile.ini"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.At(""));

    uint16_t frame[64 * 48] = {0};
    uint16_t enhanced[64 * 48];
    int32_t code = ImageProcessing(frame, enhanced, 64, 48, "profile.ini", "General", 0, 0);
    if (code != VASTRELLINE_OK) {
        fprintf(stderr, "the frame was not processed: code %d\n", (int)code);
    }

    std::filesystem::current_path(before);
    EXPECT_EQ(code, VASTRELLINE_OK);
    EXPECT_EQ(std::vector<uint16_t>(std::begin(enhanced), std::end(enhanced)), std::vector<uint16_t>(3072));
    // A profile without a folder lies in the current one, and so does its log.
    EXPECT_NE(folder.Log().find("End Post-Processing"), std::string::npos);
}

}  // namespace
}  // namespace vastrelline
