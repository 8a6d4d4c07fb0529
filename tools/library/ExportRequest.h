#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

enum class ExportKind : uint8_t { Plain, S, N, NS, NE, CR };

// One of the library's six processing functions, and what it takes beside frame, profile and section.
struct ExportTraits {
    ExportKind kind;
    std::string_view name;
    bool takesBitmapPath;   // and gives back no frame
    bool takesCorrections;  // mapping and spot correction
    bool takesGeometry;
    bool takesSensor;
};

// The export of this name; null if there is none.
const ExportTraits* FindExport(std::string_view name);

constexpr int kGeometryValues = 10;

// One call. The frame may be changed by it, the output is of the frame's size.
struct ExportRequest {
    ExportKind kind = ExportKind::Plain;
    Frame frame;
    std::vector<uint16_t> output;
    std::string profile;
    std::string section;
    bool applyMapping = false;
    bool applySpotCorrection = false;
    std::string bitmapPath;
    std::optional<std::array<int32_t, kGeometryValues>> geometry;  // in the order of the header
    std::string sensorFolder;
    int32_t sensorMode = 0;
};

// Calls the export and returns its code. A seam: tests put functions of their own here.
using ExportCaller = std::function<int32_t(ExportRequest&)>;

// What a return code means, in a few words.
std::string_view ExportCodeText(int32_t code);

}  // namespace vastrelline
