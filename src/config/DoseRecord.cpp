// SPDX-License-Identifier: Apache-2.0
#include "config/DoseRecord.h"

#include <mutex>

namespace vastrelline {

namespace {

std::mutex recordMutex;
DoseRecord lastRecord;

}  // namespace

DoseRecord SharedDoseRecord() {
    const std::scoped_lock lock(recordMutex);
    return lastRecord;
}

void SetSharedDoseRecord(const DoseRecord& record) {
    const std::scoped_lock lock(recordMutex);
    lastRecord = record;
}

}  // namespace vastrelline
