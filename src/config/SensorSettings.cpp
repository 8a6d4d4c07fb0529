// SPDX-License-Identifier: Apache-2.0
#include "config/SensorSettings.h"

#include <stdexcept>
#include <utility>

#include "config/CRegistryIO.h"
#include "config/SectionKeys.h"
#include "platform/Text.h"
#include "platform/TextFormat.h"

namespace vastrelline {

namespace {

std::wstring& MutableRoot() {
    static std::wstring root = WidenUtf8Text(VASTRELLINE_SENSOR_ROOT);
    return root;
}

std::wstring FolderProfile(const std::wstring& folder) {
    return SensorProfileRoot() + FormatText(L"\\MultiSensor\\%s\\Brindmap.ini", {folder});
}

// A sensor's profile. One that is missing gives the defaults; one that is there and cannot be read would give
// them too, and with them corners that are not this sensor's.
CRegistryIO OpenSensorProfile(const std::wstring& path) {
    CRegistryIO profile(nullptr, path.c_str(), 1);
    if (profile.State() != ReadResult::Done && profile.State() != ReadResult::Missing)
        throw std::runtime_error("the sensor's profile cannot be read");
    return profile;
}

// The connected sensor's profile.
CRegistryIO FindSensorProfile(const std::wstring& sensorFolder) {
    if (!sensorFolder.empty()) return OpenSensorProfile(FolderProfile(sensorFolder));
    CRegistryIO plain = OpenSensorProfile(SensorProfileRoot() + L"\\Brindmap.ini");
    const std::wstring serialId = plain.ReadProfileString(kSensorSection, L"SerialId", L"");
    return serialId.empty() ? plain : OpenSensorProfile(FolderProfile(serialId));
}

int32_t Doubled(int32_t value) { return static_cast<int32_t>(2 * static_cast<uint32_t>(value)); }

int32_t DoubledCutOff(int32_t value) { return static_cast<int32_t>(2 * static_cast<uint32_t>(value) - 1); }

// One value of the sensor, under the same key in both profiles.
struct SensorKey {
    const wchar_t* key;
    int32_t SensorGeometry::*field;
    int32_t readDefault;  // where a processing profile lacks it
    int32_t syncDefault;  // where the sensor's profile lacks it
};

// In the order in which they are written.
constexpr SensorKey kSensorKeys[] = {
    {L"ImgCutLeft", &SensorGeometry::ImgCutLeft, 0, 0},
    {L"ImgCutTop", &SensorGeometry::ImgCutTop, 0, 0},
    {L"ImgCutRight", &SensorGeometry::ImgCutRight, 0, 0},
    {L"ImgCutBottom", &SensorGeometry::ImgCutBottom, 0, 0},
    {L"Rotation", &SensorGeometry::Rotation, -10, 0},
    {L"Flip", &SensorGeometry::Flip, -10, 0},
    {L"RCCutOff", &SensorGeometry::RCCutOff, 150, 159},
    {L"RCCutOffR", &SensorGeometry::RCCutOffR, 170, 159},
    {L"FrameWidth", &SensorGeometry::FrameWidth, 0, 0},
    {L"FrameHeight", &SensorGeometry::FrameHeight, 0, 0},
};

}  // namespace

const std::wstring& SensorProfileRoot() { return MutableRoot(); }

std::wstring SetSensorProfileRoot(std::wstring root) { return std::exchange(MutableRoot(), std::move(root)); }

void ReadSensorGeometry(const std::wstring& iniPath, const std::wstring& /*section*/,
                        SensorGeometry& geometry) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    for (const SensorKey& key : kSensorKeys) {
        geometry.*key.field = profile.ReadProfileInt(kSensorSection, key.key, key.readDefault);
    }
}

void ReadTargetRange(const std::wstring& iniPath, const std::wstring& /*section*/,
                     TargetRangeParams& params) {
    params = {};
    const SectionKeys keys(iniPath, kSensorSection);
    keys.Read(L"TargetRange", params.TargetRange);
    keys.Read(L"MinimumValue", params.MinimumValue);
    keys.Read(L"MaxCut", params.MaxCut);
    keys.Read(L"MinCut", params.MinCut);
}

void SyncSensorSettings(const std::wstring& iniPath, const std::wstring& sensorFolder, int32_t sensorMode) {
    constexpr int32_t kDoubleResolution = 2;
    const CRegistryIO sensor = FindSensorProfile(sensorFolder);
    SensorGeometry geometry{};
    for (const SensorKey& key : kSensorKeys) {
        geometry.*key.field = sensor.ReadProfileInt(kSensorSection, key.key, key.syncDefault);
    }
    if (sensorMode == kDoubleResolution) {
        geometry.RCCutOff = DoubledCutOff(geometry.RCCutOff);
        geometry.RCCutOffR = DoubledCutOff(geometry.RCCutOffR);
        geometry.FrameWidth = Doubled(geometry.FrameWidth);
        geometry.FrameHeight = Doubled(geometry.FrameHeight);
    }
    const CRegistryIO processing(nullptr, iniPath.c_str(), 1);
    for (const SensorKey& key : kSensorKeys) {
        processing.WriteProfileInt(kSensorSection, key.key, geometry.*key.field);
    }
}

void StoreSensorSettings(const std::wstring& iniPath) {
    // The run has used the values; whether the file takes them too is no part of its result.
    static_cast<void>(CRegistryIO(nullptr, iniPath.c_str(), 1).StoreValues());
}

}  // namespace vastrelline
