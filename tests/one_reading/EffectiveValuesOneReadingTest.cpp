// SPDX-License-Identifier: Apache-2.0

// What the tool says that a run would read is what the library's own readers read, bit for bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "LibraryValues.h"
#include "RandomProfile.h"
#include "SameValue.h"
#include "chains/StageTable.h"
#include "config/CRegistryIO.h"
#include "config/CallProfile.h"
#include "config/StageId.h"
#include "profile/EffectiveValues.h"
#include "profile_text/Utf8.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// Both hold the same keys with the same values.
void ExpectSame(const std::string& place, const LibraryValues& library, const LibraryValues& tool) {
    for (const auto& [key, value] : library) {
        const auto found = tool.find(key);
        ASSERT_NE(found, tool.end()) << place << ": the tool lacks " << key;
        EXPECT_TRUE(IsSameValue(value, found->second))
            << place << ", " << key << ": library " << FormatReadValue(value) << ", tool "
            << FormatReadValue(found->second);
    }
    for (const auto& [key, value] : tool)
        EXPECT_TRUE(library.contains(key)) << place << ": only the tool has " << key;
}

LibraryValues ValuesIn(const EffectivePlace& place) {
    LibraryValues values;
    for (const EffectiveValue& value : place.values)
        values[std::string(value.key->name)] = value.reading.value;
    return values;
}

void Append(LibraryValues& values, const LibraryValues& more) { values.insert(more.begin(), more.end()); }

// A run of the library's own readers beside the tool's, on one section and export.
class Comparison {
public:
    Comparison(const std::wstring& path, const ProfileFile& file, const std::string& section, ExportKind kind)
        : path_(path),
          section_(DecodeUtf8(section)),
          plan_(MakeSectionPlan(file, section, kind)),
          places_(ReadEffectiveValues(file, plan_)) {}

    void Run() {
        const bool isFixed = plan_.chain == ChainKind::Fixed || plan_.chain == ChainKind::Cr;
        const int32_t mode = CRegistryIO(nullptr, path_.c_str(), 1).ReadProfileInt(section_, L"PROCMODE", 1);
        EXPECT_EQ(plan_.procMode.value_or(1), mode);
        if (isFixed)
            CompareFixed(mode);
        else
            CompareListed(mode);
    }

    size_t StageCount() const { return stageCount_; }

    void CountMarks(std::map<ReadingMark, size_t>& marks) const {
        for (const EffectivePlace& place : places_)
            for (const EffectiveValue& value : place.values) ++marks[value.reading.mark];
    }

private:
    void CompareFixed(int32_t mode) {
        LibraryValues tool;
        for (const EffectivePlace& place : places_)
            if (place.role != PlaceRole::Sensor) Append(tool, ValuesIn(place));
        LibraryValues library = ReadLibraryFixed(path_, section_);
        if (plan_.chain == ChainKind::Fixed) library["PROCMODE"] = mode;
        ExpectSame("fixed settings", library, tool);
        EXPECT_EQ(PlacesOf(PlaceRole::Sensor).size(), plan_.chain == ChainKind::Fixed ? 1U : 0U);
        if (plan_.chain == ChainKind::Fixed) CompareSensor(false);
    }

    void CompareListed(int32_t mode) {
        LibraryValues common = ReadLibraryCommon(path_, section_);
        // The record's is never looked at: the export has read its own, with another default.
        common["PROCMODE"] = mode;
        CompareOnly(PlaceRole::Settings, common);
        CompareSensor(true);
        CompareList(std::get<int32_t>(common.at("FunctionCount")));
        const bool decides = plan_.chain == ChainKind::LowExposure;
        const std::vector<const EffectivePlace*> low = PlacesOf(PlaceRole::LowStage);
        EXPECT_EQ(low.size(), decides ? LowSequence().size() : 0U);
        for (const EffectivePlace* const place : low) CompareStage(*place, L"IP_LOWMODE");
        if (decides) CompareOnly(PlaceRole::LowSettings, ReadLibraryCurveSettings(path_, L"IP_LOWMODE"));
    }

    std::vector<const EffectivePlace*> PlacesOf(PlaceRole role) const {
        std::vector<const EffectivePlace*> found;
        for (const EffectivePlace& place : places_)
            if (place.role == role) found.push_back(&place);
        return found;
    }

    void CompareOnly(PlaceRole role, const LibraryValues& library) {
        const std::vector<const EffectivePlace*> found = PlacesOf(role);
        ASSERT_EQ(found.size(), 1U);
        ExpectSame(PlaceTitle(*found[0]), library, ValuesIn(*found[0]));
    }

    // Every chain but the CR chain has corners; only those of the configured family bring up weak frames.
    void CompareSensor(bool isListed) {
        LibraryValues library = ReadLibraryGeometry(path_);
        if (isListed) Append(library, ReadLibraryTargetRange(path_));
        CompareOnly(PlaceRole::Sensor, library);
    }

    // The library's chain takes the stages that its table has.
    bool IsInLibrarysChain(int32_t number) const {
        const std::span<const StageEntry> stages =
            plan_.chain == ChainKind::Configured ? ConfiguredStages() : AllStages();
        return std::any_of(stages.begin(), stages.end(),
                           [&](const StageEntry& stage) { return static_cast<int32_t>(stage.id) == number; });
    }

    void CompareList(int32_t functionCount) {
        const std::vector<int32_t> positions = ListStagePositions(path_, section_, functionCount);
        std::vector<int32_t> listed;
        for (const EffectivePlace& place : places_) {
            if (place.role != PlaceRole::ListedStage && place.role != PlaceRole::PassedOver) continue;
            listed.push_back(place.position.value_or(-1));
            const int32_t number = ReadStageNumber(path_, section_, listed.back());
            EXPECT_EQ(place.stageNumber, number);
            EXPECT_EQ(std::get<int32_t>(place.values.front().reading.value), number);
            EXPECT_EQ(place.role == PlaceRole::ListedStage, IsInLibrarysChain(number));
            if (place.role == PlaceRole::ListedStage) CompareStage(place, section_);
        }
        EXPECT_EQ(listed, positions);
    }

    void CompareStage(const EffectivePlace& place, const std::wstring& section) {
        LibraryValues tool = ValuesIn(place);
        tool.erase(std::string(kListNumberKey));
        ExpectSame(PlaceTitle(place), ReadLibraryStage(path_, section, *place.position, place.stageNumber),
                   tool);
        ++stageCount_;
    }

    std::wstring path_;
    std::wstring section_;
    SectionPlan plan_;
    std::vector<EffectivePlace> places_;
    size_t stageCount_ = 0;
};

constexpr ExportKind kExports[] = {ExportKind::Plain, ExportKind::S,  ExportKind::N,
                                   ExportKind::NS,    ExportKind::NE, ExportKind::CR};

std::string LeafOf(size_t i) { return "p" + std::to_string(i) + ".ini"; }

// Profiles of a few kinds of trouble, all written before one is read: the library waits until a file has been
// left alone for a moment.
class RandomProfiles {
public:
    explicit RandomProfiles(size_t count) {
        std::mt19937 random(20261122);  // fixed: a failure comes back
        for (size_t i = 0; i < count; ++i) {
            profiles_.push_back(MakeRandomProfile(random));
            WriteBytes(folder_.Path() / LeafOf(i), profiles_.back().bytes);
        }
    }

    const std::vector<RandomProfile>& All() const { return profiles_; }
    std::wstring PathOf(size_t i) const { return folder_.Wide(DecodeUtf8(LeafOf(i))); }

private:
    TemporaryFolder folder_;
    std::vector<RandomProfile> profiles_;
};

TEST(EffectiveValuesOneReading, ThousandsOfOddProfilesReadAsInTheLibrary) {
    const RandomProfiles profiles(3000);
    std::map<ReadingMark, size_t> marks;
    size_t stageCount = 0;
    for (size_t i = 0; i < profiles.All().size() && !HasFailure(); ++i) {
        SCOPED_TRACE(LeafOf(i));
        const std::wstring path = profiles.PathOf(i);
        const CallProfile call(path);
        const ProfileFile file("p.ini", profiles.All()[i].bytes);
        for (const std::string& section : profiles.All()[i].sections) {
            for (const ExportKind kind : kExports) {
                SCOPED_TRACE(testing::Message() << '[' << section << "], export " << static_cast<int>(kind));
                Comparison comparison(path, file, section, kind);
                comparison.Run();
                stageCount += comparison.StageCount();
                comparison.CountMarks(marks);
            }
        }
    }
    // All that may happen to a value did.
    for (const ReadingMark mark :
         {ReadingMark::FromFile, ReadingMark::Default, ReadingMark::Cut, ReadingMark::Misread})
        EXPECT_GT(marks[mark], 1000U) << MarkName(mark);
    EXPECT_GT(stageCount, 30000U);
}

TEST(EffectiveValuesOneReading, SampleProfilesReadAsInTheLibrary) {
    const TemporaryFolder folder;
    size_t sections = 0;
    for (const auto& sample : std::filesystem::directory_iterator(SourceTreeFolder() / "profiles")) {
        if (sample.path().extension() != ".ini") continue;
        const std::wstring path = sample.path().wstring();
        const ProfileFile file = ProfileFile::Read(sample.path().string());
        for (const std::string& section : file.SectionNames()) {
            for (const ExportKind kind : kExports) Comparison(path, file, section, kind).Run();
            ++sections;
        }
    }
    EXPECT_GT(sections, 5U);
}

}  // namespace
}  // namespace vastrelline
