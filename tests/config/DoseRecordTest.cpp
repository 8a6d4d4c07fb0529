// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "config/DoseRecord.h"

namespace vastrelline {
namespace {

// Taken before any test can have changed it.
const DoseRecord recordAtLoad = SharedDoseRecord();

TEST(DoseRecord, AllFiguresAreZeroAtLoad) {
    EXPECT_EQ(recordAtLoad.ObjectMedian, 0);
    EXPECT_EQ(recordAtLoad.ObjectTotal, 0);
    EXPECT_EQ(recordAtLoad.LowSignal, 0);
    EXPECT_EQ(recordAtLoad.LowRatio, 0.0);
    EXPECT_EQ(recordAtLoad.LowExposure, 0);
}

TEST(DoseRecord, TheLastOneSetIsThatOfTheWholeProcess) {
    const DoseRecord before = SharedDoseRecord();
    SetSharedDoseRecord({1200, 900, 30, 0.25, 1});
    const DoseRecord record = SharedDoseRecord();
    EXPECT_EQ(record.ObjectMedian, 1200);
    EXPECT_EQ(record.ObjectTotal, 900);
    EXPECT_EQ(record.LowSignal, 30);
    EXPECT_EQ(record.LowRatio, 0.25);
    EXPECT_EQ(record.LowExposure, 1);
    SetSharedDoseRecord(before);
}

}  // namespace
}  // namespace vastrelline
