// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace vastrelline::digest {

// What became of the wish to limit the forms of kernels.
enum class LimitResult { Done, NoSuchMachine, NotInThisProgram };

// Limits the library to the forms of a set, for good: "reference", "baseline", "avx2" or "avx512". A program
// that knows the public header only cannot do it.
LimitResult LimitInstructions(std::string_view set);

}  // namespace vastrelline::digest
