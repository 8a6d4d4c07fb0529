// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/Pyramid.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "operators/resample/Resize.h"
#include "operators/separable/HalvingFilter.h"
#include "operators/separable/RowFilter.h"
#include "pixels/AllocFrame.h"
#include "pixels/Border.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/OwnedFrame.h"
#include "platform/TextFormat.h"
#include "report/TellIfPossible.h"
#include "stages/pyramid/BandKernels.h"
#include "stages/pyramid/EnhanceBand.h"

namespace vastrelline {

namespace {

// A level of the pyramid. When the next coarser level is made, the band between them takes this one's place.
using Level = OwnedFrame;

int16_t* BandRow(Level& level, int32_t y) { return reinterpret_cast<int16_t*>(level.View().Row(y)); }

// The rows of a level drawn twice as large. They are made in pairs: the row that lies on one of the level's,
// and the one after it.
class DoubledRows {
public:
    explicit DoubledRows(const Level& level)
        : level_(level),
          pair_(4 * static_cast<size_t>(level.width)),
          double_(FastestOf(ResizeVariants()).run) {}

    const uint16_t* Row(int32_t y) {
        const int32_t width = 2 * level_.width;
        if (y / 2 != made_) {
            made_ = y / 2;
            // A pair sees one row and the next, if there is one.
            const int32_t rows = std::min(level_.height - made_, 2);
            double_({level_.View().Row(made_), level_.width, rows, 2.0, pair_.data(), width, 2});
        }
        return pair_.data() + static_cast<size_t>(y % 2) * static_cast<size_t>(width);
    }

private:
    const Level& level_;
    ScratchVector<uint16_t> pair_;
    void (*double_)(const ResizeCall& call);
    int32_t made_ = -1;
};

// Gain and cut limit from band to band.
class BandTuning {
public:
    explicit BandTuning(const PyramidParams& settings)
        : settings_(settings), gain_(settings.ENHANCED_RATIO), cutLimit_(settings.NOISE_CUTLIMIT) {}

    // Goes on to a band; bands count from 1 and come in their order.
    void GoTo(int32_t band) {
        if (settings_.APPLY_VARIABLE_RATIO == 0) return;
        // The first band takes one share, not two: results depend on it.
        const int32_t share = band == 1 ? 1 : band + 1;
        gain_ = settings_.ENHANCED_RATIO * share / settings_.PYRAMID_LAYER;
        // In this order: a ratio below 1 wins.
        if (gain_ < 1.0) gain_ = 1.0;
        if (gain_ > settings_.ENHANCED_RATIO) gain_ = settings_.ENHANCED_RATIO;
        // From band to band the limit shrinks further and further.
        cutLimit_ /= std::max((band - 1) * 10, 1);
    }

    double Gain() const { return gain_; }
    double CutLimit() const { return cutLimit_; }

private:
    const PyramidParams& settings_;
    double gain_;
    double cutLimit_;
};

class Pyramid {
public:
    Pyramid(int32_t maxValue, BandCurve curve, const PyramidParams& settings, const PyramidForm& form,
            PyramidObserver* observer)
        : maxValue_(maxValue), curve_(curve), settings_(settings), form_(form), observer_(observer) {}

    // Takes the padded frame apart: all levels but the last become bands.
    void Decompose(Level frame) {
        ShowFrame(L"PyramidProc_00_OriginalExp_%dX%d.raw", {frame.width, frame.height}, frame.pixels, frame);
        levels_.push_back(std::move(frame));
        BandTuning tuning(settings_);
        for (int32_t i = 1; i < settings_.PYRAMID_LAYER; ++i) {
            tuning.GoTo(i);
            MakeBand(i, tuning);
        }
    }

    // Adds the bands up again. What of the first level lies in the image replaces its pixels.
    void Rebuild(const FrameView<uint16_t>& image) {
        for (size_t j = levels_.size() - 1; j-- > 0;) {
            Level& level = levels_[j];
            // Padding and all, the first level is there for the observer only.
            const bool isKept = j > 0 || observer_ != nullptr;
            Expand(levels_[j + 1], form_.isRebuildSmoothed, [&](int32_t y, const uint16_t* row) {
                if (maps_[j] && (isKept || y < image.Height()))
                    maps_[j]->Apply(BandRow(level, y), static_cast<size_t>(level.width));
                if (j == 0 && y < image.Height()) Add(row, level, y, image.Width(), image.Row(y));
                if (isKept) Add(row, level, y, level.width, level.View().Row(y));
            });
            ShowFrame(L"EnhancedSum%d_%dX%d.raw", {static_cast<int32_t>(j), level.width, level.height},
                      level.pixels, level);
        }
    }

private:
    // Makes the level after the last one, and the band between the two.
    void MakeBand(int32_t band, const BandTuning& tuning) {
        Level& fine = levels_.back();
        Level coarse{fine.width / 2, fine.height / 2, {}};
        coarse.pixels.resize(FrameView(fine.pixels.data(), coarse.width, coarse.height).Count());
        GaussHalveReplicate(fine.pixels.data(), fine.width, fine.height, maxValue_, settings_.GAUSSIAN_SIZE,
                            coarse.pixels.data());
        ScratchVector<uint16_t> expanded;  // for the observer only
        BandRange range = StartOfBandRange(maxValue_);
        Expand(coarse, true, [&](int32_t y, const uint16_t* row) {
            if (observer_ != nullptr)
                TellIfPossible([&] { expanded.insert(expanded.end(), row, row + fine.width); });
            const auto width = static_cast<size_t>(fine.width);
            kernels_.subtract(fine.View().Row(y), row, width);
            range = kernels_.findRange(BandRow(fine, y), width, range);
        });
        const auto show = [&](std::wstring_view nameFormat, const ScratchVector<uint16_t>& pixels) {
            ShowFrame(nameFormat, {band - 1, fine.width, fine.height}, pixels, fine);
        };
        show(L"PyramidProc_Gaussian%d_%dX%d.raw", expanded);
        show(L"Laplacian%d_%dX%d.raw", fine.pixels);
        maps_.push_back(Enhance(fine, band, range, tuning));
        show(L"EnhancedLaplacian%d_%dX%d.raw", fine.pixels);
        levels_.push_back(std::move(coarse));
    }

    // Enhances a band. Where nobody looks on, it is only said how: the band is mapped row by row when it is
    // added, while the row is in the cache anyway.
    std::optional<BandMap> Enhance(Level& level, int32_t band, BandRange range, const BandTuning& tuning) {
        if (settings_.APPLY_DIFF_ENHANCE == 0) return std::nullopt;
        if (observer_ == nullptr) {
            return PlanBandMap(
                BandRow(level, 0), level.pixels.size(), range,
                {tuning.Gain(), settings_.NOISE_WIDTH, curve_, tuning.CutLimit(), form_.tailMode});
        }
        EnhanceBand(BandRow(level, 0), level.width, level.height, maxValue_, tuning.Gain(),
                    settings_.NOISE_WIDTH, curve_, tuning.CutLimit(), form_.tailMode, band - 1, observer_);
        return std::nullopt;
    }

    // Doubles a level, smooths it if asked to, and hands out the rows. Sides are even wherever a level was
    // halved, so that they fit the level above.
    void Expand(const Level& level, bool isSmoothed, const RowSink& takeRow) const {
        DoubledRows doubled(level);
        const auto sourceRow = [&](int32_t y) { return doubled.Row(y); };
        const int32_t height = 2 * level.height;
        if (isSmoothed) {
            GaussRowsReplicate(2 * level.width, height, maxValue_, settings_.GAUSSIAN_SIZE, sourceRow,
                               takeRow);
            return;
        }
        for (int32_t y = 0; y < height; ++y) takeRow(y, sourceRow(y));
    }

    // Adds the first `count` values of a row of a level's band to that row of the next coarser level, drawn
    // large.
    void Add(const uint16_t* coarse, Level& level, int32_t y, int32_t count, uint16_t* sums) const {
        const auto* band = reinterpret_cast<const int16_t*>(level.View().Row(y));
        kernels_.add(coarse, band, static_cast<size_t>(count), maxValue_, sums);
    }

    void ShowFrame(std::wstring_view nameFormat, std::initializer_list<FormatArgument> numbers,
                   const ScratchVector<uint16_t>& pixels, const Level& size) const {
        if (observer_ == nullptr) return;
        // What memory was missing for is not all there.
        if (pixels.size() < FrameView(pixels.data(), size.width, size.height).Count()) return;
        TellIfPossible([&] {
            observer_->SeeFrame(FormatText(nameFormat, numbers), pixels.data(), size.width, size.height);
        });
    }

    const BandKernels& kernels_ = *FastestOf(BandVariants()).run;
    int32_t maxValue_;
    BandCurve curve_;
    const PyramidParams& settings_;
    PyramidForm form_;
    PyramidObserver* observer_;
    std::vector<Level> levels_;
    std::vector<std::optional<BandMap>> maps_;  // of the bands, as far as they are not mapped yet
};

// How far a side is padded. A side that is a multiple already gains a whole one: the results along its end
// depend on it.
int64_t PadOf(int32_t side, int64_t multiple) { return multiple - side % multiple; }

}  // namespace

void PyramidProcess(TonedFrame& frame, int32_t maxValue, BandCurve curve, const PyramidParams& settings,
                    const PyramidForm& form, PyramidObserver* observer) {
    const int32_t width = frame.Width();
    const int32_t height = frame.Height();
    constexpr int32_t kMostLayers = 14;  // more pad even a frame of one pixel past the limit
    if (width <= 0 || height <= 0) return;
    if (settings.PYRAMID_LAYER < 1 || settings.PYRAMID_LAYER > kMostLayers) return;
    const int64_t multiple = int64_t{1} << settings.PYRAMID_LAYER;
    const int64_t padWidth = PadOf(width, multiple);
    const int64_t padHeight = PadOf(height, multiple);
    if (IsBeyondPixelLimit(width, height, padWidth, padHeight)) return;
    // Without a band nothing changes, and there is nothing to see but the padded frame.
    if (settings.PYRAMID_LAYER == 1 && observer == nullptr) return;

    Pyramid pyramid(maxValue, curve, settings, form, observer);
    const auto paddedWidth = static_cast<int32_t>(width + padWidth);
    const auto paddedHeight = static_cast<int32_t>(height + padHeight);
    Level padded{paddedWidth, paddedHeight, AllocFrame<uint16_t>(paddedWidth, paddedHeight)};
    frame.CopyTo(padded.pixels.data(), static_cast<size_t>(paddedWidth));
    FillTrailingBorder(padded.View(), width, height);
    pyramid.Decompose(std::move(padded));
    // A single level has no band, and the frame stays as it is.
    if (settings.PYRAMID_LAYER > 1) pyramid.Rebuild(frame.Replace());
}

}  // namespace vastrelline
