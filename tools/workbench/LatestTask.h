// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace vastrelline {

// A thread that does the newest of the things that are asked of it: what is at work is asked to stop when
// another one comes, what waits gives way.
class LatestTask {
public:
    // Does its work and looks now and then whether it is to stop. Should tell its failures
    // itself: what it throws only ends it.
    using Work = std::function<void(const std::stop_token& stop)>;

    LatestTask();
    ~LatestTask();  // as End
    LatestTask(const LatestTask&) = delete;
    LatestTask& operator=(const LatestTask&) = delete;

    // Begins after the delay unless something newer has come by then.
    void Want(Work work, std::chrono::milliseconds delay);

    // Drops what waits, and asks what is at work to stop.
    void Cancel();

    // Asks what is at work to stop, and waits for its end. Nothing is done any more.
    void End();

private:
    using Clock = std::chrono::steady_clock;

    void Loop();

    std::mutex mutex_;
    std::condition_variable isWanted_;
    bool hasEnded_ = false;
    Work work_;  // empty: nothing waits
    Clock::time_point begin_;
    std::optional<std::stop_source> atWork_;
    std::thread thread_;  // last: it uses the others
};

}  // namespace vastrelline
