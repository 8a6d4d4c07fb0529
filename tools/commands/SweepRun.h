// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "commands/FolderRun.h"
#include "files/OutputFolder.h"
#include "frames/FrameSize.h"
#include "frames/FrameStatistics.h"
#include "messages/ToolError.h"
#include "pictures/Canvas.h"
#include "profile/EffectiveValues.h"
#include "sweep/PictureLeaves.h"
#include "sweep/SweptKey.h"

namespace vastrelline {

// A key of a sweep where the run reads it.
struct SweptPlace {
    SweptKey swept;       // the key as the profile or the key table spells it
    std::string section;  // where its line stands: mostly that of the run
    EffectiveValue own;   // as the profile has it
};

// What a sweep is about.
struct SweepPlan {
    const RunOptions& options;
    const FolderRun& input;
    std::vector<SweptPlace> places;
    std::optional<GreyWindow> window;  // of all pictures; none: 0 to OUTPUTRANGE
    const ExportCaller& callExport;
};

// One run of a sweep and its picture.
struct SweptPicture {
    std::vector<std::string> values;  // of the keys, in their order; none: the profile as it is
    std::string leaf;
    bool isOwn = false;  // the profile's own values
    std::string profileHash;
    double elapsedMs = 0.0;
    FrameSize size;
    GreyWindow window;
    FrameStatistics statistics;
    std::string hash;               // of the pixels
    std::optional<double> changed;  // share of the pixels that the profile as it is gives otherwise
    std::vector<Finding> findings;
    std::optional<ToolError> error;  // then there is no picture, and nothing above is known
    Canvas small{1, 1, 0};           // for the sheet
};

// The places of keys in a run of the section.
//
// Errors   UsageError: the run reads no such key, or one of them twice
std::vector<SweptPlace> FindSweptPlaces(const FolderRun& input, const std::string& section,
                                        std::vector<SweptKey> keys);

// Runs the section with these values on the frame and writes the picture into the folder. What goes wrong
// stands in the result.
//
// unchanged   the frame that the profile as it is gives; null: not known
// result      takes the frame of this run; may be null
// Errors      CancelledError
SweptPicture RunSwept(const SweepPlan& plan, const std::vector<std::string>& values, std::string leaf,
                      const Frame* unchanged, OutputFolder& folder, const std::function<void()>& onWait,
                      Frame* result);

// "04_MAX_SLOPE=1.5", for messages; "the profile as it is" without values.
std::string DescribeSettings(const SweepPlan& plan, const std::vector<std::string>& values);

// The keys with their values.
std::vector<KeyWithValue> SettingsOf(const SweepPlan& plan, const std::vector<std::string>& values);

}  // namespace vastrelline
