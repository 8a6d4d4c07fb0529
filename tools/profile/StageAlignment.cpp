// SPDX-License-Identifier: Apache-2.0
#include "profile/StageAlignment.h"

#include <algorithm>

namespace vastrelline {

namespace {

// Lists that are longer are nobody's work; their stages are only counted off.
constexpr size_t kMostCells = 4000000;
constexpr size_t kOneStage = 1000;  // more than any likeness

using Pairs = std::vector<std::optional<size_t>>;  // of the first list: the place in the second

class Table {
public:
    Table(std::span<const int32_t> first, std::span<const int32_t> second,
          const std::function<size_t(size_t, size_t)>& likeness)
        : first_(first),
          second_(second),
          likeness_(likeness),
          width_(second.size() + 1),
          best_((first.size() + 1) * width_) {}

    Pairs Align() {
        for (size_t i = first_.size(); i-- > 0;)
            for (size_t j = second_.size(); j-- > 0;)
                Best(i, j) = std::max({Best(i + 1, j), Best(i, j + 1), Paired(i, j)});
        Pairs pairs(first_.size());
        size_t i = 0;
        size_t j = 0;
        while (i < first_.size() && j < second_.size()) {
            if (first_[i] == second_[j] && Best(i, j) == Paired(i, j)) {
                pairs[i++] = j++;
            } else if (Best(i, j) == Best(i + 1, j)) {
                ++i;
            } else {
                ++j;
            }
        }
        return pairs;
    }

private:
    size_t& Best(size_t i, size_t j) { return best_[i * width_ + j]; }

    size_t Paired(size_t i, size_t j) {
        return first_[i] == second_[j] ? Best(i + 1, j + 1) + kOneStage + likeness_(i, j) : 0;
    }

    std::span<const int32_t> first_;
    std::span<const int32_t> second_;
    const std::function<size_t(size_t, size_t)>& likeness_;
    size_t width_;
    std::vector<size_t> best_;
};

// The stages of the second list that the pairs leave over, kind by kind, go to what the first leaves over.
std::vector<bool> PairMoved(std::span<const int32_t> first, std::span<const int32_t> second, Pairs& pairs) {
    std::vector<bool> isTaken(second.size());
    for (const std::optional<size_t>& pair : pairs)
        if (pair) isTaken[*pair] = true;
    std::vector<bool> isMoved(first.size());
    size_t left = static_cast<size_t>(std::count(isTaken.begin(), isTaken.end(), false));
    for (size_t i = 0; i < first.size() && left > 0; ++i) {
        if (pairs[i]) continue;
        for (size_t j = 0; j < second.size(); ++j) {
            if (isTaken[j] || second[j] != first[i]) continue;
            pairs[i] = j;
            isTaken[j] = true;
            isMoved[i] = true;
            --left;
            break;
        }
    }
    return isMoved;
}

Pairs PairByPlace(std::span<const int32_t> first, std::span<const int32_t> second) {
    Pairs pairs(first.size());
    for (size_t i = 0; i < std::min(first.size(), second.size()); ++i)
        if (first[i] == second[i]) pairs[i] = i;
    return pairs;
}

}  // namespace

std::vector<AlignedStage> AlignStages(std::span<const int32_t> first, std::span<const int32_t> second,
                                      const std::function<size_t(size_t, size_t)>& likeness) {
    const bool isLong = (first.size() + 1) > kMostCells / (second.size() + 1);
    Pairs pairs = isLong ? PairByPlace(first, second) : Table(first, second, likeness).Align();
    const std::vector<bool> isMoved =
        isLong ? std::vector<bool>(first.size()) : PairMoved(first, second, pairs);
    std::vector<bool> isShown(second.size());
    for (const std::optional<size_t>& pair : pairs)
        if (pair) isShown[*pair] = true;
    std::vector<AlignedStage> aligned;
    size_t next = 0;  // in the second list
    const auto addBefore = [&](size_t end) {
        for (; next < end; ++next)
            if (!isShown[next]) aligned.push_back({std::nullopt, next, false});
    };
    for (size_t i = 0; i < first.size(); ++i) {
        if (pairs[i] && !isMoved[i]) addBefore(*pairs[i]);
        aligned.push_back({i, pairs[i], isMoved[i]});
    }
    addBefore(second.size());
    return aligned;
}

}  // namespace vastrelline
