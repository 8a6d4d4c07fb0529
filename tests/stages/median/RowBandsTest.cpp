#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "stages/median/RowBands.h"

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

}  // namespace
}  // namespace vastrelline
