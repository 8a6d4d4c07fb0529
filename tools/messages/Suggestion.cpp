// SPDX-License-Identifier: Apache-2.0
#include "messages/Suggestion.h"

#include <algorithm>
#include <vector>

namespace vastrelline {
namespace {

// Longer texts are no misspelt names, and the comparison grows with the square.
constexpr size_t kLongestName = 260;

char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

size_t EditDistance(std::string_view one, std::string_view other) {
    const size_t width = other.size() + 1;
    std::vector<size_t> beforeLast(width);
    std::vector<size_t> last(width);
    std::vector<size_t> row(width);
    for (size_t j = 0; j < width; ++j) last[j] = j;
    for (size_t i = 1; i <= one.size(); ++i) {
        row[0] = i;
        for (size_t j = 1; j < width; ++j) {
            const char a = ToLower(one[i - 1]);
            const char b = ToLower(other[j - 1]);
            row[j] = std::min({row[j - 1] + 1, last[j] + 1, last[j - 1] + (a == b ? 0 : 1)});
            if (i > 1 && j > 1 && a == ToLower(other[j - 2]) && ToLower(one[i - 2]) == b)
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last[other.size()];
}

std::string FindNearest(std::string_view written, std::span<const std::string> candidates) {
    if (written.empty() || written.size() > kLongestName) return {};
    std::string nearest;
    size_t least = std::max<size_t>(written.size() / 3, 1) + 1;
    for (const std::string& candidate : candidates) {
        if (candidate.size() > kLongestName) continue;
        const size_t distance = EditDistance(written, candidate);
        if (distance >= least || distance >= candidate.size()) continue;
        least = distance;
        nearest = candidate;
    }
    return nearest;
}

std::string DidYouMean(std::string_view written, std::span<const std::string> candidates,
                       std::string_view otherwise) {
    const std::string nearest = FindNearest(written, candidates);
    return nearest.empty() ? std::string(otherwise) : "did you mean '" + nearest + "'?";
}

}  // namespace vastrelline
