// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/RunOptions.h"
#include "formats/FrameFile.h"
#include "formats/PngText.h"
#include "frames/Frame.h"
#include "frames/GreyWindow.h"
#include "library/ExportRequest.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "provenance/RunRecord.h"

namespace vastrelline {

// What a run is made of, besides its frame.
struct RunSettings {
    const RunOptions& options;
    const ProfileFile& profile;
    const SectionPlan& plan;
    const ExportTraits& traits;
};

// How a result was made. The paths are those of the options.
//
// result   the frame, or the levels of the bitmap
// window   of the picture
// Errors   InputError: a file that counts cannot be read
RunRecord MakeRunRecord(const RunSettings& settings, const Frame& frame, const Frame& result,
                        const std::optional<GreyWindow>& window);

// SHA-256 of the sensor's own profile if a run of the section reads it; empty: it does not, or there is none.
//
// Errors   InputError
std::string SensorHashOf(const SectionPlan& plan, const std::string& sensorFolder);

// SHA-256 of the library's file.
//
// Errors   InputError
const std::string& LibraryHash();

// The record as it stands in a file of this path: it names frame and profile as they are found from the
// file's folder.
RunRecord RecordInFile(RunRecord record, const std::string& path);

// A file with nothing but the record, as docs/tool-json.md tells.
std::string RecordFileText(const RunRecord& record, const std::string& path, const std::string& command);

// The record as texts of a PNG, which names no file.
std::vector<PngText> RecordTexts(const RunRecord& record);

}  // namespace vastrelline
