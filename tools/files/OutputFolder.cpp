// SPDX-License-Identifier: Apache-2.0
#include "files/OutputFolder.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "files/FollowLinks.h"
#include "files/OutputFile.h"
#include "messages/ToolError.h"
#include "platform/FileSteps.h"
#include "platform/OwnProcess.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr int kNameAttempts = 100;

OutputError CannotMake(const std::string& path, const std::error_code& reason) {
    return {path, "cannot be made: " + DescribeReason(reason)};
}

std::string WithoutSeparators(std::string path) {
    constexpr auto kOwn = static_cast<char>(fs::path::preferred_separator);
    while (path.size() > 1 && (path.back() == '/' || path.back() == kOwn)) path.pop_back();
    return path;
}

// A name of our own beside the wanted one.
std::string DraftName(const std::string& path, int attempt) {
    std::string leaf = ".v";
    leaf.append(std::to_string(OwnProcessNumber())).append("-").append(std::to_string(attempt));
    return (PathOf(path).parent_path() / PathOf(leaf)).string();
}

std::string ReadText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The files that an index names as those of its folder. Other texts in it count for nothing: the frame of the
// run may have been put into the folder since.
std::set<std::string> ReadOwnLeaves(const fs::path& index) {
    constexpr std::string_view kFields[] = {"picture", "contactSheet", "table", "before", "after", "curve"};
    std::error_code error;
    if (!fs::is_regular_file(index, error)) return {};
    std::set<std::string> leaves;
    bool isLeaf = false;
    const auto take = [&](int /*depth*/, nlohmann::json::parse_event_t event, const nlohmann::json& parsed) {
        if (event == nlohmann::json::parse_event_t::key)
            isLeaf = std::find(std::begin(kFields), std::end(kFields), parsed.get<std::string>()) !=
                     std::end(kFields);
        else if (event == nlohmann::json::parse_event_t::value && isLeaf && parsed.is_string())
            leaves.insert(parsed.get<std::string>());
        return true;
    };
    const bool isWhole = !nlohmann::json::parse(ReadText(index), take, false).is_discarded();
    return isWhole ? leaves : std::set<std::string>();
}

// What of a folder its index does not name: somebody else's, who wants to keep it.
std::string FindStranger(const fs::path& folder, const std::string& index) {
    const std::set<std::string> named = ReadOwnLeaves(folder / PathOf(index));
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string leaf = entry.path().filename().string();
        const bool isOurs = leaf == index || named.contains(leaf);
        if (!isOurs || !entry.is_regular_file(error)) return leaf;
    }
    return {};
}

void TestTarget(const std::string& path, const std::string& index, bool mayReplace) {
    std::error_code error;
    const fs::file_status status = fs::status(PathOf(path), error);
    if (status.type() == fs::file_type::not_found) return;
    if (status.type() == fs::file_type::none) throw CannotMake(path, error);
    if (!fs::is_directory(status)) throw OutputError(path, "is a file, not a folder");
    if (!mayReplace)
        throw OutputError(path, "exists already", "--force replaces a folder that this command made");
    const std::string stranger = FindStranger(PathOf(path), index);
    if (!stranger.empty())
        throw OutputError(path, "holds '" + stranger + "', which this command did not make",
                          "name another folder");
}

}  // namespace

OutputFolder::OutputFolder(const std::string& path, std::string index, bool mayReplace)
    : path_(FollowLinks(WithoutSeparators(path))), index_(std::move(index)), mayReplace_(mayReplace) {
    const fs::path wanted = PathOf(path_);
    const std::string leaf = wanted.filename().string();
    if (leaf.empty() || leaf == "." || leaf == "..") throw OutputError(path, "names no folder of its own");
    TestTarget(path_, index_, mayReplace_);
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        const std::string candidate = DraftName(path_, attempt);
        std::error_code reason;
        if (fs::create_directory(PathOf(candidate), reason)) {
            draftPath_ = candidate;
            return;
        }
        if (reason) throw CannotMake(path_, reason);
    }
    throw CannotMake(path_, std::make_error_code(std::errc::file_exists));
}

OutputFolder::~OutputFolder() {
    std::error_code ignored;
    if (!draftPath_.empty()) fs::remove_all(PathOf(draftPath_), ignored);
}

void OutputFolder::Write(std::string_view leaf, std::string_view bytes) {
    OutputFile file((PathOf(draftPath_) / PathOf(leaf)).string(), false);
    file.Write({bytes.begin(), bytes.end()});
    file.Publish();
}

void OutputFolder::Publish() {
    std::error_code reason = MoveToFreeName(draftPath_, path_);
    if (!reason) {
        draftPath_.clear();
        return;
    }
    if (reason != std::errc::file_exists && reason != std::errc::not_supported)
        throw CannotMake(path_, reason);
    TestTarget(path_, index_, mayReplace_);  // it may have come up, or have changed, meanwhile
    // In one step where the file system can do it; the older folder then goes with the draft's name.
    if (!ExchangeNames(draftPath_, path_)) return;
    // Otherwise the older folder steps aside, and comes back where the new one cannot take its place.
    const std::string older = StepAside();
    if ((reason = MoveToFreeName(draftPath_, path_))) {
        MoveToFreeName(older, path_);
        throw CannotMake(path_, reason);
    }
    draftPath_ = older;
}

// Gives the folder that has the wanted name another one beside it.
std::string OutputFolder::StepAside() const {
    std::error_code reason;
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        const std::string candidate = DraftName(path_, attempt);
        std::error_code ignored;
        if (fs::exists(fs::symlink_status(PathOf(candidate), ignored))) continue;
        reason = MoveToFreeName(path_, candidate);
        if (reason == std::errc::not_supported) reason = MoveOver(path_, candidate);
        if (!reason) return candidate;
        if (reason != std::errc::file_exists) break;
    }
    throw CannotMake(path_, reason);
}

}  // namespace vastrelline
