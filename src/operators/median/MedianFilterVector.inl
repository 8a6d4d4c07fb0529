// SPDX-License-Identifier: Apache-2.0

// The sorting networks of the median on vectors of neighbouring pixels, once for each instruction set: the
// including file defines TARGET, Vector, kLanes, Load, Store, LoadPixels, StorePixels, Minimum and Maximum.
// Between LoadPixels and StorePixels a lane may hold a pixel in any form that keeps the order.

// Part of a network, which becomes one long run of vector operations. Checks of undefined behaviour at each
// of its thousands of steps, all at places that are constants, would make builds with them take minutes;
// memory is checked all the same.
#define TARGET_INLINE __attribute__((always_inline, no_sanitize("undefined"))) TARGET inline

// Columns of the result that go through the networks before the next ones: their lists stay in the cache.
constexpr size_t kStrip = 256;
// Room for the columns that the last window of a strip reaches beyond it.
constexpr size_t kPlaneWidth = kStrip + 32;
constexpr size_t kScratchPixels = FirstPlane(8, kMostCommonRows) * kPlaneWidth;

// The place of the vector after that at x. The last one ends with the line and may overlap the one before.
TARGET_INLINE size_t NextVector(size_t x, size_t count) {
    return x + kLanes < count ? std::min(x + kLanes, count - kLanes) : count;
}

// Inputs of a network: the wires' pixels or values at one place.

struct ColumnInput {
    const uint16_t* top;
    size_t stride;

    template <size_t Wire>
    TARGET_INLINE Vector Get() const {
        return LoadPixels(top + Wire * stride);
    }
};

// Two lists of equal length in the same planes.
template <size_t Count>
struct JoinInput {
    const uint16_t* first;
    const uint16_t* second;

    template <size_t Wire>
    TARGET_INLINE Vector Get() const {
        return Load(Wire < Count ? first + Wire * kPlaneWidth : second + (Wire - Count) * kPlaneWidth);
    }
};

template <typename Shape>
struct MiddleInput {
    const uint16_t* planes;

    template <size_t Wire>
    TARGET_INLINE Vector Get() const {
        constexpr auto kPlace = MiddlePlan<Shape>::kMiddle.places[Wire];
        return Load(planes + kPlace.plane * kPlaneWidth + kPlace.column);
    }
};

template <typename Shape>
struct LastInput {
    const Vector* middle;
    const uint16_t* row;

    template <size_t Wire>
    TARGET_INLINE Vector Get() const {
        if constexpr (Wire < Shape::kMiddle)
            return middle[Wire];
        else
            return LoadPixels(row + (Wire - Shape::kMiddle));
    }
};

template <typename Plan, size_t Index, typename Input>
TARGET_INLINE void RunStep(Vector* wires, const Input& input) {
    constexpr NetworkStep kStep = Plan::kNetwork.steps[Index];
    if constexpr (kStep.kind == StepKind::Load) {
        wires[kStep.low] = input.template Get<kStep.low>();
    } else {
        const Vector a = wires[kStep.low];
        const Vector b = wires[kStep.high];
        if constexpr (kStep.kind != StepKind::KeepUpper) wires[kStep.low] = Minimum(a, b);
        if constexpr (kStep.kind != StepKind::KeepLower) wires[kStep.high] = Maximum(a, b);
    }
}

template <typename Plan, typename Input, size_t... Index>
TARGET_INLINE void RunSteps(Vector* wires, const Input& input, std::index_sequence<Index...>) {
    // A list, as a fold over so many steps nests deeper than compilers allow.
    static_cast<void>(std::initializer_list<int>{(RunStep<Plan, Index>(wires, input), 0)...});
}

template <typename Plan, typename Input>
TARGET_INLINE void RunNetwork(Vector* wires, const Input& input) {
    RunSteps<Plan>(wires, input, std::make_index_sequence<Plan::kNetwork.count>());
}

template <typename Plan, size_t... Index>
TARGET_INLINE void StoreList(const Vector* wires, uint16_t* out, std::index_sequence<Index...>) {
    static_cast<void>(std::initializer_list<int>{
        (Store(out + Index * kPlaneWidth, wires[Plan::kNetwork.outputs[Index]]), 0)...});
}

// Runs a network and stores its outputs, each in a plane of its own.
template <typename Plan, typename Input>
TARGET_INLINE void MakeList(const Input& input, uint16_t* out) {
    constexpr size_t kCount = Plan::kNetwork.outputs.count;
    Vector wires[kCount];
    RunNetwork<Plan>(wires, input);
    StoreList<Plan>(wires, out, std::make_index_sequence<kCount>());
}

template <size_t Count>
TARGET void SortColumns(const uint16_t* top, size_t stride, size_t count, uint16_t* planes) {
    for (size_t x = 0; x < count; x = NextVector(x, count))
        MakeList<SortPlan<Count>>(ColumnInput{top + x, stride}, planes + x);
}

template <size_t Count>
TARGET void JoinLists(const uint16_t* planes, size_t distance, size_t count, uint16_t* out) {
    for (size_t x = 0; x < count; x = NextVector(x, count))
        MakeList<JoinPlan<Count>>(JoinInput<Count>{planes + x, planes + x + distance}, out + x);
}

template <typename Plan, size_t... Index>
TARGET_INLINE void GatherOutputs(const Vector* wires, Vector* out, std::index_sequence<Index...>) {
    static_cast<void>(std::initializer_list<int>{
        (static_cast<void>(out[Index] = wires[Plan::kNetwork.outputs[Index]]), 0)...});
}

template <typename Shape>
TARGET_INLINE void SelectMiddle(const uint16_t* planes, Vector* middle) {
    Vector wires[Shape::kCommon];
    RunNetwork<MiddlePlan<Shape>>(wires, MiddleInput<Shape>{planes});
    GatherOutputs<MiddlePlan<Shape>>(wires, middle, std::make_index_sequence<Shape::kMiddle>());
}

template <typename Shape>
TARGET_INLINE void SelectMedian(const Vector* middle, const uint16_t* row, uint16_t* out) {
    Vector wires[Shape::kMiddle + Shape::kWidth];
    RunNetwork<LastPlan<Shape>>(wires, LastInput<Shape>{middle, row});
    StorePixels(out, wires[LastPlan<Shape>::kNetwork.outputs[0]]);
}

// Two rows of the result, `count` columns of each.
//
// top   the first pixel of the upper row's first window
template <typename Shape>
TARGET void FilterTwoRows(const uint16_t* top, size_t stride, size_t count, uint16_t* planes, uint16_t* out) {
    constexpr size_t kRows = Shape::kCommonRows;
    uint16_t* pairs = planes + FirstPlane(2, kRows) * kPlaneWidth;
    uint16_t* fours = planes + FirstPlane(4, kRows) * kPlaneWidth;
    const uint16_t* common = top + stride;
    const uint16_t* bottom = common + kRows * stride;
    if constexpr (kRows > 0) SortColumns<kRows>(common, stride, count + Shape::kWidth - 1, planes);
    if constexpr (Shape::kUsesPairs) JoinLists<kRows>(planes, 1, count + Shape::kWidth - 2, pairs);
    if constexpr (Shape::kUsesFours) JoinLists<2 * kRows>(pairs, 2, count + Shape::kWidth - 4, fours);
    for (size_t x = 0; x < count; x = NextVector(x, count)) {
        Vector middle[Shape::kMiddle + 1];
        if constexpr (kRows > 0) SelectMiddle<Shape>(planes + x, middle);
        SelectMedian<Shape>(middle, top + x, out + x);
        SelectMedian<Shape>(middle, bottom + x, out + stride + x);
    }
}

// The same for windows of a single column, whose list no other window reads.
template <typename Shape>
TARGET void FilterTwoRowsOfColumns(const uint16_t* top, size_t stride, size_t count, uint16_t* out) {
    const uint16_t* common = top + stride;
    const uint16_t* bottom = common + Shape::kCommonRows * stride;
    for (size_t x = 0; x < count; x = NextVector(x, count)) {
        Vector wires[Shape::kCommonRows];
        RunNetwork<ColumnPlan<Shape>>(wires, ColumnInput{common + x, stride});
        Vector middle[Shape::kMiddle];
        GatherOutputs<ColumnPlan<Shape>>(wires, middle, std::make_index_sequence<Shape::kMiddle>());
        SelectMedian<Shape>(middle, top + x, out + x);
        SelectMedian<Shape>(middle, bottom + x, out + stride + x);
    }
}

// The whole call; at least two rows and kLanes columns have windows.
template <size_t Width, size_t Height>
TARGET void FilterWindow(const MedianCall& call, uint16_t* planes) {
    using Shape = WindowShape<Width, Height>;
    const auto stride = static_cast<size_t>(call.width);
    const size_t columns = stride - 2 * (Width / 2);
    // An odd last row is made together with the one above it, which is made again.
    for (int32_t y = call.firstRow; y <= call.lastRow; y += 2) {
        const auto row = static_cast<size_t>(std::min(y, call.lastRow - 1));
        const uint16_t* top = call.source + (row - Height / 2) * stride;
        uint16_t* out = call.destination + row * stride + Width / 2;
        for (size_t x = 0; x < columns; x += kStrip) {
            const size_t first = std::min(x, columns - kLanes);
            const size_t count = std::min(kStrip, columns - first);
            if constexpr (Width == 1)
                FilterTwoRowsOfColumns<Shape>(top + first, stride, count, out + first);
            else
                FilterTwoRows<Shape>(top + first, stride, count, planes, out + first);
        }
    }
}

template <size_t Width, size_t Height>
constexpr MedianKernel kKernelFor = {Width, Height, FilterWindow<Width, Height>};

constexpr MedianKernel kKernels[] = {
    kKernelFor<3, 1>,  kKernelFor<5, 1>,  kKernelFor<7, 1>,   kKernelFor<9, 1>,   kKernelFor<11, 1>,
    kKernelFor<13, 1>, kKernelFor<15, 1>, kKernelFor<1, 3>,   kKernelFor<1, 5>,   kKernelFor<1, 7>,
    kKernelFor<1, 9>,  kKernelFor<1, 11>, kKernelFor<1, 13>,  kKernelFor<1, 15>,  kKernelFor<2, 2>,
    kKernelFor<3, 3>,  kKernelFor<4, 4>,  kKernelFor<5, 5>,   kKernelFor<6, 6>,   kKernelFor<7, 7>,
    kKernelFor<8, 8>,  kKernelFor<9, 9>,  kKernelFor<11, 11>, kKernelFor<13, 13>, kKernelFor<15, 15>,
};
