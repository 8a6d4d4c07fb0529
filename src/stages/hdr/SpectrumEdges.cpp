// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/SpectrumEdges.h"

#include <complex>
#include <cstddef>

#include "elementary/Exponential.h"
#include "pixels/FrameView.h"
#include "stages/hdr/GaussianSurface.h"
#include "stages/hdr/LineTransform.h"

namespace vastrelline {

namespace {

using Complex = std::complex<double>;
using Line = std::vector<Complex>;

// exp(2 * pi * i * k / count) for each k: by this the last of `count` frequencies, which is -1, turns.
Line MakeTurns(int32_t count) {
    Line turns(static_cast<size_t>(count));
    for (size_t k = 0; k < turns.size(); ++k) turns[k] = UnitRoot(k, turns.size());
    return turns;
}

// The image along its columns at the last frequency: one entry for each column. The height is odd, and rows
// as far from the top as from the bottom turn by opposite angles.
Line TurnColumns(const FrameView<const uint16_t>& image, const FusionKernels& kernels) {
    const Line turns = MakeTurns(image.Height());
    const auto width = static_cast<size_t>(image.Width());
    std::vector<double> real(image.Row(0), image.Row(0) + width);
    std::vector<double> imaginary(width);
    for (int32_t y = 1; y <= image.Height() / 2; ++y) {
        const Complex turn = turns[static_cast<size_t>(y)];
        kernels.turnRowPair(image.Row(y), image.Row(image.Height() - y), turn.real(), turn.imag(),
                            image.Width(), real.data(), imaginary.data());
    }
    Line line(width);
    for (size_t x = 0; x < width; ++x) line[x] = {real[x], imaginary[x]};
    return line;
}

// The image along its rows at the last frequency: one entry for each row.
Line TurnRows(const FrameView<const uint16_t>& image, const FusionKernels& kernels) {
    const Line turns = MakeTurns(image.Width());
    std::vector<double> cosines;
    std::vector<double> sines;
    for (const Complex turn : turns) {
        cosines.push_back(turn.real());
        sines.push_back(turn.imag());
    }
    Line line(static_cast<size_t>(image.Height()));
    for (int32_t y = 0; y < image.Height(); ++y) {
        double sums[2 * kPartialTurns];
        kernels.turnRow(image.Row(y), cosines.data(), sines.data(), image.Width(), sums);
        Complex sum;
        for (int32_t i = 0; i < kPartialTurns; ++i) sum += Complex(sums[i], sums[kPartialTurns + i]);
        for (size_t x = turns.size() / kPartialTurns * kPartialTurns; x < turns.size(); ++x) {
            sum += turns[x] * static_cast<double>(image.Row(y)[x]);
        }
        line[static_cast<size_t>(y)] = sum;
    }
    return line;
}

// The spectra of both layers' surfaces along one axis, not divided by their sums.
struct SurfaceSpectra {
    Line fine;
    Line coarse;
};

std::vector<double> MakeSurfaceLine(int32_t count, double sigma) {
    std::vector<double> line;
    for (const double place : MakeCentredCoordinates(count)) {
        line.push_back(Exp(-place * place / (2 * sigma * sigma)));
    }
    return line;
}

// Both lines are real, so that one transform holds both: that of a real line is the conjugate of itself read
// backwards, that of an imaginary one the opposite.
SurfaceSpectra TransformSurfaces(const LineTransform& transform, int32_t count,
                                 const FusionWeights& weights) {
    const std::vector<double> fine = MakeSurfaceLine(count, weights.fineSigma);
    const std::vector<double> coarse = MakeSurfaceLine(count, weights.coarseSigma);
    Line both(fine.size());
    for (size_t i = 0; i < both.size(); ++i) both[i] = {fine[i], coarse[i]};
    both = transform.Forward(both);
    SurfaceSpectra spectra{Line(both.size()), Line(both.size())};
    for (size_t k = 0; k < both.size(); ++k) {
        const Complex ahead = both[k];
        const Complex back = std::conj(both[k == 0 ? 0 : both.size() - k]);
        spectra.fine[k] = (ahead + back) * 0.5;
        const Complex imaginary = (ahead - back) * 0.5;
        spectra.coarse[k] = {imaginary.imag(), -imaginary.real()};
    }
    return spectra;
}

// The last frequency of one axis of a surface.
Complex TurnSurface(int32_t count, double sigma) {
    const Line turns = MakeTurns(count);
    const std::vector<double> surface = MakeSurfaceLine(count, sigma);
    Complex sum;
    for (size_t i = 0; i < turns.size(); ++i) sum += turns[i] * surface[i];
    return sum;
}

// Joins the lines of both images to what is shown of their spectra. `across` is the size of the frame across
// the lines.
std::vector<double> MakeEdge(const Line& normal, const Line& hed, int32_t across,
                             const FusionWeights& weights) {
    const auto count = static_cast<int32_t>(normal.size());
    const LineTransform transform(count);
    Line mix(normal.size());
    for (size_t i = 0; i < mix.size(); ++i) {
        mix[i] = weights.coarseNormal * normal[i] + weights.coarseHed * hed[i];
    }
    const Line fine = transform.Forward(normal);
    const Line coarse = transform.Forward(mix);
    const SurfaceSpectra surfaces = TransformSurfaces(transform, count, weights);
    const Complex fineAcross = weights.fineNormal * TurnSurface(across, weights.fineSigma);
    const Complex coarseAcross = TurnSurface(across, weights.coarseSigma);
    std::vector<double> edge(normal.size());
    for (size_t i = 0; i < edge.size(); ++i) {
        // All of it is finite: so are the weights, and no spectrum exceeds the sum of its line.
        edge[i] = (Multiply(Multiply(fine[i], surfaces.fine[i]), fineAcross) +
                   Multiply(Multiply(coarse[i], surfaces.coarse[i]), coarseAcross))
                      .real();
    }
    return edge;
}

}  // namespace

SpectrumEdges MakeSpectrumEdges(const uint16_t* normalImage, const uint16_t* hedImage, int32_t width,
                                int32_t height, const FusionWeights& weights, const FusionKernels& kernels) {
    const FrameView<const uint16_t> normal(normalImage, width, height);
    const FrameView<const uint16_t> hed(hedImage, width, height);
    SpectrumEdges edges;
    if (height % 2 != 0) {
        edges.lastRow = MakeEdge(TurnColumns(normal, kernels), TurnColumns(hed, kernels), height, weights);
    }
    if (width % 2 != 0) {
        edges.lastColumn = MakeEdge(TurnRows(normal, kernels), TurnRows(hed, kernels), width, weights);
    }
    return edges;
}

}  // namespace vastrelline
