// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ToolProgram.h"
#include "ToolWorkers.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST_F(ToolProgram, LeavesNothingOfAFolderThatIsCancelled) {
    // A median that takes more than a minute.
    WriteBytes(folder_.Path() / "slow.ini",
               "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\nFunctionCount=1\n00_Function_Number=7\n"
               "00_MEDIAN_SIZE=101\n00_MEDIAN_REPEAT=2000000000\n");
    for (const std::string command : {"stages", "sweep"}) {
        std::vector<std::string> words{command,     frame_,    "--profile", folder_.Narrow("slow.ini"),
                                       "--section", "General", "--out",     folder_.Narrow("out")};
        if (command == "sweep") words.insert(words.end(), {"--set", "00_MEDIAN_SIZE=99,101"});
        ToolProcess tool(folder_, words);
        const pid_t number = static_cast<pid_t>(tool.Number());
        while (WorkersOf(number).empty()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        kill(number, SIGINT);
        const ToolRun run = tool.Await();
        EXPECT_EQ(run.exitCode, 130) << run.errors;
        EXPECT_EQ(LeavesOf(folder_.Path()), (std::vector<std::string>{"errors.txt", "frame_130x167.raw",
                                                                      "p.ini", "report.txt", "slow.ini"}))
            << command;
    }
}

#ifndef __SANITIZE_ADDRESS__  // which takes address space without end for itself
// Heads of frames of half a gigabyte and more, with hardly a byte behind them.
TEST_F(ToolProgram, LyingFilesTakeNoMemory) {
    const auto little = [](uint32_t value, int count) {
        std::string bytes;
        for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i));
        return bytes;
    };
    const auto field = [&](uint32_t tag, uint32_t kind, uint32_t value) {
        return little(tag, 2) + little(kind, 2) + little(1, 4) + little(value, 4);
    };
    const std::string filler(30000, '\x01');
    const auto tiff = [&](uint32_t packing) {
        const auto table = static_cast<uint32_t>(8 + filler.size());
        return "II*" + std::string(1, '\0') + little(table, 4) + filler + little(8, 2) +
               field(256, 4, 16000) + field(257, 4, 16000) + field(258, 3, 16) + field(259, 3, packing) +
               field(262, 3, 1) + field(273, 4, 8) + field(278, 4, 16000) + field(279, 4, 30000) +
               little(0, 4);
    };
    constexpr uint32_t kDeflate = 8;
    constexpr uint32_t kZstd = 50000;
    constexpr uint32_t kLzma = 34925;
    const std::vector<std::pair<std::string, std::string>> files{
        {"plain.tif", tiff(1)},
        {"deflate.tif", tiff(kDeflate)},
        {"zstd.tif", tiff(kZstd)},
        {"lzma.tif", tiff(kLzma)},
        {"a.pgm", "P5\n16000 16000\n65535\n" + filler},
        {"a.bmp", "BM" + little(0, 8) + little(1078, 4) + little(40, 4) + little(22000, 4) +
                      little(22000, 4) + little(1, 2) + little(8, 2) + little(0, 24) + filler},
        {"a_16000x16000.raw", filler},
    };
    for (const auto& [leaf, bytes] : files) {
        WriteBytes(folder_.Path() / leaf, bytes);
        const std::string command = "ulimit -v 300000; '" VASTRELLINE_TOOL "' info '" + folder_.Narrow(leaf) +
                                    "' > '" + folder_.Narrow("said") + "' 2>&1";
        const int status = std::system(command.c_str());  // NOLINT(cert-env33-c): as its users start it
        ASSERT_TRUE(WIFEXITED(status)) << leaf;
        // 3: refused for what it is; 4 would be the end of memory
        EXPECT_EQ(WEXITSTATUS(status), 3) << leaf << ": " << ReadBytes(folder_.Path() / "said");
    }
}
#endif

}  // namespace
}  // namespace vastrelline
