// SPDX-License-Identifier: Apache-2.0
#include "messages/Progress.h"

#include <cmath>
#include <iomanip>
#include <sstream>
#include <utility>

namespace vastrelline {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds kSilent{1.0};
constexpr Seconds kBetweenChanges{0.1};
constexpr Seconds kBetweenLines{10.0};

// Takes away what stands in the line of a terminal, and goes back to its start.
constexpr const char* kClearLine = "\r\033[K";

std::string Time(double seconds) {
    const auto whole = static_cast<int64_t>(std::llround(seconds));
    if (whole < 60) return std::to_string(whole) + " s";
    std::ostringstream text;
    text << whole / 60 << ':' << std::setw(2) << std::setfill('0') << whole % 60 << " min";
    return text.str();
}

}  // namespace

Progress::Progress(std::ostream& stream, Style style, std::string what, size_t total, Clock clock)
    : stream_(stream),
      style_(style),
      what_(std::move(what)),
      total_(total),
      clock_(std::move(clock)),
      start_(clock_()),
      lastLine_(start_) {}

Progress::~Progress() { Finish(); }

std::string Progress::Line(Seconds elapsed) const {
    std::ostringstream line;
    line << what_ << ": ";
    if (total_ == 0) {
        line << Time(elapsed.count());
        return line.str();
    }
    const size_t worked = done_ - passed_;
    const double rate = static_cast<double>(worked) / elapsed.count();
    line << done_ << " of " << total_ << ", " << std::fixed << std::setprecision(1) << rate << " a second";
    if (worked > 0 && done_ < total_)
        line << ", " << Time(static_cast<double>(total_ - done_) / rate) << " left";
    if (failed_ > 0) line << ", " << failed_ << " failed";
    return line.str();
}

void Progress::Update(size_t done, size_t failed, size_t passed) {
    passed_ = passed;
    done_ = done;
    failed_ = failed;
    if (style_.isQuiet || isFinished_) return;
    const auto now = clock_();
    const Seconds elapsed = now - start_;
    const Seconds sinceLine = now - lastLine_;
    if (elapsed < kSilent) return;
    if (style_.isTerminal) {
        if (isLineThere_ && sinceLine < kBetweenChanges) return;
        stream_ << kClearLine << Line(elapsed) << std::flush;
        isLineThere_ = true;
    } else {
        if (sinceLine < kBetweenLines) return;
        stream_ << Line(elapsed) << '\n' << std::flush;
    }
    lastLine_ = now;
}

void Progress::Finish() {
    if (isLineThere_) stream_ << kClearLine << std::flush;
    isLineThere_ = false;
    isFinished_ = true;
}

}  // namespace vastrelline
