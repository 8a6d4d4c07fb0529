// SPDX-License-Identifier: Apache-2.0
#include "operators/median/SortInts.h"

namespace vastrelline {

namespace {

// Moves the first value to its place in the order, the values that belong below it to the left of that place
// and those that belong above it to the right, and returns the place.
int32_t PartitionInts(int32_t* values, int32_t left, int32_t right) {
    const int32_t pivot = values[left];  // its place is the hole
    while (left < right) {
        while (left < right && values[right] >= pivot) --right;
        if (left == right) break;
        values[left++] = values[right];
        while (left < right && values[left] <= pivot) ++left;
        if (left == right) break;
        values[right--] = values[left];
    }
    values[left] = pivot;
    return left;
}

}  // namespace

void SortInts(int32_t* values, int32_t count) {
    if (count > 1) SortIntRange(values, 0, count - 1);
}

void SortIntRange(int32_t* values, int32_t left, int32_t right) {
    // The larger part is sorted by the next turn and only the smaller one by a call, so that the depth stays
    // below 32: windows of equal pixels, the usual case in a flat area, would otherwise nest once per pixel.
    while (left < right) {
        const int32_t middle = PartitionInts(values, left, right);
        if (middle - left < right - middle) {
            SortIntRange(values, left, middle - 1);
            left = middle + 1;
        } else {
            SortIntRange(values, middle + 1, right);
            right = middle - 1;
        }
    }
}

}  // namespace vastrelline
