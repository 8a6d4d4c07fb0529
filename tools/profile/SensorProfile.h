// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace vastrelline {

// The sensor's own profile: a run of the configured family takes ten values from it, so that a result depends
// on it as it depends on the profile that the user names.

// The folder that the library looks in; fixed when both are built.
std::string SensorProfileFolder();

// SHA-256 of the sensor's profile that a call reads; nothing if there is none.
//
// folder   that holds it and the MultiSensor folder
// sensor   name of the sensor that the call gives; empty: SerialId of the plain profile, or that itself
// Errors   InputError for one that is there and cannot be read
std::optional<std::string> HashSensorProfile(const std::string& folder, const std::string& sensor);

}  // namespace vastrelline
