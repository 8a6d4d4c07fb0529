// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/WaitBudget.h"
#include "platform/WholeFile.h"
#include "profile_text/ProfileEdit.h"
#include "profile_text/ProfileText.h"

namespace vastrelline {

// A profile file as one call sees it: read once, with the values that the call itself has set. What cannot be
// read is an empty profile.
class LoadedProfile {
public:
    // wait   how long to wait for a writer that has not ended
    LoadedProfile(std::wstring path, WaitBudget& wait);

    // How the reading ended. A profile of more than 64 MiB is none.
    ReadResult State() const { return state_; }

    const std::wstring& Path() const { return path_; }

    // As the file would be if all values that were set stood in it.
    const ProfileText& Text();

    // As the file was read.
    const std::string& FileBytes() const;

    // Sets one key. It counts for whoever asks for Text from now on, and goes to the file with Store.
    void Set(const std::wstring& section, const std::wstring& key, const std::wstring& value);

    // Brings all values that were set to the file in one replacement, unless somebody changed the file in the
    // meantime or it cannot be written. Values that the file did not get are kept in the process: as long as
    // the file stays as it is, the next call finds them as if they stood there.
    //
    // Returns   whether the file holds them
    bool Store(WaitBudget& wait);

private:
    struct Change {
        std::wstring section;
        std::vector<ProfileValue> values;
    };

    // Values that could not be stored, and the file that they belong to. The last few such files are kept.
    struct Unstored {
        std::wstring path;
        size_t fileSize;
        size_t fileHash;
        std::vector<Change> changes;
    };

    static std::deque<Unstored>& SharedUnstored();
    bool IsOf(const Unstored& unstored) const;
    void KeepUnstored(bool isStored) const;
    void ApplyChanges();

    std::wstring path_;
    ReadResult state_ = ReadResult::Missing;
    ProfileText text_;
    std::optional<std::string> fileBytes_;  // once the text is no longer what the file holds
    std::vector<Change> changes_;
    bool areApplied_ = true;
};

}  // namespace vastrelline
