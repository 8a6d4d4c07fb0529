// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/TemporaryFolder.h"

namespace vastrelline {

// Builds the text of a profile, section by section, and writes it.
//
//     ProfileWriter().Section("General").Key("BITSTORED", "12").Stage("10", {{"POST_GAMMA_RATIO", "2"}})
//
// Stage puts a stage at the next position of the section's list; the list's length is written by WriteTo
// unless the section sets FunctionCount itself.
class ProfileWriter {
public:
    ProfileWriter& Section(std::string_view name) {
        EndSection();
        text_.append("[").append(name).append("]\r\n");
        return *this;
    }

    ProfileWriter& Key(std::string_view key, std::string_view value) {
        if (key == "FunctionCount") hasCount_ = true;
        text_.append(key).append("=").append(value).append("\r\n");
        return *this;
    }

    ProfileWriter& Stage(std::string_view number,
                         const std::vector<std::pair<std::string, std::string>>& keys = {}) {
        const std::string prefix = PrefixOf(stageCount_++);
        Key(prefix + "Function_Number", number);
        for (const auto& [key, value] : keys) Key(prefix + key, value);
        return *this;
    }

    std::string Text() {
        EndSection();
        return text_;
    }

    void WriteTo(const std::filesystem::path& path) { WriteBytes(path, Text()); }

private:
    static std::string PrefixOf(int position) {
        char prefix[16] = {};
        std::snprintf(prefix, sizeof prefix, "%02d_", position);
        return prefix;
    }

    void EndSection() {
        if (stageCount_ > 0 && !hasCount_) Key("FunctionCount", std::to_string(stageCount_));
        stageCount_ = 0;
        hasCount_ = false;
    }

    std::string text_;
    int stageCount_ = 0;
    bool hasCount_ = false;
};

}  // namespace vastrelline
