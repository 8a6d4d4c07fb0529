// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "chains/StageTable.h"
#include "operators/curves/TonedFrame.h"
#include "platform/InstructionSet.h"
#include "support/ConfiguredRun.h"
#include "support/FailingMemory.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"

namespace vastrelline {
namespace {

struct MemoryCase {
    const char* name;
    StageId stage;
    const char* keys;  // of position 7
};

class StageMemoryTest : public testing::TestWithParam<MemoryCase> {
protected:
    Frame Run(Frame frame) {
        TonedFrame toned({frame.Data(), frame.width, frame.height});
        RunStage(AllStages(), static_cast<int32_t>(GetParam().stage), {{toned, 4095, run_.Log()}, 7});
        toned.Read();
        return frame;
    }

    // Every request for memory fails once. No stage may take a failure for a success with other pixels.
    void Sweep() {
        const Frame input = MadeRadiograph(120, 90);
        const Frame expected = Run(input);
        ASSERT_NE(expected, input) << "the stage does something";
        Frame result = input;
        int64_t thrown = 0;
        const int64_t failures = SweepMemory([&] { result = Run(input); },
                                             [&](int64_t n, bool hasThrown) {
                                                 thrown += hasThrown ? 1 : 0;
                                                 EXPECT_TRUE(hasThrown || result == expected)
                                                     << "other pixels without request " << n;
                                                 result = input;
                                             });
        EXPECT_GT(failures, 0);
        EXPECT_GT(thrown, 0);
        EXPECT_EQ(result, expected);
    }

    ConfiguredRun run_;
};

TEST_P(StageMemoryTest, NoFailurePassesForASuccess) {
    run_.WriteProfile("[Molar]\r\n" + std::string(GetParam().keys));
    for (const InstructionSet set : {InstructionSet::Reference, InstructionSet::Avx512}) {
        SCOPED_TRACE(static_cast<int32_t>(set));
        const ScopedInstructionSet limit(set);
        Sweep();
    }
}

TEST_P(StageMemoryTest, NoFailurePassesForASuccessWithLogAndDumps) {
    run_.WriteProfile("[Molar]\r\n" + std::string(GetParam().keys));
    SharedConfiguredState().SaveLog = 1;
    // The pyramid's many dumps, hundreds of times, would take seconds.
    SharedConfiguredState().SaveImage = GetParam().stage == StageId::Pyramid ? 0 : 1;
    Sweep();
}

INSTANTIATE_TEST_SUITE_P(
    Stages, StageMemoryTest,
    testing::Values(
        MemoryCase{"PreContrast", StageId::PreContrastProc, ""},
        MemoryCase{"Stretch", StageId::HistogramStretch, "07_STRETCH_SEPARATION_CNT=3\r\n"},
        MemoryCase{"Clahe", StageId::CLAHE, "07_BLOCK_SIZE=8\r\n07_MAX_SLOPE=2.5\r\n"},
        MemoryCase{"ClaheWideBins", StageId::CLAHE, "07_BLOCK_SIZE=8\r\n07_HISTO_BINS=300\r\n"},
        MemoryCase{"UnsharpByEdges", StageId::Unsharp, "07_MODE_CONTRAST=1\r\n"},
        MemoryCase{"UnsharpShaped", StageId::Unsharp, "07_MODE_CONTRAST=3\r\n07_NOISE_WIDTH_CONTRAST=5\r\n"},
        MemoryCase{"UnsharpByActivity", StageId::Unsharp,
                   "07_MODE_CONTRAST=5\r\n07_NOISE_WIDTH_CONTRAST=3\r\n07_ReduceTimeRatio_CONTRAST=6\r\n"},
        MemoryCase{"SmoothingByPolynomial", StageId::AdaptiveSmoothing, ""},
        MemoryCase{"SmoothingByDeviation", StageId::AdaptiveSmoothing,
                   "07_ADAPTIVESMOOTHING_Mode=1\r\n07_ADAPTIVESMOOTHING_MASK=2\r\n"},
        MemoryCase{"Pyramid", StageId::Pyramid, ""}, MemoryCase{"Median", StageId::Median, ""},
        MemoryCase{"MedianRepeated", StageId::Median, "07_MEDIAN_SIZE=17\r\n07_MEDIAN_REPEAT=3\r\n"},
        MemoryCase{"MedianOfLines", StageId::Median, "07_MEDIAN_Mode=1\r\n07_MEDIAN_REPEAT=2\r\n"},
        MemoryCase{"Gaussian", StageId::Gaussian, "07_GAUSSIAN_REPEAT=2\r\n"},
        MemoryCase{"GaussianReduced", StageId::Gaussian, "07_GAUSSIAN_ReduceTimeRatio=2\r\n"},
        MemoryCase{"Sigmoid", StageId::SigmoidLUT, ""}, MemoryCase{"Gamma", StageId::GammaLUT, ""},
        MemoryCase{"Linear", StageId::LinearLUT, "OUTPUTRANGE=3000\r\n"},
        MemoryCase{"PreProcessing", StageId::PreProcessing, ""}, MemoryCase{"Hdr", StageId::HDR, ""}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline
