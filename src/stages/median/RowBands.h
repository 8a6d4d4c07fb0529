// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <thread>

namespace vastrelline {

// What all bands of a filter share.
struct RowBandParameters {
    int32_t width;
    int32_t height;
    double mask;  // width of the window, a whole number
};

// One band of rows, the work of one thread.
struct RowBandJob {
    using Function = void (*)(const RowBandJob& job);

    int32_t index = 0;
    int32_t firstRow = 0;
    int32_t lastRow = -1;  // inclusive; below firstRow for an empty band
    const RowBandParameters* parameters = nullptr;
    const uint16_t* source = nullptr;
    uint16_t* destination = nullptr;
    Function run = nullptr;
};

// How many threads RunOnRowBands starts, clamped to 1..31 at each use: 2. Nothing in the library writes it.
int32_t& MedianThreadCount();

// How a thread is started: on run(worker). Throws what std::thread throws. Nothing in the library writes it;
// tests put one here that starts none.
using ThreadStarter = std::thread (*)(void (*run)(void* worker), void* worker);
ThreadStarter& MedianThreadStarter();

// Runs a job over the rows from `firstRow` to `lastRow`, both inclusive, on worker threads of its own, and
// returns when all have finished. Each thread takes rows / count rows, the last one also what is left over.
//
// job          writes its own rows of the destination and nothing else; gets empty bands too
// parameters, source, destination   handed on to the job
// Errors       a thread that cannot be started, or has no memory to throw: the caller's thread does its band;
//              what a job throws is thrown again after all have finished
void RunOnRowBands(RowBandJob::Function job, const RowBandParameters& parameters, const uint16_t* source,
                   uint16_t* destination, int32_t firstRow, int32_t lastRow);

}  // namespace vastrelline
