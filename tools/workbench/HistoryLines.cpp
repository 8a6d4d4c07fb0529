// SPDX-License-Identifier: Apache-2.0
#include "workbench/HistoryLines.h"

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "files/Sha256.h"
#include "reports/Base64.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

std::string LineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string Base64Of(const std::string& bytes) {
    return EncodeBase64({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
}

std::optional<std::vector<uint8_t>> BytesAt(const Json& json, const char* name) {
    return DecodeBase64(json.at(name).get_ref<const std::string&>());
}

Json StagesJson(const HistoryRow& row) {
    Json stages = Json::array();
    for (const auto& [title, ms] : row.stages) stages.push_back({title, ms ? Json(*ms) : Json(nullptr)});
    return stages;
}

// A page's numbers are exact up to here.
constexpr uint64_t kGreatestId = uint64_t{1} << 53;

// 0: no number of a run.
uint64_t IdAt(const Json& line, const char* name) {
    const Json& number = line.at(name);
    const bool isId = number.is_number_unsigned() && number.get<uint64_t>() < kGreatestId;
    return isId ? number.get<uint64_t>() : 0;
}

// The reader's functions throw what the JSON library throws for a line that is none of these.
class LineReader {
public:
    void Read(const Json& line) {
        const auto& kind = line.at("kind").get_ref<const std::string&>();
        if (kind == "run") AddRun(line);
        if (kind == "name") Name(line);
        if (kind == "pin") Pin(line);
        if (kind == "choice") Choose(line);
    }

    PastRuns Take() { return std::move(past_); }

private:
    void AddRun(const Json& line) {
        PastRun run;
        HistoryRow& row = run.row;
        row.id = IdAt(line, "id");
        if (row.id == 0 || places_.contains(row.id)) return;
        row.when = line.at("when").get<std::string>();
        row.change = line.at("change").get<std::string>();
        row.hash = line.at("sha256").get<std::string>();
        row.elapsedMs = line.at("elapsedMs").get<double>();
        row.desk.section = line.at("section").get<std::string>();
        row.desk.offKeys = line.at("off").get<std::set<std::string>>();
        run.frameName = line.at("frame").get<std::string>();
        for (const Json& stage : line.at("stages"))
            row.stages.emplace_back(
                stage.at(0).get<std::string>(),
                stage.at(1).is_null() ? std::nullopt : std::optional(stage.at(1).get<double>()));
        const auto profile = line.at("profileSha256").get<std::string>();
        if (line.contains("profile")) TakeProfile(line, profile);
        const auto bytes = profiles_.find(profile);
        if (bytes == profiles_.end()) return;
        row.desk.bytes = bytes->second;
        if (line.contains("picture")) row.picture = PictureOf(line.at("picture"));
        places_.emplace(row.id, past_.runs.size());
        past_.runs.push_back(std::move(run));
    }

    void TakeProfile(const Json& line, const std::string& hash) {
        const std::optional<std::vector<uint8_t>> bytes = BytesAt(line, "profile");
        if (bytes && Sha256Of(*bytes) == hash) profiles_[hash].assign(bytes->begin(), bytes->end());
    }

    static std::shared_ptr<const SmallPicture> PictureOf(const Json& json) {
        SmallPicture picture{json.at("width").get<int32_t>(), json.at("height").get<int32_t>(), {}};
        std::optional<std::vector<uint8_t>> grey = BytesAt(json, "grey");
        const auto isSide = [](int32_t side) { return side > 0 && side <= kSmallPictureSide; };
        const bool isWhole = grey && isSide(picture.width) && isSide(picture.height) &&
                             grey->size() == PixelCount(picture.width, picture.height);
        if (!isWhole) return nullptr;
        picture.grey = std::move(*grey);
        return std::make_shared<const SmallPicture>(std::move(picture));
    }

    void Name(const Json& line) {
        const auto place = places_.find(IdAt(line, "id"));
        if (place != places_.end()) past_.runs[place->second].row.name = line.at("name").get<std::string>();
    }

    void Pin(const Json& line) {
        std::optional<uint64_t> id;
        if (!line.at("id").is_null()) id = IdAt(line, "id");
        if (id && !places_.contains(*id)) id.reset();
        (line.at("side").get<std::string>() == "A" ? past_.pinnedA : past_.pinnedB) = id;
    }

    void Choose(const Json& line) {
        const std::pair pair(IdAt(line, "a"), IdAt(line, "b"));
        if (!places_.contains(pair.first) || !places_.contains(pair.second)) return;
        constexpr int kMostChoices = 1'000'000;  // of a person
        std::array<int, 3>& counts = past_.choices[pair];
        const std::array<int, 3> more{line.at("aBetter").get<int>(), line.at("bBetter").get<int>(),
                                      line.at("same").get<int>()};
        for (size_t i = 0; i < more.size(); ++i)
            counts[i] = std::min(counts[i] + std::clamp(more[i], 0, kMostChoices), kMostChoices);
    }

    PastRuns past_;
    std::map<uint64_t, size_t> places_;            // of runs, by their numbers
    std::map<std::string, std::string> profiles_;  // bytes by hash
};

}  // namespace

std::string RunLine(const PastRun& run, bool withProfile) {
    const HistoryRow& row = run.row;
    Json line = {{"kind", "run"},
                 {"id", row.id},
                 {"when", row.when},
                 {"frame", run.frameName},
                 {"section", row.desk.section},
                 {"change", row.change},
                 {"sha256", row.hash},
                 {"elapsedMs", row.elapsedMs},
                 {"off", row.desk.offKeys},
                 {"stages", StagesJson(row)},
                 {"profileSha256", Sha256Of(row.desk.bytes)}};
    if (withProfile) line["profile"] = Base64Of(row.desk.bytes);
    if (row.picture != nullptr)
        line["picture"] = {{"width", row.picture->width},
                           {"height", row.picture->height},
                           {"grey", EncodeBase64(row.picture->grey)}};
    return LineOf(line);
}

std::string NameLine(uint64_t run, const std::string& name) {
    return LineOf({{"kind", "name"}, {"id", run}, {"name", name}});
}

std::string PinLine(std::optional<uint64_t> run, bool isA) {
    return LineOf({{"kind", "pin"}, {"side", isA ? "A" : "B"}, {"id", run ? Json(*run) : Json(nullptr)}});
}

std::string ChoiceLine(std::pair<uint64_t, uint64_t> pair, const std::array<int, 3>& counts) {
    return LineOf({{"kind", "choice"},
                   {"a", pair.first},
                   {"b", pair.second},
                   {"aBetter", counts[0]},
                   {"bBetter", counts[1]},
                   {"same", counts[2]}});
}

PastRuns ReadHistoryLines(std::string_view text) {
    LineReader reader;
    // What stands behind the last line end is a line that somebody could not finish.
    for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        const Json line = Json::parse(text.substr(0, end), nullptr, false);
        text.remove_prefix(end + 1);
        try {
            if (line.is_object()) reader.Read(line);
        } catch (const Json::exception&) {
            continue;  // somebody else's, or of a newer tool
        }
    }
    return reader.Take();
}

std::string WriteHistoryLines(const PastRuns& past, size_t mostRuns) {
    std::string text;
    std::set<uint64_t> kept;
    const std::string* before = nullptr;
    for (size_t i = past.runs.size() - std::min(mostRuns, past.runs.size()); i < past.runs.size(); ++i) {
        const PastRun& run = past.runs[i];
        text += RunLine(run, before == nullptr || *before != run.row.desk.bytes);
        if (!run.row.name.empty()) text += NameLine(run.row.id, run.row.name);
        before = &run.row.desk.bytes;
        kept.insert(run.row.id);
    }
    if (past.pinnedA && kept.contains(*past.pinnedA)) text += PinLine(past.pinnedA, true);
    if (past.pinnedB && kept.contains(*past.pinnedB)) text += PinLine(past.pinnedB, false);
    for (const auto& [pair, counts] : past.choices)
        if (kept.contains(pair.first) && kept.contains(pair.second)) text += ChoiceLine(pair, counts);
    return text;
}

}  // namespace vastrelline
