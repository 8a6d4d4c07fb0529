// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/OwnProcess.h"

namespace vastrelline {

// A file on its way: it comes into being under a name of its own beside the wanted one and takes the wanted
// name only when it is complete. Without Publish the destructor removes it, so that a failure leaves nothing
// behind and an older file stays as it was.
//
// A symbolic link is followed: the link stays and the file that it names is replaced.
class OutputFile {
public:
    // Errors   OutputError: the path exists and mayReplace is false, it is no regular file, or its folder is
    //          missing or not writable
    OutputFile(const std::string& path, bool mayReplace);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Where to write: an empty file that exists. Its ending is the ending of the wanted name.
    const std::string& DraftPath() const { return draftPath_; }

    // Replaces the content of the draft. Throws OutputError if the disk does not take it.
    void Write(const std::vector<uint8_t>& bytes);

    // Flushes the draft to the disk and gives it its name. Throws as the constructor does, also if
    // the name was taken in the meantime.
    void Publish();

private:
    std::string shownPath_;
    std::string path_;
    std::string draftPath_;
    bool mayReplace_;
    bool isPublished_ = false;
};

// The process that wrote a draft of this name; nothing for names that no draft has.
std::optional<ProcessNumber> WriterOfDraft(std::string_view leaf);

}  // namespace vastrelline
