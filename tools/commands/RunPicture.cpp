// SPDX-License-Identifier: Apache-2.0
#include "commands/RunPicture.h"

#include <filesystem>
#include <system_error>

#include "files/FileKind.h"
#include "files/InputFile.h"
#include "frames/GreyWindow.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "runs/LookAtProfile.h"

namespace vastrelline {
PictureStyle MakeStyle(const RunOptions& options, int32_t topLevel) {
    PictureStyle style;
    style.mayReplace = options.mayReplace;
    style.topLevel = topLevel;
    if (FileKindOf(options.picture) == FileKind::Png && !options.isPng16)
        style.window = options.window.empty() ? GreyWindow{0, topLevel} : ParseGreyWindow(options.window);
    return style;
}

std::string DescribeStyle(const PictureStyle& style) {
    if (!style.window) return "16-bit levels";
    return "8 bits, window " + std::to_string(style.window->low) + " to " +
           std::to_string(style.window->high);
}

std::vector<uint8_t> ReadBitmap(const std::string& path, const ExportTraits& traits) {
    constexpr uint64_t kMostBytes = uint64_t{1} << 31;
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(PathOf(path), error);
    if (error || size == 0)
        throw ProcessingError({}, std::string(traits.name) + " reported success but saved no bitmap");
    return ReadInputFile(path, kMostBytes);
}

}  // namespace vastrelline
