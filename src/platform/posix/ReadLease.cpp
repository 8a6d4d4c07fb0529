// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/ReadLease.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace vastrelline {

namespace {

// The system tells the holder of a lease by a signal that somebody waits. Nobody here needs it: it goes to
// this thread, which does not let it through. It is one that does nothing unless the host wants it, that no
// language's runtime lives by, and of which a host misses no more than the new size of its terminal's window.
constexpr int kSignal = SIGWINCH;

bool DirectSignalsToThisThread(int descriptor) {
    f_owner_ex owner{};
    owner.type = F_OWNER_TID;
    owner.pid = gettid();
    return fcntl(descriptor, F_SETSIG, kSignal) == 0 && fcntl(descriptor, F_SETOWN_EX, &owner) == 0;
}

}  // namespace

ReadLease::ReadLease(const FileDescriptor& file) : file_(file), silenced_({kSignal}) {
    if (!DirectSignalsToThisThread(file_.Get())) return;
    if (fcntl(file_.Get(), F_SETLEASE, F_RDLCK) == 0)
        state_ = State::Taken;
    else if (errno == EAGAIN)
        state_ = State::HasWriters;
}

ReadLease::~ReadLease() {
    if (state_ == State::Taken) static_cast<void>(fcntl(file_.Get(), F_SETLEASE, F_UNLCK));
}

bool ReadLease::IsAwaited() const {
    return state_ == State::Taken && fcntl(file_.Get(), F_GETLEASE) != F_RDLCK;
}

}  // namespace vastrelline
