// SPDX-License-Identifier: Apache-2.0
#include "workbench/FrameShelf.h"

#include <filesystem>
#include <utility>

#include "platform/PathText.h"

namespace vastrelline {
namespace {

// The length of what all begin with, up to a separator.
size_t CommonFolder(const std::vector<std::string>& paths) {
    size_t common = paths.empty() ? 0 : paths.front().size();
    for (const std::string& path : paths) {
        size_t same = 0;
        while (same < common && same < path.size() && path[same] == paths.front()[same]) ++same;
        common = same;
    }
    while (common > 0 && paths.front()[common - 1] != '/' && paths.front()[common - 1] != '\\') --common;
    return common;
}

}  // namespace

FrameShelf::FrameShelf(std::vector<std::string> paths, RawSizes sizes) : sizes_(sizes) {
    const size_t folder = paths.size() == 1
                              ? paths.front().find_last_of("/\\") + 1  // npos + 1 is 0: all of it
                              : CommonFolder(paths);
    for (std::string& path : paths) {
        std::string name = path.substr(folder);
        items_.push_back({std::move(path), std::move(name), 0, 0, std::nullopt});
    }
}

std::vector<FrameShelf::Item> FrameShelf::Items() const {
    const std::lock_guard lock(mutex_);
    return items_;
}

std::shared_ptr<const LoadedFrame> FrameShelf::Load(size_t index) {
    const std::lock_guard lock(mutex_);
    for (const auto& [place, frame] : kept_)
        if (place == index) return frame;
    Item& item = items_.at(index);
    try {
        auto frame = std::make_shared<const LoadedFrame>(LoadFrameFile(item.path, sizes_));
        item.width = frame->frame.width;
        item.height = frame->frame.height;
        item.error.reset();
        kept_.emplace_front(index, frame);
        if (kept_.size() > kKept) kept_.pop_back();
        return frame;
    } catch (const ToolError& error) {
        item.error = error;
        throw;
    }
}

}  // namespace vastrelline
