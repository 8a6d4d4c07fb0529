#include "image/SeparableFilter.h"

#include <array>
#include <vector>

#include "image/GaussKernel.h"
#include "image/Truncate.h"

namespace vastrelline {

namespace {

// The kernel for sigmas that give none: the values of single-precision constants, whose sum is
// 1.0000000074505806. Not normalised on purpose.
constexpr std::array<double, 5> kFixedKernel = {0.05000000074505806, 0.25, 0.4000000059604645, 0.25,
                                                0.05000000074505806};

// A kernel so wide that the frame extended by its reach would pass 2^29 pixels is not run.
bool IsTooWide(int32_t width, int32_t height, int32_t size) {
    constexpr int64_t kLargestExtended = int64_t{1} << 29;
    const int64_t pad = int64_t{size} - 1;
    return (width + pad) * (height + pad) >= kLargestExtended;
}

void GaussFilter(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma,
                 EdgeRule edges) {
    if (!(sigma > 0)) {
        FilterFrame({pixels, width, height, maxValue, kFixedKernel, edges});
        return;
    }
    int32_t size = GaussMaskSize(sigma);
    if (size < 1 || IsTooWide(width, height, size)) return;
    const std::vector<double> kernel = MakeGaussKernel(size, sigma);
    FilterFrame({pixels, width, height, maxValue, kernel, edges});
}

constexpr FilterVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, FilterFrameScalar},
#if VASTRELLINE_X86
    {"baseline", InstructionSet::Baseline, FilterFrameBaseline},
    {"avx2", InstructionSet::Avx2, FilterFrameAvx2},
    {"avx512", InstructionSet::Avx512, FilterFrameAvx512},
#endif
};

}  // namespace

std::span<const FilterVariant> FilterVariants() {
    const InstructionSet allowed = AllowedInstructionSet();
    size_t count = 0;
    while (count < std::size(kVariants) && kVariants[count].needs <= allowed) ++count;
    return {kVariants, count};
}

void FilterFrame(const FilterCall& call) {
    if (call.width <= 0 || call.height <= 0 || call.kernel.empty()) return;
    FilterVariants().back().run(call);
}

void SeparableFilter(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, const double* kernel,
                     int32_t size) {
    if (size < 1) return;
    FilterFrame({pixels, width, height, maxValue, {kernel, static_cast<size_t>(size)}, EdgeRule::Wrap});
}

void GaussFilterWrap(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma) {
    GaussFilter(pixels, width, height, maxValue, sigma, EdgeRule::Wrap);
}

bool CanGaussFilterReplicate(int32_t width, int32_t height, double sigma) {
    const int32_t size = GaussMaskSize(sigma);
    return size >= 1 && !(sigma > 0 && IsTooWide(width, height, size));
}

void GaussFilterReplicate(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, double sigma) {
    if (!CanGaussFilterReplicate(width, height, sigma)) return;
    // Without a reach there is no border either: the fixed kernel then wraps around. That is meant.
    const bool hasReach = GaussMaskSize(sigma) > 1;
    GaussFilter(pixels, width, height, maxValue, sigma, hasReach ? EdgeRule::Replicate : EdgeRule::Wrap);
}

}  // namespace vastrelline
