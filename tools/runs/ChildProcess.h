// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vastrelline {

// How a child process ended.
struct ChildEnd {
    enum class Kind : uint8_t { Exited, Killed, TimedOut, Cancelled };
    Kind kind = Kind::Exited;
    int64_t number = 0;  // the exit code, or what killed it
    std::string said;    // what it wrote to standard error, at most kMostSaid bytes
};

// A child that never stops talking must not fill the memory of its parent.
inline constexpr size_t kMostSaid = size_t{64} << 10;

// The file of the running program.
//
// Errors   ProcessingError if the system does not tell it
std::string OwnProgram();

// Starts a program, which reads and prints nothing, and waits for its end. Past the time, and when this
// process is asked to end, it is killed.
//
// words    the program's path and its arguments
// onWait   called some twenty times a second; may be empty
// Errors   ProcessingError if it cannot be started
ChildEnd RunChild(std::vector<std::string> words, std::optional<std::chrono::milliseconds> timeout,
                  const std::function<void()>& onWait = {});

}  // namespace vastrelline
