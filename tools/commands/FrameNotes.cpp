// SPDX-License-Identifier: Apache-2.0
#include "commands/FrameNotes.h"

#include <algorithm>

#include "files/FileKind.h"
#include "frames/FrameSize.h"

namespace vastrelline {

void ShowFrameNotes(const std::string& path, const LoadedFrame& loaded, Messages& messages) {
    for (const std::string& note : loaded.notes) {
        Finding finding;
        finding.file = path;
        finding.text = note;
        messages.Show(finding);
    }
}

std::string DescribeFrame(const LoadedFrame& loaded) {
    const Frame& frame = loaded.frame;
    const auto [least, greatest] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    return std::string(FileKindName(loaded.kind)) + ", " + FormatFrameSize({frame.width, frame.height}) +
           " pixels, levels " + std::to_string(*least) + " to " + std::to_string(*greatest);
}

}  // namespace vastrelline
