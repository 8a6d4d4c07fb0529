// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/SilencedSignals.h"

namespace vastrelline {

// Holds off the writers of a file for a moment: as long as this object lives, whoever opens the file for
// writing or cuts it waits within that call. So it must live for milliseconds only.
//
// file   open for reading only, and outlives this object
class ReadLease {
public:
    enum class State {
        Taken,       // nobody has the file open for writing
        HasWriters,  // somebody has
        Unknown,     // a file of somebody else, or a file system without leases: nobody is held off
    };

    explicit ReadLease(const FileDescriptor& file);
    ~ReadLease();
    ReadLease(const ReadLease&) = delete;
    ReadLease& operator=(const ReadLease&) = delete;

    State Get() const { return state_; }

    // Whether somebody is held off by now.
    bool IsAwaited() const;

private:
    const FileDescriptor& file_;
    SilencedSignals silenced_;
    State state_ = State::Unknown;
};

}  // namespace vastrelline
