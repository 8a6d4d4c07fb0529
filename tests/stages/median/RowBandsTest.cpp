// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "stages/median/MedianPasses.h"
#include "stages/median/RowBands.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

// Sets the number of threads for one test.
class ThreadCount {
public:
    explicit ThreadCount(int32_t count) { MedianThreadCount() = count; }
    ~ThreadCount() { MedianThreadCount() = 2; }
    ThreadCount(const ThreadCount&) = delete;
    ThreadCount& operator=(const ThreadCount&) = delete;
};

// Puts another way to start threads in place for one test.
class StarterInPlace {
public:
    explicit StarterInPlace(ThreadStarter starter) : before_(MedianThreadStarter()) {
        MedianThreadStarter() = starter;
    }
    ~StarterInPlace() { MedianThreadStarter() = before_; }
    StarterInPlace(const StarterInPlace&) = delete;
    StarterInPlace& operator=(const StarterInPlace&) = delete;

private:
    ThreadStarter before_;
};

std::thread StartNone(void (* /*run*/)(void*), void* /*worker*/) {
    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
}

// The first thread starts, no other does.
int32_t startsAsked = 0;
std::thread StartTheFirst(void (*run)(void*), void* worker) {
    if (startsAsked++ > 0) throw std::bad_alloc();
    return std::thread(run, worker);
}

// What a thread does that has no memory to throw.
std::thread StartForNothing(void (* /*run*/)(void*), void* /*worker*/) {
    return std::thread([] {});
}

struct Band {
    int32_t first = 0;
    int32_t last = 0;
    bool isOnCallersThread = true;

    friend bool operator==(const Band&, const Band&) = default;
};

// What each job of a run saw, by its index. Jobs write places of their own, so no lock is needed.
std::vector<Band> bandsSeen;
std::thread::id callersThread;

void NoteBand(const RowBandJob& job) {
    bandsSeen.at(static_cast<size_t>(job.index)) = {job.firstRow, job.lastRow,
                                                    std::this_thread::get_id() == callersThread};
}

std::vector<Band> BandsOf(int32_t threads, int32_t firstRow, int32_t lastRow, size_t jobs) {
    const ThreadCount count(threads);
    bandsSeen.assign(jobs, Band{});
    callersThread = std::this_thread::get_id();
    RunOnRowBands(NoteBand, RowBandParameters{1, 1, 3}, nullptr, nullptr, firstRow, lastRow);
    return bandsSeen;
}

TEST(RowBands, TwoThreadsUnlessATestSaysOtherwise) { EXPECT_EQ(2, MedianThreadCount()); }

TEST(RowBands, TheLastJobTakesTheRemainder) {
    EXPECT_EQ(BandsOf(3, 2, 9, 3), (std::vector<Band>{{2, 3, false}, {4, 5, false}, {6, 9, false}}));
}

TEST(RowBands, WithFewerRowsThanThreadsTheLastJobDoesAllRows) {
    EXPECT_EQ(BandsOf(4, 5, 7, 4),
              (std::vector<Band>{{5, 4, false}, {5, 4, false}, {5, 4, false}, {5, 7, false}}));
}

TEST(RowBands, CountIsClampedToOneToThirtyOne) {
    EXPECT_EQ(BandsOf(0, 0, 9, 1), (std::vector<Band>{{0, 9, false}}));
    EXPECT_EQ(BandsOf(-5, 0, 9, 1), (std::vector<Band>{{0, 9, false}}));
    const std::vector<Band> bands = BandsOf(1000, 0, 61, 31);
    EXPECT_EQ(bands.front(), (Band{0, 1, false}));
    EXPECT_EQ(bands.back(), (Band{60, 61, false}));
}

TEST(RowBands, WithoutRowsNothingRuns) {
    EXPECT_EQ(BandsOf(2, 3, 2, 2), (std::vector<Band>{{0, 0, true}, {0, 0, true}}));
    EXPECT_EQ(BandsOf(2, 3, -70000, 2), (std::vector<Band>{{0, 0, true}, {0, 0, true}}));
}

TEST(RowBands, JobGetsWhatTheCallerHandsOn) {
    const std::vector<uint16_t> source = {5, 6, 7};
    std::vector<uint16_t> destination(3);
    RunOnRowBands(
        [](const RowBandJob& job) {
            for (int32_t row = job.firstRow; row <= job.lastRow; ++row)
                job.destination[row] = static_cast<uint16_t>(job.source[row] + job.parameters->mask);
        },
        RowBandParameters{1, 3, 10}, source.data(), destination.data(), 0, 2);
    EXPECT_EQ(destination, (std::vector<uint16_t>{15, 16, 17}));
}

TEST(RowBands, WhatAJobThrowsReachesTheCallerAfterAllHaveFinished) {
    std::vector<uint16_t> destination(2);
    EXPECT_THROW(RunOnRowBands(
                     [](const RowBandJob& job) {
                         if (job.index == 0) throw std::runtime_error("no memory, say");
                         job.destination[job.lastRow] = 1;
                     },
                     RowBandParameters{1, 2, 3}, nullptr, destination.data(), 0, 1),
                 std::runtime_error);
    EXPECT_EQ(destination, (std::vector<uint16_t>{0, 1}));
}

TEST(RowBands, WithoutThreadsTheCallersThreadDoesAllBands) {
    const StarterInPlace starter(StartNone);
    EXPECT_EQ(BandsOf(3, 2, 9, 3), (std::vector<Band>{{2, 3, true}, {4, 5, true}, {6, 9, true}}));
}

// The last band is started first.
TEST(RowBands, CallersThreadDoesTheBandsOfThreadsThatDidNotStart) {
    startsAsked = 0;
    const StarterInPlace starter(StartTheFirst);
    EXPECT_EQ(BandsOf(3, 2, 9, 3), (std::vector<Band>{{2, 3, true}, {4, 5, true}, {6, 9, false}}));
    EXPECT_EQ(startsAsked, 3);
}

TEST(RowBands, CallersThreadDoesTheBandsThatAThreadLeft) {
    const StarterInPlace starter(StartForNothing);
    EXPECT_EQ(BandsOf(2, 0, 9, 2), (std::vector<Band>{{0, 4, true}, {5, 9, true}}));
}

TEST(RowBands, WhatAJobThrowsOnTheCallersThreadComesOutToo) {
    const StarterInPlace starter(StartNone);
    std::vector<uint16_t> destination(2);
    EXPECT_THROW(RunOnRowBands(
                     [](const RowBandJob& job) {
                         if (job.index == 1) throw std::bad_alloc();
                         job.destination[job.lastRow] = 1;
                     },
                     RowBandParameters{1, 2, 3}, nullptr, destination.data(), 0, 1),
                 std::bad_alloc);
    EXPECT_EQ(destination, (std::vector<uint16_t>{1, 0}));
}

// Whole medians of the stage: the threads make no difference, nor does their lack.
TEST(RowBands, MedianWithoutThreadsIsTheSame) {
    const Frame frame = Noise(60, 50, 4095, 3);
    for (const int32_t size : {3, 9, 17}) {
        Frame usual = frame;
        FilterMedianPasses(usual.Data(), 60, 50, {size, 2, 0});
        EXPECT_NE(usual, frame);
        for (const ThreadStarter way : {StartNone, StartForNothing}) {
            const StarterInPlace starter(way);
            Frame alone = frame;
            FilterMedianPasses(alone.Data(), 60, 50, {size, 2, 0});
            EXPECT_THAT(alone, EqualsFrame(usual)) << size;
        }
    }
}

}  // namespace
}  // namespace vastrelline
