#pragma once

#include <functional>
#include <optional>
#include <string>

namespace vastrelline {

// All bytes of a regular file. Nothing: it is missing, cannot be read or is no regular file.
std::optional<std::string> ReadFileContents(const std::string& path);

enum class ContentsEdit { Keep, Replace, Refuse };

// Whether an edit looks at the bytes that a file holds.
enum class OldContents { Read, Ignore };

// Changes a file as a whole: reads it, lets `edit` change the bytes, and puts the new ones in its place
// without ever leaving less than one whole version, neither on a full disk nor after a crash. Writers of
// several threads and processes wait for each other, so no change is lost.
//
// old             Ignore: `edit` gets no bytes, whatever the file holds
// missing file    `edit` gets no bytes; the file is made with the usual mode
// symbolic links  followed: the file at their end is changed, the links stay
// mode and owner  stay
// Result          false, and the file as it was: a missing folder, a file without any write permission in
//                 its mode (whoever asks) or without that of the caller, no regular file, a folder that
//                 takes no new file, an owner who cannot be kept, another writer who does not end, no room,
//                 or an edit that refuses
bool UpdateFileContents(const std::string& path, const std::function<ContentsEdit(std::string&)>& edit,
                        OldContents old = OldContents::Read);

}  // namespace vastrelline
