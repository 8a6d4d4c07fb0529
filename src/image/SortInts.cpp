#include "image/SortInts.h"

namespace vastrelline {

void SortInts(int32_t* values, int32_t count) {
    if (count > 1) SortIntRange(values, 0, count - 1);
}

void SortIntRange(int32_t* values, int32_t left, int32_t right) {
    const int32_t first = left;
    const int32_t last = right;
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
    if (first < left - 1) SortIntRange(values, first, left - 1);
    if (left + 1 < last) SortIntRange(values, left + 1, last);
}

}  // namespace vastrelline
