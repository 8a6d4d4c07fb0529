// SPDX-License-Identifier: Apache-2.0
#pragma once

// Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image: the library's eight functions
// for C++17 and later, with frames that own their pixels, paths of the file system and exceptions. Needs
// vastrelline.h and the library.
//
//     vastrelline::Frame raw(1300, 1668);            // rows from the top; fill raw.pixels from the sensor
//     const vastrelline::Frame picture = vastrelline::Process(raw, "dental.ini", "General");
//
// The functions of the library change the frame that they get. These take it by value: what the caller hands
// over stays as it is, and std::move(raw) saves the copy where nobody needs the raw frame any more.
//
// A call reads its profile anew; the configured chain also writes the sensor's values into it. Processing
// calls of a process take turns. Errors: ProcessingError for every code but 0; InvalidFrame;
// std::invalid_argument for a text that the library would cut or not understand, and for a bitmap without a
// path.

#include <vastrelline.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace vastrelline {

// The library returned another code than 0.
class ProcessingError : public std::runtime_error {
public:
    ProcessingError(const std::string& function, std::int32_t code, const std::string& words)
        : std::runtime_error(function + " returned " + std::to_string(code) + ": " + words), code_(code) {}

    std::int32_t Code() const noexcept { return code_; }  // VASTRELLINE_NO_PROFILE ...

private:
    std::int32_t code_;
};

// Sizes that are none, or another number of pixels than they say.
class InvalidFrame : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

struct Frame {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint16_t> pixels;  // width * height levels, row after row from the top

    Frame() = default;
    // Of level 0. Throws InvalidFrame below 1 x 1, and at 2^29 pixels and more.
    Frame(std::int32_t frameWidth, std::int32_t frameHeight)
        : width(frameWidth), height(frameHeight), pixels(CountOf(frameWidth, frameHeight)) {}
    Frame(std::int32_t frameWidth, std::int32_t frameHeight, std::vector<std::uint16_t> framePixels)
        : width(frameWidth), height(frameHeight), pixels(std::move(framePixels)) {
        Require();
    }

    // Throws InvalidFrame where size and pixels do not go together.
    void Require() const {
        if (pixels.size() != CountOf(width, height))
            throw InvalidFrame("a frame of " + std::to_string(width) + " x " + std::to_string(height) +
                               " has other than " + std::to_string(pixels.size()) + " pixels");
    }

    static std::size_t CountOf(std::int32_t width, std::int32_t height) {
        constexpr std::int64_t kLimit = std::int64_t{1} << 29;
        if (width < 1 || height < 1 || std::int64_t{width} * height >= kLimit)
            throw InvalidFrame("a frame has between 1 and 536870911 pixels, not " + std::to_string(width) +
                               " x " + std::to_string(height));
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
};

struct Corrections {
    bool mapping = false;         // squeezes the levels of the result into 1228 to 2905
    bool spotCorrection = false;  // evens out the brightness of the frame first
};

// The figures of an exposure decision; all 0 before the first one.
struct Exposure {
    std::int32_t objectMedian = 0;
    std::int32_t objectTotal = 0;
    std::int32_t lowSignal = 0;
    double lowRatio = 0.0;  // not a number where there was no object
    bool isLow = false;
};

enum class Rotation : std::int32_t { None, Clockwise, Counterclockwise, Half };
enum class Flip : std::int32_t { None, LeftToRight, TopToBottom, Both };

namespace detail {

inline std::string WithoutNull(std::string text) {
    if (text.find('\0') != std::string::npos)
        throw std::invalid_argument("a text has a null character in it");
    return text;
}

#ifdef _WIN32
// The code page that the library reads the texts of this thread by. Its own number, for UTF-8 is converted
// with other flags than all others; GetACP tells the one of the machine.
inline UINT ThreadPage() {
    CPINFOEXW page = {};
    return GetCPInfoExW(CP_THREAD_ACP, 0, &page) ? page.CodePage : UINT{CP_THREAD_ACP};
}

inline std::string FromWide(const std::wstring& wide, UINT page) {
    if (wide.empty()) return {};
    if (wide.size() > 0x7FFF) throw std::invalid_argument("a text is longer than any path");
    const int length = static_cast<int>(wide.size());
    const bool isUtf8 = page == CP_UTF8;
    const DWORD flags = isUtf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL isCut = FALSE;
    BOOL* const cut = isUtf8 ? nullptr : &isCut;  // the system takes none with UTF-8
    const int size = WideCharToMultiByte(page, flags, wide.data(), length, nullptr, 0, nullptr, cut);
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    if (size <= 0 || isCut ||
        WideCharToMultiByte(page, flags, wide.data(), length, &text[0], size, nullptr, cut) != size || isCut)
        throw std::invalid_argument(
            isUtf8 ? "a text has half of a surrogate pair, which UTF-8 does not hold"
                   : "a text has letters outside of the code page; SaveBitmapS takes all");
    return text;
}

inline std::wstring ToWide(std::string_view utf8) {
    if (utf8.empty()) return {};
    if (utf8.size() > 0x7FFF) throw std::invalid_argument("a text is longer than any path");
    const int length = static_cast<int>(utf8.size());
    const int size = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), length, nullptr, 0);
    if (size <= 0) throw std::invalid_argument("a text is no UTF-8");
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), length, &wide[0], size);
    return wide;
}

// As all functions but ImageProcessing_NS take it: in the code page of the calling thread.
inline std::string Narrow(const std::filesystem::path& path) {
    return WithoutNull(FromWide(path.native(), ThreadPage()));
}
inline std::string Narrow(std::string_view text) { return WithoutNull(FromWide(ToWide(text), ThreadPage())); }
inline std::string Utf8(const std::filesystem::path& path) { return FromWide(path.native(), CP_UTF8); }
// Refuses what is no UTF-8: the system would put replacement characters there.
inline std::string Utf8(std::string_view text) { return FromWide(ToWide(text), CP_UTF8); }
#else
inline std::string Narrow(const std::filesystem::path& path) { return WithoutNull(path.native()); }
inline std::string Narrow(std::string_view text) { return WithoutNull(std::string(text)); }
inline std::string Utf8(const std::filesystem::path& path) { return path.native(); }
inline std::string Utf8(std::string_view text) { return std::string(text); }
#endif

// The bytes of the character that a text begins with, or 1 where they are none: a stray byte, one that was
// cut off, an overlong form, half of a surrogate pair, a number above U+10FFFF.
inline std::size_t CountFirstBytes(std::string_view text) {
    const auto byteAt = [&](std::size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(text[i]));
    };
    const unsigned lead = byteAt(0);
    if (lead < 0xC2 || lead > 0xF4) return 1;
    const std::size_t count = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (count > text.size()) return 1;
    for (std::size_t i = 1; i < count; ++i)
        if ((byteAt(i) & 0xC0) != 0x80) return 1;
    const unsigned second = byteAt(1);
    const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool isHalfOfPair = lead == 0xED && second >= 0xA0;
    const bool isAboveAll = lead == 0xF4 && second >= 0x90;
    return isOverlong || isHalfOfPair || isAboveAll ? 1 : count;
}

// The UTF-16 units that the library makes of a text. A path of Linux need be no UTF-8: a byte that is no part
// of it counts as one unit.
inline std::size_t CountUnits(std::string_view text) {
    std::size_t units = 0;
    while (!text.empty()) {
        const std::size_t bytes = CountFirstBytes(text);
        units += bytes == 4 ? 2 : 1;
        text.remove_prefix(bytes);
    }
    return units;
}

// ImageProcessing_NS takes a longer text for an empty one.
inline std::string Short(std::string utf8) {
    constexpr std::size_t kMostUnits = 260;
    if (CountUnits(utf8) > kMostUnits) throw std::invalid_argument("a text has more than 260 characters");
    return WithoutNull(std::move(utf8));
}

// The library takes an empty path for "no bitmap": it processes the frame, saves nothing and tells success.
inline const std::filesystem::path& Named(const std::filesystem::path& bitmap) {
    if (bitmap.empty()) throw std::invalid_argument("the path of the bitmap is empty");
    return bitmap;
}

inline void Require(const char* function, std::int32_t code, const std::string& profile,
                    const std::string& bitmap = {}) {
    switch (code) {
        case VASTRELLINE_OK:
            return;
        case VASTRELLINE_NO_PROFILE:
            throw ProcessingError(function, code, "the profile cannot be opened and read: " + profile);
        case VASTRELLINE_NO_INPUT:
            throw ProcessingError(function, code, "there is no input");
        case VASTRELLINE_NO_OUTPUT:
            throw ProcessingError(function, code, "there is no output");
        case VASTRELLINE_NO_SECTION:
            throw ProcessingError(function, code,
                                  "the profile selects a chain that needs a section, and none is named");
        case VASTRELLINE_NO_BITMAP:
            throw ProcessingError(function, code,
                                  "the frame was processed, but the bitmap could not be saved: " + bitmap);
        default:
            throw ProcessingError(function, code,
                                  "memory ran out, or the system failed to read the profile: " + profile);
    }
}

inline const SensorGeometry* Pointer(const std::optional<SensorGeometry>& geometry) {
    return geometry ? &*geometry : nullptr;
}

}  // namespace detail

// The enhanced frame, by ImageProcessing. The section's PROCMODE selects the chain.
//
// section   UTF-8
inline Frame Process(Frame frame, const std::filesystem::path& profile, std::string_view section,
                     Corrections corrections = {}) {
    frame.Require();
    Frame output(frame.width, frame.height);
    const std::string path = detail::Narrow(profile);
    detail::Require(
        "ImageProcessing",
        ImageProcessing(frame.pixels.data(), output.pixels.data(), frame.width, frame.height, path.c_str(),
                        detail::Narrow(section).c_str(), corrections.mapping, corrections.spotCorrection),
        path);
    return output;
}

// By ImageProcessingS: with the caller's geometry of the sensor in place of the profile's, and with the chain
// that decides about the exposure (PROCMODE 3), whose figures LastExposure has afterwards.
inline Frame ProcessS(Frame frame, const std::filesystem::path& profile, std::string_view section,
                      const std::optional<SensorGeometry>& geometry = {}, Corrections corrections = {}) {
    frame.Require();
    Frame output(frame.width, frame.height);
    const std::string path = detail::Narrow(profile);
    detail::Require("ImageProcessingS",
                    ImageProcessingS(frame.pixels.data(), output.pixels.data(), frame.width, frame.height,
                                     path.c_str(), detail::Narrow(section).c_str(), corrections.mapping,
                                     corrections.spotCorrection, detail::Pointer(geometry)),
                    path);
    return output;
}

// By ImageProcessingCR: of a frame without the sensor's rounded corners.
inline Frame ProcessCr(Frame frame, const std::filesystem::path& profile, std::string_view section) {
    frame.Require();
    Frame output(frame.width, frame.height);
    const std::string path = detail::Narrow(profile);
    detail::Require("ImageProcessingCR",
                    ImageProcessingCR(frame.pixels.data(), output.pixels.data(), frame.width, frame.height,
                                      path.c_str(), detail::Narrow(section).c_str()),
                    path);
    return output;
}

// As Process, by ImageProcessing_N: the result becomes an 8-bit bitmap file, which replaces one that is
// there.
inline void SaveBitmap(Frame frame, const std::filesystem::path& profile, std::string_view section,
                       const std::filesystem::path& bitmap, Corrections corrections = {}) {
    frame.Require();
    const std::string path = detail::Narrow(profile);
    const std::string file = detail::Narrow(detail::Named(bitmap));
    detail::Require("ImageProcessing_N",
                    ImageProcessing_N(frame.pixels.data(), frame.width, frame.height, path.c_str(),
                                      detail::Narrow(section).c_str(), corrections.mapping,
                                      corrections.spotCorrection, file.c_str()),
                    path, file);
}

// As ProcessS, by ImageProcessing_NS. Its texts have 260 characters at most, and any letters.
inline void SaveBitmapS(Frame frame, const std::filesystem::path& profile, std::string_view section,
                        const std::filesystem::path& bitmap,
                        const std::optional<SensorGeometry>& geometry = {}, Corrections corrections = {}) {
    frame.Require();
    const std::string path = detail::Short(detail::Utf8(profile));
    const std::string file = detail::Short(detail::Utf8(detail::Named(bitmap)));
    detail::Require("ImageProcessing_NS",
                    ImageProcessing_NS(frame.pixels.data(), frame.width, frame.height, path.c_str(),
                                       detail::Short(detail::Utf8(section)).c_str(), corrections.mapping,
                                       corrections.spotCorrection, file.c_str(), detail::Pointer(geometry)),
                    path, file);
}

// As SaveBitmap, by ImageProcessing_NE: for a sensor that the caller names.
//
// sensorFolder   of the sensor's own profile; empty: the machine's settings tell
// sensorMode     2: the frame has twice the sensor's resolution
inline void SaveBitmapNe(Frame frame, const std::filesystem::path& profile, std::string_view section,
                         const std::filesystem::path& bitmap, std::string_view sensorFolder = {},
                         std::int32_t sensorMode = 0, Corrections corrections = {}) {
    frame.Require();
    const std::string path = detail::Narrow(profile);
    const std::string file = detail::Narrow(detail::Named(bitmap));
    detail::Require(
        "ImageProcessing_NE",
        ImageProcessing_NE(frame.pixels.data(), frame.width, frame.height, path.c_str(),
                           detail::Narrow(section).c_str(), corrections.mapping, corrections.spotCorrection,
                           file.c_str(), detail::Narrow(sensorFolder).c_str(), sensorMode),
        path, file);
}

// By Getdose_ImageInfo: of the last ProcessS or SaveBitmapS of this process with a PROCMODE of 3.
inline Exposure LastExposure() {
    Exposure figures;
    std::int32_t isLow = 0;
    Getdose_ImageInfo(&figures.objectMedian, &figures.objectTotal, &figures.lowSignal, &figures.lowRatio,
                      &isLow);
    figures.isLow = isLow != 0;
    return figures;
}

// By RotateImage: the frame turned, then mirrored. After a quarter turn width and height are exchanged.
inline Frame Rotate(Frame frame, Rotation rotation, Flip flip = Flip::None) {
    frame.Require();
    // Two calls: after a quarter turn the library's mirror would still take the old width.
    if (RotateImage(frame.pixels.data(), frame.width, frame.height, static_cast<std::int32_t>(rotation), 0) ==
        0)
        throw std::bad_alloc();
    if (rotation == Rotation::Clockwise || rotation == Rotation::Counterclockwise)
        std::swap(frame.width, frame.height);
    if (RotateImage(frame.pixels.data(), frame.width, frame.height, 0, static_cast<std::int32_t>(flip)) == 0)
        throw std::bad_alloc();
    return frame;
}

}  // namespace vastrelline
