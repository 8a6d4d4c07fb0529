// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/MemoryLimit.h"

namespace vastrelline {

bool CanLimitMemory() { return true; }

void LimitMemory(uint64_t bytes) {
    // A job within those that the process is in already, each with a limit of its own. It lives as long as
    // the process in it, whose memory counts with what the process had before.
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    if (job == nullptr) return;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    limits.ProcessMemoryLimit =
        static_cast<SIZE_T>(std::min<uint64_t>(bytes, std::numeric_limits<SIZE_T>::max()));
    if (SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits)) != FALSE)
        AssignProcessToJobObject(job, GetCurrentProcess());
}

}  // namespace vastrelline
