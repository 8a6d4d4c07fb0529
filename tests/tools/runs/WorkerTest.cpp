// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>

#include "messages/ToolError.h"
#include "runs/Worker.h"
#include "runs/WorkerJob.h"
#include "support/TemporaryFolder.h"

// The worker's side; both together are met by the tests of the built program.
namespace vastrelline {
namespace {

ExportRequest MakeRequest() {
    ExportRequest request;
    request.frame = {2, 1, {1, 2}};
    request.output.resize(2);
    return request;
}

TEST(Worker, DoesTheJobOfAFolder) {
    const TemporaryFolder folder;
    ExportRequest request = MakeRequest();
    WriteJob(folder.Path().string(), request);
    const int exitCode = RunWorker(folder.Path().string(), [](ExportRequest& job) {
        job.output = {7, 8};
        return 3;
    });
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(ReadJobResult(folder.Path().string(), request), 3);
    EXPECT_EQ(request.output, (std::vector<uint16_t>{7, 8}));
}

TEST(Worker, ThatFailsTellsWhyAndLeavesNoResult) {
    const TemporaryFolder folder;
    ExportRequest request = MakeRequest();
    EXPECT_EQ(RunWorker(folder.Path().string(), [](ExportRequest&) { return 0; }), 1);
    WriteJob(folder.Path().string(), request);
    EXPECT_EQ(
        RunWorker(folder.Path().string(), [](ExportRequest&) -> int32_t { throw std::runtime_error("no"); }),
        1);
    EXPECT_EQ(RunWorker(folder.Path().string(), [](ExportRequest&) -> int32_t { throw std::bad_alloc(); }),
              2);
    EXPECT_THROW(ReadJobResult(folder.Path().string(), request), InputError);
    // What the call itself meets beside the job: the library, and texts that it does not take.
    request.library = "x.so";
    WriteJob(folder.Path().string(), request);
    EXPECT_EQ(RunWorker(folder.Path().string(),
                        [](ExportRequest&) -> int32_t { throw InputError("x.so", "is no library"); }),
              4);
    EXPECT_EQ(RunWorker(folder.Path().string(),
                        [](ExportRequest&) -> int32_t { throw InputError("Sektion", "lacks characters"); }),
              5);
    // No room for the output.
    EXPECT_EQ(RunWorker(folder.Path().string(),
                        [&](ExportRequest&) {
                            std::filesystem::create_directory(folder.Path() / "output");
                            return 0;
                        }),
              3);
}

}  // namespace
}  // namespace vastrelline
