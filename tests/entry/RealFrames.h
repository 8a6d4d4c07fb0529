#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
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

inline std::vector<std::pair<std::string, Frame>> ReadRealFrames() {
    std::vector<std::pair<std::string, Frame>> frames;
    std::error_code isMissing;
    const std::regex size("_([0-9]+)x([0-9]+)\\.raw$");
    for (const auto& entry : std::filesystem::directory_iterator(FramesFolder(), isMissing)) {
        const std::string name = entry.path().filename().string();
        std::smatch sides;
        if (!std::regex_search(name, sides, size)) continue;
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

}  // namespace vastrelline
