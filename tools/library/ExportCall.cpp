// SPDX-License-Identifier: Apache-2.0
#include "library/ExportCall.h"

#include <array>
#include <chrono>
#include <cmath>
#include <optional>

#include "library/ExportFunctions.h"

namespace vastrelline {
namespace {

std::optional<SensorGeometry> MakeGeometry(const ExportRequest& request) {
    if (!request.geometry) return std::nullopt;
    const std::array<int32_t, kGeometryValues>& v = *request.geometry;
    return SensorGeometry{v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9]};
}

ExportFunctions LinkedFunctions() {
    return {ImageProcessing,    ImageProcessingS,  ImageProcessing_N, ImageProcessing_NS,
            ImageProcessing_NE, ImageProcessingCR, Getdose_ImageInfo};
}

int32_t CallByKind(const ExportFunctions& functions, ExportRequest& request) {
    const std::optional<SensorGeometry> values = MakeGeometry(request);
    const SensorGeometry* const geometry = values ? &*values : nullptr;
    uint16_t* const input = request.frame.pixels.data();
    uint16_t* const output = request.output.data();
    const int32_t width = request.frame.width;
    const int32_t height = request.frame.height;
    const char* const profile = request.profile.c_str();
    const char* const section = request.section.c_str();
    const uint8_t mapping = request.applyMapping ? 1 : 0;
    const uint8_t spots = request.applySpotCorrection ? 1 : 0;
    const char* const bitmap = request.bitmapPath.c_str();
    switch (request.kind) {
        case ExportKind::Plain:
            return functions.plain(input, output, width, height, profile, section, mapping, spots);
        case ExportKind::S:
            return functions.s(input, output, width, height, profile, section, mapping, spots, geometry);
        case ExportKind::N:
            return functions.n(input, width, height, profile, section, mapping, spots, bitmap);
        case ExportKind::NS:
            return functions.ns(input, width, height, profile, section, mapping, spots, bitmap, geometry);
        case ExportKind::NE:
            return functions.ne(input, width, height, profile, section, mapping, spots, bitmap,
                                request.sensorFolder.c_str(), request.sensorMode);
        case ExportKind::CR:
            return functions.cr(input, output, width, height, profile, section);
    }
    return VASTRELLINE_INTERNAL_FAILURE;
}

// In a process that has decided nothing yet all figures are 0.
std::optional<DoseFigures> AskForDose(const ExportFunctions& functions) {
    DoseFigures dose;
    int32_t isLow = 0;
    functions.dose(&dose.objectMedian, &dose.objectTotal, &dose.lowSignal, &dose.lowRatio, &isLow);
    dose.isLow = isLow != 0;
    const bool isDecided = dose.objectMedian != 0 || dose.objectTotal != 0 || std::isnan(dose.lowRatio);
    return isDecided ? std::optional(dose) : std::nullopt;
}

}  // namespace

int32_t CallExport(ExportRequest& request) {
    const ExportFunctions functions = request.library.empty()
                                          ? LinkedFunctions()
                                          : LoadExportFunctions(request.library, request.instructions);
    const auto start = std::chrono::steady_clock::now();
    const int32_t code = CallByKind(functions, request);
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
    request.record.elapsedMs = elapsed.count();
    request.record.dose = AskForDose(functions);
    return code;
}

}  // namespace vastrelline
