// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "support/ProfileWriter.h"
#include "support/SensorRoot.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// A folder with a profile and the files that runs leave in it, beside a machine without a sensor profile and
// without a person who reads messages.
class ProfileFolder {
public:
    // A profile as runs without a sensor profile leave it, so that the next one has nothing to write: what
    // the sensor does not tell has its default in "Settings".
    static ProfileWriter SettledProfile() {
        ProfileWriter writer;
        writer.Section("Settings");
        for (const char* key : {"ImgCutLeft", "ImgCutTop", "ImgCutRight", "ImgCutBottom", "Rotation", "Flip"})
            writer.Key(key, "0");
        for (const char* key : {"RCCutOff", "RCCutOffR"}) writer.Key(key, "159");
        for (const char* key : {"FrameWidth", "FrameHeight"}) writer.Key(key, "0");
        return writer;
    }

    // A settled profile with a section "General" that leaves a frame of up to 65535 as it is: no stage, no
    // cap, no corners, no inversion.
    static ProfileWriter PlainSection() {
        ProfileWriter writer = SettledProfile();
        writer.Section("General")
            .Key("PROCMODE", "2")
            .Key("BITSTORED", "16")
            .Key("SATURATION_VALUE", "65536")
            .Key("INTRAORAL_MASK", "0")
            .Key("INVERSE_INTENSITY", "0");
        return writer;
    }

    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::string Profile() const { return folder_.Narrow("profile.ini"); }
    std::wstring WideProfile() const { return folder_.Wide(L"profile.ini"); }
    std::string Narrow(std::string_view name) const { return folder_.Narrow(name); }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    std::string Log() const { return ReadBytes(At("ExtraOralLog.txt")); }

    // The names of everything in the folder but the profile.
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            if (entry.path().filename() != "profile.ini") names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    const SensorRoot& Sensor() const { return sensor_; }

private:
    TemporaryFolder folder_;
    SensorRoot sensor_;
    ShownMessages messages_;
};

// The name of a dump that is to come, `steps` dumps from now. Dump numbers rise over the whole process, so a
// test reads the number and expects none of its own.
inline std::string ComingDump(int32_t steps, const std::string& name) {
    char number[16] = {};
    std::snprintf(number, sizeof number, "%02d_", SharedConfiguredState().DumpNumber + steps);
    return number + name;
}

// A frame as the bytes of a raw file, low byte first.
inline std::string RawBytes(const std::vector<uint16_t>& pixels) {
    std::string bytes;
    for (const uint16_t pixel : pixels) {
        bytes += static_cast<char>(pixel & 0xFFU);
        bytes += static_cast<char>(pixel >> 8U);
    }
    return bytes;
}

}  // namespace vastrelline
