// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchManifest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>
#include <vector>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away what new files must not have

OutputError CannotWrite(const std::string& path, int reason) {
    return {path, "cannot be written: " + std::generic_category().message(reason)};
}

// Paths need not be UTF-8, and JSON must be. Different paths give different texts.
std::string PlainText(const std::string& path) {
    bool isUtf8 = true;
    try {
        static_cast<void>(Json(path).dump());
    } catch (const Json::exception&) {
        isUtf8 = false;
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\')
            text += "\\\\";
        else if (isUtf8 || byte < 0x80)
            text += c;
        else
            text += std::string("\\x") + kDigits[byte >> 4U] + kDigits[byte & 15U];
    }
    return text;
}

std::string TextOf(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder))
        throw OutputError(folder, error ? "cannot be made: " + error.message() : "is no folder");
}

}  // namespace

BatchManifest::BatchManifest(const std::string& folder, Opening opening, BatchSettings settings)
    : path_((std::filesystem::path(folder) / kManifestLeaf).string()), settings_(std::move(settings)) {
    MakeFolder(folder);
    settings_.section = PlainText(settings_.section);
    settings_.options = PlainText(settings_.options);
    file_ = open(path_.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFileMode);
    if (file_ < 0) throw CannotWrite(path_, errno);
    try {
        // The lock goes with the process, however that ends.
        if (flock(file_, LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK) throw CannotWrite(path_, errno);
            throw OutputError(folder, "another batch works in this folder", "wait for its end");
        }
        if (opening == Opening::New && lseek(file_, 0, SEEK_END) > 0)
            throw OutputError(folder, "holds the results of an earlier batch",
                              "--resume goes on with it, --force begins anew");
        Read();
        if (opening == Opening::Anew)
            for (auto& [result, hashes] : earlier_) hashes.reset();
        Append(Json{{"began", opening == Opening::Anew ? "anew" : "batch"},
                    {"profileSha256", settings_.profileHash},
                    {"section", settings_.section},
                    {"librarySha256", settings_.libraryHash},
                    {"options", settings_.options}}
                   .dump());
    } catch (...) {
        close(file_);
        throw;
    }
}

BatchManifest::~BatchManifest() {
    fsync(file_);
    close(file_);
}

void BatchManifest::Read() {
    constexpr size_t kPieceBytes = size_t{1} << 16;
    std::string line;
    std::vector<char> piece(kPieceBytes);
    for (off_t place = 0;;) {
        const ssize_t count = pread(file_, piece.data(), piece.size(), place);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw CannotWrite(path_, errno);
        if (count == 0) break;
        place += count;
        std::string_view rest(piece.data(), static_cast<size_t>(count));
        for (size_t end = 0; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1)) {
            line += rest.substr(0, end);
            TakeLine(line);
            line.clear();
        }
        line += rest;
    }
    // What follows must not grow together with a line that was cut off.
    if (!line.empty()) Append("");
}

void BatchManifest::TakeLine(const std::string& line) {
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object()) return;
    if (TextOf(object, "began") == "anew")
        for (auto& [result, hashes] : earlier_) hashes.reset();
    if (const std::string announced = TextOf(object, "announced"); !announced.empty())
        earlier_[announced] = std::nullopt;
    const std::string result = TextOf(object, "result");
    if (result.empty()) return;
    const bool isSame = TextOf(object, "profileSha256") == settings_.profileHash &&
                        TextOf(object, "section") == settings_.section &&
                        TextOf(object, "librarySha256") == settings_.libraryHash &&
                        TextOf(object, "options") == settings_.options;
    std::optional<FrameHashes>& hashes = earlier_[result];
    hashes.reset();
    if (isSame) hashes = {TextOf(object, "frameSha256"), TextOf(object, "resultSha256")};
}

bool BatchManifest::IsOwn(const std::string& result) const { return earlier_.contains(PlainText(result)); }

const FrameHashes* BatchManifest::FindDone(const std::string& result) const {
    const auto found = earlier_.find(PlainText(result));
    return found == earlier_.end() || !found->second ? nullptr : &*found->second;
}

void BatchManifest::Announce(const std::string& result) {
    Append(Json{{"announced", PlainText(result)}}.dump());
}

void BatchManifest::TellDone(const std::string& result, const std::string& frame, const FrameHashes& hashes) {
    Append(Json{{"result", PlainText(result)},
                {"frame", PlainText(frame)},
                {"frameSha256", hashes.frame},
                {"profileSha256", settings_.profileHash},
                {"section", settings_.section},
                {"librarySha256", settings_.libraryHash},
                {"options", settings_.options},
                {"resultSha256", hashes.result}}
               .dump());
}

void BatchManifest::Append(std::string line) {
    line += '\n';
    const std::lock_guard lock(mutex_);
    for (std::string_view rest = line; !rest.empty();) {
        const ssize_t count = write(file_, rest.data(), rest.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) throw CannotWrite(path_, count == 0 ? ENOSPC : errno);
        rest.remove_prefix(static_cast<size_t>(count));
    }
}

}  // namespace vastrelline
