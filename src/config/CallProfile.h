// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "config/LoadedProfile.h"
#include "platform/WaitBudget.h"

namespace vastrelline {

// The profile of one processing call, from its first to its last step: the file is read here, once, and every
// CRegistryIO of the same path shares that reading while this object lives. So all stages of a call see one
// version of the profile, whoever edits the file meanwhile. Calls within a call (a host may make one while a
// message box is open) have their own; the outer one comes back with their end.
//
// Threads   one at a time
class CallProfile {
public:
    explicit CallProfile(const std::wstring& iniPath);
    ~CallProfile();
    CallProfile(const CallProfile&) = delete;
    CallProfile& operator=(const CallProfile&) = delete;
    CallProfile(CallProfile&&) = delete;
    CallProfile& operator=(CallProfile&&) = delete;

    ReadResult State() const { return profile_->State(); }

private:
    friend std::shared_ptr<LoadedProfile> LoadProfile(const std::wstring& path);
    friend bool StoreProfile(LoadedProfile& profile);

    WaitBudget wait_;  // for everything that this call waits for
    std::shared_ptr<LoadedProfile> profile_;
    CallProfile* outer_;
};

// The profile at a path: that of the running call, or else the file as it is now.
std::shared_ptr<LoadedProfile> LoadProfile(const std::wstring& path);

// LoadedProfile::Store with the patience of the running call.
bool StoreProfile(LoadedProfile& profile);

}  // namespace vastrelline
