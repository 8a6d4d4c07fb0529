// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vastrelline {

// Networks of comparisons that sort or select, made while compiling. A wire holds one value; a comparison
// leaves the smaller value of two wires on the one and the larger on the other, whatever the values are, so
// that whole vectors of pixels run through a network without a branch.

constexpr size_t kMostWires = 256;

// Wires in the order of their values.
struct WireList {
    std::array<uint8_t, kMostWires> wires{};
    size_t count = 0;

    constexpr uint8_t operator[](size_t i) const { return wires[i]; }
    constexpr void Append(uint8_t wire) { wires[count++] = wire; }

    constexpr WireList Part(size_t first, size_t size) const {
        WireList part;
        for (size_t i = first; i < first + size; ++i) part.Append(wires[i]);
        return part;
    }

    // Every other wire, from `first` on.
    constexpr WireList Alternate(size_t first) const {
        WireList alternate;
        for (size_t i = first; i < count; i += 2) alternate.Append(wires[i]);
        return alternate;
    }
};

enum class StepKind : uint8_t {
    Load,       // `low` takes its input
    Order,      // `low` takes the smaller value, `high` the larger
    KeepLower,  // `low` takes the smaller value; `high` is not used any more
    KeepUpper,  // `high` takes the larger value; `low` is not used any more
};

struct NetworkStep {
    StepKind kind = StepKind::Load;
    uint8_t low = 0;
    uint8_t high = 0;
};

struct Network {
    std::array<NetworkStep, 2048> steps{};
    size_t count = 0;
    WireList outputs;  // ascending

    constexpr void Append(NetworkStep step) { steps[count++] = step; }
};

class NetworkBuilder {
public:
    // Wires `first` to `first + count - 1`, which their inputs hold in ascending order.
    static constexpr WireList Ascending(size_t first, size_t count) {
        WireList list;
        for (size_t i = 0; i < count; ++i) list.Append(static_cast<uint8_t>(first + i));
        return list;
    }

    // Sorts wires `first` to `first + count - 1`.
    constexpr WireList Sort(size_t first, size_t count) {
        if (count < 2) return Ascending(first, count);
        const WireList upper = Sort(first, (count + 1) / 2);
        return Merge(upper, Sort(first + upper.count, count - upper.count));
    }

    // Merges two ascending lists: the even places of both, the odd places of both, then neighbours of these
    // two (Batcher, 1968).
    constexpr WireList Merge(const WireList& a, const WireList& b) {
        if (a.count == 0) return b;
        if (b.count == 0) return a;
        WireList merged;
        if (a.count == 1 && b.count == 1) {
            AppendOrdered(merged, a[0], b[0]);
            return merged;
        }
        const WireList even = Merge(a.Alternate(0), b.Alternate(0));
        const WireList odd = Merge(a.Alternate(1), b.Alternate(1));
        merged.Append(even[0]);
        for (size_t i = 0; i + 1 < even.count && i < odd.count; ++i)
            AppendOrdered(merged, odd[i], even[i + 1]);
        if (even.count == odd.count) merged.Append(odd[odd.count - 1]);
        if (even.count == odd.count + 2) merged.Append(even[even.count - 1]);
        return merged;
    }

    // The values that rank from `low` to `high` among all of two ascending lists, ascending.
    constexpr WireList Select(const WireList& a, const WireList& b, size_t low, size_t high) {
        const WireList middleOfA = Candidates(a, b.count, low, high);
        const WireList middleOfB = Candidates(b, a.count, low, high);
        // What goes at the lower ends ranks below all that is looked for.
        const size_t skipped = SkippedBelow(a, b.count, low) + SkippedBelow(b, a.count, low);
        return Merge(middleOfA, middleOfB).Part(low - skipped, high - low + 1);
    }

    // The part of an ascending list that can rank from `low` to `high` once `others` more values join it.
    static constexpr WireList Candidates(const WireList& list, size_t others, size_t low, size_t high) {
        const size_t first = SkippedBelow(list, others, low);
        const size_t end = high + 1 < list.count ? high + 1 : list.count;
        return first < end ? list.Part(first, end - first) : WireList{};
    }

    // The network that leaves these wires, with an input loaded where it is first used and without what
    // nobody reads.
    constexpr Network Finish(const WireList& outputs) const {
        std::array<bool, kMostWires> isRead{};
        for (size_t i = 0; i < outputs.count; ++i) isRead[outputs[i]] = true;
        Network backwards;
        for (size_t i = all_.count; i-- > 0;) {
            NetworkStep step = all_.steps[i];
            if (!isRead[step.low] && !isRead[step.high]) continue;
            if (!isRead[step.high]) step.kind = StepKind::KeepLower;
            if (!isRead[step.low]) step.kind = StepKind::KeepUpper;
            isRead[step.low] = isRead[step.high] = true;
            backwards.Append(step);
        }
        Network network;
        std::array<bool, kMostWires> isLoaded{};
        const auto load = [&](uint8_t wire) {
            if (!isLoaded[wire]) network.Append({StepKind::Load, wire, wire});
            isLoaded[wire] = true;
        };
        for (size_t i = backwards.count; i-- > 0;) {
            load(backwards.steps[i].low);
            load(backwards.steps[i].high);
            network.Append(backwards.steps[i]);
        }
        for (size_t i = 0; i < outputs.count; ++i) load(outputs[i]);
        network.outputs = outputs;
        return network;
    }

private:
    constexpr void AppendOrdered(WireList& list, uint8_t low, uint8_t high) {
        all_.Append({StepKind::Order, low, high});
        list.Append(low);
        list.Append(high);
    }

    static constexpr size_t SkippedBelow(const WireList& list, size_t others, size_t low) {
        const size_t skipped = low > others ? low - others : 0;
        return skipped < list.count ? skipped : list.count;
    }

    Network all_;
};

}  // namespace vastrelline
