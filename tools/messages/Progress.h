// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

namespace vastrelline {

// Tells how far a longer work has come: nothing in its first second; then on a terminal one line that changes
// in place, elsewhere a plain line every ten seconds.
class Progress {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    struct Style {
        bool isTerminal = false;
        bool isQuiet = false;
    };

    // what    "3 frames", for the line
    // total   of the parts; 0: unknown, and only the time is told
    Progress(std::ostream& stream, Style style, std::string what, size_t total,
             Clock clock = std::chrono::steady_clock::now);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    // So many parts are done by now, so many of these failed. To be called as often as one likes.
    //
    // passed   those of them that took no work: they count for nothing in the rate and in the time left
    void Update(size_t done, size_t failed, size_t passed = 0);

    // Takes the changing line away; later calls say nothing.
    void Finish();

private:
    std::string Line(std::chrono::duration<double> elapsed) const;

    std::ostream& stream_;
    Style style_;
    std::string what_;
    size_t total_;
    Clock clock_;
    std::chrono::steady_clock::time_point start_;
    std::chrono::steady_clock::time_point lastLine_;
    size_t done_ = 0;
    size_t failed_ = 0;
    size_t passed_ = 0;
    bool isLineThere_ = false;
    bool isFinished_ = false;
};

}  // namespace vastrelline
