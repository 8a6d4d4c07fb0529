// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/DoseRecord.h"

namespace vastrelline {

// Brings back the figures of the last exposure decision at the end of a test that makes others.
class KeptDoseRecord {
public:
    KeptDoseRecord() = default;
    ~KeptDoseRecord() { SetSharedDoseRecord(before_); }
    KeptDoseRecord(const KeptDoseRecord&) = delete;
    KeptDoseRecord& operator=(const KeptDoseRecord&) = delete;
    KeptDoseRecord(KeptDoseRecord&&) = delete;
    KeptDoseRecord& operator=(KeptDoseRecord&&) = delete;

private:
    DoseRecord before_ = SharedDoseRecord();
};

}  // namespace vastrelline
