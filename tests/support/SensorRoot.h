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
    void WritePlain(std::string_view text) const { WriteBytes(folder_.Path() / "Brindmap.ini", text); }

    // The profile of one sensor.
    void WriteSensor(std::string_view sensor, std::string_view text) const {
        const std::filesystem::path folder = folder_.Path() / "MultiSensor" / sensor;
        std::filesystem::create_directories(folder);
        WriteBytes(folder / "Brindmap.ini", text);
    }

private:
    TemporaryFolder folder_;
    std::wstring before_;
};

}  // namespace vastrelline
