// SPDX-License-Identifier: Apache-2.0

// Files as only a POSIX system has them: names of any bytes, pipes, links, the full device.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

class PosixExportTest : public testing::TestWithParam<ProcessingExport> {
protected:
    static ProfileWriter Square() {
        return ProfileFolder::PlainSection()
            .Key("OUTPUTRANGE", "100")
            .Key("SAVE_LOG", "1")
            .Stage("10", {{"POST_GAMMA_RATIO", "2"}});
    }

    void ExpectOutput(const std::string& iniPath, const Frame& expected) {
        const Frame output = Run(iniPath);
        if (!GetParam().hasOutput) return;
        EXPECT_THAT(output, EqualsFrame(expected));
    }

    const ProfileFolder& Folder() const { return folder_; }

    // What the fixed chain, which runs where nothing selects another one, makes of the frame on its defaults.
    Frame OnDefaults() {
        WriteBytes(folder_.At("defaults.ini"), "[General]\r\nPROCMODE=1\r\n");
        const Frame output = Run(folder_.Narrow("defaults.ini"));
        EXPECT_EQ(output != Flat(3, 1, 7), GetParam().hasOutput);
        return output;
    }

    // What the list of the section makes of it. One chain has no list; its linear curve ends at
    // trunc(100 * (100 / 65535)) = 0.
    static Frame Squared() {
        return GetParam().name == "ImageProcessingCR" ? Flat(3, 1, 0) : FromRows({{0, 25, 100}});
    }

private:
    Frame Run(const std::string& iniPath) {
        Frame input = FromRows({{0, 50, 100}});
        Frame output = Flat(3, 1, 7);
        EXPECT_EQ(
            GetParam().call({input.Data(), output.Data(), 3, 1, iniPath.c_str(), "General", 0, nullptr}),
            VASTRELLINE_OK);
        return output;
    }

    ProfileFolder folder_;
};

// What a profile holds stays byte for byte; the sensor's values stand behind it.
TEST_P(PosixExportTest, BinaryProfileKeepsItsBytes) {
    std::mt19937 random(20240501);
    std::string bytes;
    for (int i = 0; i < 300000; ++i) bytes += static_cast<char>((random() >> 8U) & 0xFFU);
    WriteBytes(Folder().At("profile.ini"), bytes);
    ExpectOutput(Folder().Profile(), OnDefaults());
    EXPECT_TRUE(ReadBytes(Folder().At("profile.ini")).starts_with(bytes));
}

// Any bytes but 0 and '/' may make up a name here, valid UTF-8 or not.
TEST_P(PosixExportTest, PathsOfAnyBytesWork) {
    for (const char* name : {"gr\xC3\xB6\xC3\x9F"
                             "e",
                             "\xF0\x9D\x84\x9E", "\xE9t\xE9", "\xFF\xFE", "a\x80", "\xED\xB2\x80", "\xC3",
                             "\xF0\x9D\x84", "\xC0\xAF", "new\nline"}) {
        SCOPED_TRACE(name);
        const std::filesystem::path folder = Folder().At(name);
        std::filesystem::create_directory(folder);
        Square().WriteTo(folder / (std::string(name) + ".ini"));
        ExpectOutput((folder / (std::string(name) + ".ini")).string(), Squared());
        EXPECT_NE(ReadBytes(folder / "ExtraOralLog.txt").find("End Post-Processing"), std::string::npos);
    }
}

TEST_P(PosixExportTest, BothSeparatorsLeadToTheProfile) {
    std::filesystem::create_directory(Folder().At("sub"));
    Square().WriteTo(Folder().At("sub") / "p.ini");
    ExpectOutput(Folder().Narrow("sub") + "\\p.ini", Squared());
    ExpectOutput(Folder().Narrow("sub") + "/p.ini", Squared());
    EXPECT_TRUE(std::filesystem::exists(Folder().At("sub") / "ExtraOralLog.txt"));
    EXPECT_FALSE(std::filesystem::exists(Folder().At("ExtraOralLog.txt")));
}

// A path of 261 units is as good as none for one export.
TEST_P(PosixExportTest, ProfilePathOf260CharactersWorks) {
    std::string folder = Folder().Narrow("");
    while (folder.size() < 240) {
        folder += std::string(std::min<size_t>(100, 245 - folder.size()), 'd') + "/";
    }
    std::filesystem::create_directories(folder);
    const std::string fits = folder + std::string(260 - folder.size(), 'f');
    Square().WriteTo(fits);
    Square().WriteTo(fits + "f");
    ASSERT_EQ(fits.size(), 260U);
    ExpectOutput(fits, Squared());
    Frame input = FromRows({{0, 50, 100}});
    Frame output = Flat(3, 1, 7);
    const std::string tooLong = fits + "f";
    const bool isLimited = GetParam().name == "ImageProcessing_NS";
    EXPECT_EQ(GetParam().call({input.Data(), output.Data(), 3, 1, tooLong.c_str(), "General", 0, nullptr}),
              isLimited ? VASTRELLINE_NO_PROFILE : VASTRELLINE_OK);
}

TEST_P(PosixExportTest, LinkThatLeadsNowhereIsNoProfile) {
    std::filesystem::create_symlink("nowhere.ini", Folder().At("profile.ini"));
    std::filesystem::create_symlink("circle.ini", Folder().At("circle.ini"));
    Frame input = Flat(3, 1, 1);
    Frame output = Flat(3, 1, 7);
    for (const char* name : {"profile.ini", "circle.ini"}) {
        const std::string path = Folder().Narrow(name);
        EXPECT_EQ(GetParam().call({input.Data(), output.Data(), 3, 1, path.c_str(), "General", 0, nullptr}),
                  VASTRELLINE_NO_PROFILE);
    }
}

TEST_P(PosixExportTest, LinkedProfileHasItsLogBesideTheLink) {
    std::filesystem::create_directory(Folder().At("there"));
    Square().WriteTo(Folder().At("there") / "real.ini");
    std::filesystem::create_symlink("there/real.ini", Folder().At("profile.ini"));
    ExpectOutput(Folder().Profile(), Squared());
    EXPECT_TRUE(std::filesystem::exists(Folder().At("ExtraOralLog.txt")));
    EXPECT_FALSE(std::filesystem::exists(Folder().At("there") / "ExtraOralLog.txt"));
}

TEST_P(PosixExportTest, FullDiskEndsTheLogAndNothingElse) {
    Square().WriteTo(Folder().At("profile.ini"));
    std::filesystem::create_symlink("/dev/full", Folder().At("ExtraOralLog.txt"));
    ExpectOutput(Folder().Profile(), Squared());
}

TEST_P(PosixExportTest, FullDiskLosesTheDumpsAndNothingElse) {
    Square()
        .Key("SAVE_IMAGE", "1")
        .Key("WRITE_PATH", Folder().Narrow(""))
        .WriteTo(Folder().At("profile.ini"));
    for (int32_t step = 0; step < 3; ++step) {
        for (const char* name : {"originalimage.raw", "result_gamma.raw", "GammaCurve.txt", "result.raw"})
            std::filesystem::create_symlink("/dev/full", Folder().At(ComingDump(step, name)));
    }
    ExpectOutput(Folder().Profile(), Squared());
}

TEST_P(PosixExportTest, FolderThatTakesNoFilesLosesTheLogAndNothingElse) {
    if (geteuid() == 0) GTEST_SKIP() << "the user with all rights writes to any folder";
    Square().WriteTo(Folder().At("profile.ini"));
    std::filesystem::permissions(Folder().At(""),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    ExpectOutput(Folder().Profile(), Squared());
    EXPECT_FALSE(std::filesystem::exists(Folder().At("ExtraOralLog.txt")));
}

// A folder in which nobody can make a file, whatever his rights.
TEST_P(PosixExportTest, FolderWithoutRoomForFilesLosesDumpsAndNothingElse) {
    Square().Key("SAVE_IMAGE", "1").Key("WRITE_PATH", "/proc/self/").WriteTo(Folder().At("profile.ini"));
    ExpectOutput(Folder().Profile(), Squared());
}

INSTANTIATE_TEST_SUITE_P(Exports, PosixExportTest, testing::ValuesIn(ProcessingExports()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
