// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "vastrelline.h"

namespace vastrelline {

using ::SensorGeometry;

// The section of a processing profile that holds the sensor's values and the target range, whatever section
// the caller named.
inline constexpr const wchar_t* kSensorSection = L"Settings";

// Settings of the target range normalisation; named as their keys.
struct TargetRangeParams {
    int32_t TargetRange = 0;
    int32_t MinimumValue = 0;
    float MaxCut = 0.0F;
    float MinCut = 0.0F;
};

// Reads the sensor's geometry from the "Settings" section of a processing profile; missing values are a
// geometry of unknown orientation (Rotation and Flip -10, corners of 150 and 170, all else 0).
//
// section   without effect
void ReadSensorGeometry(const std::wstring& iniPath, const std::wstring& section, SensorGeometry& geometry);

// Reads the target range from the "Settings" section of a processing profile.
//
// section   without effect
void ReadTargetRange(const std::wstring& iniPath, const std::wstring& section, TargetRangeParams& params);

// Brings the ten values of the sensor's own profile into the "Settings" section of the processing profile:
// they count from now on for the running call. StoreSensorSettings brings them to the file.
//
// sensorFolder   the folder of the sensor's profile below "MultiSensor"; empty: named by "SerialId" in the
//                plain sensor profile, or the plain profile itself if that names none
// sensorMode     2: the frame has twice the resolution, so corners become 2 * value - 1 and the frame's
//                sides double; any other value has no effect
// Errors         std::runtime_error for a sensor profile that is there and cannot be read. A missing one
//                gives the defaults (corners of 159, all else 0)
void SyncSensorSettings(const std::wstring& iniPath, const std::wstring& sensorFolder, int32_t sensorMode);

// Writes the sensor's values of the running call to the processing profile, all in one replacement, if they
// are not there yet. A profile that cannot be written, or that somebody has changed since the call began,
// stays as it is: the next call tries again.
void StoreSensorSettings(const std::wstring& iniPath);

// The folder that holds the sensor's profiles: fixed when the library is built.
const std::wstring& SensorProfileRoot();

// Replaces that folder, for tests. Returns the one before.
std::wstring SetSensorProfileRoot(std::wstring root);

}  // namespace vastrelline
