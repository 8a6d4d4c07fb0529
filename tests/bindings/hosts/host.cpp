// SPDX-License-Identifier: Apache-2.0

// Calls all eight functions by the C++ header and leaves what came of it in files, for languages_test.py.
//
//     host FOLDER WIDTH HEIGHT
//
// FOLDER holds frame.raw and profiles; it receives the results.

#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vastrelline.hpp>

namespace {

std::filesystem::path folder;

void Write(const char* name, const vastrelline::Frame& frame) {
    std::ofstream file(folder / name, std::ios::binary);
    for (const std::uint16_t level : frame.pixels) {
        file.put(static_cast<char>(level & 0xFF));
        file.put(static_cast<char>(level >> 8));
    }
}

// "1" for the code, "frame" or "text" for what was refused before the call, "none" where all went well.
std::string FailureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const vastrelline::ProcessingError& error) {
        return std::to_string(error.Code()) + (std::strlen(error.what()) > 20 ? "" : " without words");
    } catch (const vastrelline::InvalidFrame&) {
        return "frame";
    } catch (const std::invalid_argument&) {
        return "text";
    }
    return "none";
}

// In the folder, and so many UTF-16 units long; the name begins with a letter of four bytes in UTF-8.
std::filesystem::path PathOfUnits(std::size_t units) {
    const std::u16string start = folder.u16string();
    const std::u16string name = u"\U0001F9B7.bmp";
    return start + std::u16string(units - start.size() - name.size(), u'/') + name;
}

}  // namespace

int main(int count, char** words) {
    if (count != 4) return 2;
    folder = std::filesystem::path(words[1]);
    const int width = std::stoi(words[2]);
    const int height = std::stoi(words[3]);
    vastrelline::Frame frame(width, height);
    std::ifstream raw(folder / "frame.raw", std::ios::binary);
    for (std::uint16_t& level : frame.pixels) {
        level = static_cast<std::uint16_t>(raw.get());
        level = static_cast<std::uint16_t>(level | raw.get() << 8);
    }
    const auto dental = folder / std::filesystem::path(u"t\u00E4glich.ini");
    const auto fixed = folder / "fixed.ini";
    const auto extended = folder / "extended.ini";
    SensorGeometry geometry{0, 0, 8, 12, width, height, 0, 0, 0, 0};
    const vastrelline::Frame kept = frame;

    Write("plain.raw", vastrelline::Process(frame, dental, "General"));
    Write("corrected.raw", vastrelline::Process(frame, dental, "General", {true, true}));
    const vastrelline::Exposure none = vastrelline::LastExposure();
    Write("s.raw", vastrelline::ProcessS(frame, dental, "LowDose", geometry));
    const vastrelline::Exposure figures = vastrelline::LastExposure();
    Write("cr.raw", vastrelline::ProcessCr(frame, fixed, "Cr"));
    vastrelline::SaveBitmap(frame, dental, "General", folder / "n.bmp");
    vastrelline::SaveBitmapS(frame, dental, "LowDose", folder / "ns.bmp", geometry);
    vastrelline::SaveBitmapNe(frame, extended, "General", folder / "ne.bmp");
    Write("turned.raw",
          vastrelline::Rotate(frame, vastrelline::Rotation::Clockwise, vastrelline::Flip::LeftToRight));
    const bool isKept = frame.pixels == kept.pixels;

    vastrelline::ProcessS(vastrelline::Frame(width, height), dental, "LowDose", geometry);
    const double emptyRatio = vastrelline::LastExposure().lowRatio;

    std::ofstream facts(folder / "facts.txt");
    facts
        << "kept " << (isKept ? "yes" : "no") << '\n'
        << "before " << none.objectTotal << '\n'
        << "dose " << figures.objectMedian << ' ' << figures.objectTotal << ' ' << figures.lowSignal << ' '
        << (figures.isLow ? 1 : 0) << ' '
        << (figures.lowRatio == double(figures.lowSignal) / figures.objectTotal) << '\n'
        << "empty " << (std::isnan(emptyRatio) ? "nan" : "number") << '\n'
        << "profile " << FailureOf([&] { vastrelline::Process(frame, folder / "none.ini", "General"); })
        << '\n'
        << "bitmap "
        << FailureOf([&] { vastrelline::SaveBitmap(frame, dental, "General", folder / "no" / "a.bmp"); })
        << '\n'
        << "length " << FailureOf([&] {
               vastrelline::Frame cut = frame;
               cut.pixels.pop_back();
               vastrelline::Process(cut, dental, "General");
           })
        << '\n'
        << "null "
        << FailureOf([&] { vastrelline::Process(frame, dental, std::string_view("Gen\0eral", 8)); }) << '\n'
        << "long " << FailureOf([&] {
               vastrelline::SaveBitmapS(frame, dental, std::string(261, 'S'), folder / "a.bmp");
           })
        << '\n'
        << "strange " << FailureOf([&] {
               // A letter that is cut off counts as two, one for each byte.
               vastrelline::SaveBitmapS(frame, dental, std::string(259, 'S') + "\xE2\x82", folder / "a.bmp");
           })
        << '\n'
        << "border "
        << FailureOf([&] { vastrelline::SaveBitmapS(frame, dental, "LowDose", PathOfUnits(260), geometry); })
        << ' '
        << FailureOf([&] { vastrelline::SaveBitmapS(frame, dental, "LowDose", PathOfUnits(261), geometry); })
        << '\n'
        << "pathless " << FailureOf([&] { vastrelline::SaveBitmap(frame, dental, "General", ""); }) << ' '
        << FailureOf([&] { vastrelline::SaveBitmapS(frame, dental, "LowDose", "", geometry); }) << ' '
        << FailureOf([&] { vastrelline::SaveBitmapNe(frame, extended, "General", ""); }) << '\n';
    return 0;
}
