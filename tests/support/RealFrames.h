#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "support/Frames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// Real frames: raw files NAME_WIDTHxHEIGHT.raw that may lie beside the tree.
inline std::filesystem::path FramesFolder() {
    const char* const set = std::getenv("VASTRELLINE_SHARED_DIR");
    const std::filesystem::path shared(set != nullptr ? set : VASTRELLINE_SHARED_DIR);
    return shared / "frames";
}

// Those whose names begin with `start`.
inline std::vector<std::pair<std::string, Frame>> ReadRealFrames(const std::string& start = "") {
    std::vector<std::pair<std::string, Frame>> frames;
    std::error_code isMissing;
    const std::regex size("_([0-9]+)x([0-9]+)\\.raw$");
    for (const auto& entry : std::filesystem::directory_iterator(FramesFolder(), isMissing)) {
        const std::string name = entry.path().filename().string();
        std::smatch sides;
        if (!name.starts_with(start) || !std::regex_search(name, sides, size)) continue;
        const std::string bytes = ReadBytes(entry.path());
        std::vector<uint16_t> pixels(bytes.size() / 2);
        for (size_t i = 0; i < pixels.size(); ++i) {
            const auto low = static_cast<uint8_t>(bytes[2 * i]);
            const auto high = static_cast<uint8_t>(bytes[2 * i + 1]);
            pixels[i] = static_cast<uint16_t>(low + high * 256);
        }
        frames.emplace_back(name, Frame(std::stoi(sides[1]), std::stoi(sides[2]), std::move(pixels)));
    }
    return frames;
}

// A piece of one of them with a tooth in it, which takes less time than all; nothing where that frame is
// missing.
inline std::optional<Frame> ReadPieceOfRealFrame(int32_t width, int32_t height) {
    constexpr int32_t kFileWidth = 1300;
    constexpr int32_t kLeft = 650;
    constexpr int32_t kTop = 480;
    std::ifstream file(FramesFolder() / "bitewing_1300x1668.raw", std::ios::binary);
    if (!file) return std::nullopt;
    Frame frame(width, height);
    for (int32_t y = 0; y < height; ++y) {
        file.seekg(2 * (static_cast<std::streamoff>(kTop + y) * kFileWidth + kLeft));
        for (int32_t x = 0; x < width; ++x) {
            const int low = file.get();
            frame.At(x, y) = static_cast<uint16_t>(low + 256 * file.get());
        }
    }
    return frame;
}

}  // namespace vastrelline
