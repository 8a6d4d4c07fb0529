// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "platform/InstructionSet.h"

namespace vastrelline {

// One form of a kernel. All forms give the same bits, those of the first, which is the kernel's definition.
//
// Form   a function; or, for loops that go together, a pointer to a record of functions
template <typename Form>
struct Variant {
    const char* name;
    InstructionSet needs;
    Form run;
};

// Of all forms of a kernel those that may run now, the slowest first.
//
// all   ascending in what they need; the first is the definition and needs the reference only
template <typename Form, size_t Count>
std::span<const Variant<Form>> AllowedVariants(const Variant<Form> (&all)[Count]) {
    const InstructionSet allowed = AllowedInstructionSet();
    size_t count = 1;
    while (count < Count && all[count].needs <= allowed) ++count;
    return {all, count};
}

// Sees each pick of FastestOf, from whatever thread, as the address of the Variant. All forms give the same
// bits, so that tests can tell by their picks alone which ones ran.
using PickObserver = void (*)(const void* variant);
void SetPickObserver(PickObserver observer);  // null for none, as at the start
void ShowPick(const void* variant);

// Picks the form to run, once for a whole frame or so: the last of those that may run.
template <typename Form>
const Variant<Form>& FastestOf(std::span<const Variant<Form>> allowed) {
    const Variant<Form>& fastest = allowed.back();
    ShowPick(&fastest);
    return fastest;
}

}  // namespace vastrelline
