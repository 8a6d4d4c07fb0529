// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "operators/separable/SeparableFilter.h"
#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// Gives row y of a frame, `width` pixels that stay until it is asked again. It may be asked for a row more
// than once, and in any order.
using RowSource = std::function<const uint16_t*(int32_t y)>;
// Takes row y of a result. Rows come once each, from the top.
using RowSink = std::function<void(int32_t y, const uint16_t* row)>;

// A filter of a frame that nobody keeps: its rows are made when they are needed, and what becomes of them is
// taken row by row. It spares the memory of a whole frame, whose first touch alone can take as long as a
// short kernel.
struct RowFilterCall {
    int32_t width;
    int32_t height;
    int32_t maxValue;
    std::span<const double> kernel;  // as in FilterCall
    EdgeRule edges;
    RowSource sourceRow;
    RowSink takeRow;
};

// Exactly what FilterFrame gives for a frame of these rows. An empty frame or kernel does nothing.
void FilterRows(const RowFilterCall& call);

// What GaussFilterReplicate gives for a frame of these rows; where that leaves a frame as it is, the rows
// themselves.
void GaussRowsReplicate(int32_t width, int32_t height, int32_t maxValue, double sigma,
                        const RowSource& sourceRow, const RowSink& takeRow);

// A form of FilterRows.
using RowFilterVariant = Variant<void (*)(const RowFilterCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const RowFilterVariant> RowFilterVariants();

// The definition.
void FilterRowsScalar(const RowFilterCall& call);

#if VASTRELLINE_VECTOR_FORMS
void FilterRowsBaseline(const RowFilterCall& call);
void FilterRowsAvx2(const RowFilterCall& call);
void FilterRowsAvx512(const RowFilterCall& call);
#endif

}  // namespace vastrelline
