// SPDX-License-Identifier: Apache-2.0
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

bool IsSameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

// What stands behind the part that all have: "S", "NE".
std::string_view EndOf(std::string_view name) {
    name.remove_prefix(kExports[0].name.size());
    return name.starts_with('_') ? name.substr(1) : name;
}

}  // namespace

std::span<const ExportTraits> AllExports() { return kExports; }

const ExportTraits& TraitsOf(ExportKind kind) { return kExports[static_cast<size_t>(kind)]; }

const ExportTraits* FindExport(std::string_view name) {
    for (const ExportTraits& traits : kExports)
        if (IsSameName(traits.name, name) || (!name.empty() && IsSameName(EndOf(traits.name), name)))
            return &traits;
    return nullptr;
}

bool IsBitmapFailure(int32_t code) { return code == VASTRELLINE_NO_BITMAP; }

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
