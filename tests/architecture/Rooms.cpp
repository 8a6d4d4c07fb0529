// SPDX-License-Identifier: Apache-2.0
#include "Rooms.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace vastrelline {

namespace {

const Room* FindRoom(const HouseRules& rules, const std::string& path) {
    for (const Room& room : rules.rooms)
        if (path.starts_with(room.folder + "/")) return &room;
    return nullptr;
}

bool IsInner(const Room& room, const std::string& path) {
    return std::any_of(room.inner.begin(), room.inner.end(), [&](const std::string& folder) {
        return FolderOf(path) == room.folder + "/" + folder;
    });
}

// Why `from` may not include `to`, two files with a room each; empty if it may.
std::string RefuseArrow(const HouseRules& rules, const std::string& from, const std::string& to) {
    const std::string fromRoom = RoomOf(rules, from);
    const std::string toRoom = RoomOf(rules, to);
    if (fromRoom == toRoom) return "";
    const Room& upper = *FindRoom(rules, from);
    const Room& lower = *FindRoom(rules, to);
    if (IsInner(lower, to)) return "that is " + toRoom + "'s own: use its header of the facility";
    if (upper.rank > lower.rank) return "";
    const auto& allowed = rules.arrowsOnOneFloor;
    if (std::find(allowed.begin(), allowed.end(), std::pair(fromRoom, toRoom)) != allowed.end()) return "";
    return fromRoom + " (rank " + std::to_string(upper.rank) + ") sees lower ranks only, and " + toRoom +
           " has " + std::to_string(lower.rank) +
           ": pass in what it needs, or move what both need to a room below";
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace

std::string RoomOf(const HouseRules& rules, const std::string& path) {
    const auto guest = rules.guests.find(path);
    if (guest != rules.guests.end()) return guest->second;
    const Room* const room = FindRoom(rules, path);
    if (room == nullptr) return "";
    const std::string folder = FolderOf(path);
    if (!room->isCorridor) return folder == room->folder || IsInner(*room, path) ? room->folder : "";
    const bool isRoom = FolderOf(folder) == room->folder;
    return isRoom ? folder : "";
}

std::vector<std::string> FindWrongIncludes(const Graph& includes, const HouseRules& rules) {
    std::vector<std::string> wrong;
    for (const auto& [from, targets] : includes) {
        for (const std::string& to : targets) {
            const auto guest = rules.guests.find(to);
            const bool isGuest = guest != rules.guests.end();
            if (!isGuest && !includes.contains(to)) {
                wrong.push_back(from + " includes " + to + ": no file below the top folder has this path");
                continue;
            }
            const std::string place = isGuest ? guest->second + "/" + to : to;
            if (RoomOf(rules, from).empty() || RoomOf(rules, place).empty())
                continue;  // another rule's matter
            const std::string reason = RefuseArrow(rules, from, place);
            if (!reason.empty()) wrong.push_back(from + " includes " + to + ": " + reason);
        }
    }
    return wrong;
}

std::vector<std::string> FindIdleArrows(const Graph& includes, const HouseRules& rules) {
    const Graph rooms = GroupGraph(includes, [&](const std::string& path) { return RoomOf(rules, path); });
    std::vector<std::string> idle;
    for (const auto& [from, to] : rules.arrowsOnOneFloor) {
        const auto arrows = rooms.find(from);
        if (arrows == rooms.end() || !arrows->second.contains(to))
            idle.push_back("Strike the arrow " + from + " -> " + to + ": no include needs it.");
    }
    return idle;
}

std::vector<std::string> FindHomelessFiles(const SourceTree& tree, const HouseRules& rules,
                                           const std::vector<std::string>& topFiles) {
    std::vector<std::string> homeless;
    for (const auto& [path, text] : tree) {
        const bool isTop = std::find(topFiles.begin(), topFiles.end(), path) != topFiles.end();
        if (!isTop && RoomOf(rules, path).empty())
            homeless.push_back(path + " lies in no room: move it into one, or give its folder a rank");
    }
    return homeless;
}

std::vector<std::string> FindRepeatedBaseNames(const SourceTree& tree) {
    std::map<std::string, std::set<std::string>> foldersByName;
    for (const auto& [path, text] : tree) foldersByName[LowerCase(StemOf(path))].insert(FolderOf(path));
    std::vector<std::string> repeated;
    for (const auto& [name, folders] : foldersByName) {
        if (folders.size() < 2) continue;
        std::string line = name + " stands in";
        for (const std::string& folder : folders) line += " " + folder;
        repeated.push_back(line + ": rename all but one");
    }
    return repeated;
}

std::vector<std::string> FindSystemHeadersOutside(const ParsedTree& tree, const HouseRules& rules,
                                                  const std::string& room) {
    static const std::set<std::string> systemHeaders{
        "dirent.h",   "direct.h", "dlfcn.h", "fcntl.h",   "glob.h", "io.h",     "link.h",   "poll.h",
        "shellapi.h", "signal.h", "spawn.h", "pthread.h", "pwd.h",  "unistd.h", "windows.h"};
    std::vector<std::string> wrong;
    for (const auto& [path, file] : tree) {
        if (RoomOf(rules, path) == room) continue;
        for (const std::string& header : file.text.systemIncludes) {
            if (header.starts_with("sys/") || systemHeaders.contains(header))
                wrong.push_back(path + " includes <" + header + ">: ask the system through " + room);
        }
    }
    return wrong;
}

}  // namespace vastrelline
