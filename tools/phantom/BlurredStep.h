// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// The share of light, 0 to 1, that a square pixel of side 1 collects near a straight, blurred edge: exact,
// not sampled, so that a test can tell what must be measured. Darkness lies at negative distances.
//
// The pixel's square, seen along the edge, weighs distances as two boxes do that are averaged one after the
// other; the share is therefore a difference of the step's second integral at the boxes' ends.
class BlurredStep {
public:
    // angleDegrees   of the edge against the pixel's side, -45 to 45
    // blurPixels     sigma of the Gaussian that blurs the edge, 0 or more
    BlurredStep(double angleDegrees, double blurPixels);

    // distancePixels   of the pixel's centre from the edge
    double ShareAt(double distancePixels) const;

    // What blur and pixel leave of a wave that runs across the edge; 1 at 0.
    //
    // frequency   cycles per pixel, 0 or more
    double ModulationAt(double frequency) const;

    // The frequency at which the modulation falls to one half: below 1 cycle per pixel, since a pixel leaves
    // nothing of that wave if the edge lies along its side, and at most 0.18 of it at 45 degrees.
    double HalfModulation() const;

    // From a tenth to nine tenths of the light, in pixels.
    double RiseDistance() const;

private:
    double wide_;    // of the two boxes
    double narrow_;  // 0 for an edge along the pixel's side
    double blur_;
};

// The share of a Gaussian of deviation 1 that lies below x.
double NormalShare(double x);

}  // namespace vastrelline
