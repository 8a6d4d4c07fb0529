// SPDX-License-Identifier: Apache-2.0
#include "provenance/RunRecord.h"

#include <exception>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "completion/ShellQuote.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kHashLetters = 64;
constexpr size_t kGeometryNumbers = 10;

Json FileJson(const std::string& path) {
    Json json = Json::object();
    if (!path.empty()) json["file"] = path;
    return json;
}

std::string HashOf(const Json& json) {
    auto hash = json.at("sha256").get<std::string>();
    if (hash.size() != kHashLetters) throw std::out_of_range("a hash is cut");
    if (hash.find_first_not_of("0123456789abcdef") != std::string::npos)
        throw std::out_of_range("a hash has other letters");
    return hash;
}

// What does not fit would be read as another number, and the record would tell of another run.
int32_t IntegerOf(const Json& json) {
    const bool fits = json.is_number_unsigned()  ? std::in_range<int32_t>(json.get<uint64_t>())
                      : json.is_number_integer() ? std::in_range<int32_t>(json.get<int64_t>())
                                                 : false;
    if (!fits) throw std::out_of_range("a number is none of 32 bits");
    return json.get<int32_t>();
}

RunRecord FromJson(const Json& json) {
    RunRecord record;
    record.version = json.at("version");
    record.libraryHash = HashOf(json.at("library"));
    const Json& frame = json.at("frame");
    record.framePath = frame.value("file", std::string());
    record.frameSize = {IntegerOf(frame.at("width")), IntegerOf(frame.at("height"))};
    record.frameHash = HashOf(frame);
    const Json& profile = json.at("profile");
    record.profilePath = profile.value("file", std::string());
    record.profileHash = HashOf(profile);
    if (!json.at("sensorProfile").is_null()) record.sensorHash = HashOf(json["sensorProfile"]);
    record.section = json.at("section");
    record.exportName = json.at("export");
    const Json& options = json.at("options");
    record.applyMapping = options.at("mapping");
    record.applySpotCorrection = options.at("spotCorrection");
    for (const Json& number : options.at("geometry")) record.geometry.push_back(IntegerOf(number));
    if (!record.geometry.empty() && record.geometry.size() != kGeometryNumbers)
        throw std::out_of_range("the geometry has ten numbers");
    const Json& sensor = options.at("sensor");
    record.hasSensor = !sensor.is_null();
    if (record.hasSensor) {
        record.sensorFolder = sensor.at("folder");
        record.sensorMode = IntegerOf(sensor.at("mode"));
    }
    const Json& window = json.at("window");
    if (!window.is_null())
        record.window = GreyWindow{IntegerOf(window.at("low")), IntegerOf(window.at("high"))};
    record.resultHash = HashOf(json.at("result"));
    if (!IsUsableSize(record.frameSize)) throw std::out_of_range("the frame has no usable size");
    if (record.window && record.window->low >= record.window->high)
        throw std::out_of_range("the window is none");
    return record;
}

}  // namespace

std::string CommandOf(const RunRecord& record) {
    std::ostringstream text;
    text << "vastrelline run FRAME --profile PROFILE --section " << QuoteForShell(record.section)
         << " --export " << record.exportName;
    if (record.applyMapping) text << " --mapping";
    if (record.applySpotCorrection) text << " --spot-correction";
    for (size_t i = 0; i < record.geometry.size(); ++i)
        text << (i == 0 ? " --geometry " : ",") << record.geometry[i];
    if (record.hasSensor) {
        if (!record.sensorFolder.empty()) text << " --sensor-folder " << QuoteForShell(record.sensorFolder);
        text << " --sensor-mode " << record.sensorMode;
    }
    return text.str();
}

nlohmann::ordered_json RecordToJson(const RunRecord& record) {
    Json frame = FileJson(record.framePath);
    frame.update({{"width", record.frameSize.width},
                  {"height", record.frameSize.height},
                  {"sha256", record.frameHash}});
    Json profile = FileJson(record.profilePath);
    profile["sha256"] = record.profileHash;
    Json sensor = nullptr;
    if (record.hasSensor) sensor = {{"folder", record.sensorFolder}, {"mode", record.sensorMode}};
    Json window = nullptr;
    if (record.window) window = {{"low", record.window->low}, {"high", record.window->high}};
    Json sensorProfile = nullptr;
    if (!record.sensorHash.empty()) sensorProfile = {{"sha256", record.sensorHash}};
    return {{"version", record.version},
            {"library", {{"sha256", record.libraryHash}}},
            {"command", CommandOf(record)},
            {"frame", std::move(frame)},
            {"profile", std::move(profile)},
            {"sensorProfile", std::move(sensorProfile)},
            {"section", record.section},
            {"export", record.exportName},
            {"options",
             {{"mapping", record.applyMapping},
              {"spotCorrection", record.applySpotCorrection},
              {"geometry", record.geometry},
              {"sensor", std::move(sensor)}}},
            {"window", std::move(window)},
            {"result", {{"sha256", record.resultHash}}}};
}

std::string RecordToLine(const RunRecord& record) {
    RunRecord nameless = record;
    nameless.framePath.clear();
    nameless.profilePath.clear();
    return RecordToJson(nameless).dump(-1, ' ', true, Json::error_handler_t::replace);
}

RunRecord ReadRecord(const std::string& text, const std::string& where) {
    try {
        const Json json = Json::parse(text);
        return FromJson(json.contains("record") ? json["record"] : json);
    } catch (const std::exception&) {
        throw InputError(where, "holds no record of a run",
                         "name what 'vastrelline run --record' wrote, or a PNG of run or batch");
    }
}

}  // namespace vastrelline
