// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "formats/FrameFile.h"
#include "messages/ToolError.h"

namespace vastrelline {

// The frames that a workbench may show, read when they are asked for. Of those that were read the newest stay
// in memory. May be asked on several threads.
class FrameShelf {
public:
    // paths   each a file
    FrameShelf(std::vector<std::string> paths, RawSizes sizes);

    struct Item {
        std::string path;
        std::string name;   // without the folder that all have in common
        int32_t width = 0;  // 0: not read yet
        int32_t height = 0;
        std::optional<ToolError> error;  // of the last reading
    };
    size_t Count() const { return items_.size(); }
    std::vector<Item> Items() const;
    std::string NameOf(size_t index) const { return items_.at(index).name; }
    std::string PathOfItem(size_t index) const { return items_.at(index).path; }

    // Errors   as LoadFrameFile
    std::shared_ptr<const LoadedFrame> Load(size_t index);

private:
    static constexpr size_t kKept = 4;

    RawSizes sizes_;
    mutable std::mutex mutex_;
    std::vector<Item> items_;
    std::deque<std::pair<size_t, std::shared_ptr<const LoadedFrame>>> kept_;
};

}  // namespace vastrelline
