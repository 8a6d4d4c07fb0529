// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline::digest {

// Lines of a profile, added one by one.
class ProfileLines {
public:
    ProfileLines& Section(std::string_view name) {
        text_.append("[").append(name).append("]\r\n");
        position_ = 0;
        return *this;
    }

    ProfileLines& Key(std::string_view key, std::string_view value) {
        text_.append(key).append("=").append(value).append("\r\n");
        return *this;
    }

    // Puts a stage at the next position of the section's list; StageKey then adds to it.
    ProfileLines& Stage(int32_t number) {
        ++position_;
        return StageKey("Function_Number", std::to_string(number));
    }

    ProfileLines& StageKey(std::string_view key, std::string_view value) {
        const std::string digits = std::to_string(position_ - 1);
        text_.append(digits.size() < 2 ? "0" : "").append(digits).append("_");
        return Key(key, value);
    }

    ProfileLines& Count() { return Key("FunctionCount", std::to_string(position_)); }

    const std::string& Text() const { return text_; }

private:
    std::string text_;
    int32_t position_ = 0;
};

}  // namespace vastrelline::digest
