// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "commands/RunHead.h"
#include "files/Sha256.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

TEST(RunHead, NamesTheFrameWithoutItsFolder) {
    RunOptions options;
    options.frame = "scans/tooth.png";
    options.section = "General";
    EXPECT_EQ(RunTitle(options), "tooth.png, section General");
}

TEST(RunHead, HasTheHashesOfWhatARunIsMadeOf) {
    const std::string text = "[A]\nPROCMODE=2\n";
    const ProfileFile profile("p.ini", text);
    const LoadedFrame frame{{2, 1, {1, 0x203}}, FileKind::Raw, 16, {}};
    const ExportTraits& traits = TraitsOf(ExportKind::Plain);
    const nlohmann::ordered_json json =
        RunHeadJson("f.raw", frame, profile, MakeSectionPlan(profile, "A", traits.kind), traits);
    EXPECT_EQ(json["frame"]["sha256"], Sha256Of("\1\0\3\2"s));
    EXPECT_EQ(json["frame"]["width"], 2);
    EXPECT_EQ(json["profileSha256"], Sha256Of(text));
    EXPECT_EQ(json["export"], "ImageProcessing");
    EXPECT_EQ(json["chain"], "configured chain");
}

}  // namespace
}  // namespace vastrelline
