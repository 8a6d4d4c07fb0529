// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "operators/median/MedianNetwork.h"

namespace vastrelline {
namespace {

std::vector<int> Evaluate(const Network& network, const std::vector<int>& inputs) {
    std::vector<int> wires(inputs.size(), -1);
    for (size_t i = 0; i < network.count; ++i) {
        const NetworkStep step = network.steps[i];
        if (step.kind == StepKind::Load) {
            wires.at(step.low) = inputs.at(step.low);
            continue;
        }
        const int a = wires.at(step.low);
        const int b = wires.at(step.high);
        EXPECT_TRUE(a >= 0 && b >= 0) << "a wire is read before it is loaded";
        // What nobody reads any more is spoilt.
        wires.at(step.low) = step.kind == StepKind::KeepUpper ? -1 : std::min(a, b);
        wires.at(step.high) = step.kind == StepKind::KeepLower ? -1 : std::max(a, b);
    }
    std::vector<int> outputs;
    for (size_t i = 0; i < network.outputs.count; ++i) outputs.push_back(wires.at(network.outputs[i]));
    return outputs;
}

// A network that is right for all inputs of 0 and 1 is right for all inputs.
TEST(MedianNetwork, SortsEveryInputOfZerosAndOnes) {
    for (size_t count = 1; count <= 10; ++count) {
        NetworkBuilder builder;
        const Network network = builder.Finish(builder.Sort(0, count));
        for (uint32_t bits = 0; bits < 1U << count; ++bits) {
            std::vector<int> inputs;
            for (size_t i = 0; i < count; ++i) inputs.push_back(static_cast<int>(bits >> i & 1U));
            std::vector<int> sorted = inputs;
            std::sort(sorted.begin(), sorted.end());
            ASSERT_EQ(sorted, Evaluate(network, inputs)) << count << " wires, input " << bits;
        }
    }
}

// Ascending lists of 0 and 1 differ in the number of their ones alone.
std::vector<int> MakeLists(size_t a, size_t onesOfA, size_t b, size_t onesOfB) {
    std::vector<int> values(a + b, 0);
    std::fill(values.begin() + static_cast<int>(a - onesOfA), values.begin() + static_cast<int>(a), 1);
    std::fill(values.end() - static_cast<int>(onesOfB), values.end(), 1);
    return values;
}

TEST(MedianNetwork, SelectsAnyRangeOfRanksFromTwoListsOfAnyLengths) {
    for (size_t a = 0; a <= 7; ++a) {
        for (size_t b = a == 0 ? 1 : 0; b <= 6; ++b) {
            for (size_t low = 0; low < a + b; ++low) {
                for (size_t high = low; high < a + b; high += 2) {
                    NetworkBuilder builder;
                    const Network network = builder.Finish(
                        builder.Select(builder.Ascending(0, a), builder.Ascending(a, b), low, high));
                    for (size_t onesOfA = 0; onesOfA <= a; ++onesOfA) {
                        for (size_t onesOfB = 0; onesOfB <= b; ++onesOfB) {
                            const std::vector<int> inputs = MakeLists(a, onesOfA, b, onesOfB);
                            std::vector<int> sorted = inputs;
                            std::sort(sorted.begin(), sorted.end());
                            const std::vector<int> expected(sorted.begin() + static_cast<int>(low),
                                                            sorted.begin() + static_cast<int>(high) + 1);
                            ASSERT_EQ(expected, Evaluate(network, inputs))
                                << a << " and " << b << " values, ranks " << low << " to " << high;
                        }
                    }
                }
            }
        }
    }
}

TEST(MedianNetwork, LeavesOutWhatNobodyReads) {
    NetworkBuilder builder;
    const WireList sorted = builder.Sort(0, 3);
    const Network median = builder.Finish(sorted.Part(1, 1));
    size_t operations = 0;
    for (size_t i = 0; i < median.count; ++i) {
        if (median.steps[i].kind == StepKind::Order) operations += 2;
        if (median.steps[i].kind == StepKind::KeepLower || median.steps[i].kind == StepKind::KeepUpper)
            operations += 1;
    }
    EXPECT_EQ(4U, operations);  // the fewest that give the median of three
}

}  // namespace
}  // namespace vastrelline
