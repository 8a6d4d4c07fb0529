// SPDX-License-Identifier: Apache-2.0
#include "commands/ConvertCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>

#include "commands/FrameNotes.h"
#include "commands/JsonObject.h"
#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/FrameFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameSize.h"
#include "frames/GreyWindow.h"
#include "frames/LevelTop.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr uint16_t kTopOfByte = 255;

uint16_t Brightest(const Frame& frame) { return *std::max_element(frame.pixels.begin(), frame.pixels.end()); }

// The one window through which levels of 8 bits stay what they are.
bool KeepsAllLevels(const std::optional<GreyWindow>& window, uint16_t greatest) {
    return !window || (*window == GreyWindow{0, kTopOfByte} && greatest <= kTopOfByte);
}

Finding Warn(const std::string& file, const std::string& text) {
    Finding finding;
    finding.file = file;
    finding.text = text;
    return finding;
}

std::string WindowText(const GreyWindow& window) {
    return std::to_string(window.low) + ":" + std::to_string(window.high);
}

}  // namespace

std::string_view ConvertCommand::Examples() const {
    return "  vastrelline convert tooth_1300x1668.raw tooth.tif\n"
           "  vastrelline convert tooth.png tooth.raw --force\n"
           "  vastrelline convert tooth.tif look.png --window 0:4095\n";
}

std::string_view ConvertCommand::Notes() const {
    return "Levels stay as they are, bit for bit: .raw, .pgm, .png and .tif hold 16 bits. With --window a "
           ".png or\n"
           ".tif has 8 bits to look at; a .bmp always has, and without --window the one that holds the "
           "brightest\n"
           "level is taken, 0:255, 0:4095 or 0:65535, and said.\n";
}

void ConvertCommand::AddOptions(CLI::App& command) {
    command.add_option("A", source_, "A frame: .raw, .pgm, .png, .tif or .bmp; - is standard input")
        ->required()
        ->type_name("");
    command.add_option("B", target_, "The new file, of the kind that its ending says")
        ->required()
        ->type_name("");
    AddSizeOption(command, size_, "Size of a raw frame; without it the size in its name");
    command
        .add_option("--window", window_, "Levels that become black and white in 8 bits: .png, .tif or .bmp")
        ->type_name("LOW:HIGH");
    command.add_flag("--png16", isPng16_, "Keep all 16 bits in a .png, as without --window");
    command.add_flag("--deflate", isDeflated_, "Pack a .tif, without loss");
    command.add_flag("--force", mayReplace_, "Replace B if it exists");
}

void ConvertCommand::TestOptions() const {
    const FileKind kind = FileKindOf(target_);
    const bool hasWindow = !window_.empty();
    if (kind == FileKind::Other)
        throw UsageError("'" + target_ + "' should end in .raw, .pgm, .png, .tif or .bmp");
    if (hasWindow && !ParseGreyWindow(window_))
        throw UsageError("'" + window_ + "' is no window", "write it as in 0:4095");
    if (hasWindow && (kind == FileKind::Raw || kind == FileKind::Pgm))
        throw UsageError("--window is for .png, .tif and .bmp: the others hold 16 bits");
    if (isPng16_ && kind != FileKind::Png) throw UsageError("--png16 is for .png only");
    if (isPng16_ && hasWindow) throw UsageError("--png16 keeps all levels: it goes without --window");
    if (isDeflated_ && kind != FileKind::Tiff) throw UsageError("--deflate is for .tif only");
    std::error_code error;
    if (std::filesystem::equivalent(PathOf(source_), PathOf(target_), error) && !error)
        throw UsageError("A and B are the same file");
}

ExitCode ConvertCommand::Execute(CommandContext& context) {
    TestOptions();
    { const OutputFile trial(target_, mayReplace_); }  // before the work
    const LoadedFrame loaded = LoadFrameFile(source_, {ParseFrameSize(size_), std::nullopt});
    ShowFrameNotes(source_, loaded, context.messages);
    const uint16_t greatest = Brightest(loaded.frame);
    const FileKind kind = FileKindOf(target_);
    const FrameSize size{loaded.frame.width, loaded.frame.height};

    PictureStyle style;
    style.topLevel = UsualTop(greatest);
    style.window = ParseGreyWindow(window_);
    if (kind == FileKind::Bmp && !style.window) style.window = GreyWindow{0, UsualTop(greatest)};
    if (isDeflated_) style.tiffPacking = TiffPacking::Deflate;
    style.mayReplace = mayReplace_;
    WritePictureFile(target_, loaded.frame, style);

    const bool keepsAll = KeepsAllLevels(style.window, greatest);
    if (!keepsAll)
        context.messages.Show(
            Warn(target_, "8 bits through the window " + WindowText(*style.window) +
                              ": levels are lost; .tif and .png without --window keep all"));
    if (kind == FileKind::Raw && FrameSizeInName(target_) != size)
        context.messages.Show(Warn(target_, "the name does not tell the size: to read it again say --size " +
                                                FormatFrameSize(size)));
    if (context.wantsJson) {
        Json object = {{"from", source_},
                       {"to", target_},
                       {"format", FileKindEnding(kind)},
                       {"width", size.width},
                       {"height", size.height},
                       {"bits", style.window ? 8 : 16},
                       {"window", nullptr},
                       {"keepsAllLevels", keepsAll}};
        if (style.window) object["window"] = {style.window->low, style.window->high};
        PrintObject(context, ExitCode::Well, object);
        return ExitCode::Well;
    }
    context.report << "read     " << source_ << " (" << DescribeFrame(loaded) << ")\nwritten  " << target_
                   << " (" << FileKindName(kind) << ", "
                   << (style.window ? "8 bits, window " + WindowText(*style.window)
                                    : std::string("16-bit levels"))
                   << (keepsAll ? ", no level lost)\n" : ")\n");
    return ExitCode::Well;
}

}  // namespace vastrelline
