// SPDX-License-Identifier: Apache-2.0

// A host of the static library that has a function of the very name of one inside, and many of the standard
// library's templates that the library has, too: neither side takes the other's. Exits with 0 if a frame
// comes out as it must.

#include <vastrelline.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <fstream>
#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#ifndef _WIN32  // where names cannot be hidden
namespace vastrelline {

// As src/sensor/Rotation.h has it.
int32_t RotateAndFlip(uint16_t* frame, int32_t width, int32_t height, int32_t rotation, int32_t flip);

int32_t RotateAndFlip(uint16_t* frame, int32_t width, int32_t height, int32_t rotation, int32_t flip) {
    frame[0] = 77;
    return width + height + rotation + flip > 0 ? 0 : -1;
}

}  // namespace vastrelline
#endif

namespace {

bool IsWellByItself() {
    std::deque<std::wstring> words(100, L"word");
    words.emplace_back(L"last");
    const auto shared = std::make_shared<std::vector<uint16_t>>(3, uint16_t{5});
    char digits[16] = {};
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, 4095U);
    const std::regex pattern("([a-z]+)=([0-9]+)");
    std::thread worker([&] { shared->push_back(7); });
    worker.join();
    return words.size() == 101 && shared->back() == 7 && std::string(digits, end.ptr) == "4095" &&
           std::regex_match("key=12", pattern);
}

}  // namespace

int main() {
    std::ofstream("static_host.ini")
        << "[General]\nPROCMODE=2\nBITSTORED=16\nSATURATION_VALUE=65535\nINTRAORAL_MASK=0\n"
           "INVERSE_INTENSITY=0\nOUTPUTRANGE=16705\nFunctionCount=1\n"
           "00_Function_Number=10\n00_POST_GAMMA_RATIO=2\n";
    // The lowest and the highest level become 0 and OUTPUTRANGE.
    std::vector<uint16_t> input = {816, 816, 816, 816, 1584, 1584, 1584, 1584};
    std::vector<uint16_t> output(input.size());
    const int32_t code =
        ImageProcessing(input.data(), output.data(), 4, 2, "static_host.ini", "General", 0, 0);
    const std::vector<uint16_t> expected = {0, 0, 0, 0, 16705, 16705, 16705, 16705};
    std::vector<uint16_t> turned = {1, 2, 3, 4, 5, 6};
    const int32_t isTurned = RotateImage(turned.data(), 3, 2, 1, 0);
    const bool isWell = code == VASTRELLINE_OK && output == expected && isTurned == 1 &&
                        turned == std::vector<uint16_t>{4, 1, 5, 2, 6, 3} && IsWellByItself();
    if (!isWell) std::fprintf(stderr, "code %d, level %d, turned %d\n", code, output.back(), turned.front());
    return isWell ? 0 : 1;
}
