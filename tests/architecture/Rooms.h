// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "IncludeGraph.h"
#include "ParsedTree.h"
#include "TreeFiles.h"

namespace vastrelline {

struct Room {
    std::string folder;
    int rank;
    bool isCorridor = false;              // its folders are the rooms, each on its own
    std::vector<std::string> inner = {};  // folders of the room whose headers are for the room only
};

struct HouseRules {
    std::vector<Room> rooms;
    std::vector<std::pair<std::string, std::string>> arrowsOnOneFloor;  // from, to: though of the same rank
    std::map<std::string, std::string> guests;  // headers of other trees, and the room they count to
};

// The room of a file or of a folder's file, such as "config" or "stages/gamma"; empty if there is none.
std::string RoomOf(const HouseRules& rules, const std::string& path);

// Each function lists what breaks its rule, one line each, and nothing if all is well.

// A file includes files of its own room and of rooms of a lower rank, by their path below the top folder.
std::vector<std::string> FindWrongIncludes(const Graph& includes, const HouseRules& rules);

// Every arrow on one floor that the rules allow is there.
std::vector<std::string> FindIdleArrows(const Graph& includes, const HouseRules& rules);

// Every file lies in a room, but for these of the top folder.
std::vector<std::string> FindHomelessFiles(const SourceTree& tree, const HouseRules& rules,
                                           const std::vector<std::string>& topFiles);

// A name without its ending stands in one folder only, whatever the case of its letters.
std::vector<std::string> FindRepeatedBaseNames(const SourceTree& tree);

// Headers of the operating system are met in one room only.
std::vector<std::string> FindSystemHeadersOutside(const ParsedTree& tree, const HouseRules& rules,
                                                  const std::string& room);

}  // namespace vastrelline
