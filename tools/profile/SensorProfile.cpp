// SPDX-License-Identifier: Apache-2.0
#include "profile/SensorProfile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "files/Sha256.h"
#include "keys/KeyTable.h"
#include "platform/PathText.h"
#include "profile/ProfileFile.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLeaf = "Brindmap.ini";

std::optional<ProfileFile> ReadIfThere(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) return std::nullopt;
    return ProfileFile::Read(path.string());
}

// The library takes both kinds of separators.
fs::path ProfileOf(const std::string& folder, std::string sensor) {
    std::replace(sensor.begin(), sensor.end(), '\\', '/');
    return PathOf(folder) / "MultiSensor" / PathOf(sensor) / kLeaf;
}

std::string SerialOf(const ProfileFile& plain) {
    const ProfileEntry* const entry = plain.FindEntry(kSensorSectionName, "SerialId");
    return entry == nullptr ? std::string() : EncodeUtf8(plain.ValueOf(*entry).value_or(L""));
}

}  // namespace

std::string SensorProfileFolder() { return VASTRELLINE_SENSOR_ROOT; }

std::optional<std::string> HashSensorProfile(const std::string& folder, const std::string& sensor) {
    std::optional<ProfileFile> profile;
    if (!sensor.empty()) {
        profile = ReadIfThere(ProfileOf(folder, sensor));
    } else {
        profile = ReadIfThere(PathOf(folder) / kLeaf);
        const std::string serial = profile ? SerialOf(*profile) : std::string();
        if (!serial.empty()) profile = ReadIfThere(ProfileOf(folder, serial));
    }
    if (!profile) return std::nullopt;
    return Sha256Of(std::string(profile->Text().Bytes()));
}

}  // namespace vastrelline
