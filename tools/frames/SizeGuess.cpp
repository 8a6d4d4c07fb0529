// SPDX-License-Identifier: Apache-2.0
#include "frames/SizeGuess.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vastrelline {
namespace {

constexpr double kSensorShape = 1668.0 / 1300.0;
constexpr double kSlenderest[] = {1.5, 2.0, 4.0};
constexpr size_t kMaxShapes = 3;  // each lying and standing

struct Shape {
    int32_t shortSide;
    int32_t longSide;

    double Slenderness() const { return static_cast<double>(longSide) / shortSide; }
    double FromSensor() const { return std::abs(std::log(Slenderness() / kSensorShape)); }
};

std::vector<Shape> ShapesOf(int64_t pixels, double slenderest) {
    std::vector<Shape> shapes;
    for (int64_t side = 1; side * side <= pixels; ++side) {
        if (pixels % side != 0) continue;
        const Shape shape{static_cast<int32_t>(side), static_cast<int32_t>(pixels / side)};
        if (shape.Slenderness() <= slenderest) shapes.push_back(shape);
    }
    return shapes;
}

std::vector<FrameSize> BothWays(std::vector<Shape> shapes) {
    std::stable_sort(shapes.begin(), shapes.end(),
                     [](const Shape& a, const Shape& b) { return a.FromSensor() < b.FromSensor(); });
    if (shapes.size() > kMaxShapes) shapes.resize(kMaxShapes);
    std::vector<FrameSize> sizes;
    for (const Shape& shape : shapes) {
        sizes.push_back({shape.shortSide, shape.longSide});
        if (shape.shortSide != shape.longSide) sizes.push_back({shape.longSide, shape.shortSide});
    }
    std::sort(sizes.begin(), sizes.end(),
              [](const FrameSize& a, const FrameSize& b) { return a.width < b.width; });
    return sizes;
}

}  // namespace

std::vector<FrameSize> GuessFrameSizes(uint64_t byteCount) {
    constexpr uint64_t kMostBytes = uint64_t{1} << 30;
    if (byteCount == 0 || byteCount % 2 != 0 || byteCount >= kMostBytes) return {};
    for (const double slenderest : kSlenderest) {
        const std::vector<Shape> shapes = ShapesOf(static_cast<int64_t>(byteCount / 2), slenderest);
        if (!shapes.empty()) return BothWays(shapes);
    }
    return {};
}

std::string ListGuessedSizes(uint64_t byteCount) {
    const std::vector<FrameSize> sizes = GuessFrameSizes(byteCount);
    std::string text;
    for (size_t i = 0; i < sizes.size(); ++i) {
        if (i > 0) text += i + 1 == sizes.size() ? " or " : ", ";
        text += FormatFrameSize(sizes[i]);
    }
    return text;
}

std::string DescribeByteCount(uint64_t byteCount) {
    const std::string bytes = std::to_string(byteCount) + (byteCount == 1 ? " byte" : " bytes");
    if (byteCount % 2 != 0) return bytes + ", an odd number, fit no frame of 16 bits";
    const std::string sizes = ListGuessedSizes(byteCount);
    if (sizes.empty()) return bytes + " fit no frame of a usual shape at 16 bits";
    return bytes + " fit " + sizes + " at 16 bits";
}

}  // namespace vastrelline
