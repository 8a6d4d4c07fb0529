// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/FixedSettings.h"
#include "config/FixedState.h"
#include "platform/Files.h"
#include "report/LogFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// What the fixed chain's driver sets up for its stages: the state of a run, a settings record with its
// defaults, log and dumps off, an open log, dump number 5, and a folder for dumps whose name has capitals.
// The state of before returns when the object goes.
class FixedRun {
public:
    FixedRun() : before_(SharedFixedState()) {
        std::filesystem::create_directory(folder_.Path() / "Dumps");
        FixedState& state = SharedFixedState();
        state.IniPath = folder_.Wide(L"profile.ini");
        state.SectionName = L"Molar";
        state.WritePath = folder_.Wide(L"Dumps") + L"\\";
        state.SaveImage = 0;
        log_.Open(folder_.Wide(L"log.txt"), OpenMode::AppendExclusive);
    }
    ~FixedRun() { SharedFixedState() = before_; }
    FixedRun(const FixedRun&) = delete;
    FixedRun& operator=(const FixedRun&) = delete;

    LogFile& Log() { return log_; }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }

    // Closes the log and returns its text.
    std::string LogText() {
        log_.Close();
        return ReadBytes(folder_.Path() / "log.txt");
    }

    std::vector<std::string> DumpedNames() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path() / "Dumps"))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string Dumped(const char* name) const { return ReadBytes(folder_.Path() / "Dumps" / name); }

    FixedSettings settings;   // what the stage gets
    int32_t dumpCounter = 5;  // the run's next dump

private:
    TemporaryFolder folder_;
    LogFile log_;
    FixedState before_;
};

}  // namespace vastrelline
