// SPDX-License-Identifier: Apache-2.0
#include "formats/FrameFile.h"

#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "files/InputFile.h"
#include "formats/BmpFormat.h"
#include "formats/DecodedFrame.h"
#include "formats/PgmFormat.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
#include "formats/TiffFormat.h"
#include "frames/SizeGuess.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// Four bytes for each pixel of the largest frame, and room for a head.
constexpr uint64_t kMaxFileBytes = (uint64_t{1} << 31) + (uint64_t{1} << 20);

std::vector<uint8_t> ReadBytes(const std::string& path) {
    if (path == kStandardInput) return ReadInputStream(std::cin, "standard input", kMaxFileBytes);
    return ReadInputFile(path, kMaxFileBytes);
}

std::string ShownName(const std::string& path) { return path == kStandardInput ? "standard input" : path; }

std::optional<FrameSize> SizeOfRaw(const std::string& path, const RawSizes& sizes) {
    if (sizes.size) return sizes.size;
    if (const std::optional<FrameSize> named = FrameSizeInName(path)) return named;
    return sizes.profileSize;
}

bool IsSizeOfProfile(const std::string& path, const RawSizes& sizes) {
    return !sizes.size && !FrameSizeInName(path);
}

// A picture under the name of raw levels, or a file that no frame can be.
void TestForeignContent(const std::string& path, const std::vector<uint8_t>& bytes) {
    const std::string content = DescribeContent(bytes);
    if (content.empty()) return;
    const std::string_view ending = FileKindEnding(FileKindOfContent(bytes));
    if (ending.empty()) throw InputError(ShownName(path), "is " + content + ", no frame that can be read");
    throw InputError(ShownName(path), "is " + content + ", not raw levels",
                     "name it ." + std::string(ending));
}

DecodedFrame DecodeAsRaw(const std::string& path, const std::vector<uint8_t>& bytes, const RawSizes& sizes) {
    const std::optional<FrameSize> size = SizeOfRaw(path, sizes);
    const bool doesFit = size && bytes.size() == RawByteCount(*size);
    if (!doesFit) TestForeignContent(path, bytes);
    if (!size)
        throw ToolError(ExitCode::WrongUse, ShownName(path), DescribeByteCount(bytes.size()),
                        "say --size WxH");
    if (!doesFit) {
        const RawMismatch mismatch = DescribeRawMismatch(bytes.size(), *size);
        const std::string whose = IsSizeOfProfile(path, sizes) ? "that is the profile's size: " : "";
        throw InputError(ShownName(path), mismatch.what, whose + mismatch.remedy);
    }
    DecodedFrame frame;
    static_cast<Frame&>(frame) = DecodeRaw(bytes, *size);
    return frame;
}

// The ending is a promise.
void TestContent(const std::string& path, FileKind kind, const std::vector<uint8_t>& bytes) {
    const FileKind content = FileKindOfContent(bytes);
    if (content == kind) return;
    const std::string no = "no " + std::string(FileKindName(kind));
    const std::string is = DescribeContent(bytes);
    if (is.empty()) throw InputError(path, "is " + no + ", whatever its name says");
    const std::string_view ending = FileKindEnding(content);
    throw InputError(path, "is " + is + ", " + no,
                     ending.empty() ? std::string() : "name it ." + std::string(ending));
}

DecodedFrame DecodePicture(FileKind kind, const std::vector<uint8_t>& bytes,
                           const std::optional<FrameSize>& wanted) {
    DecodedFrame frame = kind == FileKind::Pgm    ? DecodePgm(bytes)
                         : kind == FileKind::Png  ? DecodePng(bytes)
                         : kind == FileKind::Tiff ? DecodeTiff(bytes)
                                                  : DecodeBmp(bytes);
    const FrameSize size{frame.width, frame.height};
    if (wanted && *wanted != size)
        throw std::runtime_error("the file is " + FormatFrameSize(size) + ", not " +
                                 FormatFrameSize(*wanted));
    return frame;
}

}  // namespace

LoadedFrame LoadFrameFile(const std::string& path, const RawSizes& sizes) {
    const std::vector<uint8_t> bytes = ReadBytes(path);
    FileKind kind = path == kStandardInput ? FileKind::Other : FileKindOf(path);
    if (kind == FileKind::Other) {
        kind = FileKindOfContent(bytes);
        if (kind == FileKind::Other) kind = FileKind::Raw;
    } else if (kind != FileKind::Raw) {
        TestContent(path, kind, bytes);
    }
    try {
        DecodedFrame decoded =
            kind == FileKind::Raw ? DecodeAsRaw(path, bytes, sizes) : DecodePicture(kind, bytes, sizes.size);
        const int bits = decoded.bits;
        std::vector<std::string> notes = std::move(decoded.notes);
        return {std::move(decoded), kind, bits, std::move(notes)};
    } catch (const ToolError&) {
        throw;
    } catch (const std::runtime_error& error) {  // of a decoder, which knows no path
        throw InputError(ShownName(path), error.what());
    }
}

Frame ReadFrameFile(const std::string& path, const std::optional<FrameSize>& size) {
    return LoadFrameFile(path, {size, std::nullopt}).frame;
}

}  // namespace vastrelline
