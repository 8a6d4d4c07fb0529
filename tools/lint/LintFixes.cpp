// SPDX-License-Identifier: Apache-2.0
#include "lint/LintFixes.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "lint/LintRules.h"

namespace vastrelline {

FixedProfile ApplyFixes(const std::string& bytes, std::span<const LintFinding> findings) {
    std::vector<LintFix> fixes;
    for (const LintFinding& each : findings)
        if (each.fix) fixes.push_back(*each.fix);
    std::stable_sort(fixes.begin(), fixes.end(), [](const LintFix& one, const LintFix& other) {
        return one.range.begin < other.range.begin;
    });
    FixedProfile fixed;
    size_t position = 0;
    size_t lastBegin = SIZE_MAX;
    for (const LintFix& fix : fixes) {
        // Several findings may ask for the same change.
        if (fix.range.begin < position || fix.range.begin == lastBegin) continue;
        fixed.bytes.append(bytes, position, fix.range.begin - position).append(fix.bytes);
        position = fix.range.end;
        lastBegin = fix.range.begin;
        ++fixed.count;
    }
    fixed.bytes.append(bytes, position);
    return fixed;
}

FixedProfile FixProfile(const std::string& path, std::string bytes, std::string_view section) {
    // A key that gets its right name may show that its value needs mending, too; a few rounds find an end.
    constexpr int kRounds = 10;
    FixedProfile all{std::move(bytes), 0};
    for (int round = 0; round < kRounds; ++round) {
        const ProfileFile file(path, all.bytes);
        FixedProfile fixed = ApplyFixes(all.bytes, LintProfile(file, section));
        if (fixed.count == 0) break;
        all.bytes = std::move(fixed.bytes);
        all.count += fixed.count;
    }
    return all;
}

}  // namespace vastrelline
