// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "config/SensorSettings.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// A folder of sensor profiles for one test, empty at first, in place of the machine's own. The machine's
// returns when the object goes.
class SensorRoot {
public:
    SensorRoot() : before_(SetSensorProfileRoot(folder_.Path().wstring())) {}
    ~SensorRoot() { SetSensorProfileRoot(std::move(before_)); }
    SensorRoot(const SensorRoot&) = delete;
    SensorRoot& operator=(const SensorRoot&) = delete;

    // The profile for all sensors.
    std::filesystem::path PlainFile() const { return folder_.Path() / "Brindmap.ini"; }
    void WritePlain(std::string_view text) const { WriteBytes(PlainFile(), text); }

    // The profile of one sensor.
    std::filesystem::path SensorFile(std::string_view sensor) const {
        return folder_.Path() / "MultiSensor" / sensor / "Brindmap.ini";
    }
    void WriteSensor(std::string_view sensor, std::string_view text) const {
        std::filesystem::create_directories(SensorFile(sensor).parent_path());
        WriteBytes(SensorFile(sensor), text);
    }

private:
    TemporaryFolder folder_;
    std::wstring before_;
};

}  // namespace vastrelline
