// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

// The built tool in a process of its own.
class ToolProcess {
public:
    // Its words go to files of the folder.
    ToolProcess(const TemporaryFolder& folder, const std::vector<std::string>& arguments);
    ToolProcess(ToolProcess&& other) noexcept
        : folder_(std::move(other.folder_)),
          handle_(std::exchange(other.handle_, kNone)),
          number_(std::exchange(other.number_, kNone)) {}
    ~ToolProcess();  // ends what nobody has awaited

    // As Ctrl-C in a terminal of its own does it.
    void Interrupt() const;

    // Throws if it does not end by itself.
    ToolRun Await();

    int64_t Number() const { return number_; }

private:
    static constexpr intptr_t kNone = -1;

    std::filesystem::path folder_;
    intptr_t handle_ = kNone;
    int64_t number_ = kNone;
};

inline ToolRun StartTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
    return ToolProcess(folder, arguments).Await();
}

inline std::vector<std::string> LeavesOf(const std::filesystem::path& folder) {
    std::vector<std::string> leaves;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        leaves.push_back(entry.path().filename().string());
    std::sort(leaves.begin(), leaves.end());
    return leaves;
}

// A chain of one stage, the gamma curve.
inline constexpr const char* kGammaProfile =
    "[General]\nPROCMODE=2\nBITSTORED=12\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\nFunctionCount=1\n"
    "00_Function_Number=10\n";

// A folder with a frame and a profile.
class ToolProgram : public testing::Test {
protected:
    ToolProgram() {
        WriteBytes(folder_.Path() / "p.ini", kGammaProfile);
        const ToolRun phantom = Start({"phantom", "--size", "130x167", "--out", frame_});
        if (phantom.exitCode != 0) throw std::runtime_error(phantom.errors);
    }

    ToolRun Start(const std::vector<std::string>& arguments) const { return StartTool(folder_, arguments); }

    ToolRun Process(const std::string& exportName, const std::string& leaf,
                    const std::string& profile) const {
        return Start({"run", frame_, "--profile", folder_.Narrow(profile), "--section", "General", "--out",
                      folder_.Narrow(leaf), "--export", exportName});
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    std::string frame_ = folder_.Narrow("frame_130x167.raw");
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

}  // namespace vastrelline
