// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <mutex>

namespace vastrelline {

// The last few versions of files that this process has put in place as a whole. A run writes one profile, a
// host few. Threads may share it.
template <typename Version>
class OwnVersions {
public:
    void Add(const Version& version) {
        const std::lock_guard lock(mutex_);
        versions_[count_ % versions_.size()] = version;
        ++count_;
    }

    bool Contains(const Version& version) {
        const std::lock_guard lock(mutex_);
        const auto end = versions_.begin() + static_cast<std::ptrdiff_t>(std::min(count_, versions_.size()));
        return std::find(versions_.begin(), end, version) != end;
    }

private:
    std::mutex mutex_;
    std::array<Version, 16> versions_{};
    size_t count_ = 0;
};

}  // namespace vastrelline
