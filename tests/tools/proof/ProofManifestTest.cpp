// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "messages/ToolError.h"
#include "proof/ManifestFields.h"
#include "proof/ProofManifest.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

const std::string kHash(64, 'a');
const std::string kOther(64, '0');

ProofManifest MakeManifest(const std::string& path) {
    ProofEntry file{{"../frames/a.raw", FrameSize{3, 2}, std::nullopt},
                    "p.ini",
                    "General",
                    ExportKind::S,
                    std::nullopt,
                    {}};
    file.facts = ProofFacts{kHash,
                            kOther,
                            {{"stage", 3, "CLAHE", "04_clahe.raw", kHash},
                             {"stage", std::nullopt, "Linear curve", "", ""},
                             {"result", std::nullopt, "result", "", kOther}}};
    file.history.push_back({"2026-03-01", "because", "1.0.0", ProofFacts{kOther, kHash, {}}});
    ProofEntry phantom{{"", std::nullopt, PhantomRecipe{{130, 167}, 0.12, 7}},
                       "p.ini",
                       "Low",
                       ExportKind::NE,
                       std::nullopt,
                       {}};
    return {path, "1.0.0", "Linux x86_64", kHash, {file, phantom}};
}

TEST(ProofManifest, ComesBackWithEverything) {
    const TemporaryFolder folder;
    const ProofManifest sent = MakeManifest(folder.Narrow("m.json"));
    WriteBytes(folder.Path() / "m.json", FormatProofManifest(sent));
    const ProofManifest got = ReadProofManifest(sent.path);
    EXPECT_EQ(got.version, "1.0.0");
    EXPECT_EQ(got.platform, "Linux x86_64");
    EXPECT_EQ(got.libraryHash, kHash);
    ASSERT_EQ(got.entries.size(), 2U);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(got.entries[i].frame, sent.entries[i].frame);
        EXPECT_EQ(got.entries[i].profile, "p.ini");
        EXPECT_EQ(got.entries[i].section, sent.entries[i].section);
        EXPECT_EQ(got.entries[i].exportKind, sent.entries[i].exportKind);
        EXPECT_EQ(got.entries[i].facts, sent.entries[i].facts);
    }
    ASSERT_EQ(got.entries[0].history.size(), 1U);
    EXPECT_EQ(got.entries[0].history[0].date, "2026-03-01");
    EXPECT_EQ(got.entries[0].history[0].reason, "because");
    EXPECT_EQ(got.entries[0].history[0].version, "1.0.0");
    EXPECT_EQ(got.entries[0].history[0].before, sent.entries[0].history[0].before);
}

TEST(ProofManifest, NamesItsEntriesAndFindsTheirFiles) {
    const ProofManifest manifest = MakeManifest("folder/m.json");
    EXPECT_EQ(NameProofEntry(manifest.entries[0]), "a.raw, p.ini, General, ImageProcessingS");
    EXPECT_EQ(NameProofEntry(manifest.entries[1]),
              "phantom 130x167 dose 0.12 seed 7, p.ini, Low, ImageProcessing_NE");
    EXPECT_EQ(std::filesystem::path(ResolveInManifest(manifest, "../frames/a.raw")),
              "folder/../frames/a.raw");
    EXPECT_EQ(ResolveInManifest(manifest, "/a.raw"), "/a.raw");
}

TEST(ProofManifest, IsNotWrittenWithAPathThatIsNoUtf8) {
    ProofManifest manifest = MakeManifest("m.json");
    manifest.entries[0].profile = "\xFF";
    EXPECT_THROW(FormatProofManifest(manifest), OutputError);
}

std::string ReasonAgainst(const std::string& text) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "m.json", text);
    try {
        static_cast<void>(ReadProofManifest(folder.Narrow("m.json")));
    } catch (const InputError& error) {
        EXPECT_EQ(error.Where(), folder.Narrow("m.json"));
        EXPECT_FALSE(error.Remedy().empty());
        EXPECT_EQ(error.What().find('\n'), std::string::npos);
        return error.What();
    }
    return "was read";
}

std::string WithEntry(const std::string& entry) {
    return R"({"format":"vastrelline-proof","formatVersion":1,"entries":[)" + entry + "]}";
}

struct HostileCase {
    const char* name;
    std::string text;
    const char* reason;
};

class HostileManifest : public testing::TestWithParam<HostileCase> {};

TEST_P(HostileManifest, IsRefusedWithItsPlace) {
    EXPECT_THAT(ReasonAgainst(GetParam().text), HasSubstr(GetParam().reason));
}

const std::string kRest = R"("profile":"p","section":"s","export":"ImageProcessing")";

INSTANTIATE_TEST_SUITE_P(
    Of, HostileManifest,
    testing::Values(
        HostileCase{"Nothing", "", "is no manifest: parse error at line 1, column 1"},
        HostileCase{"NoJson", "{\n\"a\":\x01", "parse error at line 2"},
        HostileCase{"NoUtf8", "\"\xFF\"", "is no manifest"},
        HostileCase{"Array", "[]", "the manifest is no object"},
        HostileCase{"Other", R"({"format":"x"})", "format is not 'vastrelline-proof'"},
        HostileCase{"Newer", R"({"format":"vastrelline-proof","formatVersion":2})", "formatVersion is not 1"},
        HostileCase{"NoEntries", R"({"format":"vastrelline-proof","formatVersion":1})",
                    "the manifest has no 'entries'"},
        HostileCase{"Deep", std::string(1000000, '['), "nested deeper than 12 levels"},
        HostileCase{"DeepInside", WithEntry(std::string(100, '[') + std::string(100, ']')),
                    "nested deeper than 12 levels"},
        HostileCase{"NumberAsEntry", WithEntry("1"), "entries[0] is no object"},
        HostileCase{"TextAsFrame", WithEntry(R"({"frame":"a"})"), "entries[0].frame is no object"},
        HostileCase{"NoFile", WithEntry(R"({"frame":{}})"), "entries[0].frame has no 'file'"},
        HostileCase{"EmptyFile", WithEntry(R"({"frame":{"file":""}})"), "entries[0].frame.file is empty"},
        HostileCase{"ZeroInFile", WithEntry(R"({"frame":{"file":"a\u0000b"}})"), "holds a zero character"},
        HostileCase{"NumberAsFile", WithEntry(R"({"frame":{"file":7}})"), "entries[0].frame.file is no text"},
        HostileCase{"HugeSize", WithEntry(R"({"frame":{"file":"a","size":"99999x99999"}})"),
                    "entries[0].frame.size is no size"},
        HostileCase{"OtherPhantom", WithEntry(R"({"frame":{"phantom":{"kind":"x","size":"1x1"}}})"),
                    "kind is no kind of phantom"},
        HostileCase{"NoDose",
                    WithEntry(R"({"frame":{"phantom":{"kind":"teeth","size":"1x1","dose":1e999}}})"),
                    "is no manifest"},
        HostileCase{"DarkPhantom",
                    WithEntry(R"({"frame":{"phantom":{"kind":"teeth","size":"1x1","dose":0}}})"),
                    "dose should be above 0"},
        HostileCase{"NegativeSeed",
                    WithEntry(R"({"frame":{"phantom":{"kind":"teeth","size":"1x1","seed":-1}}})"),
                    "seed is below 0"},
        HostileCase{
            "HugeSeed",
            WithEntry(R"({"frame":{"phantom":{"kind":"teeth","size":"1x1","seed":18446744073709551615}}})"),
            "seed is no whole number"},
        HostileCase{"HugePhantom",
                    WithEntry(R"({"frame":{"phantom":{"kind":"teeth","size":"20000x20000"}}})"),
                    "is too large for a phantom"},
        HostileCase{"OtherExport",
                    WithEntry(R"({"frame":{"file":"a"},"profile":"p","section":"s","export":"x"})"),
                    "entries[0].export is none of the library's functions"},
        HostileCase{"ShortHash",
                    WithEntry(R"({"frame":{"file":"a"},)" + kRest +
                              R"(,"points":[],"frameSha256":"abc","profileSha256":"abc"})"),
                    "entries[0].frameSha256 is no SHA-256"},
        HostileCase{
            "NegativePosition",
            WithEntry(R"({"frame":{"file":"a"},)" + kRest + R"(,"frameSha256":")" + kHash +
                      R"(","profileSha256":")" + kHash + R"(","points":[{"point":"stage","position":-1}]})"),
            "entries[0].points[0].position is no position"},
        HostileCase{"TextAsHistory", WithEntry(R"({"frame":{"file":"a"},)" + kRest + R"(,"history":"x"})"),
                    "entries[0].history is no array"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
