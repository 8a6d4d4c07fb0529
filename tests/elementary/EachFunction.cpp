// SPDX-License-Identifier: Apache-2.0
#include "EachFunction.h"

#include <bit>
#include <cstddef>

#include "elementary/Exponential.h"
#include "elementary/HyperbolicTangent.h"
#include "elementary/Logarithm.h"
#include "elementary/Power.h"
#include "elementary/SineCosine.h"

namespace vastrelline {

const char* NameOf(Elementary function) {
    constexpr std::array kNames{"Exp",      "ExpFloat", "Log", "LogFloat", "Pow",
                                "PowFloat", "Sin",      "Cos", "Tanh"};
    static_assert(kNames.size() == kEachFunction.size());
    return kNames.at(static_cast<size_t>(function));
}

bool IsOfFloats(Elementary function) {
    return function == Elementary::ExpFloat || function == Elementary::LogFloat ||
           function == Elementary::PowFloat;
}

double ApplyOwn(Elementary function, const Arguments& arguments) {
    const double x = arguments.x;
    const auto narrow = static_cast<float>(x);
    switch (function) {
        case Elementary::Exp:
            return Exp(x);
        case Elementary::ExpFloat:
            return static_cast<double>(Exp(narrow));
        case Elementary::Log:
            return Log(x);
        case Elementary::LogFloat:
            return static_cast<double>(Log(narrow));
        case Elementary::Pow:
            return Pow(x, arguments.y);
        case Elementary::PowFloat:
            return static_cast<double>(Pow(narrow, static_cast<float>(arguments.y)));
        case Elementary::Sin:
            return Sin(x);
        case Elementary::Cos:
            return Cos(x);
        case Elementary::Tanh:
            return Tanh(x);
    }
    return 0.0;
}

uint64_t BitsOf(double value) { return std::bit_cast<uint64_t>(value); }

}  // namespace vastrelline
