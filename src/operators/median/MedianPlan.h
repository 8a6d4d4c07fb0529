// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "operators/median/MedianNetwork.h"

namespace vastrelline {

// How the vector forms of the median share the work of windows that overlap. Two windows one above the other
// have all rows in common but one each. The columns of these common rows are sorted, once for all windows
// that hold them; neighbours of these are merged to pairs, and pairs to fours, once for each place. A
// window's columns are then a few sorted lists, of which only the middle is wanted: the values that can be
// the median once the row comes in that the two windows do not share. That row joins last.

// The most rows in common that a network is made for.
constexpr size_t kMostCommonRows = 14;

// Sorts a column of the common rows.
template <size_t Count>
struct SortPlan {
    static constexpr Network kNetwork = [] {
        NetworkBuilder builder;
        return builder.Finish(builder.Sort(0, Count));
    }();
};

// Merges two sorted lists of equal length.
template <size_t Count>
struct JoinPlan {
    static constexpr Network kNetwork = [] {
        NetworkBuilder builder;
        return builder.Finish(builder.Merge(builder.Ascending(0, Count), builder.Ascending(Count, Count)));
    }();
};

template <size_t Width, size_t Height>
struct WindowShape {
    static_assert(Height <= kMostCommonRows + 1);
    static constexpr size_t kWidth = Width;
    static constexpr size_t kCommonRows = Height - 1;
    static constexpr size_t kCommon = Width * kCommonRows;
    static constexpr size_t kRank = Width * Height / 2;
    // The common values that can be the median rank from kLow to kHigh among themselves.
    static constexpr size_t kLow = kCommon > 0 && kRank > Width ? kRank - Width : 0;
    static constexpr size_t kHigh = std::min(kRank, std::max<size_t>(kCommon, 1) - 1);
    static constexpr size_t kMiddle = kCommon > 0 ? kHigh - kLow + 1 : 0;
    // A list that only one window reads is not worth being stored.
    static constexpr bool kUsesPairs = kCommonRows > 0 && Width >= 4;
    static constexpr bool kUsesFours = kCommonRows > 0 && Width >= 8;
};

// Lists lie in planes, one plane for each rank: those of single columns first, of pairs next, then of fours.
// A plane's place x holds the list that begins at column x.
constexpr size_t FirstPlane(size_t columnsInList, size_t commonRows) {
    return (columnsInList - 1) * commonRows;
}

// The columns of the longest list stored that fits into the window from a column on.
template <typename Shape>
constexpr size_t ColumnsOfListAt(size_t column) {
    if (Shape::kUsesFours && column + 4 <= Shape::kWidth) return 4;
    return Shape::kUsesPairs && column + 2 <= Shape::kWidth ? 2 : 1;
}

// The network that selects the middle of the common rows, and where its inputs lie.
template <size_t Count>
struct MiddleNetwork {
    struct Place {
        size_t plane = 0;
        size_t column = 0;
    };
    std::array<Place, Count> places{};  // by wire
    Network network;
};

template <typename Shape>
constexpr MiddleNetwork<Shape::kCommon> MakeMiddleNetwork() {
    MiddleNetwork<Shape::kCommon> middle;
    NetworkBuilder builder;
    WireList merged;  // what can be in the middle of all lists so far
    size_t wires = 0;
    size_t low = Shape::kLow;  // the ranks wanted, counted without what has been left out below
    size_t high = Shape::kHigh;
    for (size_t column = 0; column < Shape::kWidth;) {
        const size_t columns = ColumnsOfListAt<Shape>(column);
        const size_t size = columns * Shape::kCommonRows;
        const size_t plane = FirstPlane(columns, Shape::kCommonRows);
        for (size_t i = 0; i < size; ++i) middle.places[wires + i] = {plane + i, column};
        const WireList list = builder.Ascending(wires, size);
        wires += size;
        column += columns;
        const size_t toCome = Shape::kCommon - wires;
        const size_t lowest = low > toCome ? low - toCome : 0;
        const size_t highest = std::min(high, merged.count + size - 1);
        merged = builder.Select(merged, list, lowest, highest);
        low -= lowest;
        high -= lowest;
    }
    middle.network = builder.Finish(merged);
    return middle;
}

template <typename Shape>
struct MiddlePlan {
    static constexpr MiddleNetwork<Shape::kCommon> kMiddle = MakeMiddleNetwork<Shape>();
    static constexpr const Network& kNetwork = kMiddle.network;
};

// Selects the middle of a window's only column in common.
template <typename Shape>
struct ColumnPlan {
    static constexpr Network kNetwork = [] {
        NetworkBuilder builder;
        return builder.Finish(builder.Sort(0, Shape::kCommonRows).Part(Shape::kLow, Shape::kMiddle));
    }();
};

// Selects the median from the middle of the common rows, on the first wires, and the row that joins last.
template <typename Shape>
struct LastPlan {
    static constexpr Network kNetwork = [] {
        NetworkBuilder builder;
        const WireList row = builder.Sort(Shape::kMiddle, Shape::kWidth);
        const size_t rank = Shape::kRank - Shape::kLow;
        return builder.Finish(builder.Select(builder.Ascending(0, Shape::kMiddle), row, rank, rank));
    }();
};

}  // namespace vastrelline
