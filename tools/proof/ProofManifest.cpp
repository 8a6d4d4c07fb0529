// SPDX-License-Identifier: Apache-2.0
#include "proof/ProofManifest.h"

#include <filesystem>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>
#include <utility>

#include "files/InputFile.h"
#include "frames/Frame.h"
#include "messages/ToolError.h"
#include "phantom/PhantomFrame.h"
#include "platform/PathText.h"
#include "proof/ManifestFields.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr uint64_t kMaxBytes = uint64_t{64} << 20;
constexpr int kMaxDepth = 12;  // a point of an older state of an entry is at 6
constexpr std::string_view kFormat = "vastrelline-proof";
constexpr int64_t kFormatVersion = 1;

FrameSize ReadSize(const ManifestFields& fields) {
    const std::optional<FrameSize> size = ParseFrameSize(fields.Text("size"));
    if (!size) fields.Field("size").Refuse("is no size; write it as in 1300x1668");
    return *size;
}

PhantomRecipe ReadPhantom(const ManifestFields& fields) {
    if (fields.Text("kind") != "teeth") fields.Field("kind").Refuse("is no kind of phantom but 'teeth'");
    PhantomRecipe phantom{ReadSize(fields), 1.0, 1};
    if (PixelCount(phantom.size.width, phantom.size.height) > kMostPhantomPixels)
        fields.Field("size").Refuse("is too large for a phantom");
    if (fields.Has("dose")) phantom.dose = fields.Number("dose");
    if (!(phantom.dose > 0.0 && phantom.dose <= kMostPhantomDose))
        fields.Field("dose").Refuse("should be above 0 and at most 100");
    if (fields.Has("seed")) {
        const int64_t seed = fields.Whole("seed");
        if (seed < 0) fields.Field("seed").Refuse("is below 0");
        phantom.seed = static_cast<uint64_t>(seed);
    }
    return phantom;
}

ProofFrame ReadFrame(const ManifestFields& fields) {
    ProofFrame frame;
    if (fields.Has("phantom")) {
        frame.phantom = ReadPhantom(fields.Field("phantom"));
        return frame;
    }
    frame.file = fields.Text("file");
    if (frame.file.empty()) fields.Field("file").Refuse("is empty");
    if (fields.Has("size")) frame.size = ReadSize(fields);
    return frame;
}

ProofPoint ReadPoint(const ManifestFields& fields) {
    ProofPoint point;
    point.point = fields.Text("point");
    point.title = fields.TextOr("title", point.point);
    point.dump = fields.TextOr("dump", "");
    if (fields.Has("position")) {
        const int64_t position = fields.Whole("position");
        if (position < 0 || position > INT32_MAX) fields.Field("position").Refuse("is no position");
        point.position = static_cast<int32_t>(position);
    }
    if (fields.Has("sha256")) point.hash = fields.Hash("sha256");
    return point;
}

ProofFacts ReadFacts(const ManifestFields& fields) {
    ProofFacts facts{fields.Hash("frameSha256"), fields.Hash("profileSha256"), {}};
    const ManifestFields points = fields.Field("points");
    for (size_t i = 0; i < points.Count(); ++i) facts.points.push_back(ReadPoint(points.At(i)));
    return facts;
}

ProofEntry ReadEntry(const ManifestFields& fields) {
    ProofEntry entry;
    entry.frame = ReadFrame(fields.Field("frame"));
    entry.profile = fields.Text("profile");
    if (entry.profile.empty()) fields.Field("profile").Refuse("is empty");
    entry.section = fields.Text("section");
    const ExportTraits* const traits = FindExport(fields.Text("export"));
    if (traits == nullptr) fields.Field("export").Refuse("is none of the library's functions");
    entry.exportKind = traits->kind;
    if (fields.Has("points")) entry.facts = ReadFacts(fields);
    if (!fields.Has("history")) return entry;
    const ManifestFields history = fields.Field("history");
    for (size_t i = 0; i < history.Count(); ++i) {
        const ManifestFields change = history.At(i);
        entry.history.push_back({change.Text("date"), change.Text("reason"), change.TextOr("version", ""),
                                 ReadFacts(change.Field("before"))});
    }
    return entry;
}

Json PhantomJson(const PhantomRecipe& phantom) {
    return {{"kind", "teeth"},
            {"size", FormatFrameSize(phantom.size)},
            {"dose", phantom.dose},
            {"seed", phantom.seed}};
}

Json FrameJson(const ProofFrame& frame) {
    if (frame.phantom) return {{"phantom", PhantomJson(*frame.phantom)}};
    Json json = {{"file", frame.file}};
    if (frame.size) json["size"] = FormatFrameSize(*frame.size);
    return json;
}

Json PointJson(const ProofPoint& point) {
    Json json = {{"point", point.point}};
    if (point.position) json["position"] = *point.position;
    if (point.title != point.point) json["title"] = point.title;
    if (!point.dump.empty()) json["dump"] = point.dump;
    json["sha256"] = point.hash.empty() ? Json(nullptr) : Json(point.hash);
    return json;
}

void AddFacts(Json& json, const ProofFacts& facts) {
    json["frameSha256"] = facts.frameHash;
    json["profileSha256"] = facts.profileHash;
    json["points"] = Json::array();
    for (const ProofPoint& point : facts.points) json["points"].push_back(PointJson(point));
}

Json EntryJson(const ProofEntry& entry) {
    Json json = {{"frame", FrameJson(entry.frame)},
                 {"profile", entry.profile},
                 {"section", entry.section},
                 {"export", TraitsOf(entry.exportKind).name}};
    if (entry.facts) AddFacts(json, *entry.facts);
    for (const ProofChange& change : entry.history) {
        Json before;
        AddFacts(before, change.before);
        json["history"].push_back({{"date", change.date},
                                   {"reason", change.reason},
                                   {"version", change.version},
                                   {"before", std::move(before)}});
    }
    return json;
}

std::string LeafOf(const std::string& path) { return PathOf(path).filename().string(); }

}  // namespace

ProofManifest ReadProofManifest(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadInputFile(path, kMaxBytes);
    const nlohmann::json json =
        ParseManifest(path, {reinterpret_cast<const char*>(bytes.data()), bytes.size()}, kMaxDepth);
    const ManifestFields fields(path, json, "");
    if (fields.Text("format") != kFormat)
        fields.Field("format").Refuse("is not '" + std::string(kFormat) + "'");
    if (fields.Whole("formatVersion") != kFormatVersion)
        fields.Field("formatVersion").Refuse("is not 1, the one that this tool reads");
    ProofManifest manifest{path, "", "", "", {}};
    if (fields.Has("madeWith")) {
        const ManifestFields maker = fields.Field("madeWith");
        manifest.version = maker.TextOr("version", "");
        manifest.platform = maker.TextOr("platform", "");
        manifest.libraryHash = maker.TextOr("librarySha256", "");
    }
    const ManifestFields entries = fields.Field("entries");
    for (size_t i = 0; i < entries.Count(); ++i) manifest.entries.push_back(ReadEntry(entries.At(i)));
    return manifest;
}

std::string FormatProofManifest(const ProofManifest& manifest) {
    Json json = {{"format", kFormat},
                 {"formatVersion", kFormatVersion},
                 {"madeWith",
                  {{"version", manifest.version},
                   {"platform", manifest.platform},
                   {"librarySha256", manifest.libraryHash}}},
                 {"entries", Json::array()}};
    try {
        for (const ProofEntry& entry : manifest.entries) json["entries"].push_back(EntryJson(entry));
        return json.dump(1) + "\n";
    } catch (const Json::exception&) {
        throw OutputError(manifest.path, "cannot be written: a path or name in it is no UTF-8",
                          "give the file another name");
    }
}

std::string ResolveInManifest(const ProofManifest& manifest, const std::string& file) {
    return (PathOf(manifest.path).parent_path() / PathOf(file)).string();
}

std::string NameProofEntry(const ProofEntry& entry) {
    std::ostringstream name;
    name.imbue(std::locale::classic());
    if (const std::optional<PhantomRecipe>& phantom = entry.frame.phantom)
        name << "phantom " << FormatFrameSize(phantom->size) << " dose " << phantom->dose << " seed "
             << phantom->seed;
    else
        name << LeafOf(entry.frame.file);
    name << ", " << LeafOf(entry.profile) << ", " << entry.section << ", " << TraitsOf(entry.exportKind).name;
    return name.str();
}

}  // namespace vastrelline
