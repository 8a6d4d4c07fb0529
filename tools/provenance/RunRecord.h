// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "frames/FrameSize.h"
#include "frames/GreyWindow.h"

namespace vastrelline {

// How a result was made: all that is needed to make it again and to tell whether it came out the same. The
// hashes are SHA-256; those of frame and result are of 16-bit levels, low byte first, row by row.
struct RunRecord {
    std::string version;      // of the tool
    std::string libraryHash;  // of the library's file
    std::string framePath;    // both paths may be empty: a picture that is passed on names no file
    std::string profilePath;
    FrameSize frameSize;
    std::string frameHash;
    std::string profileHash;
    std::string sensorHash;  // of the sensor's own profile; empty: there was none
    std::string section;
    std::string exportName;
    bool applyMapping = false;
    bool applySpotCorrection = false;
    std::vector<int32_t> geometry;  // ten numbers or none
    bool hasSensor = false;
    std::string sensorFolder;
    int32_t sensorMode = 0;
    std::optional<GreyWindow> window;  // through which a picture of 8 bits shows the result; none: 16 bits
    std::string resultHash;
};

// The keyword of the text in a PNG that holds a record.
inline constexpr const char* kRecordKeyword = "vastrelline";

// "vastrelline run FRAME --profile PROFILE --section General --export ImageProcessing": how a person makes
// it.
std::string CommandOf(const RunRecord& record);

// As docs/tool-json.md tells; a path that is empty is left out.
nlohmann::ordered_json RecordToJson(const RunRecord& record);

// The same without paths in one line of ASCII, for the text of a PNG.
std::string RecordToLine(const RunRecord& record);

// Takes what RecordToJson gives, and an object that has that as its field "record".
//
// where    the file, for the error
// Errors   InputError
RunRecord ReadRecord(const std::string& text, const std::string& where);

}  // namespace vastrelline
