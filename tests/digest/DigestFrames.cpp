// SPDX-License-Identifier: Apache-2.0
#include "DigestFrames.h"

#include <algorithm>
#include <cstddef>

#include "Generator.h"

namespace vastrelline::digest {

namespace {

constexpr int32_t kTop = 4095;

// An ellipse that adds to the level, most in its middle and nothing at its rim. All in 1/64 of the frame's
// size.
struct Body {
    int32_t x;
    int32_t y;
    int32_t halfWidth;
    int32_t halfHeight;
    int32_t rise;
};

// Two molars with their roots and the pulp in them, a filling, and the dark gap between the crowns. A raw
// frame is dark where much was absorbed.
constexpr Body kAnatomy[] = {{16, 20, 13, 14, -1500}, {46, 21, 13, 13, -1450}, {10, 44, 4, 20, -900},
                             {22, 44, 4, 20, -850},   {41, 45, 4, 18, -880},   {52, 44, 5, 19, -900},
                             {16, 22, 4, 7, 500},     {46, 24, 4, 6, 450},     {19, 12, 5, 4, -1300},
                             {31, 18, 3, 12, 700},    {32, 60, 40, 16, -350}};

int32_t BodyLevel(const Body& body, int32_t x, int32_t y, int32_t width, int32_t height) {
    const int64_t halfWidth = std::max(1, body.halfWidth * width / 64);
    const int64_t halfHeight = std::max(1, body.halfHeight * height / 64);
    const int64_t dx = x - int64_t{body.x} * width / 64;
    const int64_t dy = y - int64_t{body.y} * height / 64;
    const int64_t far =
        (dx * dx * 1024) / (halfWidth * halfWidth) + (dy * dy * 1024) / (halfHeight * halfHeight);
    return far >= 1024 ? 0 : static_cast<int32_t>(body.rise * (1024 - far) / 1024);
}

int32_t RadiographLevel(int32_t x, int32_t y, int32_t width, int32_t height, Generator& generator) {
    int32_t level = 2900 + 500 * x / width - 400 * y / height;
    for (const Body& body : kAnatomy) level += BodyLevel(body, x, y, width, height);
    // The mesh of the bone, and grain that is nearly bell-shaped.
    level += ((x * 7 + y * 3) % 11 < 3 ? 60 : 0) + ((x * 2 + y * 9) % 13 < 3 ? -50 : 0);
    for (int32_t i = 0; i < 4; ++i) level += generator.Below(31) - 15;
    return level;
}

bool IsInCorner(int32_t x, int32_t y, int32_t width, int32_t size) {
    return x + y < size || width - 1 - x + y < size;
}

int32_t LevelOf(const FrameRecipe& recipe, int32_t x, int32_t y, Generator& generator) {
    const int32_t width = recipe.width;
    const int32_t height = recipe.height;
    switch (recipe.kind) {
        case FrameKind::Flat:
            return 1700;
        case FrameKind::Ramp:
            return kTop * x / (2 * width) + kTop * y / (2 * height);
        case FrameKind::Noise:
            return generator.Below(kTop + 1);
        case FrameKind::Radiograph:
            return RadiographLevel(x, y, width, height, generator);
        case FrameKind::Corners:
        case FrameKind::DarkSides: {
            const int32_t smaller = std::min(width, height);
            const int32_t size = recipe.kind == FrameKind::Corners ? std::max(2, smaller / 6) : smaller / 2;
            const int32_t level = std::max(1, RadiographLevel(x, y, width, height, generator));
            return IsInCorner(x, y, width, size) ? 0 : level;
        }
        case FrameKind::Weak:
            return RadiographLevel(x, y, width, height, generator) / 10;
        case FrameKind::Steps:
            return (x / 9 * 1543 + y / 7 * 977) % (kTop + 1);
        case FrameKind::Specks: {
            const int32_t draw = generator.Below(40);
            return draw == 0 ? 0 : draw == 1 ? kTop : 1200 + generator.Below(25);
        }
        case FrameKind::Stripes:
            return x % 2 * kTop;
        case FrameKind::Deep:
            return static_cast<int32_t>((int64_t{65535} * x / width + 37 * y) % 65536);
        case FrameKind::Black:
            return 0;
        case FrameKind::White:
            return kTop;
        case FrameKind::Levels:
            return static_cast<int32_t>((int64_t{y} * width + x) % (kTop + 1));
    }
    return 0;
}

}  // namespace

std::vector<uint16_t> MakeFrame(const FrameRecipe& recipe) {
    if (recipe.width <= 0 || recipe.height <= 0) return {};
    Generator generator(static_cast<uint64_t>(recipe.kind) << 48U ^
                        static_cast<uint64_t>(recipe.width) << 24U ^ static_cast<uint64_t>(recipe.height));
    const int32_t top = recipe.kind == FrameKind::Deep ? 65535 : kTop;
    std::vector<uint16_t> pixels;
    pixels.reserve(static_cast<size_t>(recipe.width) * static_cast<size_t>(recipe.height));
    for (int32_t y = 0; y < recipe.height; ++y)
        for (int32_t x = 0; x < recipe.width; ++x)
            pixels.push_back(static_cast<uint16_t>(std::clamp(LevelOf(recipe, x, y, generator), 0, top)));
    return pixels;
}

}  // namespace vastrelline::digest
