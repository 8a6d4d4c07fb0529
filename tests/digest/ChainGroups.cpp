// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string>
#include <utility>

#include "RunGroups.h"
#include "RunParts.h"

namespace vastrelline::digest {

namespace {

constexpr FrameRecipe kRealSizes[] = {{FrameKind::Corners, 1012, 1316}, {FrameKind::Weak, 667, 901}};

void DrawSettings(ProfileLines& lines, Generator& generator, bool isOddAllowed) {
    for (const KeyValues& values : CommonSettings())
        if (generator.Below(4) == 0) lines.Key(values.key, DrawValue(generator, values, isOddAllowed));
}

void DrawList(ProfileLines& lines, Generator& generator, int32_t most, bool isOddAllowed) {
    const int32_t count = 1 + generator.Below(most);
    for (int32_t i = 0; i < count; ++i) {
        const StageValues& stage = generator.Pick(ConfiguredStages());
        lines.Stage(stage.number);
        AddDrawnKeys(lines, generator, stage, isOddAllowed);
    }
    lines.Count();
}

void DrawSwitches(ProfileLines& lines, Generator& generator, bool isOddAllowed) {
    const int32_t share = 1 + generator.Below(4);
    for (const StageValues& stage : FixedStages()) {
        if (generator.Below(4) >= share || stage.group == "fixed_unsharp_dark_tail") continue;
        for (const std::string_view key : ListOf(stage.enable)) lines.Key(key, "1");
        AddDrawnKeys(lines, generator, stage, isOddAllowed);
    }
}

// The stages of a low exposure, at their fixed positions.
void DrawLowSection(ProfileLines& lines, Generator& generator, bool isOddAllowed) {
    lines.Section("IP_LOWMODE");
    if (generator.Below(3) == 0) lines.Key("OUTPUTRANGE", "3000");
    for (const int number : {8, 12, 2, 3, 3, 11, 10}) {
        lines.Stage(number);
        for (const StageValues& stage : ConfiguredStages())
            if (stage.number == number) AddDrawnKeys(lines, generator, stage, isOddAllowed);
    }
}

DigestRun WithProfile(DigestRun run, const ProfileLines& lines) {
    run.profile = lines.Text();
    return run;
}

DigestRuns ConfiguredRuns() {
    DigestRuns runs;
    Generator generator("configured");
    for (size_t i = 0; i < 90; ++i) {
        ProfileLines lines;
        AddSensorSection(lines);
        if (i % 3 == 0) lines.Key("TargetRange", "3000").Key("MaxCut", "0.002").Key("MinCut", "0.001");
        BeginSection(lines, 2);
        DrawSettings(lines, generator, i % 4 == 3);
        DrawList(lines, generator, 7, i % 4 == 3);
        DigestRun run{.frame = AnyFrame(i)};
        if (i % 3 == 1) run.function = ExportedFunction::S;
        run.applyMapping = i % 5 == 0;
        run.applySpotCorrection = i % 7 == 0;
        runs.push_back(WithProfile(std::move(run), lines));
    }
    return runs;
}

DigestRuns FixedRuns(ExportedFunction function, std::string_view seed) {
    DigestRuns runs;
    Generator generator(seed);
    for (size_t i = 0; i < 60; ++i) {
        ProfileLines lines;
        AddSensorSection(lines);
        BeginSection(lines, 1);
        DrawSettings(lines, generator, i % 4 == 3);
        DrawSwitches(lines, generator, i % 4 == 3);
        DigestRun run{.function = function, .frame = AnyFrame(i)};
        if (function != ExportedFunction::Cr) run.applyMapping = i % 5 == 0;
        runs.push_back(WithProfile(std::move(run), lines));
    }
    return runs;
}

// HDR among other stages, seen as a bitmap.
DigestRuns ExtendedRuns() {
    DigestRuns runs;
    Generator generator("extended");
    for (size_t i = 0; i < 40; ++i) {
        ProfileLines lines;
        AddSensorSection(lines);
        BeginSection(lines, 2);
        DrawSettings(lines, generator, i % 4 == 3);
        lines.Stage(13);
        AddDrawnKeys(lines, generator, ConfiguredStages().back(), i % 4 == 3);
        DrawList(lines, generator, 3, i % 4 == 3);
        DigestRun run{.function = ExportedFunction::Ne, .frame = AnyFrame(i)};
        run.sensorMode = i % 3 == 0 ? 2 : 0;
        runs.push_back(WithProfile(std::move(run), lines));
    }
    return runs;
}

// Decisions about the exposure, and the sequence of a low one.
DigestRuns LowExposureRuns() {
    DigestRuns runs;
    Generator generator("low_exposure");
    constexpr std::string_view kLimits[] = {"-1", "0.0005", "0.01", "0.05", "0.1", "0.3", "1", "-1"};
    for (size_t i = 0; i < 100; ++i) {
        ProfileLines lines;
        AddSensorSection(lines);
        BeginSection(lines, 3);
        DrawSettings(lines, generator, i % 4 == 3);
        lines.Key("SETCLIPBIN", kLimits[i % std::size(kLimits)]).Key("MSGBOX_ENABLE", "0");
        DrawList(lines, generator, 2, i % 4 == 3);
        if (i % 9 != 0) DrawLowSection(lines, generator, i % 4 == 3);
        DigestRun run{.function = i % 6 == 5 ? ExportedFunction::Ns : ExportedFunction::S,
                      .frame = AnyFrame(i)};
        run.asksForDose = true;
        runs.push_back(WithProfile(std::move(run), lines));
    }
    return runs;
}

// Each stage on frames that are wider than what kernels take at once, and high enough for all their bands. Of
// each only the result is looked at.
DigestRuns MiddleSizeRuns() {
    constexpr FrameRecipe kSizes[] = {{FrameKind::Radiograph, 401, 310},
                                      {FrameKind::Corners, 300, 523},
                                      {FrameKind::Noise, 331, 256},
                                      {FrameKind::Levels, 512, 200}};
    DigestRuns runs;
    Generator generator("middle_size");
    const auto add = [&](const StageValues& stage) {
        DigestRun run{.frame = kSizes[runs.size() % std::size(kSizes)]};
        ProfileLines lines;
        AddSensorSection(lines);
        lines.Section("General").Key("SETCLIPBIN", "1").Key("SAVE_LOG", "1");
        if (stage.number == 0) {
            lines.Key("PROCMODE", "1");
            for (const std::string_view key : ListOf(stage.enable)) lines.Key(key, "1");
        } else {
            // HDR runs where the exposure is decided.
            if (stage.number == 13) run.function = ExportedFunction::S;
            lines.Key("PROCMODE", stage.number == 13 ? "3" : "2").Stage(stage.number);
        }
        AddDrawnKeys(lines, generator, stage, false);
        if (stage.number != 0) lines.Count();
        runs.push_back(WithProfile(std::move(run), lines));
    };
    for (int32_t i = 0; i < 5; ++i) {
        for (const StageValues& stage : ConfiguredStages()) add(stage);
        for (const StageValues& stage : FixedStages()) add(stage);
    }
    return runs;
}

// Each method of each stage on frames without content, and on one that is dark farther into it than corners
// reach.
DigestRuns ExtremeRuns() {
    constexpr FrameRecipe kExtremes[] = {
        {FrameKind::Black, 40, 31}, {FrameKind::White, 37, 40}, {FrameKind::DarkSides, 420, 400}};
    DigestRuns runs;
    const auto add = [&](const StageValues& stage, std::string_view mode, const FrameRecipe& frame) {
        DigestRun run{.frame = frame};
        ProfileLines lines;
        AddSensorSection(lines);
        const bool isFixed = stage.number == 0;
        const bool isHdr = stage.number == 13;
        if (isHdr) run.function = ExportedFunction::S;
        BeginSection(lines, isFixed ? 1 : isHdr ? 3 : 2);
        lines.Key("SETCLIPBIN", "1").Key("INVERSE_INTENSITY", runs.size() % 2 == 0 ? "1" : "0");
        for (const std::string_view key : ListOf(stage.enable)) lines.Key(key, "1");
        if (!isFixed) lines.Stage(stage.number);
        if (!mode.empty()) AddStageKey(lines, stage, stage.mode.key, mode);
        if (!isFixed) lines.Count();
        runs.push_back(WithProfile(std::move(run), lines));
    };
    for (const std::vector<StageValues>* stages : {&ConfiguredStages(), &FixedStages()})
        for (const StageValues& stage : *stages)
            for (const FrameRecipe& frame : kExtremes) {
                add(stage, {}, frame);
                for (const std::string_view mode : ListOf(stage.mode.ordinary)) add(stage, mode, frame);
            }
    return runs;
}

// Frames as sensors deliver them, through chains as people set them up.
DigestRuns RealSizeRuns() {
    DigestRuns runs;
    for (const FrameRecipe& frame : kRealSizes) {
        ProfileLines lines;
        AddSensorSection(lines);
        lines.Key("TargetRange", "3000").Key("MaxCut", "0.001");
        lines.Section("General").Key("PROCMODE", "2").Key("SAVE_LOG", "1").Key("INVERSE_INTENSITY", "2");
        for (const int number : {7, 8, 1, 2, 6, 4, 3, 5, 9, 10}) {
            lines.Stage(number);
            if (number == 4) lines.StageKey("MODE_CONTRAST", "1").StageKey("NOISE_WIDTH_CONTRAST", "110");
            if (number == 5)
                lines.StageKey("ADAPTIVESMOOTHING_Mode", "1").StageKey("ADAPTIVESMOOTHING_MASK", "1.4");
        }
        lines.Count();
        runs.push_back(WithProfile({.frame = frame}, lines));
    }
    ProfileLines fixed;
    AddSensorSection(fixed);
    fixed.Section("General").Key("SAVE_LOG", "1").Key("MODE_CONTRAST", "3").Key("NOISE_WIDTH_CONTRAST", "10");
    for (const StageValues& stage : FixedStages())
        for (const std::string_view key : ListOf(stage.enable)) fixed.Key(key, "1");
    DigestRun run{.frame = kRealSizes[0]};
    run.applySpotCorrection = 1;
    runs.push_back(WithProfile(std::move(run), fixed));

    ProfileLines hdr;
    AddSensorSection(hdr);
    hdr.Section("General").Key("PROCMODE", "3").Key("SETCLIPBIN", "1").Stage(13).Count();
    runs.push_back(WithProfile({.function = ExportedFunction::S, .frame = kRealSizes[1]}, hdr));
    return runs;
}

}  // namespace

std::vector<RunGroup> ChainGroups() {
    return {{"configured_chain", ConfiguredRuns()},
            {"fixed_chain", FixedRuns(ExportedFunction::Plain, "fixed")},
            {"cr_chain", FixedRuns(ExportedFunction::Cr, "cr")},
            {"extended_chain", ExtendedRuns()},
            {"low_exposure_chain", LowExposureRuns()},
            {"extreme_frames", ExtremeRuns()},
            {"middle_size", MiddleSizeRuns()},
            {"real_size", RealSizeRuns()}};
}

}  // namespace vastrelline::digest
