// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <new>
#include <string>

#include "workbench/LatestTask.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

TEST(LatestTask, DoesWhatIsWanted) {
    std::promise<void> done;
    LatestTask task;
    task.Want(
        [&](const std::stop_token& stop) {
            EXPECT_FALSE(stop.stop_requested());
            done.set_value();
        },
        0ms);
    done.get_future().get();
}

TEST(LatestTask, DropsWhatWaitsForANewerWish) {
    std::promise<int> done;
    LatestTask task;
    task.Want([&](const std::stop_token&) { done.set_value(1); }, 1h);
    task.Want([&](const std::stop_token&) { done.set_value(2); }, 0ms);
    EXPECT_EQ(done.get_future().get(), 2);
}

TEST(LatestTask, AsksWhatIsAtWorkToStop) {
    std::promise<void> began;
    std::promise<void> done;
    std::atomic<bool> wasStopped{false};
    LatestTask task;
    task.Want(
        [&](const std::stop_token& stop) {
            began.set_value();
            while (!stop.stop_requested()) std::this_thread::yield();
            wasStopped = true;
        },
        0ms);
    began.get_future().get();
    task.Want(
        [&](const std::stop_token& stop) {
            EXPECT_TRUE(wasStopped);
            EXPECT_FALSE(stop.stop_requested());
            done.set_value();
        },
        0ms);
    done.get_future().get();
}

TEST(LatestTask, DoesNothingMoreWhenItIsCancelled) {
    std::promise<void> done;
    bool isDone = false;
    LatestTask task;
    task.Want([&](const std::stop_token&) { isDone = true; }, 10ms);
    task.Cancel();
    task.Want([&](const std::stop_token&) { done.set_value(); }, 30ms);
    done.get_future().get();
    EXPECT_FALSE(isDone);
}

TEST(LatestTask, OutlivesAWorkThatThrows) {
    std::promise<void> began;
    std::promise<void> done;
    LatestTask task;
    task.Want(
        [&](const std::stop_token&) {
            began.set_value();
            throw std::bad_alloc();
        },
        0ms);
    began.get_future().get();
    task.Want([&](const std::stop_token&) { done.set_value(); }, 0ms);
    EXPECT_EQ(done.get_future().wait_for(10s), std::future_status::ready);
}

// Whoever wants something while it ends must not make it wait for that.
TEST(LatestTask, BeginsNothingWhileItEnds) {
    for (int i = 0; i < 2000; ++i) {
        std::atomic<bool> isLate{false};
        std::atomic<bool> isGo{false};
        LatestTask task;
        std::jthread other([&] {
            while (!isGo) std::this_thread::yield();
            task.Want(
                [&](const std::stop_token& stop) {
                    const auto most = std::chrono::steady_clock::now() + 1s;
                    while (!stop.stop_requested() && !isLate)
                        isLate = std::chrono::steady_clock::now() > most;
                },
                0ms);
        });
        isGo = true;
        task.End();
        ASSERT_FALSE(isLate) << i;
    }
}

TEST(LatestTask, EndsInTheMiddleOfAWaitAndOfAWork) {
    bool isDone = false;
    {
        LatestTask task;
        task.Want([&](const std::stop_token&) { isDone = true; }, 1h);
    }
    EXPECT_FALSE(isDone);
    std::promise<void> began;
    LatestTask task;
    task.Want(
        [&](const std::stop_token& stop) {
            began.set_value();
            while (!stop.stop_requested()) std::this_thread::yield();
        },
        0ms);
    began.get_future().get();
    task.End();
    task.Want([&](const std::stop_token&) { isDone = true; }, 0ms);
    task.End();
    EXPECT_FALSE(isDone);
}

}  // namespace
}  // namespace vastrelline
