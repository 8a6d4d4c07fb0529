// SPDX-License-Identifier: Apache-2.0

// Sections, keys and values of a profile are the same to the tool and to the library, whatever its bytes are.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "config/CRegistryIO.h"
#include "config/CallProfile.h"
#include "config/LoadedProfile.h"
#include "platform/WaitBudget.h"
#include "profile/ProfileFile.h"
#include "profile/ValueReading.h"
#include "support/Base64.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using Json = nlohmann::json;

// A library asks with texts that end at a zero.
bool CanBeAskedFor(const std::wstring& name) { return name.find(L'\0') == std::wstring::npos; }

std::wstring CutAtZero(std::wstring text) {
    text.resize(std::min(text.size(), text.find(L'\0')));
    return text;
}

class BothReaders {
public:
    BothReaders(std::wstring path, const std::string& bytes)
        : path_(std::move(path)), file_("p.ini", bytes) {}

    void Compare() {
        const CallProfile call(path_);
        WaitBudget wait;
        const std::vector<std::wstring> names = LoadedProfile(path_, wait).Text().ListSections();
        EXPECT_EQ(ToolSections(), names);
        const CRegistryIO library(nullptr, path_.c_str(), 1);
        for (const ProfileFileSection& section : file_.Sections())
            if (section.counts) CompareSection(library, section);
    }

    size_t ValueCount() const { return valueCount_; }

private:
    std::wstring NameOf(const ProfileFileSection& section) const { return file_.Text().Decode(section.head); }

    std::vector<std::wstring> ToolSections() const {
        std::vector<std::wstring> names;
        for (const ProfileFileSection& section : file_.Sections()) {
            const std::wstring name = CutAtZero(NameOf(section));
            if (!name.empty()) names.push_back(name);
        }
        return names;
    }

    void CompareSection(const CRegistryIO& library, const ProfileFileSection& section) {
        const std::wstring name = NameOf(section);
        if (!CanBeAskedFor(name)) return;
        std::vector<std::wstring> toolKeys;
        for (const ProfileEntry& entry : section.entries) {
            const std::wstring key = file_.Text().Decode(entry.line.name);
            if (const std::wstring cut = CutAtZero(key); !cut.empty()) toolKeys.push_back(cut);
            if (entry.counts && CanBeAskedFor(key)) CompareEntry(library, name, key, entry);
        }
        std::vector<std::wstring> libraryKeys;
        library.ForEachKey(name, [&](const std::wstring& key) { libraryKeys.push_back(key); });
        EXPECT_EQ(toolKeys, libraryKeys);
    }

    void CompareEntry(const CRegistryIO& library, const std::wstring& section, const std::wstring& key,
                      const ProfileEntry& entry) {
        EXPECT_TRUE(library.HasKey(section, key));
        const std::optional<std::wstring> written = file_.ValueOf(entry);
        EXPECT_EQ(std::get<std::wstring>(ReadWritten(written, KeyType::Text, "none").value),
                  library.ReadProfileString(section, key, L"none"));
        EXPECT_EQ(std::get<int32_t>(ReadWritten(written, KeyType::Integer, "-7").value),
                  library.ReadProfileInt(section, key, -7));
        const double tool = std::get<double>(ReadWritten(written, KeyType::Number, "0.7").value);
        const double own = library.ReadProfileDouble(section, key, 0.7);
        EXPECT_EQ(std::bit_cast<uint64_t>(tool), std::bit_cast<uint64_t>(own));
        ++valueCount_;
    }

    std::wstring path_;
    ProfileFile file_;
    size_t valueCount_ = 0;
};

// Profiles to compare, all written before one is read: the library waits until a file has been left alone for
// a moment.
class ProfilePile {
public:
    void Add(std::string name, std::string bytes) {
        WriteBytes(folder_.Path() / std::to_string(profiles_.size()), bytes);
        profiles_.push_back({std::move(name), std::move(bytes)});
    }

    // How many values were compared.
    size_t CompareAll() const {
        size_t values = 0;
        for (size_t i = 0; i < profiles_.size(); ++i) {
            SCOPED_TRACE(profiles_[i].name);
            BothReaders readers(folder_.Wide(std::to_wstring(i)), profiles_[i].bytes);
            readers.Compare();
            values += readers.ValueCount();
        }
        return values;
    }

    size_t Size() const { return profiles_.size(); }

private:
    struct Profile {
        std::string name;
        std::string bytes;
    };

    TemporaryFolder folder_;
    std::vector<Profile> profiles_;
};

TEST(ProfileFileOneReading, RecordedProfilesAreReadAlike) {
    std::ifstream cases(SourceTreeFolder() / "tests" / "data" / "profile" / "cases.jsonl");
    ProfilePile pile;
    for (std::string line; std::getline(cases, line);) {
        const Json record = Json::parse(line);
        const auto add = [&](const Json& base64) {
            if (base64.is_string())
                pile.Add(record.at("id").get<std::string>(), DecodeBase64(base64.get<std::string>()));
        };
        add(record.at("file_base64"));
        for (const Json& call : record.at("calls"))
            if (call.contains("file_after_base64")) add(call.at("file_after_base64"));
    }
    EXPECT_GT(pile.Size(), 150U);
    EXPECT_GT(pile.CompareAll(), 300U);
}

TEST(ProfileFileOneReading, InputsOfTheFuzzTargetsAreReadAlike) {
    ProfilePile pile;
    for (const auto& input :
         std::filesystem::recursive_directory_iterator(SourceTreeFolder() / "fuzz" / "corpus"))
        if (input.is_regular_file()) pile.Add(input.path().string(), ReadBytes(input.path()));
    EXPECT_GT(pile.Size(), 500U);
    EXPECT_GT(pile.CompareAll(), 1000U);
}

}  // namespace
}  // namespace vastrelline
