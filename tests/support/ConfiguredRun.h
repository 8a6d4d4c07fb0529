// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfiguredState.h"
#include "platform/Files.h"
#include "report/LogFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// What the configured chain's driver sets up for its stages: the state of a run over section "Molar" of a
// profile in a fresh folder, log and dumps off, an open log, dump number 5, and a folder for dumps whose name
// has capitals. The state of before returns when the object goes.
class ConfiguredRun {
public:
    ConfiguredRun() : before_(SharedConfiguredState()) {
        std::filesystem::create_directory(folder_.Path() / "Dumps");
        ConfiguredState& state = SharedConfiguredState();
        state.IniPath = folder_.Wide(L"profile.ini");
        state.SectionName = L"Molar";
        state.WritePath = folder_.Wide(L"Dumps") + L"\\";
        state.SaveLog = 0;
        state.SaveImage = 0;
        state.DumpNumber = 5;
        log_.Open(folder_.Wide(L"log.txt"), OpenMode::AppendExclusive);
    }
    ~ConfiguredRun() { SharedConfiguredState() = before_; }
    ConfiguredRun(const ConfiguredRun&) = delete;
    ConfiguredRun& operator=(const ConfiguredRun&) = delete;

    void WriteProfile(std::string_view text) const { WriteBytes(folder_.Path() / "profile.ini", text); }
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

private:
    TemporaryFolder folder_;
    LogFile log_;
    ConfiguredState before_;
};

}  // namespace vastrelline
