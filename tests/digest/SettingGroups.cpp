// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <utility>

#include "NumberTexts.h"
#include "RunGroups.h"
#include "RunParts.h"

namespace vastrelline::digest {

namespace {

// Two digits behind the point.
std::string Hundredths(int32_t value) {
    const std::string cents = std::to_string(value % 100);
    return std::to_string(value / 100) + (cents.size() < 2 ? ".0" : ".") + cents;
}

// A few stages that pass on what settings make of the frame.
void AddPlainList(ProfileLines& lines) {
    lines.Stage(8).StageKey("GAUSSIAN_SIZE", "0.8").Stage(9).Stage(10).StageKey("POST_GAMMA_RATIO", "1.2");
    lines.Count();
}

DigestRun MakeRun(const FrameRecipe& frame, const ProfileLines& lines) {
    DigestRun run;
    run.frame = frame;
    run.profile = lines.Text();
    return run;
}

// Every value of every common setting, in the configured and in the fixed chain.
DigestRuns CommonRuns() {
    DigestRuns runs;
    const auto add = [&](const FrameRecipe& frame, const auto& addKeys) {
        for (const bool isFixed : {false, true}) {
            ProfileLines lines;
            AddSensorSection(lines);
            BeginSection(lines, isFixed ? 1 : 2);
            addKeys(lines);
            if (isFixed) {
                lines.Key("POST_GAMMA_LUT", "1").Key("PRE_GAUSSIAN", "1").Key("HISTOGRAM_STRETCH", "1");
            } else {
                AddPlainList(lines);
            }
            runs.push_back(MakeRun(frame, lines));
        }
    };
    size_t turn = 0;
    for (const KeyValues& values : CommonSettings())
        for (const std::string_view list : {values.ordinary, values.odd})
            for (const std::string_view value : ListOf(list))
                add(AnyFrame(turn++), [&](ProfileLines& lines) {
                    if (values.key == "INVERSE_LOGRATIO")
                        lines.Key("INVERSE_INTENSITY", turn % 3 == 0 ? "3" : "2");
                    lines.Key(values.key, value);
                });
    Generator generator("settings");
    for (int32_t i = 0; i < 60; ++i)
        add(AnyFrame(turn++), [&](ProfileLines& lines) {
            for (const KeyValues& values : CommonSettings())
                if (generator.Below(2) == 0) lines.Key(values.key, DrawValue(generator, values, i % 2 == 0));
        });
    return runs;
}

// Logarithmic and power inversion over the whole range of their ratio.
DigestRuns InversionRuns() {
    DigestRuns runs;
    for (int32_t mode = 2; mode <= 3; ++mode)
        for (int32_t hundredths = 5; hundredths <= 200; hundredths += mode == 2 ? 5 : 7) {
            ProfileLines lines;
            AddSensorSection(lines);
            BeginSection(lines, mode == 2 && hundredths % 10 == 0 ? 1 : 2);
            lines.Key("INVERSE_INTENSITY", std::to_string(mode));
            lines.Key("INVERSE_LOGRATIO", Hundredths(hundredths));
            if (hundredths % 3 == 0) lines.Key("BITSTORED", "16");
            runs.push_back(MakeRun(AnyFrame(runs.size()), lines));
        }
    return runs;
}

// The stages that fill the range of the output, in each of their modes.
DigestRuns OutputRangeRuns() {
    DigestRuns runs;
    const auto add = [&](std::string_view outputRange, int32_t procMode, const auto& addKeys) {
        ProfileLines lines;
        AddSensorSection(lines);
        BeginSection(lines, procMode);
        lines.Key("OUTPUTRANGE", outputRange);
        if (outputRange.size() > 4) lines.Key("BITSTORED", "16");
        addKeys(lines);
        runs.push_back(MakeRun(PictureFrame(runs.size()), lines));
    };
    for (const std::string_view range : {"255", "1000", "3000", "8191", "65535"}) {
        for (const char* ratio : {"0", "0.35", "0.6"}) {
            add(range, 2,
                [&](ProfileLines& lines) { lines.Stage(9).StageKey("POST_SIGMOID_RATIO", ratio).Count(); });
            add(range, 1, [&](ProfileLines& lines) {
                lines.Key("POST_SIGMOID_LUT", "1").Key("POST_SIGMOID_RATIO", ratio);
            });
        }
        for (const char* ratio : {"0.1", "1.4", "-1.4", "-0.2"}) {
            add(range, 2,
                [&](ProfileLines& lines) { lines.Stage(10).StageKey("POST_GAMMA_RATIO", ratio).Count(); });
            add(range, 1, [&](ProfileLines& lines) {
                lines.Key("POST_GAMMA_LUT", "1").Key("POST_GAMMA_RATIO", ratio);
            });
        }
        for (const char* mode : {"0", "1", "2"})
            for (const char* shift : {"-250", "40", "300"})
                add(range, 2, [&](ProfileLines& lines) {
                    lines.Stage(11).StageKey("POST_LINEAR_MODE", mode).StageKey("POST_LINEAR_LIMITBIN", "7");
                    lines.StageKey("POST_LINEAR_BRIGHTOPT", shift).Count();
                });
    }
    return runs;
}

DigestRuns RangeRuns() {
    DigestRuns runs;
    Generator generator("range");
    const auto add = [&](const auto& addKeys) {
        ProfileLines lines;
        AddSensorSection(lines);
        addKeys(lines);
        BeginSection(lines, 2);
        AddPlainList(lines);
        runs.push_back(
            MakeRun(runs.size() % 2 == 0 ? PictureFrame(runs.size()) : AnyFrame(runs.size()), lines));
    };
    for (const KeyValues& values : RangeSettings())
        for (const std::string_view list : {values.ordinary, values.odd})
            for (const std::string_view value : ListOf(list))
                add([&](ProfileLines& lines) {
                    if (values.key != "TargetRange") lines.Key("TargetRange", "3500");
                    lines.Key(values.key, value);
                });
    for (int32_t i = 0; i < 60; ++i)
        add([&](ProfileLines& lines) {
            for (const KeyValues& values : RangeSettings())
                lines.Key(values.key, DrawValue(generator, values, i % 4 == 3));
        });
    return runs;
}

// A geometry whose frame is the one that comes, in most draws.
SensorGeometry DrawGeometry(Generator& generator, const FrameRecipe& frame) {
    SensorGeometry geometry{};
    geometry.Rotation = generator.Below(8) == 0 ? -10 : generator.Below(3);
    geometry.Flip = generator.Below(8) == 0 ? 4 : generator.Below(4);
    const int32_t smaller = frame.width < frame.height ? frame.width : frame.height;
    geometry.RCCutOff = generator.Below(smaller / 2 + 1);
    geometry.RCCutOffR = generator.Below(smaller + 1);
    int32_t* const cuts[] = {&geometry.ImgCutLeft, &geometry.ImgCutTop, &geometry.ImgCutRight,
                             &geometry.ImgCutBottom};
    for (int32_t* cut : cuts) *cut = generator.Below(2) == 0 ? 0 : generator.Below(9);
    geometry.FrameWidth = frame.width + geometry.ImgCutLeft + geometry.ImgCutRight;
    geometry.FrameHeight = frame.height + geometry.ImgCutTop + geometry.ImgCutBottom;
    if (geometry.Rotation == 1 || geometry.Rotation == 2)
        std::swap(geometry.FrameWidth, geometry.FrameHeight);
    if (generator.Below(10) == 0) geometry.FrameWidth += 1;
    return geometry;
}

void AddGeometry(ProfileLines& lines, const SensorGeometry& geometry) {
    const std::pair<const char*, int32_t> keys[] = {
        {"Rotation", geometry.Rotation},       {"Flip", geometry.Flip},
        {"RCCutOff", geometry.RCCutOff},       {"RCCutOffR", geometry.RCCutOffR},
        {"FrameWidth", geometry.FrameWidth},   {"FrameHeight", geometry.FrameHeight},
        {"ImgCutLeft", geometry.ImgCutLeft},   {"ImgCutTop", geometry.ImgCutTop},
        {"ImgCutRight", geometry.ImgCutRight}, {"ImgCutBottom", geometry.ImgCutBottom}};
    lines.Section("Settings");
    for (const auto& [key, value] : keys) lines.Key(key, std::to_string(value));
}

// Rounded corners: of the caller's geometry, of the profile's (fixed chain), found in the frame, and values
// that the run has to write into the profile.
DigestRuns CornerRuns() {
    DigestRuns runs;
    Generator generator("corners");
    for (int32_t i = 0; i < 120; ++i) {
        const FrameRecipe& frame =
            i % 3 == 0 ? AnyFrame(static_cast<size_t>(i)) : PictureFrame(static_cast<size_t>(i));
        const SensorGeometry geometry = DrawGeometry(generator, frame);
        const bool isFixed = i % 3 == 2;
        ProfileLines lines;
        if (isFixed || i % 12 == 0) {
            AddGeometry(lines, geometry);
        } else {
            AddSensorSection(lines);
        }
        BeginSection(lines, isFixed ? 1 : 2);
        lines.Key("INTRAORAL_MASK", "1").Key("INVERSE_INTENSITY", std::to_string(generator.Below(4)));
        if (isFixed) {
            lines.Key("PRE_GAUSSIAN", "1");
        } else {
            lines.Stage(8).Count();
        }
        DigestRun run = MakeRun(frame, lines);
        if (!isFixed) {
            run.function = ExportedFunction::S;
            if (i % 12 != 0) run.geometry = geometry;
        }
        runs.push_back(std::move(run));
    }
    return runs;
}

// The caller's corrections of a frame, on every kind of it.
DigestRuns CallerRuns() {
    DigestRuns runs;
    for (size_t turn = 0; turn < 34; ++turn)
        for (const bool isMapped : {false, true}) {
            ProfileLines lines;
            AddSensorSection(lines);
            BeginSection(lines, turn % 2 == 0 ? 2 : 1);
            if (turn % 2 == 0) lines.Stage(10).StageKey("POST_GAMMA_RATIO", "1.1").Count();
            DigestRun run = MakeRun(AnyFrame(turn / 2), lines);
            run.applySpotCorrection = 1;
            run.applyMapping = isMapped;
            runs.push_back(std::move(run));
        }
    return runs;
}

// Gaussians of every width over a frame of one level, where the last bit of a weight decides on which side of
// the level a sum falls, and over every level.
DigestRuns KernelRuns() {
    DigestRuns runs;
    for (int32_t hundredths = 30; hundredths <= 600; hundredths += hundredths < 200 ? 5 : 20)
        for (const FrameKind kind : {FrameKind::Flat, FrameKind::Levels}) {
            const std::string sigma = Hundredths(hundredths);
            ProfileLines lines;
            AddSensorSection(lines);
            BeginSection(lines, 2);
            lines.Key("INVERSE_INTENSITY", "0").Stage(8).StageKey("GAUSSIAN_SIZE", sigma);
            lines.Stage(1).StageKey("PRECONTRAST_MASK", sigma).StageKey("PRECONTRAST_RESCALE", "1");
            lines.Stage(4).StageKey("MODE_CONTRAST", "1").StageKey("GAUSSIAN_SIZE_CONTRAST", sigma);
            lines.Stage(5).StageKey("ADAPTIVESMOOTHING_Mode", "1").StageKey("ADAPTIVESMOOTHING_MASK", sigma);
            lines.Count();
            runs.push_back(MakeRun({kind, 68, 61}, lines));
        }
    return runs;
}

// Each text as a number and as an integer; the log tells of what was read.
DigestRuns NumberRuns() {
    DigestRuns runs;
    for (const std::string_view text : kNumberTexts) {
        ProfileLines lines;
        AddSensorSection(lines);
        BeginSection(lines, 2);
        lines.Key("INVERSE_INTENSITY", "0").Stage(10).StageKey("POST_GAMMA_RATIO", text);
        lines.Stage(2).StageKey("STRETCH_LEFT_WEIGHT", text).StageKey("LEFT_LEN_LIMIT", text);
        lines.Stage(4).StageKey("MODE_CONTRAST", "1").StageKey("ENAHCNED_RATIO_CONTRAST", text);
        lines.StageKey("NOISE_WIDTH_CONTRAST", text);
        lines.Stage(11).StageKey("POST_LINEAR_MODE", "2").StageKey("POST_LINEAR_BRIGHTOPT", text).Count();
        runs.push_back(MakeRun(PictureFrame(runs.size()), lines));
    }
    return runs;
}

}  // namespace

std::vector<RunGroup> SettingGroups() {
    return {{"settings", CommonRuns()}, {"inversion", InversionRuns()}, {"output_range", OutputRangeRuns()},
            {"range", RangeRuns()},     {"corners", CornerRuns()},      {"caller", CallerRuns()},
            {"kernels", KernelRuns()},  {"numbers", NumberRuns()}};
}

}  // namespace vastrelline::digest
