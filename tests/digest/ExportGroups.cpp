// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <utility>

#include "RunGroups.h"
#include "RunParts.h"

namespace vastrelline::digest {

namespace {

ProfileLines SmallProfile(int32_t procMode) {
    ProfileLines lines;
    AddSensorSection(lines);
    BeginSection(lines, procMode);
    lines.Key("SETCLIPBIN", "0.05").Key("POST_GAMMA_LUT", "1").Key("POST_GAMMA_RATIO", "1.2");
    lines.Stage(8).Stage(10).StageKey("POST_GAMMA_RATIO", "1.3").Count();
    lines.Section("IP_LOWMODE").Key("03_BLOCK_SIZE", "32").Key("04_BLOCK_SIZE", "16");
    return lines;
}

// One function: every way through it, with everything that its caller may do wrong.
DigestRuns FunctionRuns(ExportedFunction function) {
    DigestRuns runs;
    const auto add = [&](int32_t procMode, const auto& change) {
        DigestRun run{.function = function, .frame = PictureFrame(runs.size())};
        run.profile = SmallProfile(procMode).Text();
        change(run);
        runs.push_back(std::move(run));
    };
    for (int32_t procMode = 1; procMode <= 3; ++procMode) {
        for (int32_t flags = 0; flags < 4; ++flags)
            add(procMode, [&](DigestRun& run) {
                run.applyMapping = flags % 2 != 0;
                run.applySpotCorrection = flags > 1;
            });
        for (const Mistake mistake :
             {Mistake::NoInput, Mistake::NoOutput, Mistake::NoProfilePath, Mistake::MissingProfile})
            add(procMode, [&](DigestRun& run) { run.mistake = mistake; });
        for (const char* section : {"", "Nope", "IP_LOWMODE", "general"})
            add(procMode, [&](DigestRun& run) { run.section = section; });
        for (const FrameRecipe size :
             {FrameRecipe{FrameKind::Flat, 0, 9}, FrameRecipe{FrameKind::Flat, 9, -1}})
            add(procMode, [&](DigestRun& run) { run.frame = size; });
        for (size_t turn = 0; turn < 17; ++turn)
            add(procMode, [&](DigestRun& run) { run.frame = AnyFrame(turn); });
    }
    for (const char* profile :
         {"", "[General]", "PROCMODE=2\n", "[General]\nPROCMODE=2", "[General\nPROCMODE=2\n"})
        add(2, [&](DigestRun& run) { run.profile = profile; });
    if (function == ExportedFunction::Ne)
        for (const int32_t sensorMode : {-1, 1, 2, 3})
            add(2, [&](DigestRun& run) { run.sensorMode = sensorMode; });
    return runs;
}

DigestRuns RotationRuns() {
    DigestRuns runs;
    for (size_t turn = 0; turn < 17; ++turn)
        for (int32_t i = 0; i < 16; ++i) {
            if (turn > 3 && (static_cast<int32_t>(turn) + i) % 5 != 0) continue;
            DigestRun run{.function = ExportedFunction::Rotate, .frame = AnyFrame(turn)};
            run.rotation = i % 4;
            run.flip = i / 4;
            runs.push_back(std::move(run));
        }
    for (const int32_t rotation : {-1, 4, 90})
        runs.push_back(
            {.function = ExportedFunction::Rotate, .frame = AnyFrame(0), .rotation = rotation, .flip = 5});
    runs.push_back({.function = ExportedFunction::Rotate, .mistake = Mistake::NoInput, .frame = AnyFrame(0)});
    runs.push_back({.function = ExportedFunction::Rotate, .frame = {FrameKind::Flat, -4, 4}, .rotation = 1});
    return runs;
}

// Backup sets of every function that keeps them.
DigestRuns BackupRuns() {
    DigestRuns runs;
    for (const ExportedFunction function : {ExportedFunction::Plain, ExportedFunction::S, ExportedFunction::N,
                                            ExportedFunction::Ns, ExportedFunction::Ne, ExportedFunction::Cr})
        for (int32_t procMode = 1; procMode <= 3; ++procMode)
            for (const char* range : {"4095", "1000"})
                for (const char* folder : {"{folder}/bak", "{folder}/out"}) {
                    ProfileLines lines;
                    AddSensorSection(lines);
                    BeginSection(lines, procMode);
                    lines.Key("SAVE_BACKUP", "1").Key("SAVE_BACKUPPATH", folder).Key("OUTPUTRANGE", range);
                    lines.Stage(10).Count();
                    DigestRun run{.function = function, .frame = AnyFrame(runs.size())};
                    run.profile = lines.Text();
                    runs.push_back(std::move(run));
                }
    return runs;
}

// Decisions about the exposure of every kind of frame.
DigestRuns DoseRuns() {
    DigestRuns runs;
    for (const char* limit : {"-1", "0.02", "1"})
        for (size_t turn = 0; turn < 17; ++turn) {
            ProfileLines lines;
            AddSensorSection(lines);
            lines.Section("General").Key("PROCMODE", "3").Key("SETCLIPBIN", limit).Stage(8).Count();
            DigestRun run{.function = turn % 2 == 0 ? ExportedFunction::S : ExportedFunction::Ns};
            run.frame = AnyFrame(turn);
            run.profile = lines.Text();
            run.asksForDose = true;
            runs.push_back(std::move(run));
        }
    return runs;
}

}  // namespace

std::vector<RunGroup> ExportGroups() {
    return {{"ImageProcessing", FunctionRuns(ExportedFunction::Plain)},
            {"ImageProcessingS", FunctionRuns(ExportedFunction::S)},
            {"ImageProcessing_N", FunctionRuns(ExportedFunction::N)},
            {"ImageProcessing_NS", FunctionRuns(ExportedFunction::Ns)},
            {"ImageProcessing_NE", FunctionRuns(ExportedFunction::Ne)},
            {"ImageProcessingCR", FunctionRuns(ExportedFunction::Cr)},
            {"Getdose_ImageInfo", DoseRuns()},
            {"RotateImage", RotationRuns()},
            {"backups", BackupRuns()}};
}

}  // namespace vastrelline::digest
