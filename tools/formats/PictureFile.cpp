// SPDX-License-Identifier: Apache-2.0
#include "formats/PictureFile.h"

#include <stdexcept>
#include <vector>

#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/BmpFormat.h"
#include "formats/PgmFormat.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
#include "formats/TiffFormat.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

std::vector<uint8_t> Encode(const std::string& path, const Frame& frame, const PictureStyle& style) {
    switch (FileKindOf(path)) {
        case FileKind::Raw:
            return EncodeRaw(frame);
        case FileKind::Pgm:
            return EncodePgm(frame, style.topLevel);
        case FileKind::Png:
            if (!style.window) return EncodePng16(frame, style.texts);
            return EncodePng8(RenderThroughWindow(frame, *style.window), frame.width, frame.height,
                              style.texts);
        case FileKind::Tiff:
            if (!style.window) return EncodeTiff16(frame, style.tiffPacking);
            return EncodeTiff8(RenderThroughWindow(frame, *style.window), frame.width, frame.height,
                               style.tiffPacking);
        case FileKind::Bmp:
            if (!style.window) throw UsageError("a bitmap has 8 bits", "give a window, as in 0:4095");
            return EncodeBmp8(RenderThroughWindow(frame, *style.window), frame.width, frame.height);
        default:
            throw UsageError("'" + path + "' should end in .raw, .pgm, .png, .tif or .bmp");
    }
}

}  // namespace

std::vector<uint8_t> EncodePicture(const std::string& path, const Frame& frame, const PictureStyle& style) {
    try {
        return Encode(path, frame, style);
    } catch (const ToolError&) {
        throw;
    } catch (const std::runtime_error& error) {  // of an encoder, which knows no path
        throw OutputError(path, error.what());
    }
}

void WritePictureFile(const std::string& path, const Frame& frame, const PictureStyle& style) {
    const std::vector<uint8_t> bytes = EncodePicture(path, frame, style);
    OutputFile file(path, style.mayReplace);
    file.Write(bytes);
    file.Publish();
}

}  // namespace vastrelline
