// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "exports/ProcessFrame.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"

namespace vastrelline {
namespace {

using testing::IsEmpty;

class ProcessFrameTest : public testing::Test {
protected:
    ProcessFrameTest() { ProfileFolder::PlainSection().WriteTo(folder_.At("profile.ini")); }

    ProcessCall Call(Frame& input, bool isMappingOn) const {
        return {input.Data(), input.width, input.height, folder_.WideProfile(),
                L"General",   isMappingOn, false,        nullptr};
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

TEST_F(ProcessFrameTest, OutputIsMappedOnlyIfAskedFor) {
    // The exposure curve leaves these as they are: black 300, no lift, no clip below 1800.
    Frame input = FromRows({{300, 1000, 1700, 1800}});
    Frame output = Flat(4, 1, 0);
    EXPECT_EQ(ProcessFrame(Call(input, false), output.Data()), kSuccess);
    EXPECT_THAT(output, EqualsFrame(FromRows({{300, 1000, 1700, 1800}})));
    EXPECT_EQ(ProcessFrame(Call(input, true), output.Data()), kSuccess);
    // (3000 + 300, 1000, 1700, 1800) * 0.4095 = 1351.35, 1638, 1924.65, 1965.6
    EXPECT_THAT(output, EqualsFrame(FromRows({{1351, 1638, 1924, 1965}})));
}

TEST_F(ProcessFrameTest, MappingRunsOnAnOutputThatTheDriverLeftAlone) {
    Frame input = Flat(4, 1, 5);
    ProcessCall noProfile = Call(input, true);
    noProfile.iniPath += L"x";
    Frame output = FromRows({{0, 2000, 4095, 65535}});
    EXPECT_EQ(ProcessFrame(noProfile, output.Data()), kNoProfile);
    EXPECT_THAT(output, EqualsFrame(FromRows({{1228, 2047, 2905, 2905}})));
}

TEST_F(ProcessFrameTest, MappingIsSkippedWithoutInputOrOutput) {
    Frame input = Flat(4, 1, 5);
    EXPECT_EQ(ProcessFrame(Call(input, true), nullptr), kNoOutput);
    ProcessCall noInput = Call(input, true);
    noInput.input = nullptr;
    Frame output = FromRows({{0, 2000, 4095, 65535}});
    EXPECT_EQ(ProcessFrame(noInput, output.Data()), kNoInput);
    EXPECT_THAT(output, EqualsFrame(FromRows({{0, 2000, 4095, 65535}})));
}

TEST_F(ProcessFrameTest, FrameOfHostileSizeIsRefusedBeforeAnyPixelIsTouched) {
    Frame input = Flat(1, 1, 5);
    Frame output = Flat(1, 1, 7);
    for (const bool isMappingOn : {false, true}) {
        ProcessCall call = Call(input, isMappingOn);
        call.width = INT32_MAX;
        call.height = INT32_MAX;
        EXPECT_THROW(ProcessFrame(call, output.Data()), std::length_error);
        EXPECT_THROW(ProcessFrameToBitmap(call, std::wstring()), std::length_error);
    }
    // With a driver that gives up first the mapping has to look for itself.
    ProcessCall call = Call(input, true);
    call.width = INT32_MAX;
    call.height = INT32_MAX;
    call.iniPath += L"x";
    EXPECT_THROW(ProcessFrame(call, output.Data()), std::length_error);
    EXPECT_THAT(output, EqualsFrame(Flat(1, 1, 7)));
}

TEST_F(ProcessFrameTest, ArgumentsAreTestedBeforeAFrameForTheBitmapIsMade) {
    Frame input = Flat(1, 1, 5);
    ProcessCall call = Call(input, true);
    call.width = INT32_MAX;
    call.height = INT32_MAX;
    call.input = nullptr;
    EXPECT_EQ(ProcessFrameToBitmap(call, Folder().Wide(L"a.bmp")), kNoInput);
    call.iniPath += L"x";
    EXPECT_EQ(ProcessFrameToBitmap(call, Folder().Wide(L"a.bmp")), kNoProfile);
}

TEST_F(ProcessFrameTest, FrameForABitmapIsProcessedAndNothingSavedWithoutAPath) {
    Frame input = FromRows({{1, 2}});
    EXPECT_EQ(ProcessFrameToBitmap(Call(input, true), std::wstring()), kSuccess);
    EXPECT_THAT(Folder().Files(), IsEmpty());
    EXPECT_THAT(input, EqualsFrame(FromRows({{1, 2}})));
}

TEST_F(ProcessFrameTest, DriversCodeStaysWhateverTheBitmapsPath) {
    Frame input = FromRows({{1, 2}});
    ProcessCall noInput = Call(input, false);
    noInput.input = nullptr;
    EXPECT_EQ(ProcessFrameToBitmap(noInput, Folder().Wide(L"a.bmp")), kNoInput);
    ProcessCall noProfile = Call(input, false);
    noProfile.iniPath += L"x";
    EXPECT_EQ(ProcessFrameToBitmap(noProfile, Folder().Wide(L"a.bmp")), kNoProfile);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_F(ProcessFrameTest, FrameWithoutPixelsSavesNoBitmapAndSucceeds) {
    Frame input = FromRows({{1, 2}});
    for (const int32_t width : {0, -1, INT32_MIN}) {
        ProcessCall call = Call(input, true);
        call.width = width;
        EXPECT_EQ(ProcessFrameToBitmap(call, Folder().Wide(L"a.bmp")), kSuccess) << width;
        call.height = INT32_MAX;
        EXPECT_EQ(ProcessFrameToBitmap(call, Folder().Wide(L"a.bmp")), kSuccess) << width;
        call.iniPath += L"x";
        EXPECT_EQ(ProcessFrameToBitmap(call, Folder().Wide(L"a.bmp")), kNoProfile) << width;
    }
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

}  // namespace
}  // namespace vastrelline
