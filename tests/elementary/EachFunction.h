// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>

namespace vastrelline {

// The library's elementary functions, each of doubles and of floats by itself, so that tests can walk them
// all.
enum class Elementary { Exp, ExpFloat, Log, LogFloat, Pow, PowFloat, Sin, Cos, Tanh };

inline constexpr std::array kEachFunction{Elementary::Exp,      Elementary::ExpFloat, Elementary::Log,
                                          Elementary::LogFloat, Elementary::Pow,      Elementary::PowFloat,
                                          Elementary::Sin,      Elementary::Cos,      Elementary::Tanh};

const char* NameOf(Elementary function);

bool IsOfFloats(Elementary function);

struct Arguments {
    double x;
    double y;  // of powers only, otherwise 0
};

// What the library says. Floats come and go as doubles.
double ApplyOwn(Elementary function, const Arguments& arguments);

// Equal bits are equal results: of zeros the sign counts, and of what is no number all.
uint64_t BitsOf(double value);

}  // namespace vastrelline
