// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/StretchCurve.h"

#include <algorithm>

#include "elementary/Exponential.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/AllocFrame.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// A logistic of height `span` whose steep part is about `span` levels wide. A span of 0 divides by 0:
// doubles carry what comes of it, and the conversion to an integer settles it.
double Logistic(double span, double weight, double distance) {
    return span / (1 + Exp((-weight * distance) / span));
}

// Both limits, the upper one first, so that the lower one holds where they exclude each other.
int32_t Limit(int32_t value, int32_t top) { return std::max(std::min(value, top), 0); }

// The lower half of a logistic that ends one level before its centre.
class DarkTail {
public:
    DarkTail(int32_t minLevel, const StretchShape& shape)
        : span_(shape.left - minLevel + 1), centre_(shape.left + 1), weight_(shape.leftWeight) {
        top_ = TruncateToInt32(HeightAt(shape.left));
        if (shape.leftLen > 0) {
            if (top_ > shape.leftLen) scale_ = static_cast<double>(shape.leftLen) / top_;
            if (top_ < shape.leftLen) offset_ = WrappingSubtract(shape.leftLen, top_);
            top_ = shape.leftLen;
        }
        bottom_ = WrappingAdd(TruncateToInt32(HeightAt(minLevel) * scale_), offset_);
    }

    int32_t Top() const { return top_; }        // the output that the tail may reach
    int32_t Bottom() const { return bottom_; }  // the output below the tail
    int32_t EntryAt(int32_t level) const {
        return Limit(WrappingAdd(TruncateToInt32(HeightAt(level) * scale_ + 0.5), offset_), top_);
    }

private:
    double HeightAt(int32_t level) const { return Logistic(span_, weight_, level - centre_); }

    int32_t span_;
    int32_t centre_;
    double weight_;
    double scale_ = 1;
    int32_t offset_ = 0;
    int32_t top_ = 0;
    int32_t bottom_ = 0;
};

// A straight line from the dark tail's top at `left` to `right`.
class Ramp {
public:
    Ramp(int32_t bottom, const StretchShape& shape)
        : slope_(shape.midLen == 0 ? 1 : shape.midLen / static_cast<double>(shape.right - shape.left)),
          intercept_(bottom - shape.left * slope_),
          bottom_(bottom),
          top_(LineAt(shape.right)) {}

    int32_t Top() const { return top_; }
    int32_t EntryAt(int32_t level) const { return std::min(std::max(LineAt(level), bottom_), top_); }

private:
    int32_t LineAt(int32_t level) const { return TruncateToInt32(level * slope_ + intercept_); }

    double slope_;
    double intercept_;
    int32_t bottom_;
    int32_t top_;
};

// The upper half of a logistic that begins on top of the ramp.
class BrightTail {
public:
    BrightTail(int32_t bottom, int32_t maxLevel, const StretchShape& shape)
        : span_(maxLevel - shape.right + 1), right_(shape.right), weight_(shape.rightWeight) {
        if (shape.rightLen > 0 && span_ > shape.rightLen)
            scale_ = static_cast<double>(shape.rightLen) / span_;
        base_ = WrappingSubtract(bottom, TruncateToInt32(span_ / 2.0 * scale_));
    }

    int32_t EntryAt(int32_t level) const {
        return WrappingAdd(TruncateToInt32(Logistic(span_, weight_, level - right_) * scale_), base_);
    }

private:
    int32_t span_;
    int32_t right_;
    double weight_;
    double scale_ = 1;
    int32_t base_ = 0;
};

// The highest output of the bright tail.
int32_t FindOutputTop(int32_t maxValue, const StretchShape& shape) {
    if (shape.leftLen == 0 || shape.midLen == 0 || shape.rightLen == 0) return maxValue;
    return WrappingAdd(WrappingAdd(shape.leftLen, shape.midLen), shape.rightLen);
}

}  // namespace

std::function<int32_t(int32_t level)> MakeStretchCurve(int32_t minLevel, int32_t maxLevel, int32_t maxValue,
                                                       const StretchShape& shape) {
    const int32_t outTop = FindOutputTop(maxValue, shape);
    const DarkTail dark(minLevel, shape);
    const Ramp ramp(dark.Top(), shape);
    const BrightTail bright(ramp.Top(), maxLevel, shape);
    // Not limited, unlike the tail's entries: no pixel of the frame has such a level.
    const int32_t aboveMax = bright.EntryAt(maxLevel);

    return [=](int32_t level) {
        if (level <= shape.left) return level < minLevel ? dark.Bottom() : dark.EntryAt(level);
        if (level < shape.right) return ramp.EntryAt(level);
        return level <= maxLevel ? Limit(bright.EntryAt(level), outTop) : aboveMax;
    };
}

std::vector<int32_t> BuildStretchCurve(int32_t minLevel, int32_t maxLevel, int32_t maxValue,
                                       const StretchShape& shape) {
    const auto entryAt = MakeStretchCurve(minLevel, maxLevel, maxValue, shape);
    std::vector<int32_t> table(CountElements<int32_t>(maxValue + 1, 1));
    for (int32_t level = 0; level <= maxValue; ++level) table[static_cast<size_t>(level)] = entryAt(level);
    return table;
}

std::vector<int32_t> BuildStretchCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t left, int32_t right, double leftWeight,
                                       double rightWeight, int32_t leftLen, int32_t midLen,
                                       int32_t rightLen) {
    const auto [smallest, largest] = FindPixelRange(pixels, width, height);
    return BuildStretchCurve(smallest, largest, maxValue,
                             {left, right, leftWeight, rightWeight, leftLen, midLen, rightLen});
}

}  // namespace vastrelline
