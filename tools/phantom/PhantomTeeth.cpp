// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomTeeth.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "phantom/PhantomRandom.h"

namespace vastrelline {
namespace {

// Outlines in mm: x from the tooth's axis, y downwards from its highest cusp; sizes are textbook means.
struct ToothPlan {
    std::vector<PointMm> crown;
    std::vector<PointMm> dentine;
    std::vector<PointMm> pulp;
    double crownThickness;  // from cheek to tongue
    double dentineThickness;
    double pulpThickness;
};

const ToothPlan& Premolar() {
    static const ToothPlan kPlan{
        {{-2.55, 8.2},
         {-3.1, 6.2},
         {-3.5, 4.2},
         {-3.5, 2.6},
         {-2.7, 1.1},
         {-1.3, 0.35},
         {-0.2, 0.0},
         {1.0, 0.45},
         {2.5, 1.5},
         {3.4, 2.8},
         {3.5, 4.3},
         {3.05, 6.3},
         {2.55, 8.2},
         {1.3, 8.6},
         {0.0, 8.8},
         {-1.3, 8.6}},
        {{-2.5, 8.1},  {-2.65, 6.0}, {-2.65, 4.2}, {-2.1, 2.7},  {-1.0, 1.9},  {-0.1, 1.6},
         {0.9, 2.0},   {1.9, 2.8},   {2.6, 4.2},   {2.65, 6.0},  {2.5, 8.1},   {2.3, 11.0},
         {2.05, 14.0}, {1.75, 17.0}, {1.4, 19.5},  {0.95, 21.3}, {0.45, 22.1}, {-0.05, 21.8},
         {-0.5, 20.6}, {-1.1, 18.0}, {-1.7, 15.0}, {-2.15, 11.5}},
        {{-0.1, 3.4},
         {0.3, 4.6},
         {0.5, 6.2},
         {0.6, 8.2},
         {0.48, 10.5},
         {0.42, 14.0},
         {0.42, 18.0},
         {0.45, 21.3},
         {0.25, 21.3},
         {0.05, 18.0},
         {-0.12, 14.0},
         {-0.35, 10.5},
         {-0.6, 8.0},
         {-0.55, 6.0},
         {-0.4, 4.6}},
        8.2,
        6.6,
        1.9};
    return kPlan;
}

const ToothPlan& Molar() {
    static const ToothPlan kPlan{
        {{-4.6, 7.8},
         {-5.15, 5.8},
         {-5.4, 3.6},
         {-5.1, 1.6},
         {-4.1, 0.4},
         {-2.9, 0.0},
         {-1.5, 0.6},
         {-0.2, 1.3},
         {1.1, 0.7},
         {2.5, 0.15},
         {3.9, 0.5},
         {5.0, 1.7},
         {5.4, 3.6},
         {5.15, 5.8},
         {4.55, 7.8},
         {2.4, 8.2},
         {0.0, 8.4},
         {-2.4, 8.2}},
        {{-4.55, 7.6}, {-4.55, 5.4}, {-4.4, 3.6},  {-3.7, 2.3},   {-2.8, 1.7},   {-1.5, 2.3},   {-0.2, 2.9},
         {1.1, 2.4},   {2.5, 1.9},   {3.6, 2.4},   {4.4, 3.7},    {4.55, 5.5},   {4.5, 7.6},    {4.4, 10.0},
         {4.25, 13.0}, {4.1, 16.0},  {3.9, 18.2},  {3.4, 19.6},   {2.8, 19.1},   {2.35, 17.5},  {1.9, 15.2},
         {1.35, 13.0}, {0.7, 11.5},  {0.0, 11.0},  {-0.7, 11.5},  {-1.25, 13.2}, {-1.75, 15.6}, {-2.2, 18.0},
         {-2.6, 19.8}, {-3.1, 20.7}, {-3.7, 20.0}, {-4.15, 17.6}, {-4.4, 14.5},  {-4.5, 11.0}},
        {{-2.5, 4.1},   {-1.6, 5.4},   {0.0, 5.9},   {1.5, 5.5},    {2.3, 4.3},   {2.6, 5.4},   {2.65, 7.2},
         {2.85, 9.0},   {3.05, 11.5},  {3.2, 14.5},  {3.35, 18.8},  {3.15, 18.8}, {2.85, 14.5}, {2.55, 11.5},
         {2.1, 9.4},    {1.4, 8.1},    {0.0, 7.6},   {-1.4, 8.1},   {-2.0, 9.4},  {-2.5, 11.5}, {-2.8, 15.0},
         {-3.05, 19.8}, {-3.25, 19.8}, {-3.2, 15.0}, {-3.05, 11.5}, {-2.85, 9.0}, {-2.75, 7.2}, {-2.7, 5.4}},
        10.2,
        8.2,
        2.2};
    return kPlan;
}

constexpr double kCrownRoundingMm = 3.0;
constexpr double kDentineRoundingMm = 2.5;
constexpr double kPulpRoundingMm = 0.9;

// Where a plan stands in the scene.
struct Stand {
    PointMm cusp;  // of the axis at the highest cusp
    double lean;   // mm to the side per mm downwards
    double scale;

    std::vector<PointMm> Place(std::vector<PointMm> points) const {
        // A turn by the angle whose tangent is `lean`, from a square root alone.
        const double cosine = 1.0 / std::sqrt(1.0 + lean * lean);
        const double sine = lean * cosine;
        for (PointMm& point : points)
            point = {cusp.x + scale * (cosine * point.x + sine * point.y),
                     cusp.y + scale * (cosine * point.y - sine * point.x)};
        return points;
    }
};

}  // namespace

PhantomTeeth::PhantomTeeth(uint64_t seed) {
    struct Planned {
        const ToothPlan& plan;
        double x;
        double y;
        double lean;
    };
    const Planned row[] = {{Premolar(), -0.35, 4.9, 0.03},
                           {Premolar(), 6.55, 4.6, 0.02},
                           {Molar(), 15.4, 4.7, 0.05},
                           {Molar(), 26.1, 4.3, 0.09}};
    PhantomRandom random(StirBits(seed, 1, 0));
    teeth_.reserve(std::size(row));
    for (const Planned& tooth : row) {
        Stand stand{};
        stand.cusp = {tooth.x + random.Symmetric(0.12), tooth.y + random.Symmetric(0.35)};
        stand.lean = tooth.lean + random.Symmetric(0.025);
        stand.scale = 1.0 + random.Symmetric(0.015);
        teeth_.push_back({DepthMap(stand.Place(SmoothOutline(tooth.plan.crown))),
                          DepthMap(stand.Place(SmoothOutline(tooth.plan.dentine))),
                          DepthMap(stand.Place(SmoothOutline(tooth.plan.pulp))), tooth.plan.crownThickness,
                          tooth.plan.dentineThickness, tooth.plan.pulpThickness});
    }
}

ToothRay PhantomTeeth::RayAt(double x, double y) const {
    ToothRay ray;
    for (const Tooth& tooth : teeth_) {
        const double depth = tooth.dentine.At(x, y);
        const double crown = RayThroughBody(tooth.crown.At(x, y), kCrownRoundingMm, tooth.crownThickness);
        const double inner = RayThroughBody(depth, kDentineRoundingMm, tooth.dentineThickness);
        const double pulp =
            std::min(inner, RayThroughBody(tooth.pulp.At(x, y), kPulpRoundingMm, tooth.pulpThickness));
        ray.enamel += std::max(0.0, crown - inner);
        ray.dentine += inner - pulp;
        ray.pulp += pulp;
        ray.distanceToRoot = std::min(ray.distanceToRoot, -depth);
    }
    return ray;
}

}  // namespace vastrelline
