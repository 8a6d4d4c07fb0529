// SPDX-License-Identifier: Apache-2.0
#include "commands/SweepRun.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <span>
#include <utility>

#include "commands/RunPicture.h"
#include "commands/RunPreparation.h"
#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "formats/PngFormat.h"
#include "formats/RawFormat.h"
#include "frames/FrameDifference.h"
#include "lint/ProfileSetting.h"
#include "messages/Suggestion.h"
#include "pictures/ContactSheet.h"
#include "platform/Cancellation.h"
#include "profile/SectionPlan.h"
#include "profile/TopLevel.h"
#include "profile_text/Utf8.h"
#include "runs/FrameRun.h"
#include "runs/LookAtFrame.h"

namespace vastrelline {
namespace {

constexpr int32_t kTopOfBitmaps = 255;

// Where a run reads a key; in the section itself before the others.
const EffectivePlace* FindPlace(const std::vector<EffectivePlace>& places, const std::string& section,
                                const std::string& key, const EffectiveValue*& value) {
    const EffectivePlace* found = nullptr;
    for (const EffectivePlace& place : places) {
        const auto own = std::find_if(place.values.begin(), place.values.end(),
                                      [&](const auto& each) { return IsSameKeyName(each.name, key); });
        if (own == place.values.end()) continue;
        const bool isInSection = IsSameKeyName(place.section, section);
        if (found != nullptr && !isInSection) continue;
        found = &place;
        value = &*own;
        if (isInSection) break;
    }
    return found;
}

std::vector<std::string> NamesOf(const std::vector<EffectivePlace>& places) {
    std::vector<std::string> names;
    for (const EffectivePlace& place : places)
        for (const EffectiveValue& value : place.values) names.push_back(value.name);
    return names;
}

// The profile with the values in it, and what is to be said about them.
ProfileFile SetValues(const SweepPlan& plan, const std::vector<std::string>& values,
                      std::vector<Finding>& findings) {
    ProfileFile file = plan.input.profile;
    for (size_t i = 0; i < values.size(); ++i) {
        const SweptPlace& place = plan.places[i];
        const ProfileValue setting{DecodeUtf8(place.swept.key), DecodeUtf8(values[i])};
        ProfileSetting set = SetInProfile(file, place.section, std::span(&setting, 1));
        for (LintFinding& each : set.findings) findings.push_back(std::move(each.finding));
        file = ProfileFile(file.Path(), std::move(set.bytes));
    }
    return file;
}

bool HasOwnValues(const SweepPlan& plan, const std::vector<EffectivePlace>& places) {
    return std::all_of(plan.places.begin(), plan.places.end(), [&](const SweptPlace& swept) {
        const EffectiveValue* value = nullptr;
        FindPlace(places, swept.section, swept.swept.key, value);
        return value != nullptr && value->reading.value == swept.own.reading.value;
    });
}

// What the run gives: the frame, or the levels of its bitmap.
Frame ResultOf(const FrameRun& run, const ExportTraits& traits) {
    if (!traits.takesBitmapPath) return {run.call.frame.width, run.call.frame.height, run.call.output};
    return DecodeBmp(ReadBitmap(run.call.bitmapPath, traits));
}

void Measure(SweptPicture& picture, const Frame& frame, const Frame* unchanged) {
    picture.size = {frame.width, frame.height};
    picture.statistics = MeasureFrame(frame);
    picture.hash = Sha256Of(EncodeRaw(frame));
    const bool isComparable =
        unchanged != nullptr && unchanged->width == frame.width && unchanged->height == frame.height;
    if (isComparable)
        picture.changed = static_cast<double>(FindDifference(*unchanged, frame).count) /
                          static_cast<double>(frame.pixels.size());
}

void Do(const SweepPlan& plan, const Frame* unchanged, OutputFolder& folder,
        const std::function<void()>& onWait, Frame* result, SweptPicture& picture) {
    const RunOptions& options = plan.options;
    const ProfileFile file = SetValues(plan, picture.values, picture.findings);
    picture.profileHash = Sha256Of(file.Text().Bytes());
    const ExportTraits& traits = FindTraits(file, options);
    const SectionPlan section = MakeSectionPlan(file, options.section, traits.kind);
    picture.isOwn = HasOwnValues(plan, ReadEffectiveValues(file, section));
    ExportRequest call = MakeCall(options, traits, plan.input.frame.frame);
    call.onWait = onWait;
    std::optional<PrivateFolder> bitmaps;
    if (traits.takesBitmapPath) call.bitmapPath = bitmaps.emplace().Inside("picture.bmp");
    FrameRun run =
        RunFrame(file, section, ProfileUse::PrivateCopy, WithoutDumps(), std::move(call), plan.callExport);
    TestCode(run, traits);
    picture.elapsedMs = run.call.record.elapsedMs;
    std::move(run.findings.begin(), run.findings.end(), std::back_inserter(picture.findings));
    Frame frame = ResultOf(run, traits);
    Measure(picture, frame, unchanged);
    if (!traits.takesBitmapPath)
        for (Finding& finding : LookAtResult(picture.leaf, frame.pixels))
            picture.findings.push_back(std::move(finding));

    const int32_t topLevel = traits.takesBitmapPath ? kTopOfBitmaps : ReadTopLevel(file, options.section);
    picture.window = plan.window.value_or(GreyWindow{0, topLevel});
    const Canvas canvas(frame.width, frame.height, RenderThroughWindow(frame, picture.window));
    const std::vector<uint8_t> png = EncodePng8(canvas.Levels(), canvas.Width(), canvas.Height());
    folder.Write(picture.leaf, {reinterpret_cast<const char*>(png.data()), png.size()});
    picture.small = ShrinkForSheet(canvas);
    if (result != nullptr) *result = std::move(frame);
}

}  // namespace

std::vector<SweptPlace> FindSweptPlaces(const FolderRun& input, const std::string& section,
                                        std::vector<SweptKey> keys) {
    const SectionPlan plan = MakeSectionPlan(input.profile, section, input.traits.kind);
    const std::vector<EffectivePlace> places = ReadEffectiveValues(input.profile, plan);
    std::vector<SweptPlace> swept;
    for (SweptKey& key : keys) {
        const EffectiveValue* value = nullptr;
        const EffectivePlace* const place = FindPlace(places, section, key.key, value);
        if (place == nullptr)
            throw UsageError("section '" + section + "' reads no key '" + key.key + "'",
                             DidYouMean(key.key, NamesOf(places), "'vastrelline profile show' lists them"));
        key.key = value->name;
        for (const SweptPlace& other : swept)
            if (IsSameKeyName(other.swept.key, key.key))
                throw UsageError("--set names " + key.key + " twice", "two different keys make a grid");
        swept.push_back({std::move(key), place->section, *value});
    }
    return swept;
}

SweptPicture RunSwept(const SweepPlan& plan, const std::vector<std::string>& values, std::string leaf,
                      const Frame* unchanged, OutputFolder& folder, const std::function<void()>& onWait,
                      Frame* result) {
    SweptPicture picture;
    picture.values = values;
    picture.leaf = std::move(leaf);
    try {
        Do(plan, unchanged, folder, onWait, result, picture);
    } catch (const CancelledError&) {
        throw;
    } catch (const ToolError& error) {
        picture.error = error;
    } catch (const std::bad_alloc&) {
        picture.error = ProcessingError({}, "out of memory");
    } catch (const std::exception& error) {
        picture.error = ProcessingError({}, error.what());
    }
    if (picture.error && IsCancelled()) throw CancelledError();
    return picture;
}

std::vector<KeyWithValue> SettingsOf(const SweepPlan& plan, const std::vector<std::string>& values) {
    std::vector<KeyWithValue> settings;
    for (size_t i = 0; i < values.size(); ++i) settings.push_back({plan.places[i].swept.key, values[i]});
    return settings;
}

std::string DescribeSettings(const SweepPlan& plan, const std::vector<std::string>& values) {
    if (values.empty()) return "the profile as it is";
    std::string text;
    for (const KeyWithValue& each : SettingsOf(plan, values))
        text.append(text.empty() ? "" : ", ").append(each.key).append("=").append(each.value);
    return text;
}

}  // namespace vastrelline
