// SPDX-License-Identifier: Apache-2.0

// Any bytes as a profile: reading is safe at every buffer size, and an edit changes its line and nothing
// else.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/ProfileEdit.h"
#include "profile_text/ProfileText.h"

namespace vastrelline {
namespace {

// Says which promise does not hold and ends the run, in every build.
void Require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", promise);
    std::abort();
}

struct FuzzOptions {
    std::wstring section;
    std::wstring key;
    std::wstring value;
    uint32_t bufferSize = 0;
};

// The tail of the input picks the options, so that a text at its start stays a text.
FuzzOptions TakeOptions(std::string_view& input) {
    const auto take = [&]() -> size_t {
        if (input.empty()) return 0;
        const auto byte = static_cast<uint8_t>(input.back());
        input.remove_suffix(1);
        return byte;
    };
    const std::vector<std::wstring> sections = {L"a", L"", L"Settings", L" a ", L"a]b", L"x\ny", L"\u00C4"};
    const std::vector<std::wstring> keys = {L"k", L"", L"KEY", L" k", L"[k", L";k", L"k=l", L"\u0436"};
    const std::vector<std::wstring> values = {L"1",   L"",     L" v ",        L"\"q\"",
                                              L"a]b", L"x\ny", L"\U0001F600", {L'x', 0xDCE9}};
    FuzzOptions options;
    options.section = sections[take() % sections.size()];
    options.key = keys[take() % keys.size()];
    options.value = values[take() % values.size()];
    options.bufferSize = static_cast<uint32_t>(take() % 40);
    return options;
}

// All list and text calls into buffers of the exact size, so that a write behind them is seen.
void ReadEverything(const ProfileText& profile, const FuzzOptions& options) {
    const wchar_t* const section = options.section.c_str();
    const wchar_t* const key = options.key.c_str();
    const uint32_t size = options.bufferSize;
    std::vector<wchar_t> buffer(size, L'#');
    const auto checkCount = [&](uint32_t count) {
        Require(size == 0 ? count == 0 : count < size, "the count leaves room for the terminator");
        if (size > 0) Require(buffer[count] == L'\0', "the text is terminated");
    };
    checkCount(ReadProfileTextString(profile, section, key, L"default", buffer.data(), size));
    checkCount(ReadProfileTextString(profile, section, nullptr, nullptr, buffer.data(), size));
    checkCount(ReadProfileTextString(profile, nullptr, nullptr, nullptr, buffer.data(), size));
    checkCount(ReadProfileTextSection(profile, section, buffer.data(), size));
    static_cast<void>(ReadProfileTextInt(profile, section, key, 5));
}

std::vector<std::string> SplitLines(const std::string& bytes) {
    const ProfileText profile(bytes);
    std::vector<std::string> lines;
    ProfileLineReader reader = profile.Lines({profile.Encoding().MarkSize(), bytes.size()});
    while (const std::optional<ProfileLine> line = reader.Next())
        lines.push_back(bytes.substr(line->whole.begin, line->whole.Size()));
    return lines;
}

// One line replaced, or up to two lines put in somewhere; a missing line end may have been added before.
void CheckThatOtherLinesStayed(const std::string& before, const std::string& after) {
    const std::vector<std::string> oldLines = SplitLines(before);
    const std::vector<std::string> newLines = SplitLines(after);
    Require(newLines.size() >= oldLines.size() && newLines.size() <= oldLines.size() + 2,
            "an edit adds two lines at most");
    size_t head = 0;
    while (head < oldLines.size() && oldLines[head] == newLines[head]) ++head;
    size_t tail = 0;
    while (tail < oldLines.size() - head &&
           oldLines[oldLines.size() - 1 - tail] == newLines[newLines.size() - 1 - tail])
        ++tail;
    const size_t changed = oldLines.size() - head - tail;
    Require(changed <= 1, "an edit changes one line");
    if (changed == 1 && newLines.size() > oldLines.size())
        Require(newLines[head].starts_with(oldLines[head]), "a line that others come behind stays");
}

void EditAndCheck(const std::string& before, const FuzzOptions& options) {
    std::string after = before;
    const auto edit = [&] {
        return EditProfile(after, options.section.c_str(), options.key.c_str(), options.value.c_str());
    };
    const ProfileEditResult result = edit();
    Require((result == ProfileEditResult::Changed) == (after != before), "an edit tells what it did");
    if (result == ProfileEditResult::Impossible) return;
    CheckThatOtherLinesStayed(before, after);
    Require(edit() == ProfileEditResult::Unchanged, "the same again changes nothing");

    const bool isPlain = options.value.find_first_of(L" \"") == std::wstring::npos;
    const std::optional<std::wstring> value =
        ProfileText(after).FindValue(TrimName(options.section), TrimName(options.key));
    Require(value.has_value(), "a written key is found");
    Require(!isPlain || *value == options.value, "a value without blanks and quotes comes back");
}

void DeleteAndCheck(const std::string& before, const FuzzOptions& options) {
    std::string after = before;
    const ProfileEditResult result =
        EditProfile(after, options.section.c_str(), options.key.c_str(), nullptr);
    Require((result == ProfileEditResult::Changed) == (after.size() < before.size()),
            "deleting a key shortens");
    after = before;
    const ProfileEditResult sectionResult = EditProfile(after, options.section.c_str(), nullptr, nullptr);
    Require((sectionResult == ProfileEditResult::Changed) == (after.size() < before.size()),
            "deleting a section shortens");
}

}  // namespace
}  // namespace vastrelline

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t kLargestInput = 4096;
    std::string_view input(reinterpret_cast<const char*>(data), std::min(size, kLargestInput));
    const vastrelline::FuzzOptions options = vastrelline::TakeOptions(input);
    const std::string bytes(input);
    vastrelline::ReadEverything(vastrelline::ProfileText(bytes), options);
    vastrelline::EditAndCheck(bytes, options);
    vastrelline::DeleteAndCheck(bytes, options);
    return 0;
}
