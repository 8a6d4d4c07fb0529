// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vastrelline.hpp>

#include "platform/Text.h"
#include "profile_text/Utf8.h"
#include "support/TemporaryFolder.h"

namespace {

using std::string_literals::operator""s;

struct Piece {
    const char* name;
    std::string bytes;
    size_t units;  // by hand
};

const Piece kValidPieces[] = {
    {"OneByte", "a", 1},
    {"TwoBytes", "\xC3\xA4", 1},
    {"FirstOfTwoBytes", "\xC2\x80", 1},
    {"ThreeBytes", "\xE2\x82\xAC", 1},
    {"LastBeforeSurrogates", "\xED\x9F\xBF", 1},
    {"FourBytes", "\xF0\x9F\xA6\xB7", 2},
    {"LastOfAll", "\xF4\x8F\xBF\xBF", 2},
};

// A file name of Linux may hold these.
const Piece kInvalidPieces[] = {
    {"LoneContinuation", "\x80", 1},
    {"TwoLoneContinuations", "\xBF\x80", 2},
    {"LeadOnly", "\xC3", 1},
    {"CutOffThreeBytes", "\xE2\x82", 2},
    {"CutOffFourBytes", "\xF0\x9F\xA6", 3},
    {"CutOffByALetter", "\xF0\x9F\xA6x", 4},
    {"CutOffByACharacter", "\xE2\x82\xC3\xA4", 3},
    {"OverlongOfTwoBytes", "\xC1\xBF", 2},
    {"OverlongOfThreeBytes", "\xE0\x9F\xBF", 3},
    {"OverlongOfFourBytes", "\xF0\x8F\xBF\xBF", 4},
    {"HalfOfASurrogatePair", "\xED\xA0\x80", 3},
    {"AboveAllCharacters", "\xF4\x90\x80\x80", 4},
    {"LeadOfNone", "\xF5\x80\x80\x80", 4},
};

// The last units are the piece's, so that a border can run through it.
std::string TextOfUnits(size_t units, const Piece& piece) {
    return std::string(units - piece.units, 'S').append(piece.bytes);
}

size_t CountUnitsOf(char32_t letter) { return letter > 0xFFFF ? 2 : 1; }

TEST(CppTexts, UnitsAreCountedByHand) {
    for (const auto& [name, bytes, units] : kValidPieces)
        EXPECT_EQ(vastrelline::detail::CountUnits(bytes), units) << name;
    for (const auto& [name, bytes, units] : kInvalidPieces)
        EXPECT_EQ(vastrelline::detail::CountUnits(bytes), units) << name;
    EXPECT_EQ(vastrelline::detail::CountUnits(""), 0U);
}

TEST(CppTexts, UnitsAreCountedAsTheLibraryDoes) {
    std::mt19937 random(20261123);
    // Bytes around which the rules change, so that whole characters come up and nearly whole ones, too.
    const std::string bytes =
        "a\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE2\xED\xEF\xF0\xF1\xF4\xF5\xFF";
    for (int i = 0; i < 100000; ++i) {
        std::string text(random() % 9, '\0');
        for (char& byte : text) byte = bytes[random() % bytes.size()];
        size_t units = 0;
        for (const wchar_t letter : vastrelline::DecodeUtf8(text))
            units += CountUnitsOf(static_cast<char32_t>(letter));
        ASSERT_EQ(vastrelline::detail::CountUnits(text), units) << testing::PrintToString(text);
    }
}

TEST(CppTexts, ShortTakes260UnitsAndRefusesOneMore) {
    const auto check = [](const Piece& piece) {
        SCOPED_TRACE(piece.name);
        for (const size_t units : {259U, 260U}) {
            const std::string text = TextOfUnits(units, piece);
            EXPECT_EQ(vastrelline::detail::Short(text), text);
            EXPECT_FALSE(vastrelline::WidenUtf8Text(text.c_str()).empty());
        }
        EXPECT_THROW(vastrelline::detail::Short(TextOfUnits(261, piece)), std::invalid_argument);
        // Where a pair runs through the border, Wine cuts it in two; Windows and Linux give no text at all.
        if (piece.units == 1 || sizeof(wchar_t) > 2) {
            EXPECT_TRUE(vastrelline::WidenUtf8Text(TextOfUnits(261, piece).c_str()).empty());
        }
    };
    for (const Piece& piece : kValidPieces) check(piece);
#ifndef _WIN32
    for (const Piece& piece : kInvalidPieces) check(piece);
#endif
}

TEST(CppTexts, ABitmapWithoutAPathIsRefused) {
    const vastrelline::Frame frame(8, 8);
    EXPECT_THROW(vastrelline::SaveBitmap(frame, "none.ini", "General", ""), std::invalid_argument);
    EXPECT_THROW(vastrelline::SaveBitmapS(frame, "none.ini", "General", ""), std::invalid_argument);
    EXPECT_THROW(vastrelline::SaveBitmapNe(frame, "none.ini", "General", ""), std::invalid_argument);
}

TEST(CppTexts, NullCharactersAreRefused) {
    EXPECT_THROW(vastrelline::detail::Short("a\0b"s), std::invalid_argument);
    EXPECT_THROW(vastrelline::detail::Narrow(std::string_view("a\0b", 3)), std::invalid_argument);
}

#ifndef _WIN32

// On Windows the system's own limit on paths lies lower.
TEST(CppTexts, NoBitmapIsLostAtTheBorder) {
    const vastrelline::TemporaryFolder folder;
    const std::filesystem::path profile = folder.Path() / "plain.ini";
    std::ofstream(profile) << "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\n";
    const vastrelline::Frame frame(8, 8);
    const SensorGeometry square{0, 0, 0, 0, 8, 8, 0, 0, 0, 0};
    const auto check = [&](const Piece& piece) {
        SCOPED_TRACE(piece.name);
        const std::string start = folder.Path().native();
        const auto pathOfUnits = [&](size_t units) {
            return start + std::string(units - start.size() - piece.units, '/') + piece.bytes;
        };
        for (const size_t units : {259U, 260U}) {
            const std::filesystem::path bitmap = pathOfUnits(units);
            vastrelline::SaveBitmapS(frame, profile, "General", bitmap, square);
            EXPECT_TRUE(std::filesystem::remove(bitmap));
        }
        const std::filesystem::path bitmap = pathOfUnits(261);
        EXPECT_THROW(vastrelline::SaveBitmapS(frame, profile, "General", bitmap, square),
                     std::invalid_argument);
        EXPECT_FALSE(std::filesystem::exists(bitmap));
    };
    for (const Piece& piece : kValidPieces) check(piece);
    for (const Piece& piece : kInvalidPieces) check(piece);
}

#else

// The locale of this thread, and with it its code page, as it was.
class ThreadLocaleScope {
public:
    explicit ThreadLocaleScope(LCID locale) : before_(GetThreadLocale()) { SetThreadLocale(locale); }
    ~ThreadLocaleScope() { SetThreadLocale(before_); }
    ThreadLocaleScope(const ThreadLocaleScope&) = delete;
    ThreadLocaleScope& operator=(const ThreadLocaleScope&) = delete;

private:
    LCID before_;
};

constexpr LCID kGerman = 0x0407;
constexpr LCID kJapanese = 0x0411;
constexpr LCID kHindi = 0x0439;
const char* const kUmlaut = "t\xC3\xA4glich";       // UTF-8
const char* const kKanji = "\xE6\xAD\xAF.bmp";      // a tooth
const wchar_t* const kTooth = L"\xD83E\xDDB7.bmp";  // in no code page but UTF-8

TEST(CppTexts, NarrowTakesThePageOfTheThread) {
    {
        const ThreadLocaleScope scope(kGerman);
        EXPECT_EQ(vastrelline::detail::ThreadPage(), 1252U);
        EXPECT_EQ(vastrelline::detail::Narrow(std::string_view(kUmlaut)), "t\xE4glich");
        EXPECT_THROW(vastrelline::detail::Narrow(std::string_view(kKanji)), std::invalid_argument);
    }
    const ThreadLocaleScope scope(kJapanese);
    EXPECT_EQ(vastrelline::detail::ThreadPage(), 932U);
    EXPECT_EQ(vastrelline::detail::Narrow(std::string_view(kKanji)), "\x8E\x95.bmp");
    EXPECT_EQ(vastrelline::WidenThreadText("\x8E\x95.bmp"), L"\x6B6F.bmp");
    EXPECT_THROW(vastrelline::detail::Narrow(std::string_view(kUmlaut)), std::invalid_argument);
}

// Where a thread's page is UTF-8: all letters, and with other flags of the conversion.
TEST(CppTexts, NarrowTakesAThreadOfUtf8) {
    const ThreadLocaleScope scope(kHindi);
    if (vastrelline::detail::ThreadPage() != CP_UTF8) GTEST_SKIP() << "this system has another page for it";
    EXPECT_EQ(vastrelline::detail::Narrow(std::filesystem::path(kTooth)), "\xF0\x9F\xA6\xB7.bmp");
    EXPECT_EQ(vastrelline::detail::Narrow(std::string_view(kUmlaut)), kUmlaut);
    EXPECT_THROW(vastrelline::detail::Narrow(std::filesystem::path(L"\xD83E.bmp")), std::invalid_argument);
}

// Not by files of such names, which Wine makes in some locales of Linux only.
TEST(CppTexts, TheLibraryReadsTheNameOfTheCaller) {
    const auto check = [](LCID locale, const std::wstring& name) {
        const ThreadLocaleScope scope(locale);
        const std::string narrow = vastrelline::detail::Narrow(std::filesystem::path(name));
        EXPECT_EQ(vastrelline::WidenThreadText(narrow.c_str()), name) << locale;
    };
    check(kGerman, L"C:\\t\xE4glich.bmp");
    check(kJapanese, L"C:\\\x6B6F.bmp");
}

TEST(CppTexts, TheBestFitOfAPageIsRefused) {
    const ThreadLocaleScope scope(kGerman);
    // A full-width A: the page has none, and its best fit would be the file of another name.
    EXPECT_THROW(vastrelline::detail::Narrow(std::filesystem::path(L"\xFF21.bmp")), std::invalid_argument);
}

TEST(CppTexts, ThePageOfUtf8TakesAllLetters) {
    EXPECT_EQ(vastrelline::detail::FromWide(kTooth, CP_UTF8), "\xF0\x9F\xA6\xB7.bmp");
    EXPECT_THROW(vastrelline::detail::FromWide(L"\xD83E.bmp", CP_UTF8), std::invalid_argument);
    EXPECT_THROW(vastrelline::detail::Utf8(std::string_view("\xC3")), std::invalid_argument);
}

#endif

}  // namespace
