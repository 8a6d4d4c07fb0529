// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchManifest.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>
#include <vector>

#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "platform/Reason.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

OutputError CannotWrite(const std::string& path, const std::error_code& reason) {
    return {path, "cannot be written: " + DescribeReason(reason)};
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
    std::filesystem::create_directories(PathOf(folder), error);
    if (!std::filesystem::is_directory(PathOf(folder)))
        throw OutputError(folder, error ? "cannot be made: " + DescribeReason(error) : "is no folder");
}

}  // namespace

BatchManifest::BatchManifest(const std::string& folder, Opening opening, BatchSettings settings)
    : path_((PathOf(folder) / kManifestLeaf).string()), settings_(std::move(settings)) {
    MakeFolder(folder);
    settings_.section = PlainText(settings_.section);
    settings_.options = PlainText(settings_.options);
    if (const std::error_code reason = file_.Open(path_)) throw CannotWrite(path_, reason);
    // The lock goes with the process, however that ends.
    if (const std::error_code reason = file_.Hold()) {
        if (reason != std::errc::resource_unavailable_try_again) throw CannotWrite(path_, reason);
        throw OutputError(folder, "another batch works in this folder", "wait for its end");
    }
    if (opening == Opening::New && !IsEmpty())
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
}

size_t BatchManifest::ReadPiece(uint64_t place, std::span<char> piece) const {
    size_t count = 0;
    if (const std::error_code reason = file_.Read(place, piece, count)) throw CannotWrite(path_, reason);
    return count;
}

bool BatchManifest::IsEmpty() const {
    char first = 0;
    return ReadPiece(0, {&first, 1}) == 0;
}

void BatchManifest::Read() {
    constexpr size_t kPieceBytes = size_t{1} << 16;
    std::string line;
    std::vector<char> piece(kPieceBytes);
    uint64_t place = 0;
    while (const size_t count = ReadPiece(place, piece)) {
        place += count;
        std::string_view rest(piece.data(), count);
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
    if (const std::error_code reason = file_.Append(line)) throw CannotWrite(path_, reason);
}

}  // namespace vastrelline
