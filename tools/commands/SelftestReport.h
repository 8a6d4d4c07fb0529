// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "messages/ExitCode.h"

namespace vastrelline {

enum class CheckState : uint8_t {
    Passed,
    Left,  // it could not be made here, and that is no fault
    Failed,
};

// "passed", "left out", "failed"
const char* CheckStateName(CheckState state);

// One part of a self test.
struct SelftestCheck {
    std::string title;  // "Files"
    CheckState state = CheckState::Passed;
    std::string result;  // in a sentence without its end
    std::vector<std::string> faults;
};

struct SelftestReport {
    std::string date;     // UTC
    std::string machine;  // its name, system and processor
    std::string program;
    std::string library;
    std::string libraryHash;
    std::vector<SelftestCheck> checks;
};

ExitCode CodeOfSelftest(const SelftestReport& report);

// "This installation is whole", and what was left out.
std::string DescribeSelftest(const SelftestReport& report);

std::string FormatSelftest(const SelftestReport& report);
nlohmann::ordered_json SelftestToJson(const SelftestReport& report);

// The whole of an HTML file, with lines for names.
std::vector<uint8_t> SelftestToHtml(const SelftestReport& report);

}  // namespace vastrelline
