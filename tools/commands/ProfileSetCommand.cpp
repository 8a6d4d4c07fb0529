// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileSetCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "commands/JsonObject.h"
#include "lint/ProfileSetting.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/ProfileStore.h"
#include "profile_text/CaseFolding.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

ProfileValue ParseSetting(const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == 0 || equals == std::string::npos)
        throw UsageError("'" + text + "' sets nothing", "write KEY=VALUE");
    return {DecodeUtf8(text.substr(0, equals)), DecodeUtf8(text.substr(equals + 1))};
}

std::vector<ProfileValue> ParseSettings(const std::vector<std::string>& texts) {
    std::vector<ProfileValue> values;
    for (const std::string& text : texts) {
        ProfileValue value = ParseSetting(text);
        for (const ProfileValue& other : values)
            if (EqualFolded(TrimName(other.key), TrimName(value.key)))
                throw UsageError("'" + EncodeUtf8(value.key) + "' is set twice", "say it once");
        values.push_back(std::move(value));
    }
    return values;
}

std::string DescribeLine(const std::string& path, const SetLine& line) {
    std::string text = path + ":" + std::to_string(line.line) + ": " + line.key;
    if (!line.old) return text + "=" + line.value + " (new)";
    if (!line.isChanged) return text + "=" + line.value + " (as it was)";
    return text + "=" + line.value + " (was " + (line.old->empty() ? "empty" : *line.old) + ")";
}

nlohmann::ordered_json ToJson(const std::string& path, const std::string& section,
                              const ProfileSetting& setting) {
    nlohmann::ordered_json json = {{"file", path}, {"section", section}, {"lines", nlohmann::json::array()}};
    for (const SetLine& line : setting.lines) {
        nlohmann::ordered_json each = {
            {"key", line.key}, {"line", line.line}, {"value", line.value}, {"changed", line.isChanged}};
        if (line.old) each["old"] = *line.old;
        json["lines"].push_back(std::move(each));
    }
    return json;
}

}  // namespace

std::string_view ProfileSetCommand::Examples() const {
    return "  vastrelline profile set dental.ini 04_MAX_SLOPE=1.8 --section General\n"
           "  vastrelline profile set dental.ini FunctionCount=6 05_Function_Number=7 --section General\n"
           "  vastrelline profile set dental.ini PROCMODE=2 --section Night --new-section\n";
}

std::string_view ProfileSetCommand::Notes() const {
    return "A value is replaced in its place; a new key comes behind the section's last line. Comments, "
           "blanks,\n"
           "encoding and line ends stay. A key that no run of the section reads is refused.\n";
}

void ProfileSetCommand::AddOptions(CLI::App& command) {
    command.add_option("FILE", file_, "The profile")->required()->type_name("");
    command.add_option("KEY=VALUE", settings_, "A key and its value, or several")->required()->type_name("");
    command.add_option("--section", section_, "The section that they stand in")
        ->required()
        ->type_name("NAME");
    command.add_flag("--force-key", isKeyForced_, "Set the key although no run reads it");
    command.add_flag("--new-section", isSectionNew_, "Begin the section if the profile lacks it");
}

ExitCode ProfileSetCommand::Execute(CommandContext& context) {
    const std::vector<ProfileValue> values = ParseSettings(settings_);
    const ProfileFile file = ProfileFile::Read(file_);
    if (file.FindSection(section_) == nullptr && !isSectionNew_)
        throw ToolError(ExitCode::WrongUse, file_, "has no section '" + section_ + "'",
                        DidYouMean(section_, file.SectionNames(), "--new-section begins it"));
    const ProfileSetting setting = SetInProfile(file, section_, values);
    for (const LintFinding& each : setting.findings) context.messages.Show(each.finding);
    if (!setting.areAllRead && !isKeyForced_)
        throw UsageError("nothing was set, for a key is read by no run", "--force-key sets it all the same");
    if (setting.bytes != file.Text().Bytes()) ReplaceProfileFile(file_, file.Text().Bytes(), setting.bytes);
    if (context.wantsJson) {
        PrintObject(context, ExitCode::Well, ToJson(file_, section_, setting));
        return ExitCode::Well;
    }
    for (const SetLine& line : setting.lines) context.report << OneLine(DescribeLine(file_, line)) << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline
