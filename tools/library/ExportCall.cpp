// SPDX-License-Identifier: Apache-2.0
#include "library/ExportCall.h"

#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>

#include "library/ExportFunctions.h"
#include "messages/ToolError.h"
#include "platform/DynamicLibrary.h"
#include "platform/LibraryText.h"

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

// As the called function takes them.
struct CallTexts {
    std::string profile;
    std::string section;
    std::string bitmap;
    std::string sensorFolder;
};

std::string Known(const std::optional<std::string>& converted, const std::string& text) {
    if (!converted)
        throw InputError(text, "has characters that this machine's code page lacks",
                         "give the file, the folder or the section a plainer name");
    return *converted;
}

CallTexts ConvertTexts(const ExportRequest& request) {
    // The one function that takes UTF-8 everywhere.
    if (request.kind == ExportKind::NS)
        return {request.profile, request.section, request.bitmapPath, request.sensorFolder};
    return {Known(LibraryPath(request.profile), request.profile),
            Known(LibraryText(request.section), request.section),
            Known(LibraryPath(request.bitmapPath), request.bitmapPath),
            Known(LibraryPath(request.sensorFolder), request.sensorFolder)};
}

int32_t CallByKind(const ExportFunctions& functions, ExportRequest& request, const CallTexts& texts) {
    const std::optional<SensorGeometry> values = MakeGeometry(request);
    const SensorGeometry* const geometry = values ? &*values : nullptr;
    uint16_t* const input = request.frame.pixels.data();
    uint16_t* const output = request.output.data();
    const int32_t width = request.frame.width;
    const int32_t height = request.frame.height;
    const char* const profile = texts.profile.c_str();
    const char* const section = texts.section.c_str();
    const uint8_t mapping = request.applyMapping ? 1 : 0;
    const uint8_t spots = request.applySpotCorrection ? 1 : 0;
    const char* const bitmap = texts.bitmap.c_str();
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
                                texts.sensorFolder.c_str(), request.sensorMode);
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
    const CallTexts texts = ConvertTexts(request);
    PrintMessageBoxes(reinterpret_cast<void*>(functions.plain));
    const auto start = std::chrono::steady_clock::now();
    const int32_t code = CallByKind(functions, request, texts);
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
    request.record.elapsedMs = elapsed.count();
    request.record.dose = AskForDose(functions);
    return code;
}

}  // namespace vastrelline
