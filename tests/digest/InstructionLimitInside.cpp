// SPDX-License-Identifier: Apache-2.0

// The one file of the digest that sees the library's inside, in the program that is linked with it.
#include <optional>

#include "InstructionLimit.h"
#include "platform/InstructionSet.h"

namespace vastrelline::digest {

LimitResult LimitInstructions(std::string_view set) {
    static std::optional<ScopedInstructionSet> limit;
    const InstructionSet wished = set == "reference"  ? InstructionSet::Reference
                                  : set == "baseline" ? InstructionSet::Baseline
                                  : set == "avx2"     ? InstructionSet::Avx2
                                                      : InstructionSet::Avx512;
    if (DetectInstructionSet() < wished) return LimitResult::NoSuchMachine;
    limit.emplace(wished);
    return AllowedInstructionSet() == wished ? LimitResult::Done : LimitResult::NoSuchMachine;
}

}  // namespace vastrelline::digest
