// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace vastrelline {

// A frame of a batch and the name of its result.
struct ListedFrame {
    std::string path;
    std::string result;  // relative to the output folder
};

// The frames that files, folders and patterns stand for, each once, in the order of their paths. Of a folder,
// and of the folders in it, those that end in .raw, .pgm, .png, .tif, .tiff or .bmp; what begins with a dot
// and the output folder are passed over. Patterns (* ? [...]) are for shells that leave them as they are.
//
// A result is named after its frame, with the wanted ending, and keeps the frame's folder below the deepest
// one that holds them all: frames of one name stay apart. Two that differ in their ending alone ("a.png",
// "a.raw") keep it: "a.raw.png".
//
// ending   of the results, without a dot
// Errors   InputError: an input that does not exist, a pattern that fits nothing, a folder that cannot be
// read,
//          no frame at all; UsageError: a result would be one of the frames or that of another frame
std::vector<ListedFrame> ListFrames(const std::vector<std::string>& inputs, const std::string& outputFolder,
                                    const std::string& ending);

}  // namespace vastrelline
