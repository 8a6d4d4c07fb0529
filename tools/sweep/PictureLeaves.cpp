// SPDX-License-Identifier: Apache-2.0
#include "sweep/PictureLeaves.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vastrelline {
namespace {

constexpr size_t kMostLetters = 120;  // of 255 that file systems take, where a draft's name has some more
constexpr std::string_view kEnding = ".png";

std::string PlainLetters(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             c == '.' || c == '-' || c == '+' || c == '_';
        plain += isPlain ? c : '_';
    }
    return plain;
}

std::string SmallLetters(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

}  // namespace

std::string PictureLeaves::Name(const std::vector<KeyWithValue>& settings) {
    std::string stem;
    for (const KeyWithValue& setting : settings)
        stem.append(stem.empty() ? "" : ",")
            .append(PlainLetters(setting.key))
            .append("=")
            .append(PlainLetters(setting.value));
    if (stem.starts_with('.')) stem.front() = '_';  // else it would be hidden
    stem.resize(std::min(stem.size(), kMostLetters));
    std::string leaf = stem;
    for (int number = 2; std::find(given_.begin(), given_.end(), SmallLetters(leaf)) != given_.end();
         ++number)
        leaf = stem + "_" + std::to_string(number);
    given_.push_back(SmallLetters(leaf));
    return leaf.append(kEnding);
}

}  // namespace vastrelline
