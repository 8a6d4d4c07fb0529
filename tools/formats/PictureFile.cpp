#include "formats/PictureFile.h"

#include <vector>

#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/PgmFormat.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
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
            if (!style.window) return EncodePng16(frame);
            return EncodePng8(RenderThroughWindow(frame, *style.window), frame.width, frame.height);
        default:
            throw UsageError("'" + path + "' should end in .raw, .pgm or .png");
    }
}

}  // namespace

void WritePictureFile(const std::string& path, const Frame& frame, const PictureStyle& style) {
    const std::vector<uint8_t> bytes = Encode(path, frame, style);
    OutputFile file(path, style.mayReplace);
    file.Write(bytes);
    file.Publish();
}

}  // namespace vastrelline
