// SPDX-License-Identifier: Apache-2.0

// The 8-bit rendering of pixels of any type through any window, and the bitmap file of a small frame. The
// input's head are the pixels, its tail picks the rest, so that a change of that leaves the pixels where they
// are.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/memory/MemoryFiles.h"
#include "report/Bitmap.h"
#include "report/CImageM.h"
#include "report/WindowTable.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

constexpr const wchar_t* kPath = L"picture.bmp";

struct Options {
    int32_t width;
    int32_t height;
    int32_t bitsAllocated;
    int32_t bitsStored;
    int32_t centre;
    int32_t windowWidth;
    int32_t pixelType;
    int32_t curve;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 24;
    constexpr std::array<int32_t, 4> kAllocated{8, 16, 32, 64};
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<int8_t>() % (kLargestSide + 1);
    options.bitsAllocated = kAllocated[tail.Take<uint8_t>() % kAllocated.size()];
    options.bitsStored = tail.Take<int8_t>() % 20;
    const bool isUsual = tail.Take<uint8_t>() % 4 != 0;
    options.centre = isUsual ? tail.Take<int16_t>() : tail.Take<int32_t>();
    options.windowWidth = isUsual ? tail.Take<uint16_t>() : tail.Take<int32_t>();
    options.pixelType = tail.Take<int8_t>() % 7;
    options.curve = tail.Take<uint8_t>() % 6;
    return options;
}

// The value of a pixel by its type; 0 where it would end behind its row.
template <typename Pixel>
double ValueAt(const std::vector<std::byte>& raster, size_t rowBytes, size_t row, size_t column) {
    Pixel pixel{};
    if ((column + 1) * sizeof pixel > rowBytes) return 0;
    std::memcpy(&pixel, raster.data() + row * rowBytes + column * sizeof pixel, sizeof pixel);
    return static_cast<double>(pixel);
}

double PlainValue(const std::vector<std::byte>& raster, size_t rowBytes, size_t row, size_t column,
                  int32_t type) {
    switch (type) {
        case 0:
            return ValueAt<uint16_t>(raster, rowBytes, row, column);
        case 1:
            return ValueAt<int16_t>(raster, rowBytes, row, column);
        case 2:
            return ValueAt<int32_t>(raster, rowBytes, row, column);
        case 3:
            return ValueAt<double>(raster, rowBytes, row, column);
        case 4:
            return ValueAt<uint8_t>(raster, rowBytes, row, column);
        default:
            return 0;
    }
}

void TestRendering(const InputTail& tail, const Options& o) {
    const int32_t height = std::abs(o.height);
    const auto rowBytes = static_cast<size_t>(o.width * o.bitsAllocated / 8);
    std::vector<std::byte> raster(rowBytes * static_cast<size_t>(height));
    const size_t count = std::min(raster.size(), tail.Size());
    if (count > 0) std::memcpy(raster.data(), tail.Data(), count);

    const auto render = [&](int32_t invert) {
        return CImageM(raster.data(), o.width, o.height, o.bitsAllocated, o.bitsStored, o.centre,
                       o.windowWidth, invert, L"", o.pixelType, o.curve, 1.0);
    };
    const CImageM image = render(0);
    const CImageM inverted = render(1);
    Require(image.Width() == o.width && image.Height() == height, "a matrix has the size that it was given");
    Require((image.BottomUp() != 0) == (o.height >= 0), "a negative height tells of the order of rows");
    Require(image.DisplayStride() % 4 == 0 && image.DisplayStride() >= o.width &&
                image.DisplayStride() < o.width + 4,
            "rows of the rendering are padded to four bytes");
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < o.width; ++x) {
            const double value =
                PlainValue(raster, rowBytes, static_cast<size_t>(y), static_cast<size_t>(x), o.pixelType);
            const double pixel = image.PixelAt(y, x);
            Require(std::memcmp(&pixel, &value, sizeof pixel) == 0, "a pixel has the value of its type");
            Require(image.DisplayRow(y)[x] + inverted.DisplayRow(y)[x] == 255,
                    "inverted is 255 less the entry");
        }
    }

    CImageM equalised(L"");
    equalised.Set(raster.data(), o.width, o.height, o.bitsAllocated, o.bitsStored, o.centre, o.windowWidth, 0,
                  o.pixelType, o.curve, 1.0);
    equalised.SetEqualize(1);
    equalised.Render(o.centre, o.windowWidth);
    uint8_t whitest = 0;
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < o.width; ++x) whitest = std::max(whitest, equalised.DisplayRow(y)[x]);
    if (o.width > 0 && o.width % 4 == 0 && height > 0)
        Require(whitest == 255, "equalised, the brightest is white");
}

void TestWindow(const Options& o) {
    const int32_t top = (1 << std::clamp(o.bitsStored, 0, 14)) - 1;
    const std::vector<uint8_t> table = BuildWindowTable(top, o.centre, o.windowWidth, o.curve, 0);
    Require(table.size() == static_cast<size_t>(top) + 1, "one entry for each level");
    constexpr int32_t kOrdinary = 1 << 20;
    const bool isOrdinary =
        o.windowWidth > 1 && o.windowWidth < kOrdinary && std::abs(o.centre / 2) < kOrdinary;
    if (isOrdinary && o.curve != 2) Require(std::is_sorted(table.begin(), table.end()), "a window rises");
}

void TestFile(const std::vector<uint16_t>& frame, int32_t width, int32_t height, int32_t rowBytes) {
    constexpr size_t kHeaderBytes = 14 + 40 + 256 * 4;
    MemoryFiles& files = MemoryFiles::Shared();
    files.Clear();
    const bool isSavedFrame = SaveFrameBitmap(frame.data(), width, height, kPath) == 1;
    Require(isSavedFrame == !frame.empty(), "a frame is saved, and one without pixels is not");
    if (!isSavedFrame) return Require(files.Find(kPath)->empty(), "which leaves the file empty");
    const CImageM image(frame.data(), width, height, 16, 16, 2047, 4096, 0, L"", 0, 0, 1.0);
    const std::string& file = *files.Find(kPath);
    const auto stride = static_cast<size_t>(image.DisplayStride());
    Require(file.size() == kHeaderBytes + stride * static_cast<size_t>(height), "headers, then whole rows");
    const auto at = [&](size_t place) { return static_cast<uint8_t>(file[place]); };
    Require(file.starts_with("BM") && at(18) == width && at(22) == height, "the header tells the size");
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            Require(at(kHeaderBytes + static_cast<size_t>(height - 1 - y) * stride +
                       static_cast<size_t>(x)) == image.DisplayRow(y)[x],
                    "rows stand bottom-up");

    Require(SaveFrameBitmap(frame.data(), width, height, L"missing/picture.bmp") == 0,
            "a missing folder gives 0");
    Require(SaveBitmap8(kPath, rowBytes, width, height, nullptr) == 0 && files.Find(kPath)->empty(),
            "without pixels the file is left empty");
    const std::vector<uint8_t> pixels(static_cast<size_t>(std::max(rowBytes, 0)) *
                                      static_cast<size_t>(height));
    files.Clear();
    const bool isSaved = SaveBitmap8(kPath, rowBytes, width, height, pixels.data()) == 1;
    const bool hasPixels = pixels.data() != nullptr;
    Require(isSaved == (rowBytes >= width && hasPixels), "rows are as wide as the frame");
    Require(SaveBitmap8(kPath, rowBytes, -1, height, reinterpret_cast<const uint8_t*>("")) == 0,
            "no size below 0");
    Require(SaveBitmap8(kPath, 1 << 30, 1, 1 << 30, reinterpret_cast<const uint8_t*>("")) == 0,
            "no file of 4 GiB");
    files.Clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const int32_t rowBytes = options.width + tail.Take<int8_t>() % 8;
    TestRendering(tail, options);
    TestWindow(options);
    const int32_t height = std::abs(options.height);
    TestFile(tail.TakeFrame(options.width, height), options.width, height, rowBytes);
    return 0;
}
