// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace vastrelline {

// The elements of a vector of any allocator, to compare with those that a test writes out.
template <typename Element, typename Allocator>
std::vector<Element> ToVector(const std::vector<Element, Allocator>& elements) {
    return std::vector<Element>(elements.begin(), elements.end());
}

}  // namespace vastrelline
