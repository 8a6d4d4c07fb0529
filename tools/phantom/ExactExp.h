// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// e to the power x from additions, multiplications and divisions alone, whose results every machine must
// agree on; the standard library's may differ in the last bit. Relative error below 1e-14.
//
// x   -700 to 700; outside, the nearer end is taken
double ExactExp(double x);

}  // namespace vastrelline
