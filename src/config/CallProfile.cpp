// SPDX-License-Identifier: Apache-2.0
#include "config/CallProfile.h"

#include <utility>

namespace vastrelline {

namespace {

CallProfile*& RunningCall() {
    static CallProfile* call = nullptr;
    return call;
}

}  // namespace

CallProfile::CallProfile(const std::wstring& iniPath)
    : profile_(std::make_shared<LoadedProfile>(iniPath, wait_)), outer_(std::exchange(RunningCall(), this)) {}

CallProfile::~CallProfile() { RunningCall() = outer_; }

std::shared_ptr<LoadedProfile> LoadProfile(const std::wstring& path) {
    CallProfile* const call = RunningCall();
    if (call == nullptr) {
        WaitBudget wait;
        return std::make_shared<LoadedProfile>(path, wait);
    }
    if (call->profile_->Path() == path) return call->profile_;
    return std::make_shared<LoadedProfile>(path, call->wait_);
}

bool StoreProfile(LoadedProfile& profile) {
    WaitBudget own;
    CallProfile* const call = RunningCall();
    return profile.Store(call != nullptr ? call->wait_ : own);
}

}  // namespace vastrelline
