// SPDX-License-Identifier: Apache-2.0
#include "commands/StagePictures.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iomanip>
#include <sstream>
#include <utility>

#include "formats/PngFormat.h"
#include "pictures/ContactSheet.h"
#include "pictures/CurveSvg.h"

namespace vastrelline {
namespace {

std::string EncodeCanvas(const Canvas& canvas) {
    const std::vector<uint8_t> png = EncodePng8(canvas.Levels(), canvas.Width(), canvas.Height());
    return {png.begin(), png.end()};
}

GreyWindow ChooseWindow(const StagePoint& point, int32_t topLevel) {
    const int32_t greatest = point.statistics.greatest;
    if (greatest <= topLevel) return {0, topLevel};
    return {0, (1 << std::bit_width(static_cast<uint32_t>(greatest))) - 1};
}

std::string TwoDigits(size_t number) {
    std::string digits = std::to_string(number);
    if (digits.size() < 2) digits.insert(digits.begin(), '0');
    return digits;
}

// What stands below a frame on the sheet.
std::string DetailOf(const StagePoint& point) {
    std::string text = point.stage == nullptr ? std::string() : DescribeTime(*point.stage);
    if (!point.changed) return text;
    if (!text.empty()) text += '\n';
    return text.append(DescribeShare(*point.changed)).append(" changed");
}

class Drawing {
public:
    void AddFrame(size_t number, const StagePoint& point, const GreyWindow& window) {
        PointFiles& own = pictures_.points.emplace_back();
        if (!point.frame) return;
        const Frame& frame = *point.frame;
        own.window = window;
        own.picture = NumberedLeaf(number, point.title) + ".png";
        Add(own.picture, TwoDigits(number) + " " + point.title, DetailOf(point),
            Canvas(frame.width, frame.height, RenderThroughWindow(frame, window)));
    }

    void AddCurve(size_t number, const ShownPoint& shown, const Frame& before) {
        const std::string leaf = NumberedLeaf(number, shown.point.title);
        PointFiles& own = pictures_.points.back();
        own.curve = leaf + (leaf.ends_with("_curve") ? ".svg" : "_curve.svg");
        pictures_.files.push_back(
            {own.curve, DrawCurveSvg(TwoDigits(number) + " " + shown.point.title + ": level after",
                                     CountLevels(before.pixels), shown.curve)});
    }

    void AddBand(size_t number, const std::string& title, const StageBand& band) {
        const std::string name = "band " + std::to_string(band.number);
        const std::string leaf = NumberedLeaf(number, title + " " + name);
        const std::string caption = TwoDigits(number) + " " + title + ", " + name;
        BandFiles own;
        own.before = leaf + "_before.png";
        own.after = leaf + "_after.png";
        // One for both, so that they can be compared.
        own.reach = std::max(FindReach(band.before.levels), FindReach(band.after.levels));
        const std::string detail = std::to_string(-own.reach) + " to " + std::to_string(own.reach);
        Add(own.before, caption + ", before", detail, Render(band.before, own.reach));
        Add(own.after, caption + ", after", detail, Render(band.after, own.reach));
        if (!band.curve.empty()) {
            own.curve = leaf + "_curve.svg";
            pictures_.files.push_back({own.curve, DrawCurveSvg(caption + ": level after",
                                                               CountLevels(band.before.levels), band.curve)});
        }
        pictures_.points.back().bands.push_back(std::move(own));
    }

    StagePictures Finish(const std::string& title) {
        pictures_.contactSheet = "contact.png";
        pictures_.files.push_back({pictures_.contactSheet, EncodeCanvas(DrawContactSheet(title, small_, 0))});
        return std::move(pictures_);
    }

private:
    static Canvas Render(const SignedFrame& band, int32_t reach) {
        return {band.width, band.height, RenderSigned(band.levels, reach)};
    }

    void Add(const std::string& leaf, const std::string& title, const std::string& detail, Canvas picture) {
        pictures_.files.push_back({leaf, EncodeCanvas(picture)});
        small_.push_back({title, detail, std::move(picture)});
    }

    StagePictures pictures_;
    std::vector<CaptionedPicture> small_;
};

}  // namespace

std::string NumberedLeaf(size_t number, const std::string& title) {
    std::string leaf = TwoDigits(number) + "_";
    for (const char c : title) {
        const bool isUpper = c >= 'A' && c <= 'Z';
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (isUpper)
            leaf += static_cast<char>(c - 'A' + 'a');
        else if (isPlain)
            leaf += c;
        else if (leaf.back() != '_')
            leaf += '_';
    }
    return leaf;
}

std::string DescribeShare(double share) {
    constexpr double kPercent = 100.0;
    constexpr double kLeastShown = 0.1;
    if (share > 0.0 && share * kPercent < kLeastShown) return "under 0.1 %";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << share * kPercent << " %";
    return text.str();
}

StagePictures DrawStagePictures(const std::string& title, const std::vector<ShownPoint>& points,
                                const std::optional<GreyWindow>& window, int32_t topLevel) {
    Drawing drawing;
    const Frame* before = nullptr;
    for (size_t i = 0; i < points.size(); ++i) {
        const ShownPoint& shown = points[i];
        drawing.AddFrame(i, shown.point, window.value_or(ChooseWindow(shown.point, topLevel)));
        if (!shown.curve.empty() && before != nullptr) drawing.AddCurve(i, shown, *before);
        for (const StageBand& band : shown.bands) drawing.AddBand(i, shown.point.title, band);
        if (shown.point.frame) before = &*shown.point.frame;
    }
    return drawing.Finish(title);
}

}  // namespace vastrelline
