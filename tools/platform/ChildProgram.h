// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vastrelline {

// A running program that reads and prints nothing, and whose standard error is heard here. It does not live
// longer than this object, nor, where the system sees to that, than this process.
class ChildProgram {
public:
    // words    the program's path and its arguments
    // Errors   std::system_error
    explicit ChildProgram(std::vector<std::string> words);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    enum class Heard : uint8_t { Nothing, Words, End };

    // Waits for words.
    //
    // said     gets them at its end; what goes beyond `most` bytes of it is dropped
    // returns  End when nothing more can come
    Heard Listen(std::chrono::milliseconds longest, std::string& said, size_t most);

    bool HasEnded();

    // Ends it, and waits for its end.
    void Kill();

    // How it ended; only after that.
    struct End {
        bool isKilled;   // by a signal or by an exception that nobody caught
        int64_t number;  // the exit code, or the number of that
    };
    End HowEnded() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// "signal 11 (Segmentation fault)", "exception 0xC0000005 (access violation)"
std::string DescribeKill(int64_t number);

}  // namespace vastrelline
