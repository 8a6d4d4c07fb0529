// SPDX-License-Identifier: Apache-2.0
#include "sensor/SpotCorrection.h"

#include <algorithm>
#include <vector>

#include "elementary/Power.h"
#include "operators/box_mean/BoxMeanSchedule.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "sensor/SpotPower.h"

namespace vastrelline {

namespace {

// The moving square of SquareBoxMean: rows come in at its lower side and go out at the upper one, in whole
// numbers, so that sums that move are the sums of each square.
class MovingSquare {
public:
    MovingSquare(int32_t maskSize, int32_t width, int32_t height)
        : reach_(maskSize / 2),
          firstRow_(reach_ + 1),
          lastRow_(height - reach_ - 1),
          lastColumn_(width - reach_ - 1),
          hasPlace_(maskSize >= 1 && firstRow_ <= lastRow_ && firstRow_ <= lastColumn_),
          divisor_(static_cast<uint64_t>(int64_t{maskSize} * maskSize)),
          columnSums_(hasPlace_ ? static_cast<size_t>(width) : 0) {
        // Of a frame below 2^29 pixels a column of the square sums up to less than 2^32, of small squares the
        // whole does to less than 2^31, and the division by a product is exact.
        const int64_t side = int64_t{2} * reach_ + 1;
        isSmall_ = hasPlace_ && maskSize > 1 && side * side * kTopPixel < (int64_t{1} << 31);
        if (isSmall_) division_ = MakeWindowDivision(maskSize * maskSize);
    }

    int32_t Reach() const { return reach_; }
    // How many rows a square sees; 1, itself, for a row without one.
    int32_t SeenRows() const { return hasPlace_ ? 2 * reach_ + 1 : 1; }
    bool HasRow(int32_t y) const { return hasPlace_ && firstRow_ <= y && y <= lastRow_; }
    // The rows that the squares see: all but the first one.
    bool Sees(int32_t y) const { return hasPlace_ && y >= firstRow_ - reach_; }

    void Enter(const uint16_t* row) {
        for (size_t x = 0; x < columnSums_.size(); ++x) columnSums_[x] += row[x];
    }

    void Leave(const uint16_t* row) {
        for (size_t x = 0; x < columnSums_.size(); ++x) columnSums_[x] -= row[x];
    }

    // The means of the inner places of a row; the others stay.
    void MakeMeans(uint16_t* means) const {
        const uint32_t* sums = columnSums_.data();
        uint64_t sum = 0;
        for (int32_t x = firstRow_ - reach_; x < firstRow_ + reach_; ++x) sum += sums[x];
        for (int32_t x = firstRow_; x <= lastColumn_; ++x) {
            sum += sums[x + reach_];
            means[x] = isSmall_ ? DivideByWindow(static_cast<uint32_t>(sum), division_)
                                : static_cast<uint16_t>(sum / divisor_);
            sum -= sums[x - reach_];
        }
    }

private:
    int32_t reach_;
    int32_t firstRow_;  // and the first column
    int32_t lastRow_;
    int32_t lastColumn_;
    bool hasPlace_;  // whether any square lies in the frame
    uint64_t divisor_;
    std::vector<uint32_t> columnSums_;
    bool isSmall_ = false;
    WindowDivision division_{};
};

// The exponent of a pixel, for each mean of the inverse around it. A neighbourhood darker than half has an
// exponent below 1.
std::vector<float> BuildExponents(int32_t peak, int32_t maskSize) {
    constexpr float kBase = 1.5F;
    const int32_t half = peak / 2;
    // The square of an even mask has one side more than its divisor, so that a mean may pass the peak.
    const int32_t top = maskSize >= 1 && maskSize % 2 == 0 ? kTopPixel : peak;
    std::vector<float> exponents(static_cast<size_t>(top) + 1);
    for (int32_t mean = 0; mean <= top; ++mean) {
        const float e = static_cast<float>(half - mean) / static_cast<float>(half);
        exponents[static_cast<size_t>(mean)] = Pow(kBase, e);
    }
    return exponents;
}

}  // namespace

void InvertToBuffer(const uint16_t* frame, uint16_t* inverse, uint16_t peak, size_t count) {
    for (size_t i = 0; i < count; ++i) inverse[i] = LowBits16(peak - frame[i]);
}

void SquareBoxMean(uint16_t* output, const uint16_t* input, int32_t maskSize, int32_t width, int32_t height) {
    const FrameView<const uint16_t> source(input, width, height);
    const FrameView<uint16_t> mean(output, width, height);
    std::copy(source.begin(), source.end(), mean.begin());
    MovingSquare square(maskSize, width, height);
    int32_t next = 0;
    for (int32_t y = 0; y < height; ++y) {
        if (!square.HasRow(y)) continue;
        for (; next <= y + square.Reach(); ++next)
            if (square.Sees(next)) square.Enter(source.Row(next));
        square.MakeMeans(mean.Row(y));
        square.Leave(source.Row(y - square.Reach()));
    }
}

// Row by row, so that neither the inverse nor its means need a frame of their own: only the rows of the
// inverse that the square sees are kept.
void ApplySpotCorrection(uint16_t* frame, int32_t maskSize, int32_t width, int32_t height,
                         float /*strength*/) {
    const FrameView<uint16_t> pixels(frame, width, height);
    const int32_t peak = MaxPixel(frame, width, height);
    // Half of them would be 0, and so would be the divisor of every exponent.
    if (peak <= 1) return;
    const SpotPowerTables tables = MakeSpotPowerTables(peak, BuildExponents(peak, maskSize));
    const SpotPowerVariant& power = FastestOf(SpotPowerVariants());
    MovingSquare square(maskSize, width, height);
    const auto lineLength = static_cast<size_t>(width);
    ScratchVector<uint16_t> kept(static_cast<size_t>(square.SeenRows()) * lineLength);
    const auto inverseRow = [&](int32_t y) {
        return kept.data() + static_cast<size_t>(y % square.SeenRows()) * lineLength;
    };
    std::vector<uint16_t> means(lineLength);
    int32_t next = 0;
    for (int32_t y = 0; y < height; ++y) {
        const bool isInner = square.HasRow(y);
        for (const int32_t last = isInner ? y + square.Reach() : y; next <= last; ++next) {
            InvertToBuffer(pixels.Row(next), inverseRow(next), static_cast<uint16_t>(peak), lineLength);
            if (square.Sees(next)) square.Enter(inverseRow(next));
        }
        std::copy_n(inverseRow(y), lineLength, means.begin());
        if (isInner) {
            square.MakeMeans(means.data());
            square.Leave(inverseRow(y - square.Reach()));
        }
        power.run({pixels.Row(y), means.data(), lineLength}, tables);
    }
}

}  // namespace vastrelline
