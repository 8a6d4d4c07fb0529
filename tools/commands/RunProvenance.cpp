// SPDX-License-Identifier: Apache-2.0
#include "commands/RunProvenance.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "commands/JsonObject.h"
#include "files/Sha256.h"
#include "formats/RawFormat.h"
#include "library/LibraryFile.h"
#include "platform/PathText.h"
#include "profile/SensorProfile.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// As it is found from a folder; standard input is not found again.
std::string PathFrom(const fs::path& folder, const std::string& path) {
    if (path.empty() || path == kStandardInput) return {};
    std::error_code error;
    const fs::path relative = fs::relative(fs::absolute(PathOf(path)), folder, error);
    return error || relative.empty() ? fs::absolute(PathOf(path)).generic_string()
                                     : relative.generic_string();
}

}  // namespace

const std::string& LibraryHash() {
    static const std::string hash = Sha256OfFile(LibraryFile());
    return hash;
}

std::string SensorHashOf(const SectionPlan& plan, const std::string& sensorFolder) {
    if (plan.chain == ChainKind::Fixed || plan.chain == ChainKind::Cr) return {};
    return HashSensorProfile(SensorProfileFolder(), sensorFolder).value_or("");
}

RunRecord MakeRunRecord(const RunSettings& settings, const Frame& frame, const Frame& result,
                        const std::optional<GreyWindow>& window) {
    const RunOptions& options = settings.options;
    RunRecord record;
    record.version = VASTRELLINE_VERSION;
    record.libraryHash = LibraryHash();
    record.framePath = options.frame;
    record.profilePath = settings.profile.Path();
    record.frameSize = {frame.width, frame.height};
    record.frameHash = Sha256Of(EncodeRaw(frame));
    record.profileHash = Sha256Of(std::string(settings.profile.Text().Bytes()));
    record.sensorHash = SensorHashOf(settings.plan, options.sensorFolder);
    record.section = settings.plan.section;
    record.exportName = settings.traits.name;
    record.applyMapping = options.applyMapping;
    record.applySpotCorrection = options.applySpotCorrection;
    record.geometry = options.geometry;
    record.hasSensor = options.hasSensor;
    record.sensorFolder = options.sensorFolder;
    record.sensorMode = options.sensorMode;
    record.window = window;
    record.resultHash = Sha256Of(EncodeRaw(result));
    return record;
}

RunRecord RecordInFile(RunRecord record, const std::string& path) {
    std::error_code error;
    const fs::path folder = fs::absolute(PathOf(path), error).parent_path();
    record.framePath = PathFrom(folder, record.framePath);
    record.profilePath = PathFrom(folder, record.profilePath);
    return record;
}

std::string RecordFileText(const RunRecord& record, const std::string& path, const std::string& command) {
    std::ostringstream text;
    PrintObject(text, command, ExitCode::Well, {{"record", RecordToJson(RecordInFile(record, path))}});
    return text.str();
}

std::vector<PngText> RecordTexts(const RunRecord& record) {
    return {{"Software", "vastrelline " + record.version}, {kRecordKeyword, RecordToLine(record)}};
}

}  // namespace vastrelline
