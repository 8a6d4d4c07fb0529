// SPDX-License-Identifier: Apache-2.0

// A host that runs for days: what a thousand frames leave behind in the process.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// Sanitizers hold freed memory back and keep a shadow of all of it, so that the process grows by design. Lost
// memory is what they report themselves, which is why fewer frames do.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsMemoryOurs = false;
constexpr int kFrames = 40;
#else
constexpr bool kIsMemoryOurs = true;
constexpr int kFrames = 1000;
#endif

constexpr int32_t kWidth = 64;
constexpr int32_t kHeight = 48;

// What this process holds, as the kernel tells it; all 0 where it tells nothing.
struct Holdings {
    size_t residentBytes = 0;
    size_t descriptors = 0;
    size_t threads = 0;
};

size_t CountEntries(const char* folder) {
    std::error_code isMissing;
    const std::filesystem::directory_iterator entries(folder, isMissing);
    return isMissing ? 0 : static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

Holdings HoldingsNow() {
    Holdings holdings;
    size_t allPages = 0;
    size_t residentPages = 0;
    if (std::ifstream("/proc/self/statm") >> allPages >> residentPages)
        holdings.residentBytes = residentPages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
    holdings.descriptors = CountEntries("/proc/self/fd");
    holdings.threads = CountEntries("/proc/self/task");
    return holdings;
}

// A section of each family, with logs and with worker threads.
void WriteProfile(const ProfileFolder& folder) {
    ProfileWriter writer;
    writer.Section("List").Key("PROCMODE", "2").Key("SAVE_LOG", "1");
    writer.Stage("7", {{"MEDIAN_SIZE", "5"}}).Stage("12").Stage("1").Stage("2").Stage("6");
    writer.Stage("4", {{"MODE_CONTRAST", "1"}}).Stage("3", {{"BLOCK_SIZE", "16"}}).Stage("13");
    writer.Stage("5", {{"ADAPTIVESMOOTHING_MASK", "5"}}).Stage("10");
    writer.Section("Switches").Key("PROCMODE", "1").Key("SAVE_LOG", "1").Key("BLOCK_SIZE", "16");
    for (const char* flag : {"PRE_MEDIAN", "PRE_GAUSSIAN", "PYRAMID_PROCESSING", "HISTOGRAM_STRETCH",
                             "CONTRAST_ENHANCE2", "POST_GAMMA_LUT"})
        writer.Key(flag, "1");
    writer.WriteTo(folder.At("profile.ini"));
}

// A frame through each family, and one of the library's own through the chain whose list may hold HDR. It
// goes to `bitmap`, if there is one.
void ProcessThreeFrames(const ProfileFolder& folder, const Frame& frame, const std::string& bitmap) {
    const std::string profile = folder.Profile();
    Frame input = frame;
    Frame output(kWidth, kHeight);
    ASSERT_EQ(ImageProcessing(input.Data(), output.Data(), kWidth, kHeight, profile.c_str(), "List", 0, 1),
              VASTRELLINE_OK);
    input = frame;
    ASSERT_EQ(
        ImageProcessing(input.Data(), output.Data(), kWidth, kHeight, profile.c_str(), "Switches", 1, 0),
        VASTRELLINE_OK);
    input = frame;
    ASSERT_EQ(ImageProcessing_NE(input.Data(), kWidth, kHeight, profile.c_str(), "List", 0, 0, bitmap.c_str(),
                                 nullptr, 0),
              VASTRELLINE_OK);
}

TEST(ManyFrames, LeaveNothingBehindInTheProcess) {
    constexpr int kWarmUp = kFrames / 5;  // caches of the language's library, and of its threads
    // A quarter of what would stay behind if each call lost one frame.
    constexpr size_t kMostGrowth = size_t{kFrames - kWarmUp} * kWidth * kHeight * sizeof(uint16_t) / 4;
    if (HoldingsNow().descriptors == 0) GTEST_SKIP() << "this system does not tell what a process holds";
    const ConfiguredState configuredBefore = SharedConfiguredState();
    const FixedState fixedBefore = SharedFixedState();
    const ProfileFolder folder;
    WriteProfile(folder);
    const Frame frame = MadeRadiograph(kWidth, kHeight);
    Holdings before;
    for (int i = 0; i < kFrames; i += 3) {
        // A bitmap waits for the disk, which makes up most of the time if each frame has one.
        ProcessThreeFrames(folder, frame, i % 10 == 0 ? folder.Narrow("picture.bmp") : "");
        if (i < kWarmUp) before = HoldingsNow();
    }
    const Holdings after = HoldingsNow();
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    if (kIsMemoryOurs) {
        EXPECT_LE(after.residentBytes, before.residentBytes + kMostGrowth);
    }
    SharedConfiguredState() = configuredBefore;
    SharedFixedState() = fixedBefore;
}

}  // namespace
}  // namespace vastrelline
