// SPDX-License-Identifier: Apache-2.0
#include "commands/RunHead.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "files/Sha256.h"
#include "formats/RawFormat.h"
#include "platform/PathText.h"

namespace vastrelline {

std::string RunTitle(const RunOptions& options) {
    return PathOf(options.frame).filename().string() + ", section " + options.section;
}

nlohmann::ordered_json RunHeadJson(const std::string& framePath, const LoadedFrame& frame,
                                   const ProfileFile& profile, const SectionPlan& plan,
                                   const ExportTraits& traits) {
    return {{"frame",
             {{"file", framePath},
              {"width", frame.frame.width},
              {"height", frame.frame.height},
              {"sourceBits", frame.sourceBits},
              {"sha256", Sha256Of(EncodeRaw(frame.frame))}}},
            {"profile", profile.Path()},
            {"profileSha256", Sha256Of(profile.Text().Bytes())},
            {"section", plan.section},
            {"export", traits.name},
            {"chain", ChainName(plan.chain)}};
}

}  // namespace vastrelline
