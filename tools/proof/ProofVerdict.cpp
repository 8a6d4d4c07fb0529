// SPDX-License-Identifier: Apache-2.0
#include "proof/ProofVerdict.h"

#include <algorithm>

#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

bool IsSamePlace(const ProofPoint& one, const ProofPoint& other) {
    return one.point == other.point && one.position == other.position && one.title == other.title;
}

// A difference at places that both have, or that only one has.
ProofVerdict JudgePoints(const ProofFacts& expected, const ProofFacts& got) {
    ProofVerdict verdict{ProofState::Equal, 0, 0, ""};
    const size_t count = std::max(expected.points.size(), got.points.size());
    const size_t both = std::min(expected.points.size(), got.points.size());
    bool isOtherPlace = false;
    for (size_t i = 0; i < count; ++i) {
        const bool isHere = i < both;
        const bool isPlace = isHere && IsSamePlace(expected.points[i], got.points[i]);
        if (isPlace && expected.points[i].hash == got.points[i].hash) continue;
        if (verdict.differentPoints++ > 0) continue;
        verdict.state = ProofState::Different;
        verdict.firstPoint = i;
        isOtherPlace = !isPlace;
    }
    if (verdict.state == ProofState::Equal) return verdict;
    const size_t first = verdict.firstPoint;
    if (!isOtherPlace) {
        verdict.text = "differs first at " + NameProofPoint(expected, first) + "; " +
                       std::to_string(verdict.differentPoints) + " of " + std::to_string(count) +
                       " points differ";
        return verdict;
    }
    const std::string wanted =
        first < expected.points.size() ? NameProofPoint(expected, first) : "the end of the run";
    const std::string there = first < got.points.size() ? NameProofPoint(got, first) : "the end of the run";
    verdict.text = "another chain ran: the manifest has " + wanted + " where the run has " + there;
    return verdict;
}

}  // namespace

std::string_view ProofStateName(ProofState state) {
    switch (state) {
        case ProofState::Equal:
            return "equal";
        case ProofState::Different:
            return "different";
        case ProofState::FrameChanged:
            return "frame-changed";
        case ProofState::ProfileChanged:
            return "profile-changed";
        case ProofState::New:
            return "new";
        case ProofState::Failed:
            break;
    }
    return "failed";
}

std::string NameProofPoint(const ProofFacts& facts, size_t point) {
    const ProofPoint& at = facts.points[point];
    if (at.point != "stage") return "the " + (at.title == at.point ? at.point : at.title);
    const auto end = facts.points.begin() + static_cast<std::ptrdiff_t>(point) + 1;
    const auto number = std::count_if(facts.points.begin(), end,
                                      [](const ProofPoint& each) { return each.point == "stage"; });
    std::string name = "stage " + std::to_string(number) + " (" + at.title;
    if (at.position) {
        std::string position = NumberedKeyName(*at.position, "");
        position.pop_back();
        name += ", position " + position;
    }
    return name + ")";
}

ProofVerdict JudgeProof(const ProofEntry& entry, const ProofFacts& got) {
    if (!entry.facts)
        return {ProofState::New, 0, 0, "the manifest has no hashes of it yet; --update fills them in"};
    if (entry.facts->frameHash != got.frameHash)
        return {ProofState::FrameChanged, 0, 0,
                entry.frame.phantom ? "the phantom is not the one of the manifest"
                                    : "the frame is not the one of the manifest"};
    if (entry.facts->profileHash != got.profileHash)
        return {ProofState::ProfileChanged, 0, 0, "the profile is not the one of the manifest"};
    return JudgePoints(*entry.facts, got);
}

}  // namespace vastrelline
