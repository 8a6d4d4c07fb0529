// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "operators/separable/RowFilter.h"
#include "operators/separable/SeparableFilter.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

// Hands out the rows of a frame, each in the same place, as one does who makes them when asked.
RowSource SourceOf(const Frame& frame, std::vector<uint16_t>& place) {
    return [&](int32_t y) {
        place.clear();
        for (int32_t x = 0; x < frame.width; ++x) place.push_back(frame.At(x, y));
        return place.data();
    };
}

// Collects rows, which must come once each and from the top.
class TakenRows {
public:
    TakenRows(int32_t width, int32_t height) : frame_(width, height) {}

    RowSink Sink() {
        return [this](int32_t y, const uint16_t* row) {
            EXPECT_EQ(y, next_++);
            for (int32_t x = 0; x < frame_.width; ++x) frame_.At(x, y) = row[x];
        };
    }
    Frame Taken() const {
        EXPECT_EQ(next_, frame_.height);
        return frame_;
    }

private:
    Frame frame_;
    int32_t next_ = 0;
};

std::vector<double> MakeKernel(int32_t size) {
    std::vector<double> kernel;
    for (const uint16_t number : Noise(size, 1, 65535, 20240521).pixels)
        kernel.push_back((number / 65536.0 - 0.3) * 2.1 / size);
    return kernel;
}

void ExpectFilteredFrame(const Frame& frame, int32_t maxValue, int32_t size) {
    const std::vector<double> kernel = MakeKernel(size);
    for (const EdgeRule edges : {EdgeRule::Wrap, EdgeRule::Replicate}) {
        Frame expected = frame;
        FilterFrameScalar({expected.Data(), frame.width, frame.height, maxValue, kernel, edges});
        for (const RowFilterVariant& variant : RowFilterVariants()) {
            SCOPED_TRACE(testing::Message() << variant.name << ", " << size << " taps, edges "
                                            << static_cast<int>(edges) << ", limit " << maxValue);
            std::vector<uint16_t> place;
            TakenRows rows(frame.width, frame.height);
            variant.run(
                {frame.width, frame.height, maxValue, kernel, edges, SourceOf(frame, place), rows.Sink()});
            EXPECT_THAT(rows.Taken(), EqualsFrame(expected));
        }
    }
}

TEST(RowFilterVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(RowFilterVariants, {"scalar", "baseline", "avx2", "avx512"});
}

TEST(RowFilterVariants, TheLastOneRuns) {
    const Frame frame = Noise(9, 7, 4095, 5);
    std::vector<uint16_t> place;
    TakenRows rows(9, 7);
    ExpectLastFormRuns(RowFilterVariants, 1,
                       [&] { GaussRowsReplicate(9, 7, 4095, 1.0, SourceOf(frame, place), rows.Sink()); });
}

TEST(RowFilter, EveryVariantGivesTheFilteredFrame) {
    for (const int32_t size : {1, 2, 3, 7, 8, 17, 41}) {
        for (const int32_t side : {1, 2, 3, 4, 5, 6, 7, 8, 9, 31, 67}) {
            ExpectFilteredFrame(Noise(side, 11, 4095, 1), 4095, size);
            ExpectFilteredFrame(Noise(6, side, 65535, 2), 65535, size);
            if (HasFailure()) return;
        }
    }
}

TEST(RowFilter, LimitsOfEveryKindHold) {
    for (const int32_t maxValue : {-1, 0, 100, 1 << 20})
        ExpectFilteredFrame(Noise(13, 9, 65535, 3), maxValue, 5);
}

TEST(RowFilter, NothingOfNothing) {
    const auto noRow = [](int32_t) -> const uint16_t* { throw std::runtime_error("no row to ask for"); };
    const auto noResult = [](int32_t, const uint16_t*) { throw std::runtime_error("no row to take"); };
    const std::vector<double> kernel = {1.0};
    FilterRows({0, 5, 4095, kernel, EdgeRule::Wrap, noRow, noResult});
    FilterRows({5, 0, 4095, kernel, EdgeRule::Wrap, noRow, noResult});
    EXPECT_NO_THROW(FilterRows({5, 5, 4095, {}, EdgeRule::Wrap, noRow, noResult}));
}

TEST(GaussRowsReplicate, IsTheSmoothedFrame) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const Frame frame = Noise(37, 22, 4095, 4);
    for (const double sigma : {1.0, 0.3, 2.5, 15.0, 0.0, -0.2, -1.0, kNaN, 1e9}) {
        Frame expected = frame;
        GaussFilterReplicate(expected.Data(), frame.width, frame.height, 4095, sigma);
        std::vector<uint16_t> place;
        TakenRows rows(frame.width, frame.height);
        GaussRowsReplicate(frame.width, frame.height, 4095, sigma, SourceOf(frame, place), rows.Sink());
        EXPECT_THAT(rows.Taken(), EqualsFrame(expected)) << sigma;
    }
}

}  // namespace
}  // namespace vastrelline
