// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include "platform/Variant.h"
#include "support/FuzzInput.h"

namespace vastrelline {

// Values that a kernel writes, between guards that it must not.
template <typename Value>
class Guarded {
public:
    explicit Guarded(const std::vector<Value>& values)
        : bytes_(2 * kGuards + values.size() * sizeof(Value), kGuard) {
        std::copy(values.begin(), values.end(), Data());
    }
    explicit Guarded(size_t count) : Guarded(std::vector<Value>(count)) {}

    Value* Data() { return reinterpret_cast<Value*>(bytes_.data() + kGuards); }
    size_t Size() const { return (bytes_.size() - 2 * kGuards) / sizeof(Value); }
    bool AreGuardsWhole() const {
        const auto isWhole = [](uint8_t byte) { return byte == kGuard; };
        return std::all_of(bytes_.begin(), bytes_.begin() + kGuards, isWhole) &&
               std::all_of(bytes_.end() - kGuards, bytes_.end(), isWhole);
    }

    // Of all bytes: what is not a number equals itself here, and 0 does not equal -0.
    bool operator==(const Guarded&) const = default;

private:
    static constexpr size_t kGuards = 256;  // four vectors of the widest; keeps the values aligned
    static constexpr uint8_t kGuard = 0xA5;

    std::vector<uint8_t> bytes_;
};

// Requires of every form of a kernel what the first one, the definition, gives, and that none writes beside
// its values.
//
// run   runs the form that it is given, a Variant, on values of its own and returns these, Guarded
template <typename Form, typename Run>
void RequireEqualForms(std::span<const Variant<Form>> forms, Run run) {
    const auto expected = run(forms.front());
    Require(expected.AreGuardsWhole(), "the definition writes its own values only");
    for (const Variant<Form>& form : forms.subspan(1)) {
        const auto values = run(form);
        if (values == expected) continue;
        std::fprintf(stderr, "form: %s\n", form.name);
        Require(values.AreGuardsWhole(), "every form writes its own values only");
        Require(false, "every form gives the bytes of the definition");
    }
}

}  // namespace vastrelline
