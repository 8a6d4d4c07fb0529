// SPDX-License-Identifier: Apache-2.0
#include "proof/ProofRun.h"

#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "files/InputFile.h"
#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/FrameFile.h"
#include "formats/RawFormat.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "profile/ProfileFile.h"
#include "profile/SectionPlan.h"
#include "runs/FrameRun.h"
#include "runs/LookAtFrame.h"
#include "runs/LookAtProfile.h"
#include "runs/StageFrames.h"
#include "runs/StagePoints.h"

namespace vastrelline {
namespace {

std::string HashOf(const Frame& frame) { return Sha256Of(EncodeRaw(frame)); }

Frame MakeFrame(const ProofManifest& manifest, const ProofEntry& entry, const ProfileFile& profile,
                PhantomShelf& phantoms) {
    if (const std::optional<PhantomRecipe>& phantom = entry.frame.phantom) return phantoms.Find(*phantom);
    return LoadFrameFile(ResolveInManifest(manifest, entry.frame.file),
                         {entry.frame.size, FindSensorSize(profile)})
        .frame;
}

void TestSection(const ProfileFile& profile, const ProofEntry& entry) {
    const std::optional<MeaninglessRun> meaningless = FindMeaninglessRun(profile, entry.section);
    if (meaningless) throw InputError(profile.Path(), meaningless->finding.text);
}

void TestCode(const FrameRun& run, const ExportTraits& traits) {
    if (run.code == 0) return;
    throw ProcessingError({}, std::string(traits.name) + " returned " + std::to_string(run.code) + " (" +
                                  std::string(ExportCodeText(run.code)) + ")");
}

ProofPoint DescribePoint(const StagePoint& point) {
    ProofPoint proof;
    proof.point = PointName(point.kind);
    proof.title = point.title;
    if (point.stage != nullptr) proof.position = point.stage->place->position;
    if (!point.dump.empty()) proof.dump = PathOf(point.dump).filename().string();
    if (point.frame) proof.hash = HashOf(*point.frame);
    return proof;
}

std::vector<ProofPoint> DescribeRun(const FrameRun& run, const Frame& read, const std::string& dumps,
                                    const std::string& bitmap) {
    std::vector<StageFrame> frames = RequireStageFrames(dumps, {read.width, read.height}, run.stages);
    std::optional<Frame> result;
    if (bitmap.empty()) result = Frame{read.width, read.height, run.call.output};
    std::vector<ProofPoint> points;
    for (const StagePoint& point : ListStagePoints(read, result, std::move(frames), run.stages))
        if (point.kind != PointKind::Frame) points.push_back(DescribePoint(point));
    if (!bitmap.empty()) points.push_back({"bitmap", std::nullopt, "bitmap", "", Sha256OfFile(bitmap)});
    return points;
}

}  // namespace

ProofOutcome RunProofEntry(const ProofManifest& manifest, const ProofEntry& entry, const ProofFacts* expected,
                           const ProofCall& call) {
    const ProfileFile profile = ProfileFile::Read(ResolveInManifest(manifest, entry.profile));
    ProofOutcome outcome;
    outcome.facts.profileHash = Sha256Of(std::string(profile.Text().Bytes()));
    const Frame frame = MakeFrame(manifest, entry, profile, call.phantoms);
    outcome.facts.frameHash = HashOf(frame);
    const bool isAsExpected = expected == nullptr || (expected->profileHash == outcome.facts.profileHash &&
                                                      expected->frameHash == outcome.facts.frameHash);
    if (!isAsExpected) return outcome;

    TestSection(profile, entry);
    const ExportTraits& traits = TraitsOf(entry.exportKind);
    const SectionPlan plan = MakeSectionPlan(profile, entry.section, entry.exportKind);
    const PrivateFolder bitmaps;
    const PrivateFolder dumps;
    ExportRequest request;
    request.kind = entry.exportKind;
    request.frame = frame;
    request.library = call.library;
    request.instructions = call.instructions;
    request.timeout = call.timeout;
    request.onWait = call.onWait;
    if (traits.takesBitmapPath) request.bitmapPath = bitmaps.Inside("picture.bmp");
    const std::string bitmap = request.bitmapPath;
    const FrameRun run = RunFrame(profile, plan, ProfileUse::PrivateCopy, DumpInto(dumps.Path().string()),
                                  std::move(request), call.callExport);
    TestCode(run, traits);
    outcome.elapsedMs = run.call.record.elapsedMs;
    outcome.facts.points = DescribeRun(run, frame, dumps.Path().string(), bitmap);
    return outcome;
}

}  // namespace vastrelline
