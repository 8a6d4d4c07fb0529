// SPDX-License-Identifier: Apache-2.0
#include "ExpectedList.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "Sha256.h"

namespace vastrelline::digest {

namespace {

constexpr size_t kNameColumns = 26;
constexpr size_t kHashDigits = 64;

GroupHash ReadLine(const std::string_view line) {
    GroupHash group;
    std::vector<std::string> words;
    for (size_t at = 0; at < line.size();) {
        const size_t begin = line.find_first_not_of(' ', at);
        if (begin == std::string_view::npos) break;
        at = std::min(line.find(' ', begin), line.size());
        words.emplace_back(line.substr(begin, at - begin));
    }
    if (words.size() == 3 && words[1].size() == kHashDigits) {
        const std::string& count = words[2];
        const auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), group.runCount);
        if (error == std::errc() && end == count.data() + count.size()) {
            group.name = words[0];
            group.hash = words[1];
            return group;
        }
    }
    throw std::runtime_error("no line of a digest: " + std::string(line));
}

const GroupHash* Find(const std::vector<GroupHash>& groups, const std::string& name) {
    const auto found =
        std::find_if(groups.begin(), groups.end(), [&](const auto& it) { return it.name == name; });
    return found == groups.end() ? nullptr : &*found;
}

}  // namespace

std::string WriteList(const std::vector<GroupHash>& groups) {
    std::string text;
    for (const GroupHash& group : groups) {
        text += group.name;
        text.append(kNameColumns - std::min(kNameColumns, group.name.size()), ' ');
        text.append("  ").append(group.hash).append("  ").append(std::to_string(group.runCount)).append("\n");
    }
    return text;
}

std::vector<GroupHash> ReadList(std::string_view text) {
    std::vector<GroupHash> groups;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!line.empty() && !line.starts_with('#')) groups.push_back(ReadLine(line));
    }
    return groups;
}

GroupHash HashOfAll(const std::vector<GroupHash>& groups) {
    GroupHash all{"all", "", 0};
    for (const GroupHash& group : groups) all.runCount += group.runCount;
    all.hash = Sha256Of(WriteList(groups));
    return all;
}

std::vector<std::string> CompareLists(const std::vector<GroupHash>& expected,
                                      const std::vector<GroupHash>& actual) {
    std::vector<std::string> findings;
    for (const GroupHash& group : expected) {
        const GroupHash* found = Find(actual, group.name);
        if (found == nullptr) {
            findings.push_back(group.name + " is missing");
        } else if (*found != group) {
            findings.push_back(group.name + " differs");
        }
    }
    for (const GroupHash& group : actual)
        if (Find(expected, group.name) == nullptr) findings.push_back(group.name + " is not expected");
    return findings;
}

}  // namespace vastrelline::digest
