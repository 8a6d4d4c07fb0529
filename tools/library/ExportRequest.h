// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
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

std::span<const ExportTraits> AllExports();

const ExportTraits& TraitsOf(ExportKind kind);

// The export of this name, or of what stands behind "ImageProcessing" ("S", "NE"), whatever the case of its
// letters; null if there is none.
const ExportTraits* FindExport(std::string_view name);

constexpr int kGeometryValues = 10;

// The figures of a decision about a frame's exposure.
struct DoseFigures {
    int32_t objectMedian = 0;
    int32_t objectTotal = 0;
    int32_t lowSignal = 0;
    double lowRatio = 0.0;  // not a number where there was no object
    bool isLow = false;
};

// What a call gave beside its code and its frames.
struct CallRecord {
    double elapsedMs = 0.0;           // of the export alone
    std::string said;                 // the library's messages, one a line
    std::optional<DoseFigures> dose;  // none: nothing was decided
};

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
    std::optional<std::chrono::milliseconds> timeout;  // none: it may take as long as it likes
    std::string library;                  // its file; empty: the one that the tool is linked with
    std::string instructions;             // of that library's kernels; empty: the best that the machine has
    std::optional<uint64_t> memoryLimit;  // of a worker, in bytes; none: all there is
    std::function<void()> onWait;         // called again and again while somebody waits; may be empty
    CallRecord record;                    // what the call leaves
};

// Calls the export and returns its code. A seam: tests put functions of their own here.
using ExportCaller = std::function<int32_t(ExportRequest&)>;

// Whether a return code says that the bitmap could not be saved.
bool IsBitmapFailure(int32_t code);

// What a return code means, in a few words.
std::string_view ExportCodeText(int32_t code);

}  // namespace vastrelline
