#include "library/ExportRequest.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "vastrelline.h"

namespace vastrelline {

namespace {

constexpr ExportTraits kExports[] = {
    // In the order of ExportKind: kind, name, bitmap path, corrections, geometry, sensor
    {ExportKind::Plain, "ImageProcessing", false, true, false, false},
    {ExportKind::S, "ImageProcessingS", false, true, true, false},
    {ExportKind::N, "ImageProcessing_N", true, true, false, false},
    {ExportKind::NS, "ImageProcessing_NS", true, true, true, false},
    {ExportKind::NE, "ImageProcessing_NE", true, true, false, true},
    {ExportKind::CR, "ImageProcessingCR", false, false, false, false},
};

}  // namespace

std::span<const ExportTraits> AllExports() { return kExports; }

const ExportTraits& TraitsOf(ExportKind kind) { return kExports[static_cast<size_t>(kind)]; }

const ExportTraits* FindExport(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(kExports), std::end(kExports),
                     [name](const ExportTraits& traits) { return traits.name == name; });
    return found == std::end(kExports) ? nullptr : found;
}

std::string_view ExportCodeText(int32_t code) {
    switch (code) {
        case VASTRELLINE_OK:
            return "success";
        case VASTRELLINE_NO_PROFILE:
            return "the profile file does not exist";
        case VASTRELLINE_NO_INPUT:
            return "no input frame";
        case VASTRELLINE_NO_OUTPUT:
            return "no output frame";
        case VASTRELLINE_NO_SECTION:
            return "the section name is empty";
        case VASTRELLINE_NO_BITMAP:
            return "the bitmap could not be saved";
        case VASTRELLINE_INTERNAL_FAILURE:
            return "internal failure, or out of memory";
        default:
            return "an unknown code";
    }
}

}  // namespace vastrelline
