// SPDX-License-Identifier: Apache-2.0
#include "KeyTables.h"

#include <cstddef>

namespace vastrelline::digest {

std::vector<std::string_view> ListOf(std::string_view values) {
    std::vector<std::string_view> list;
    while (!values.empty()) {
        const size_t end = values.find(' ');
        if (end != 0) list.push_back(values.substr(0, end));
        values.remove_prefix(end == std::string_view::npos ? values.size() : end + 1);
    }
    return list;
}

const std::vector<KeyValues>& CommonSettings() {
    static const std::vector<KeyValues> settings{
        {"BITSTORED", "8 10 11 12 14 16 17 18", "0 1 2 20 24 31 32 -1 x"},
        {"OUTPUTRANGE", "4095 255 1000 2048 16383 65535", "0 1 -1 70000 -4095 x"},
        {"SATURATION_VALUE", "4095 4094 4000 3000 2000 65535", "0 1 -1 100 99999999999"},
        {"INVERSE_INTENSITY", "0 1 2 3", "4 -1 x"},
        {"INVERSE_LOGRATIO",
         "0.2 0.05 0.07 0.1 0.15 0.25 0.3 0.37 0.5 0.66 0.8 1 1.1 1.25 1.5 1.9 2 -0.5 -1 -1.3 -2",
         "0 0.0001 3 10 100 1e5 -0.01 -50 1e308 nan inf 0,5"},
        {"INTRAORAL_MASK", "0 1", "2 -1"},
        {"VERSION", "1.0 2.31b %s%d 100%", ""},
        {"BITALLOCATED", "8", ""},
        {"LITTLEENDIAN", "0", ""},
        {"CAPTION", "c", ""},
        {"AUTOWINDOWING", "1", ""},
    };
    return settings;
}

const std::vector<KeyValues>& RangeSettings() {
    static const std::vector<KeyValues> settings{
        {"TargetRange", "0 201 500 2000 2345 2800 3000 3500 4095", "-5 1 100000 2147483647 x"},
        {"MinimumValue", "0 1 20 50 100", "-10 5000 4095"},
        {"MaxCut", "0 0.0005 0.001 0.0023 0.005", "0.05 0.2 1 -1 1e9 nan"},
        {"MinCut", "0 0.0005 0.001 0.0023 0.005", "0.05 0.2 1 -1 1e9 nan"},
    };
    return settings;
}

}  // namespace vastrelline::digest
