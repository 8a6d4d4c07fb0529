// SPDX-License-Identifier: Apache-2.0
#include "stages/median/RowBands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <thread>

#include "platform/ThrowReadiness.h"

namespace vastrelline {

namespace {

constexpr int32_t kMostThreads = 31;

// A job with what it threw: an exception that left a thread would end the host.
struct Worker {
    RowBandJob job;
    std::thread thread;
    std::exception_ptr failure;
    bool hasRun = false;

    void Run() noexcept {
        hasRun = true;
        try {
            job.run(job);
        } catch (...) {
            failure = std::current_exception();
        }
    }

    void Start() {
        constexpr auto kRun = [](void* worker) {
            if (MakeReadyToThrow()) static_cast<Worker*>(worker)->Run();
        };
        try {
            thread = MedianThreadStarter()(kRun, this);
        } catch (const std::exception&) {
            // No thread, or no memory for one: the band is done when the others are.
        }
    }
};

}  // namespace

int32_t& MedianThreadCount() {
    static int32_t count = 2;
    return count;
}

ThreadStarter& MedianThreadStarter() {
    static ThreadStarter starter = [](void (*run)(void*), void* worker) { return std::thread(run, worker); };
    return starter;
}

void RunOnRowBands(RowBandJob::Function job, const RowBandParameters& parameters, const uint16_t* source,
                   uint16_t* destination, int32_t firstRow, int32_t lastRow) {
    if (firstRow > lastRow) return;
    const int32_t count = std::clamp(MedianThreadCount(), 1, kMostThreads);
    const int32_t rowsEach = (lastRow - firstRow + 1) / count;
    std::array<Worker, kMostThreads> workers;
    for (int32_t i = 0; i < count; ++i) {
        const int32_t first = firstRow + i * rowsEach;
        const int32_t last = i == count - 1 ? lastRow : first + rowsEach - 1;
        workers[static_cast<size_t>(i)].job = {i, first, last, &parameters, source, destination, job};
    }
    for (auto i = static_cast<size_t>(count); i-- > 0;) workers[i].Start();
    for (Worker& worker : workers) {
        if (worker.thread.joinable()) worker.thread.join();
    }
    for (auto i = static_cast<size_t>(count); i-- > 0;) {
        if (!workers[i].hasRun) workers[i].Run();
    }
    for (const Worker& worker : workers) {
        if (worker.failure) std::rethrow_exception(worker.failure);
    }
}

}  // namespace vastrelline
