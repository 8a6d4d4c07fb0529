// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "profile/SectionPlan.h"
#include "support/TemporaryFolder.h"
#include "workbench/Workbench.h"

namespace vastrelline {

// A workbench with two frames of the levels 0 to 3 and 0 to 30, a profile with a gamma curve, and something
// simple in the library's place: levels times the section's 00_POST_GAMMA_RATIO, with dumps where they are
// asked for.
class BenchFixture : public testing::Test {
protected:
    static constexpr const char* kProfile =
        "; mine\n[A]\nPROCMODE=2\nOUTPUTRANGE=255\nFunctionCount=1\n00_Function_Number=10\n"
        "00_POST_GAMMA_RATIO=10\n[B]\nPROCMODE=1\n[Empty]\n[Settings]\n[IP_LOWMODE]\n";

    BenchFixture() {
        WriteBytes(folder_.Path() / "a_2x2.raw", std::string("\0\0\1\0\2\0\3\0", 8));
        WriteBytes(folder_.Path() / "b_2x2.raw", std::string("\0\0\x0A\0\x14\0\x1E\0", 8));
        WriteBytes(folder_.Path() / "p.ini", kProfile);
    }

    WorkbenchSetup Setup() const {
        WorkbenchSetup setup;
        setup.frames = {folder_.Narrow("a_2x2.raw"), folder_.Narrow("b_2x2.raw")};
        setup.profile = folder_.Narrow("p.ini");
        setup.bytes = kProfile;
        setup.section = "A";
        return setup;
    }

    static std::string SetText(const ExportRequest& request, const char* key) {
        const ProfileFile copy = ProfileFile::Read(request.profile);
        const ProfileEntry* const entry = copy.FindEntry(request.section, key);
        if (entry == nullptr) return {};
        const std::wstring text = copy.ValueOf(*entry).value_or(L"");
        return {text.begin(), text.end()};
    }

    static std::string Bytes(const std::vector<uint16_t>& levels) {
        std::string bytes;
        for (const uint16_t level : levels)
            bytes.append({static_cast<char>(level & 0xFF), static_cast<char>(level >> 8)});
        return bytes;
    }

    static int32_t TimesRatio(ExportRequest& request) {
        const bool isOn = SetText(request, "00_Function_Number") == "10";
        const int ratio = isOn ? std::stoi("0" + SetText(request, "00_POST_GAMMA_RATIO")) : 1;
        const std::vector<uint16_t> before = request.frame.pixels;
        request.output.clear();
        for (const uint16_t level : before) request.output.push_back(static_cast<uint16_t>(level * ratio));
        if (SetText(request, "SAVE_IMAGE") != "1") return 0;
        const std::string dumps = SetText(request, "WRITE_PATH");
        WriteBytes(dumps + "00_originalimage.raw", Bytes(before));
        if (isOn) WriteBytes(dumps + "01_GammaCurve.txt", "0\t0\r\n3\t30\r\n");
        if (isOn) WriteBytes(dumps + "01_result_gamma.raw", Bytes(request.output));
        WriteBytes(dumps + "02_result.raw", Bytes(request.output));
        return 0;
    }

    // Waits until the newest run that has a picture is complete and another than the one before.
    static std::shared_ptr<const KeptRun> AwaitRun(const Workbench& bench, uint64_t after = 0) {
        for (int i = 0; i < 3000; ++i) {
            const nlohmann::ordered_json state = bench.State();
            if (!state["run"].is_null() && state["run"] > after) {
                std::shared_ptr<const KeptRun> run = bench.FindRun("latest");
                if (run->state == RunState::Complete || run->state == RunState::Failed) return run;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        throw std::runtime_error("no run came");
    }

    static void ChooseFrame(Workbench& bench, size_t frame) {
        bench.Change(
            [&](const Desk& desk) {
                DeskState next = desk.Now();
                next.frame = frame;
                return next;
            },
            {});
    }

    // What has come of a job, once it has ended; null if there is none.
    template <typename Jobs>
    static auto AwaitEnd(const Jobs& jobs, uint64_t id) {
        for (int i = 0; i < 3000; ++i) {
            auto found = jobs.Find(id);
            if (found == nullptr || found->job.state != JobState::Running) return found;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        throw std::runtime_error("the job did not end");
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    EventChannel events_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

}  // namespace vastrelline
