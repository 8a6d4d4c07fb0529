// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"
#include "support/Processor.h"

namespace vastrelline {

// What a form of this name needs.
inline InstructionSet SetOfForm(const std::string& name) {
    static const std::map<std::string, InstructionSet> sets{
        {"scalar", InstructionSet::Reference},  {"histogram", InstructionSet::Reference},
        {"columns", InstructionSet::Reference}, {"counted", InstructionSet::Reference},
        {"baseline", InstructionSet::Baseline}, {"avx2", InstructionSet::Avx2},
        {"avx512", InstructionSet::Avx512}};
    return sets.at(name);
}

// Expects a list to hold those of its kernel's forms, all given by name in their order, that the processor
// can run and a limit lets through: with AVX-512 all of them, under a limit to the reference the plain ones.
template <typename List>
void ExpectForms(List list, const std::vector<std::string>& names) {
    for (const InstructionSet limit : {InstructionSet::Reference, InstructionSet::Baseline,
                                       InstructionSet::Avx2, InstructionSet::Avx512}) {
        const InstructionSet allowed = std::min(limit, ExpectedInstructionSet());
        std::vector<std::string> expected;
        std::copy_if(names.begin(), names.end(), std::back_inserter(expected),
                     [&](const std::string& name) { return SetOfForm(name) <= allowed; });
        const ScopedInstructionSet scope(limit);
        std::vector<std::string> listed;
        for (const auto& variant : list()) {
            listed.emplace_back(variant.name);
            EXPECT_EQ(variant.needs, SetOfForm(variant.name)) << variant.name;
        }
        EXPECT_EQ(listed, expected) << "limit " << static_cast<int32_t>(limit);
    }
}

// The picks of FastestOf while it lives, from all threads. One at a time.
class SeenPicks {
public:
    SeenPicks() {
        Seen().clear();
        SetPickObserver(+[](const void* variant) {
            const std::lock_guard lock(Guard());
            Seen().push_back(variant);
        });
    }
    ~SeenPicks() { SetPickObserver(nullptr); }
    SeenPicks(const SeenPicks&) = delete;
    SeenPicks& operator=(const SeenPicks&) = delete;

    // How often each form of a list was picked, by its name.
    template <typename Form>
    static std::map<std::string, size_t> CountOf(std::span<const Variant<Form>> list) {
        const std::lock_guard lock(Guard());
        std::map<std::string, size_t> counts;
        for (const Variant<Form>& variant : list) {
            const auto count = std::count(Seen().begin(), Seen().end(), static_cast<const void*>(&variant));
            if (count > 0) counts[variant.name] = static_cast<size_t>(count);
        }
        return counts;
    }

private:
    static std::vector<const void*>& Seen() {
        static std::vector<const void*> seen;
        return seen;
    }
    static std::mutex& Guard() {
        static std::mutex guard;
        return guard;
    }
};

// Expects a call of what the library offers to run the last form of a list so many times and no other one.
template <typename List, typename Call>
void ExpectLastFormRuns(List list, size_t times, Call call) {
    const SeenPicks picks;
    call();
    EXPECT_EQ(SeenPicks::CountOf(list()), (std::map<std::string, size_t>{{list().back().name, times}}));
}

}  // namespace vastrelline
