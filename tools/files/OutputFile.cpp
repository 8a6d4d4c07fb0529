// SPDX-License-Identifier: Apache-2.0
#include "files/OutputFile.h"

#include <fcntl.h>
#include <stdio.h>  // renameat2 is no part of <cstdio>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include "files/FollowLinks.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away what new files must not have
constexpr int kNameAttempts = 100;
constexpr std::string_view kDraftMark = ".v";

OutputError CannotWrite(const std::string& path, int reason) {
    return {path, "cannot be written: " + std::generic_category().message(reason)};
}

OutputError AlreadyThere(const std::string& path) { return {path, "exists already", "--force replaces it"}; }

void TestTarget(const std::string& path, bool mayReplace) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) return;
    if (fs::is_directory(status)) throw OutputError(path, "is a folder, not a file");
    if (error) throw OutputError(path, "cannot be written: " + error.message());
    // A device that is replaced by a rename is gone for everyone.
    if (!fs::is_regular_file(status)) throw OutputError(path, "is not a regular file");
    if (!mayReplace) throw AlreadyThere(path);
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Number() const { return number_; }

private:
    int number_;
};

}  // namespace

OutputFile::OutputFile(const std::string& path, bool mayReplace)
    : shownPath_(path), path_(FollowLinks(path)), mayReplace_(mayReplace) {
    if (path.empty() || fs::path(path).filename().empty()) throw OutputError(path, "names no file");
    TestTarget(path, mayReplace);
    const fs::path wanted(path_);
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        // Short, so that a path that just fits does not grow too long.
        const std::string leaf = std::string(kDraftMark) + std::to_string(getpid()) + "-" +
                                 std::to_string(attempt) + wanted.extension().string();
        const std::string candidate = (wanted.parent_path() / leaf).string();
        const Descriptor file(open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
        if (file.Number() >= 0) {
            draftPath_ = candidate;
            return;
        }
        if (errno != EEXIST) throw CannotWrite(path, errno);
    }
    throw CannotWrite(path, EEXIST);
}

OutputFile::~OutputFile() {
    if (!isPublished_) unlink(draftPath_.c_str());
}

void OutputFile::Write(const std::vector<uint8_t>& bytes) {
    const Descriptor file(open(draftPath_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (file.Number() < 0) throw CannotWrite(shownPath_, errno);
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = write(file.Number(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) throw CannotWrite(shownPath_, count == 0 ? ENOSPC : errno);
        done += static_cast<size_t>(count);
    }
}

void OutputFile::Publish() {
    {
        const Descriptor file(open(draftPath_.c_str(), O_RDONLY | O_CLOEXEC));
        if (file.Number() < 0) throw CannotWrite(shownPath_, errno);
        if (fsync(file.Number()) != 0) throw CannotWrite(shownPath_, errno);
    }
    if (!mayReplace_) {
        // One step, so that a file that came up meanwhile is not lost.
        if (renameat2(AT_FDCWD, draftPath_.c_str(), AT_FDCWD, path_.c_str(), RENAME_NOREPLACE) == 0) {
            isPublished_ = true;
            return;
        }
        if (errno == EEXIST) throw AlreadyThere(shownPath_);
        if (errno != EINVAL && errno != ENOSYS) throw CannotWrite(shownPath_, errno);
        // This file system cannot do it in one step.
        TestTarget(shownPath_, mayReplace_);
    } else {
        struct stat old = {};
        if (stat(path_.c_str(), &old) == 0) chmod(draftPath_.c_str(), old.st_mode & 07777);
    }
    if (rename(draftPath_.c_str(), path_.c_str()) != 0) throw CannotWrite(shownPath_, errno);
    isPublished_ = true;
}

std::optional<pid_t> WriterOfDraft(std::string_view leaf) {
    if (!leaf.starts_with(kDraftMark)) return std::nullopt;
    leaf.remove_prefix(kDraftMark.size());
    pid_t process = 0;
    const auto [end, error] = std::from_chars(leaf.data(), leaf.data() + leaf.size(), process);
    leaf.remove_prefix(static_cast<size_t>(end - leaf.data()));
    if (error != std::errc() || process <= 0 || !leaf.starts_with('-')) return std::nullopt;
    const std::string_view attempt = leaf.substr(1, leaf.find('.') - 1);
    const bool isNumber =
        !attempt.empty() && attempt.find_first_not_of("0123456789") == std::string_view::npos;
    return isNumber ? std::optional(process) : std::nullopt;
}

}  // namespace vastrelline
