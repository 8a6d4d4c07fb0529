// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace vastrelline {

// A stage of one list, of the other, or one in both.
struct AlignedStage {
    std::optional<size_t> first;   // its place in the first list
    std::optional<size_t> second;  // its place in the second
    bool isMoved = false;          // in both, but not in the same order as the others
};

// Sets the stages of two lists side by side by their kinds, whatever their positions: as many as can stand in
// one order (a longest common subsequence, Wagner and Fischer 1974), among equally many the most alike. What
// is left over in both is a stage that was moved, first to first.
//
// likeness   how alike two stages of one kind are, 0 to 999
// Returns    in the order of the first list; what only the second has stands where it stands there
std::vector<AlignedStage> AlignStages(std::span<const int32_t> first, std::span<const int32_t> second,
                                      const std::function<size_t(size_t, size_t)>& likeness);

}  // namespace vastrelline
