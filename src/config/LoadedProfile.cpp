// SPDX-License-Identifier: Apache-2.0
#include "config/LoadedProfile.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/Text.h"
#include "profile_text/CaseFolding.h"

namespace vastrelline {

namespace {

// Far above any profile that people write.
constexpr size_t kLargestProfile = size_t{64} << 20U;

size_t HashBytes(const std::string& bytes) { return std::hash<std::string>()(bytes); }

}  // namespace

LoadedProfile::LoadedProfile(std::wstring path, WaitBudget& wait)
    : path_(std::move(path)), text_({}, NativeProfileCodec()) {
    std::string bytes;
    state_ = ReadWholeFile(path_, kLargestProfile, wait, bytes);
    if (state_ != ReadResult::Done) return;
    text_ = ProfileText(std::move(bytes), NativeProfileCodec());
    for (const Unstored& unstored : SharedUnstored()) {
        if (!IsOf(unstored)) continue;
        changes_ = unstored.changes;
        areApplied_ = false;
    }
}

const ProfileText& LoadedProfile::Text() {
    if (!areApplied_) ApplyChanges();
    return text_;
}

const std::string& LoadedProfile::FileBytes() const { return fileBytes_ ? *fileBytes_ : text_.Bytes(); }

void LoadedProfile::Set(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    if (changes_.empty() || changes_.back().section != section) changes_.push_back({section, {}});
    std::vector<ProfileValue>& values = changes_.back().values;
    const auto same = std::find_if(values.begin(), values.end(),
                                   [&](const ProfileValue& other) { return EqualFolded(other.key, key); });
    if (same != values.end())
        same->value = value;
    else
        values.push_back({key, value});
    areApplied_ = false;
}

bool LoadedProfile::Store(WaitBudget& wait) {
    const std::string& wanted = Text().Bytes();
    bool isStored = wanted == FileBytes();
    if (state_ == ReadResult::Done) RemoveLeftover(path_);
    // Values must not make a profile out of what the next call would no longer take for one.
    const bool isTooLarge = wanted.size() > kLargestProfile;
    if (!isStored && state_ == ReadResult::Done && !isTooLarge)
        isStored = ReplaceWholeFile(path_, FileBytes(), wanted, wait);
    else if (!isStored && state_ == ReadResult::Missing)
        isStored = SaveWholeFile(path_, wanted);
    KeepUnstored(isStored);
    return isStored;
}

void LoadedProfile::KeepUnstored(bool isStored) const {
    constexpr size_t kMostFiles = 16;
    std::deque<Unstored>& all = SharedUnstored();
    std::erase_if(all, [&](const Unstored& unstored) { return unstored.path == path_; });
    if (isStored) return;
    if (all.size() == kMostFiles) all.pop_front();
    all.push_back({path_, FileBytes().size(), HashBytes(FileBytes()), changes_});
}

std::deque<LoadedProfile::Unstored>& LoadedProfile::SharedUnstored() {
    static std::deque<Unstored> unstored;
    return unstored;
}

bool LoadedProfile::IsOf(const Unstored& unstored) const {
    return unstored.path == path_ && unstored.fileSize == text_.Bytes().size() &&
           unstored.fileHash == HashBytes(text_.Bytes());
}

void LoadedProfile::ApplyChanges() {
    areApplied_ = true;
    for (const Change& change : changes_) {
        std::optional<std::string> bytes = SetProfileValues(text_, change.section, change.values);
        if (!bytes || *bytes == text_.Bytes()) continue;
        if (!fileBytes_) fileBytes_ = text_.Bytes();
        text_ = ProfileText(*std::move(bytes), NativeProfileCodec());
    }
}

}  // namespace vastrelline
