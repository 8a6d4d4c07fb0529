// SPDX-License-Identifier: Apache-2.0
#include "runs/PrivateProfile.h"

#include <cstdint>
#include <filesystem>
#include <vector>

#include "files/InputFile.h"
#include "files/WholeWrite.h"
#include "messages/ToolError.h"
#include "platform/PathText.h"
#include "profile_text/ProfileEdit.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr uint64_t kMaxLogBytes = uint64_t{64} << 20;

// The original's name, for messages of the library; unless a backslash in it would be taken for a separator,
// or the log would be written into the copy.
std::string LeafOf(const std::string& path) {
    const std::string leaf = PathOf(path).filename().string();
    const bool isUsable = !leaf.empty() && leaf != kLogLeaf && leaf.find('\\') == std::string::npos;
    return isUsable ? leaf : "profile.ini";
}

}  // namespace

PrivateProfile::PrivateProfile(const ProfileFile& original, std::string_view section,
                               std::span<const KeyEdit> edits) {
    std::string bytes = original.Text().Bytes();
    for (const KeyEdit& edit : edits)
        EditProfile(bytes, DecodeUtf8(section).c_str(), DecodeUtf8(edit.key).c_str(),
                    DecodeUtf8(edit.value).c_str());
    path_ = folder_.Inside(LeafOf(original.Path()));
    WriteWhole(path_, bytes);
}

std::string PrivateProfile::ReadLog() const { return ReadLogBeside(path_); }

std::string ReadLogBeside(const std::string& profilePath) {
    const std::string path = (PathOf(profilePath).parent_path() / kLogLeaf).string();
    try {
        const std::vector<uint8_t> bytes = ReadInputFile(path, kMaxLogBytes);
        return {bytes.begin(), bytes.end()};
    } catch (const InputError&) {
        return {};
    }
}

}  // namespace vastrelline
