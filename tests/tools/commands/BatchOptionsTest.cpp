// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "commands/BatchOptions.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

BatchOptions Good() {
    BatchOptions options;
    options.format = "png";
    options.run.picture = "picture.png";
    return options;
}

TEST(BatchOptions, RefuseWhatCannotBe) {
    EXPECT_NO_THROW(TestBatchOptions(Good()));
    BatchOptions options = Good();
    options.jobs = 0;
    EXPECT_THROW(TestBatchOptions(options), UsageError);
    options.jobs = 257;
    EXPECT_THROW(TestBatchOptions(options), UsageError);
    options = Good();
    options.format = "jpg";
    EXPECT_THROW(TestBatchOptions(options), UsageError);
    options = Good();
    options.memoryMebibytes = ~size_t{0};
    EXPECT_THROW(TestBatchOptions(options), UsageError);
}

TEST(BatchOptions, DescribeAllThatCountsForAResultAndNothingElse) {
    const ExportTraits& traits = TraitsOf(ExportKind::Plain);
    std::set<std::string> texts{DescribeResultOptions(Good(), traits),
                                DescribeResultOptions(Good(), TraitsOf(ExportKind::S))};
    const auto add = [&](const auto& change) {
        BatchOptions options = Good();
        change(options);
        texts.insert(DescribeResultOptions(options, traits));
    };
    add([](BatchOptions& options) { options.format = "tif"; });
    add([](BatchOptions& options) { options.run.window = "0:9"; });
    add([](BatchOptions& options) { options.run.isPng16 = true; });
    add([](BatchOptions& options) { options.run.size = "1x2"; });
    add([](BatchOptions& options) { options.run.applyMapping = true; });
    add([](BatchOptions& options) { options.run.applySpotCorrection = true; });
    add([](BatchOptions& options) { options.run.geometry = {1, 2}; });
    add([](BatchOptions& options) { options.run.hasSensor = true; });
    EXPECT_EQ(texts.size(), 10U);
    add([](BatchOptions& options) {
        options.jobs = 9;
        options.folder = "elsewhere";
        options.run.hasTimeout = true;
        options.run.timeoutSeconds = 5;
        options.keepsGoing = true;
    });
    EXPECT_EQ(texts.size(), 10U);
}

}  // namespace
}  // namespace vastrelline
