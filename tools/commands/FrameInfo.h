// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "formats/FrameFile.h"
#include "frames/FlatCorners.h"
#include "frames/FrameStatistics.h"

namespace vastrelline {

// What `info` tells of a frame.
struct FrameInfo {
    std::string path;
    FileKind kind = FileKind::Raw;
    FrameSize size;
    int sourceBits = 16;
    FrameStatistics levels;
    std::array<FlatCorner, kCorners.size()> corners{};  // in the order of kCorners
    std::vector<std::string> notes;                     // of the reading
    std::vector<std::string> advice;                    // what to know before a run, a sentence each
    std::string next;                                   // a command that comes next
};

// loaded   has at least one pixel
FrameInfo DescribeLoadedFrame(const std::string& path, const LoadedFrame& loaded);

// One block of lines, the path first; ends with a line end.
std::string FormatFrameInfo(const FrameInfo& info);

// A text as one word of a command line: in single quotes if a shell would read it otherwise.
std::string ShellWord(const std::string& text);

}  // namespace vastrelline
