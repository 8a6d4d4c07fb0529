// SPDX-License-Identifier: Apache-2.0
#include "workbench/LatestTask.h"

#include <exception>
#include <utility>

namespace vastrelline {

LatestTask::LatestTask() : thread_([this] { Loop(); }) {}

LatestTask::~LatestTask() { End(); }

void LatestTask::End() {
    {
        const std::lock_guard lock(mutex_);
        hasEnded_ = true;
        work_ = nullptr;
        if (atWork_) atWork_->request_stop();
    }
    isWanted_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void LatestTask::Want(Work work, std::chrono::milliseconds delay) {
    {
        const std::lock_guard lock(mutex_);
        work_ = std::move(work);
        begin_ = Clock::now() + delay;
        if (atWork_) atWork_->request_stop();
    }
    isWanted_.notify_all();
}

void LatestTask::Cancel() {
    const std::lock_guard lock(mutex_);
    work_ = nullptr;
    if (atWork_) atWork_->request_stop();
}

void LatestTask::Loop() {
    std::unique_lock lock(mutex_);
    while (!hasEnded_) {
        if (!work_) {
            isWanted_.wait(lock);
            continue;
        }
        // A newer wish begins the wait anew.
        if (Clock::now() < begin_) {
            isWanted_.wait_until(lock, begin_);
            continue;
        }
        const Work work = std::exchange(work_, nullptr);
        const std::stop_source stop = atWork_.emplace();
        lock.unlock();
        try {
            work(stop.get_token());
        } catch (const std::exception&) {
            // Memory that is short now may be there for the next one. The process, with all that nobody has
            // saved yet, must not end for it.
        }
        lock.lock();
        atWork_.reset();
    }
}

}  // namespace vastrelline
