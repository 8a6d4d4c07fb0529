#include "formats/FrameFile.h"

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "files/FileKind.h"
#include "files/InputFile.h"
#include "formats/PgmFormat.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// Two bytes for each pixel of the largest frame, and room for a head.
constexpr uint64_t kMaxFileBytes = (uint64_t{1} << 30) + (uint64_t{1} << 20);

Frame ReadRaw(const std::string& path, const std::optional<FrameSize>& wanted) {
    const std::optional<FrameSize> size = wanted ? wanted : FrameSizeInName(path);
    const uint64_t byteCount = InputFileSize(path);
    if (!size)
        throw UsageError("the size of the raw frame '" + path + "' is not known",
                         "tell it, as in --size 1300x1668");
    TestRawSize(byteCount, *size);
    return DecodeRaw(ReadInputFile(path, byteCount), *size);
}

Frame ReadSelfDescribing(const std::string& path, FileKind kind, const std::optional<FrameSize>& wanted) {
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMaxFileBytes);
    Frame frame = kind == FileKind::Pgm ? DecodePgm(bytes) : DecodePng(bytes);
    const FrameSize size{frame.width, frame.height};
    if (wanted && *wanted != size)
        throw std::runtime_error("the file is " + FormatFrameSize(size) + ", not " +
                                 FormatFrameSize(*wanted));
    return frame;
}

}  // namespace

Frame ReadFrameFile(const std::string& path, const std::optional<FrameSize>& size) {
    const FileKind kind = FileKindOf(path);
    if (kind == FileKind::Bmp) throw UsageError("'" + path + "': bitmaps are written, never read");
    try {
        return kind == FileKind::Pgm || kind == FileKind::Png ? ReadSelfDescribing(path, kind, size)
                                                              : ReadRaw(path, size);
    } catch (const ToolError&) {
        throw;
    } catch (const std::runtime_error& error) {  // of a decoder, which knows no path
        throw InputError(path, error.what());
    }
}

}  // namespace vastrelline
