// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace vastrelline {

// The variable that names the folder of a user's own things.
#ifdef _WIN32
inline constexpr const char* kHomeVariable = "USERPROFILE";
#else
inline constexpr const char* kHomeVariable = "HOME";
#endif

// A variable of this process's environment that has another value as long as the object lives.
class SetVariable {
public:
    SetVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* const before = std::getenv(name_.c_str())) before_ = before;
        Set(value.c_str());
    }
    ~SetVariable() { Set(before_ ? before_->c_str() : nullptr); }
    SetVariable(const SetVariable&) = delete;
    SetVariable& operator=(const SetVariable&) = delete;

private:
    void Set(const char* value) const {
#ifdef _WIN32
        _putenv_s(name_.c_str(), value == nullptr ? "" : value);
#else
        if (value == nullptr)
            unsetenv(name_.c_str());
        else
            setenv(name_.c_str(), value, 1);
#endif
    }

    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace vastrelline
