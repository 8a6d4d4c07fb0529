// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <new>

#include "report/TellIfPossible.h"

namespace vastrelline {
namespace {

TEST(TellIfPossible, RunsWhatItIsGiven) {
    int told = 0;
    TellIfPossible([&] { ++told; });
    EXPECT_EQ(told, 1);
}

TEST(TellIfPossible, WhateverIsThrownStaysInside) {
    int told = 0;
    TellIfPossible([&] {
        ++told;
        throw std::bad_alloc();
    });
    TellIfPossible([&] {
        ++told;
        throw told;
    });
    EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace vastrelline
