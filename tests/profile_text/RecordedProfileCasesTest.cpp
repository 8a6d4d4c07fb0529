// SPDX-License-Identifier: Apache-2.0

// Replays what the profile functions of Windows answered, as tests/data/profile records it. The record was
// made with code page 1252, so the engine gets that one here.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "profile_text/ProfileEdit.h"
#include "profile_text/ProfileText.h"
#include "profile_text/Utf8.h"
#include "support/Base64.h"
#include "support/ProfileNormalForm.h"
#include "support/SourceTree.h"

namespace vastrelline {
namespace {

using Json = nlohmann::json;

// Code page 1252 from 80 to 9F; the five codes without a character stand for themselves.
constexpr std::array<wchar_t, 32> kCodePage1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

wchar_t CharacterOf1252(uint8_t byte) {
    return byte >= 0x80 && byte <= 0x9F ? kCodePage1252.at(byte - 0x80U) : static_cast<wchar_t>(byte);
}

std::wstring Decode1252(std::string_view bytes) {
    std::wstring text;
    for (const char byte : bytes) text.push_back(CharacterOf1252(static_cast<uint8_t>(byte)));
    return text;
}

std::string Encode1252(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) {
        char found = '?';
        for (unsigned byte = 0; byte < 256; ++byte)
            if (CharacterOf1252(static_cast<uint8_t>(byte)) == character) found = static_cast<char>(byte);
        bytes.push_back(found);
    }
    return bytes;
}

constexpr ProfileCodec kCodec1252 = {Decode1252, Encode1252};

std::optional<std::string> BytesOf(const Json& base64) {
    if (base64.is_null()) return std::nullopt;
    return DecodeBase64(base64.get<std::string>());
}

std::optional<std::wstring> WideOf(const Json& text) {
    if (text.is_null()) return std::nullopt;
    return DecodeUtf8(text.get<std::string>());
}

const wchar_t* PointerTo(const std::optional<std::wstring>& text) { return text ? text->c_str() : nullptr; }

// What one call gave: the number, the text (a list with its terminators), and whether all behind the
// buffer's size stayed as it was.
struct CallResult {
    int32_t number = 0;
    std::wstring text;
};

// A profile under test, by its contents.
class Subject {
public:
    explicit Subject(std::optional<std::string> bytes) : bytes_(std::move(bytes)) {}

    int32_t Int(const wchar_t* section, const wchar_t* key, int32_t defaultValue) {
        return ReadProfileTextInt(Text(), section, key, defaultValue);
    }
    uint32_t String(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue, wchar_t* buffer,
                    uint32_t size) {
        return ReadProfileTextString(Text(), section, key, defaultValue, buffer, size);
    }
    uint32_t Section(const wchar_t* section, wchar_t* buffer, uint32_t size) {
        return ReadProfileTextSection(Text(), section, buffer, size);
    }
    bool Write(const wchar_t* section, const wchar_t* key, const wchar_t* value) {
        std::string bytes = bytes_.value_or("");
        const ProfileEditResult result = EditProfile(bytes, section, key, value, kCodec1252);
        if (result == ProfileEditResult::Changed) bytes_ = bytes;
        return result != ProfileEditResult::Impossible;
    }
    std::optional<std::string> Bytes() { return bytes_; }

private:
    ProfileText Text() const { return ProfileText(bytes_.value_or(""), kCodec1252); }

    std::optional<std::string> bytes_;
};

CallResult RunCall(Subject& subject, const Json& call) {
    const std::string function = call.at("fn");
    const std::optional<std::wstring> section = WideOf(call.at("section"));
    const std::optional<std::wstring> key = WideOf(call.at("key"));
    if (function == "GetPrivateProfileIntW")
        return {subject.Int(PointerTo(section), PointerTo(key), call.at("default").get<int32_t>()), L""};
    if (function == "WritePrivateProfileStringW") {
        const std::optional<std::wstring> value = WideOf(call.at("value"));
        return {subject.Write(PointerTo(section), PointerTo(key), PointerTo(value)) ? 1 : 0, L""};
    }
    const auto size = call.at("size").get<uint32_t>();
    std::vector<wchar_t> buffer(size, L'#');  // exactly of this size: a sanitizer sees a write behind
    uint32_t count = 0;
    if (function == "GetPrivateProfileStringW") {
        const std::optional<std::wstring> defaultValue = WideOf(call.at("default"));
        count =
            subject.String(PointerTo(section), PointerTo(key), PointerTo(defaultValue), buffer.data(), size);
    } else {
        count = subject.Section(PointerTo(section), buffer.data(), size);
    }
    if (count < size) {
        EXPECT_EQ(buffer[count], L'\0');
    }
    return {static_cast<int32_t>(count), std::wstring(buffer.data(), count)};
}

// A list is returned without its last terminator, and a cut one without that of its last entry.
std::wstring JoinEntries(const Json& entries, size_t count) {
    std::wstring list;
    for (const Json& entry : entries) list.append(DecodeUtf8(entry.get<std::string>())).push_back(L'\0');
    list.resize(std::min(list.size(), count));
    return list;
}

void CheckCall(Subject& subject, Json call) {
    const std::optional<std::string> before = subject.Bytes();
    const CallResult result = RunCall(subject, call);
    if (call.at("standing") == "open") return;
    if (call.at("standing") == "documented") call.update(call.at("documented"));
    EXPECT_EQ(result.number, call.at("result_int").get<int32_t>());
    const Json& text = call.at("result");
    if (text.is_string()) {
        EXPECT_EQ(result.text, *WideOf(text));
    } else if (text.is_array()) {
        EXPECT_EQ(result.text, JoinEntries(text, static_cast<size_t>(result.number)));
    }
    if (call.at("fn") != "WritePrivateProfileStringW") return;
    const std::optional<std::string> after = subject.Bytes();
    const std::optional<std::string> expected = BytesOf(call.at("file_after_base64"));
    ASSERT_EQ(after.has_value(), expected.has_value());
    if (!after) return;
    // A file that the record's rewriting leaves as it is must come out byte for byte.
    if (!before || ProfileNormalForm(*before) == *before)
        EXPECT_EQ(*after, *expected);
    else
        EXPECT_EQ(ProfileNormalForm(*after), ProfileNormalForm(*expected));
}

std::vector<Json> ReadCases() {
    std::vector<Json> cases;
    std::ifstream file(SourceTreeFolder() / "tests/data/profile/cases.jsonl");
    for (std::string line; std::getline(file, line);) cases.push_back(Json::parse(line));
    return cases;
}

// Cases about the file itself, which its contents alone cannot show.
bool IsAboutTheFile(const std::string& name) {
    return name == "write-missing-folder" || name.starts_with("write-read-only");
}

class RecordedProfileCasesTest : public testing::Test {
protected:
    void SetUp() { ASSERT_GE(cases_.size(), 100U); }

    const std::vector<Json> cases_ = ReadCases();
};

TEST_F(RecordedProfileCasesTest, AreAnsweredAsRecorded) {
    size_t caseCount = 0;
    for (const Json& recorded : cases_) {
        const std::string name = recorded.at("id");
        if (IsAboutTheFile(name)) continue;
        ++caseCount;
        Subject subject(BytesOf(recorded.at("file_base64")));
        int callNumber = 0;
        for (const Json& call : recorded.at("calls")) {
            SCOPED_TRACE(name + ", call " + std::to_string(callNumber++) + ": " +
                         call.dump(-1, ' ', true).substr(0, 400));
            CheckCall(subject, call);
        }
    }
    EXPECT_GE(caseCount, 100U);
}

}  // namespace
}  // namespace vastrelline
