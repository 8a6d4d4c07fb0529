// SPDX-License-Identifier: Apache-2.0

// Every processing export with every mode, against all that may be missing or in the way: the code, and what
// a call leaves behind in memory and on the disk.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "config/CRegistryIO.h"
#include "config/ConfiguredState.h"
#include "config/DoseRecord.h"
#include "config/FixedState.h"
#include "sensor/SpotCorrection.h"
#include "support/BackupNames.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/PlainExposure.h"
#include "support/ProfileFolder.h"
#include "support/StageNames.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;

constexpr int32_t kWidth = 24;
constexpr int32_t kHeight = 20;

// On Windows nobody promises that the lines before the first head are the section of the empty name.
#ifdef _WIN32
constexpr bool kHasNamelessSection = false;
#else
constexpr bool kHasNamelessSection = true;
#endif

// ---- the exports

enum class Chain { Configured, LowExposure, Extended, Fixed, Cr };

bool IsConfiguredFamily(Chain chain) { return chain < Chain::Fixed; }

struct Arguments {
    uint16_t* input;
    uint16_t* output;
    const char* iniPath;
    const char* sectionName;
    uint8_t applySpotCorrection = 0;
    const char* bitmapPath = nullptr;
};

struct ExportRow {
    std::string name;
    bool hasOutput;
    std::array<Chain, 3> chains;  // for a PROCMODE of 1, 2 and 3
    int32_t (*call)(const Arguments& a);
};

void PrintTo(const ExportRow& row, std::ostream* out) { *out << row.name; }

std::vector<ExportRow> Exports() {
    using A = Arguments;
    constexpr auto kFixed = Chain::Fixed;
    return {
        {"ImageProcessing",
         true,
         {kFixed, Chain::Configured, kFixed},
         [](const A& a) {
             return ImageProcessing(a.input, a.output, kWidth, kHeight, a.iniPath, a.sectionName, 0,
                                    a.applySpotCorrection);
         }},
        {"ImageProcessingS",
         true,
         {kFixed, Chain::Configured, Chain::LowExposure},
         [](const A& a) {
             return ImageProcessingS(a.input, a.output, kWidth, kHeight, a.iniPath, a.sectionName, 0,
                                     a.applySpotCorrection, nullptr);
         }},
        {"ImageProcessing_N",
         false,
         {kFixed, Chain::Configured, kFixed},
         [](const A& a) {
             return ImageProcessing_N(a.input, kWidth, kHeight, a.iniPath, a.sectionName, 0,
                                      a.applySpotCorrection, a.bitmapPath);
         }},
        {"ImageProcessing_NS",
         false,
         {kFixed, Chain::Configured, Chain::LowExposure},
         [](const A& a) {
             return ImageProcessing_NS(a.input, kWidth, kHeight, a.iniPath, a.sectionName, 0,
                                       a.applySpotCorrection, a.bitmapPath, nullptr);
         }},
        {"ImageProcessing_NE",
         false,
         {kFixed, Chain::Extended, kFixed},
         [](const A& a) {
             return ImageProcessing_NE(a.input, kWidth, kHeight, a.iniPath, a.sectionName, 0,
                                       a.applySpotCorrection, a.bitmapPath, "theirs", 2);
         }},
        {"ImageProcessingCR",
         true,
         {Chain::Cr, Chain::Cr, Chain::Cr},
         [](const A& a) {
             return ImageProcessingCR(a.input, a.output, kWidth, kHeight, a.iniPath, a.sectionName);
         }},
    };
}

const ExportRow& ExportNamed(const std::string& name) {
    static const std::vector<ExportRow> exports = Exports();
    for (const ExportRow& row : exports)
        if (row.name == name) return row;
    throw std::invalid_argument(name);
}

// ---- the frames

// Columns of three levels and one pixel that is brighter than all others.
Frame Columns(uint16_t left, uint16_t middle, uint16_t right, uint16_t spot) {
    Frame frame(kWidth, kHeight);
    for (int32_t y = 0; y < kHeight; ++y)
        for (int32_t x = 0; x < kWidth; ++x) {
            uint16_t level = right;
            if (x < 12) level = middle;
            if (x < 6) level = left;
            frame.At(x, y) = level;
        }
    frame.At(20, 10) = spot;
    return frame;
}

Frame Raw() { return Columns(260, 300, 1500, 4000); }

// By hand: the black point is 260, the clip level without the brightest hundredth 1500. The lift would end at
// 260 + trunc(1240 * 250 / 4095) = 335, which is too bright for any; the clip would begin at 260 +
// trunc(1240 * 3800 / 4095) = 1410, but never does so below 1800.
Frame Corrected() { return Columns(260, 300, 1500, 1800); }

// What a chain makes of it without a stage. Those of the fixed order end with the linear curve, whose top is
// the brightest level that stands out: 1500 by 239 pixels, against one of 1800 or 4000. By hand: 4095 * (260,
// 300 / 1500) = 709.8, 819.0.
Frame Processed(Chain chain) {
    return IsConfiguredFamily(chain) ? Corrected() : Columns(709, 819, 4095, 4095);
}

// The same on the defaults, which invert it: 3835, 3795, 2595, and 2295 for 1800 or 95 for 4000. The
// curve's top is 3835: 4095 * (3795, 2595, 2295, 95 / 3835) = 4052.3, 2770.9, 2450.6, 101.4.
Frame ProcessedOnDefaults(Chain chain) { return Columns(4095, 4052, 2770, chain == Chain::Cr ? 101 : 2450); }

// ---- the figures of the exposure decision

using Figures = std::array<double, 5>;

Figures ReadFigures() {
    int32_t median = 0;
    int32_t total = 0;
    int32_t lowSignal = 0;
    double ratio = 0.0;
    int32_t isLow = 0;
    Getdose_ImageInfo(&median, &total, &lowSignal, &ratio, &isLow);
    return {static_cast<double>(median), static_cast<double>(total), static_cast<double>(lowSignal), ratio,
            static_cast<double>(isLow)};
}

constexpr Figures kEarlierFigures = {-1, -2, -3, -4.5, -5};

// Of the corrected frame, by hand: Otsu's threshold is 300, so the object are the 120 pixels of 260.
constexpr Figures kFigures = {260, 120, 0, 0, 0};

// ---- what may be missing or in the way

struct Situation {
    const char* name;
    bool hasProfile = true;
    const char* section = "General";
    bool hasLines = true;  // in that section
    bool hasInput = true;
    bool hasOutput = true;
    bool canSaveBitmap = true;
};

constexpr Situation kSituations[] = {
    {.name = "nothing"},
    {.name = "profile", .hasProfile = false},
    {.name = "lines of the section", .section = "Bare", .hasLines = false},
    {.name = "name of the section", .section = ""},
    {.name = "input", .hasInput = false},
    {.name = "output", .hasOutput = false},
    {.name = "folder of the bitmap", .canSaveBitmap = false},
};

constexpr const char* kOldLog = "an old log";

// The folder of a profile that asks for everything: a log beside an old one, dumps in Dumps, backups in Keep.
class Workplace {
public:
    Workplace() {
        std::filesystem::create_directory(folder_.At("Dumps"));
        WriteBytes(folder_.At("ExtraOralLog.txt"), kOldLog);
        folder_.Sensor().WritePlain(
            "[Settings]\r\nRCCutOff=5\r\nRCCutOffR=1\r\nFrameWidth=24\r\nFrameHeight=20\r\n");
        folder_.Sensor().WriteSensor(
            "theirs", "[Settings]\r\nRCCutOff=2\r\nRCCutOffR=1\r\nFrameWidth=12\r\nFrameHeight=10\r\n");
    }

    // Lines of a section without corner mask, inversion and stages.
    void AddLines(ProfileWriter& writer, int mode, const char* clipBin = "0.5") const {
        writer.Key("PROCMODE", std::to_string(mode))
            .Key("VERSION", "3.1")
            .Key("SAVE_LOG", "1")
            .Key("SAVE_IMAGE", "1")
            .Key("WRITE_PATH", folder_.Narrow("Dumps") + "\\")
            .Key("SAVE_BACKUP", "1")
            .Key("SAVE_BACKUPPATH", folder_.Narrow("Keep"))
            .Key("SETCLIPBIN", clipBin)
            .Key("INTRAORAL_MASK", "0")
            .Key("INVERSE_INTENSITY", "0");
    }

    // The lines stand in section "General", and before the first head for the section of the empty name;
    // section "Bare" has none.
    void WriteProfile(int mode, const char* clipBin = "0.5") const {
        ProfileWriter writer;
        AddLines(writer, mode, clipBin);
        writer.Section("General");
        AddLines(writer, mode, clipBin);
        writer.Section("Bare");
        writer.WriteTo(folder_.At("profile.ini"));
    }

    // -1 where the profile has none.
    int32_t CornerInProfile() const {
        return CRegistryIO(nullptr, folder_.WideProfile().c_str(), 1)
            .ReadProfileInt(L"Settings", L"RCCutOff", -1);
    }

    std::vector<std::string> Dumps() const { return MaskedNames(folder_.At("Dumps")); }
    std::string Dump(const std::string& name) const { return ReadBytes(folder_.At("Dumps") / name); }
    std::vector<std::string> Backups() const {
        const bool hasBackups = std::filesystem::exists(folder_.At("Keep"));
        return hasBackups ? MaskedNames(folder_.At("Keep")) : std::vector<std::string>();
    }
    std::string Backup(const std::string& masked) const {
        return ReadBytes(BackupsNamed(folder_.At("Keep"), masked).at(0));
    }

    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

// Puts everything that outlives a call back to what it was.
class RestoredState {
public:
    RestoredState() = default;
    ~RestoredState() {
        SharedConfiguredState() = configured_;
        SharedFixedState() = fixed_;
        SetSharedDoseRecord(dose_);
    }
    RestoredState(const RestoredState&) = delete;
    RestoredState& operator=(const RestoredState&) = delete;

private:
    ConfiguredState configured_ = SharedConfiguredState();
    FixedState fixed_ = SharedFixedState();
    DoseRecord dose_ = SharedDoseRecord();
};

class ExportsMatrixTest : public testing::TestWithParam<ExportRow> {
private:
    RestoredState restored_;
};

// One cell of the matrix: a call, and what it has to leave.
class Cell {
public:
    Cell(const ExportRow& row, int mode, const Situation& situation) : row_(row), situation_(situation) {
        const bool isFound = situation.hasProfile && situation.hasLines;
        chain_ = row.chains[isFound ? static_cast<size_t>(mode - 1) : 0];
        if (situation.hasProfile) {
            place_.WriteProfile(mode);
            profile_ = ReadBytes(place_.Folder().At("profile.ini"));
        }
        SetSharedDoseRecord({-1, -2, -3, -4.5, -5});
        dumpNumber_ = SharedConfiguredState().DumpNumber;
    }

    void Check() {
        const std::string iniPath = place_.Folder().Profile();
        const std::string bitmap =
            place_.Folder().Narrow(situation_.canSaveBitmap ? "picture.bmp" : "missing\\picture.bmp");
        EXPECT_EQ(row_.call({.input = situation_.hasInput ? input_.Data() : nullptr,
                             .output = situation_.hasOutput ? output_.Data() : nullptr,
                             .iniPath = iniPath.c_str(),
                             .sectionName = situation_.section,
                             .bitmapPath = bitmap.c_str()}),
                  ExpectedCode());
        CheckFrames();
        CheckPicture();
        CheckLog();
        CheckDumps();
        CheckBackups();
        CheckState();
    }

private:
    int32_t ExpectedCode() const {
        if (!situation_.hasProfile) return VASTRELLINE_NO_PROFILE;
        if (!situation_.hasInput) return VASTRELLINE_NO_INPUT;
        if (!situation_.hasOutput && row_.hasOutput) return VASTRELLINE_NO_OUTPUT;
        if (*situation_.section == '\0' && IsConfiguredFamily(chain_)) return VASTRELLINE_NO_SECTION;
        return situation_.canSaveBitmap || row_.hasOutput ? VASTRELLINE_OK : VASTRELLINE_NO_BITMAP;
    }
    bool IsRun() const { return ExpectedCode() == VASTRELLINE_OK || ExpectedCode() == VASTRELLINE_NO_BITMAP; }
    bool IsOnDefaults() const { return !situation_.hasLines; }
    // Defaults ask for no files.
    bool HasFiles() const { return IsRun() && !IsOnDefaults(); }

    Frame ExpectedInput() const { return chain_ == Chain::Cr || !situation_.hasInput ? Raw() : Corrected(); }
    Frame ExpectedOutput() const { return IsOnDefaults() ? ProcessedOnDefaults(chain_) : Processed(chain_); }

    void CheckFrames() const {
        EXPECT_THAT(input_, EqualsFrame(ExpectedInput()));
        const bool isWritten = IsRun() && row_.hasOutput;
        EXPECT_THAT(output_, EqualsFrame(isWritten ? ExpectedOutput() : Flat(kWidth, kHeight, 7)));
    }

    void CheckPicture() const {
        EXPECT_FALSE(std::filesystem::exists(place_.Folder().At("missing")));
        const bool isSaved = ExpectedCode() == VASTRELLINE_OK && !row_.hasOutput;
        ASSERT_EQ(std::filesystem::exists(place_.Folder().At("picture.bmp")), isSaved);
        if (!isSaved) return;
        EXPECT_THAT(ReadGreyBitmap(ReadBytes(place_.Folder().At("picture.bmp"))),
                    EqualsFrame(ThroughUsualWindow(ExpectedOutput())));
    }

    void CheckLog() const {
        const std::string log = place_.Folder().Log();
        if (!HasFiles()) {
            EXPECT_EQ(log, kOldLog);
            return;
        }
        const std::string start = "\r\n\r\n===";
        EXPECT_THAT(log, StartsWith(IsConfiguredFamily(chain_) ? kOldLog + start : start));
        const char* program = "Vastrelline.dll [v";
        if (chain_ == Chain::Fixed) program = "Quorla.dll [v";
        if (chain_ == Chain::Cr) program = "Quorla.dll [CR Mode v";
        EXPECT_THAT(log, HasSubstr(std::string("\t: Start ") + program + "3.1]\r\n\t\t\t Section Name [" +
                                   situation_.section + "]\r\n"));
        EXPECT_EQ(log.find(" sec )") != std::string::npos, IsConfiguredFamily(chain_));
        EXPECT_EQ(log.find(" sec )\r\n\r\n===") != std::string::npos, chain_ == Chain::LowExposure);
    }

    void CheckDumps() const {
        const bool isFamilysNumber = HasFiles() && IsConfiguredFamily(chain_);
        EXPECT_EQ(SharedConfiguredState().DumpNumber, dumpNumber_ + (isFamilysNumber ? 2 : 0));
        if (!HasFiles()) {
            EXPECT_THAT(place_.Dumps(), testing::IsEmpty());
            return;
        }
        const std::string original =
            isFamilysNumber ? ComingDump(-2, "originalimage.raw") : "00_originalimage.raw";
        const std::string result = isFamilysNumber ? ComingDump(-1, "result.raw") : "01_result.raw";
        ASSERT_THAT(place_.Dumps(), testing::UnorderedElementsAre(original, result));
        EXPECT_EQ(place_.Dump(original), RawBytes(ExpectedInput().pixels));
        EXPECT_EQ(place_.Dump(result), RawBytes(ExpectedOutput().pixels));
    }

    void CheckBackups() const {
        if (!HasFiles()) {
            EXPECT_FALSE(std::filesystem::exists(place_.Folder().At("Keep")));
            return;
        }
        const std::string section = situation_.section;
        if (chain_ != Chain::Cr) {
            ASSERT_THAT(place_.Backups(), UnorderedElementsAreArray({"T_Keep" + section + ".bmp",
                                                                     std::string("T_keepcalibrated.raw")}));
            EXPECT_EQ(place_.Backup("T_keepcalibrated.raw"), RawBytes(ExpectedInput().pixels));
            return;
        }
        const std::string profile = "T_Keep_" + section + ".ini";
        ASSERT_THAT(place_.Backups(), UnorderedElementsAreArray({std::string("T_Keep_Enhanced.bmp"), profile,
                                                                 std::string("T_keep_calibrated.raw"),
                                                                 std::string("T_keep_enhanced.raw")}));
        EXPECT_EQ(place_.Backup("T_keep_calibrated.raw"), RawBytes(ExpectedInput().pixels));
        EXPECT_EQ(place_.Backup("T_keep_enhanced.raw"), RawBytes(ExpectedOutput().pixels));
        EXPECT_EQ(place_.Backup(profile), profile_);
    }

    // The figures of the decision, and the sensor's values in the profile.
    void CheckState() const {
        EXPECT_EQ(ReadFigures(), IsRun() && chain_ == Chain::LowExposure ? kFigures : kEarlierFigures);
        if (!situation_.hasProfile) {
            EXPECT_FALSE(std::filesystem::exists(place_.Folder().At("profile.ini")));
        } else if (IsRun() && IsConfiguredFamily(chain_)) {
            // The plain sensor's corner; of the sensor that the caller named 2 * 2 - 1.
            EXPECT_EQ(place_.CornerInProfile(), chain_ == Chain::Extended ? 3 : 5);
        } else {
            EXPECT_EQ(ReadBytes(place_.Folder().At("profile.ini")), profile_);
        }
    }

    const ExportRow& row_;
    const Situation& situation_;
    Workplace place_;
    Chain chain_;
    std::string profile_;
    int32_t dumpNumber_ = 0;
    Frame input_ = Raw();
    Frame output_ = Flat(kWidth, kHeight, 7);
};

TEST_P(ExportsMatrixTest, CodeAndTracesOfEveryModeWhateverIsMissing) {
    for (const int mode : {1, 2, 3}) {
        for (const Situation& situation : kSituations) {
            if (*situation.section == '\0' && !kHasNamelessSection) continue;
            SCOPED_TRACE(testing::Message() << "mode " << mode << ", without " << situation.name);
            Cell(GetParam(), mode, situation).Check();
        }
    }
}

// Every object pixel counts as too dark here, and the section of the low mode is missing.
TEST_P(ExportsMatrixTest, LowSequenceRunsWhereTheExposureIsDecided) {
    const Workplace place;
    place.WriteProfile(3, "-1");
    Frame input = Raw();
    Frame output = Flat(kWidth, kHeight, 7);
    const std::string iniPath = place.Folder().Profile();
    EXPECT_EQ(GetParam().call({input.Data(), output.Data(), iniPath.c_str(), "General"}), VASTRELLINE_OK);
    const bool isDeciding = GetParam().chains[2] == Chain::LowExposure;
    EXPECT_EQ(StageNamesIn(place.Folder().Log()),
              isDeciding ? (std::vector<std::string>{"Gaussian", "StretchCurve", "CLAHE", "CLAHE",
                                                     "Linear Curve", "Gamma Curve"})
                         : std::vector<std::string>{"Linear Curve"});
    if (isDeciding) {
        EXPECT_THAT(place.Backups(), ElementsAre("T_KeepIP_LOWMODE.bmp", "T_keepcalibrated.raw"));
        EXPECT_EQ(ReadFigures(), (Figures{260, 120, 0, 0, 1}));
    }
}

TEST_P(ExportsMatrixTest, SpotCorrectionComesBeforeTheExposureCurve) {
    Frame evened = Raw();
    ApplySpotCorrection(evened.Data(), 15, kWidth, kHeight, 1.5F);
    const Frame expected(kWidth, kHeight, PlainExposure(evened.pixels));
    ASSERT_NE(expected, Corrected());
    const Workplace place;
    place.WriteProfile(2);
    const std::string iniPath = place.Folder().Profile();
    for (const uint8_t flag : {uint8_t{1}, uint8_t{128}}) {
        Frame input = Raw();
        Frame output = Flat(kWidth, kHeight, 7);
        EXPECT_EQ(GetParam().call({input.Data(), output.Data(), iniPath.c_str(), "General", flag}),
                  VASTRELLINE_OK);
        EXPECT_THAT(input, EqualsFrame(GetParam().chains[0] == Chain::Cr ? Raw() : expected));
    }
}

INSTANTIATE_TEST_SUITE_P(Exports, ExportsMatrixTest, testing::ValuesIn(Exports()),
                         [](const auto& test) { return test.param.name; });

// ---- from call to call

size_t CountStarts(const std::string& log) {
    size_t count = 0;
    for (size_t at = log.find("\t: Start "); at != std::string::npos; at = log.find("\t: Start ", at + 1))
        ++count;
    return count;
}

// Runs of both families take turns on one profile. The numbers of one rise over the process, whatever runs
// between; those of the other are 0 and 1 in every run, which also drops the log.
TEST(ExportsInTurn, DumpNumbersAndLogFollowTheFamily) {
    const struct {
        const char* name;
        const char* section;
        int32_t firstNumber;
        size_t startsInLog;
    } calls[] = {
        {"ImageProcessing", "Mode2", 40, 1},   {"ImageProcessing_NS", "Mode3", 42, 2},
        {"ImageProcessing", "Mode3", 0, 1},    {"ImageProcessing_NE", "Mode2", 44, 2},
        {"ImageProcessing_N", "Mode2", 46, 3}, {"ImageProcessingCR", "Mode2", 0, 1},
        {"ImageProcessingS", "Mode3", 48, 2},  {"ImageProcessing_NE", "Mode3", 0, 1},
        {"ImageProcessingS", "Mode1", 0, 1},   {"ImageProcessing_NS", "Mode2", 50, 2},
    };
    const RestoredState restored;
    SharedConfiguredState().DumpNumber = 40;
    const Workplace place;
    ProfileWriter writer;
    for (const int mode : {1, 2, 3}) {
        writer.Section("Mode" + std::to_string(mode));
        place.AddLines(writer, mode);
    }
    writer.WriteTo(place.Folder().At("profile.ini"));
    const std::string iniPath = place.Folder().Profile();

    std::vector<std::string> dumps;
    uint16_t level = 300;
    for (const auto& call : calls) {
        SCOPED_TRACE(testing::Message() << call.name << ' ' << call.section);
        Frame input = Flat(kWidth, kHeight, ++level);  // the exposure curve leaves a frame of one level
        Frame output = Flat(kWidth, kHeight, 7);
        EXPECT_EQ(ExportNamed(call.name).call({input.Data(), output.Data(), iniPath.c_str(), call.section}),
                  VASTRELLINE_OK);
        const bool isFixed = call.firstNumber == 0;
        const std::string original =
            (isFixed ? std::string("00") : std::to_string(call.firstNumber)) + "_originalimage.raw";
        const std::string result =
            (isFixed ? std::string("01") : std::to_string(call.firstNumber + 1)) + "_result.raw";
        for (const std::string& name : {original, result})
            if (std::find(dumps.begin(), dumps.end(), name) == dumps.end()) dumps.push_back(name);
        EXPECT_THAT(place.Dumps(), UnorderedElementsAreArray(dumps));
        EXPECT_EQ(place.Dump(original), RawBytes(Flat(kWidth, kHeight, level).pixels));
        EXPECT_EQ(CountStarts(place.Folder().Log()), call.startsInLog);
    }
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 52);
}

}  // namespace
}  // namespace vastrelline
