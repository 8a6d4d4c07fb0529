// SPDX-License-Identifier: Apache-2.0
#include "files/OutputFile.h"

#include <charconv>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include "files/FollowLinks.h"
#include "messages/ToolError.h"
#include "platform/FileSteps.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr int kNameAttempts = 100;
constexpr std::string_view kDraftMark = ".v";

OutputError CannotWrite(const std::string& path, const std::error_code& reason) {
    return {path, "cannot be written: " + DescribeReason(reason)};
}

OutputError AlreadyThere(const std::string& path) { return {path, "exists already", "--force replaces it"}; }

void TestTarget(const std::string& path, bool mayReplace) {
    std::error_code error;
    const fs::file_status status = fs::status(PathOf(path), error);
    if (status.type() == fs::file_type::not_found) return;
    if (fs::is_directory(status)) throw OutputError(path, "is a folder, not a file");
    if (error) throw CannotWrite(path, error);
    // A device that is replaced by a rename is gone for everyone.
    if (!fs::is_regular_file(status)) throw OutputError(path, "is not a regular file");
    if (!mayReplace) throw AlreadyThere(path);
}

}  // namespace

OutputFile::OutputFile(const std::string& path, bool mayReplace)
    : shownPath_(path), path_(FollowLinks(path)), mayReplace_(mayReplace) {
    if (path.empty() || PathOf(path).filename().empty()) throw OutputError(path, "names no file");
    TestTarget(path, mayReplace);
    const fs::path wanted = PathOf(path_);
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        // Short, so that a path that just fits does not grow too long.
        const std::string leaf = std::string(kDraftMark) + std::to_string(OwnProcessNumber()) + "-" +
                                 std::to_string(attempt) + wanted.extension().string();
        const std::string candidate = (wanted.parent_path() / PathOf(leaf)).string();
        const std::error_code reason = MakeNewFile(candidate);
        if (!reason) {
            draftPath_ = candidate;
            return;
        }
        if (reason != std::errc::file_exists) throw CannotWrite(path, reason);
    }
    throw CannotWrite(path, std::make_error_code(std::errc::file_exists));
}

OutputFile::~OutputFile() {
    std::error_code ignored;
    if (!isPublished_) fs::remove(PathOf(draftPath_), ignored);
}

void OutputFile::Write(const std::vector<uint8_t>& bytes) {
    if (const std::error_code reason = WriteContent(draftPath_, bytes)) throw CannotWrite(shownPath_, reason);
}

void OutputFile::Publish() {
    if (const std::error_code reason = FlushToDisk(draftPath_)) throw CannotWrite(shownPath_, reason);
    std::error_code reason;
    if (mayReplace_) {
        reason = MoveOver(draftPath_, path_);
    } else {
        // One step, so that a file that came up meanwhile is not lost.
        reason = MoveToFreeName(draftPath_, path_);
        if (reason == std::errc::file_exists) throw AlreadyThere(shownPath_);
        if (reason == std::errc::not_supported) {
            TestTarget(shownPath_, mayReplace_);
            reason = MoveOver(draftPath_, path_);
        }
    }
    if (reason) throw CannotWrite(shownPath_, reason);
    isPublished_ = true;
}

std::optional<ProcessNumber> WriterOfDraft(std::string_view leaf) {
    if (!leaf.starts_with(kDraftMark)) return std::nullopt;
    leaf.remove_prefix(kDraftMark.size());
    ProcessNumber process = 0;
    const auto [end, error] = std::from_chars(leaf.data(), leaf.data() + leaf.size(), process);
    leaf.remove_prefix(static_cast<size_t>(end - leaf.data()));
    if (error != std::errc() || process <= 0 || process > kGreatestProcessNumber || !leaf.starts_with('-'))
        return std::nullopt;
    const std::string_view attempt = leaf.substr(1, leaf.find('.') - 1);
    const bool isNumber =
        !attempt.empty() && attempt.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? std::optional(process) : std::nullopt;
}

}  // namespace vastrelline
