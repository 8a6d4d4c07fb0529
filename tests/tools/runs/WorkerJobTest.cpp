// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "messages/ToolError.h"
#include "runs/WorkerJob.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

ExportRequest MakeRequest() {
    ExportRequest request;
    request.kind = ExportKind::NS;
    request.frame = {3, 2, {0, 1, 255, 256, 4095, 65535}};
    request.output = {6, 5, 4, 3, 2, 1};
    request.profile = "folder/\xFF not UTF-8 \xC3\x28.ini";
    request.section = "";
    request.applyMapping = true;
    request.bitmapPath = "a\nb.bmp";
    request.sensorFolder = "\xC3\xA4";
    request.sensorMode = -2;
    request.library = "\xFF.so";
    request.instructions = "avx2";
    return request;
}

TEST(WorkerJob, ComesBackWithEveryByte) {
    const TemporaryFolder folder;
    for (const bool hasGeometry : {false, true}) {
        ExportRequest sent = MakeRequest();
        sent.applyMapping = !hasGeometry;
        sent.applySpotCorrection = hasGeometry;
        if (hasGeometry) sent.geometry = {1, -2, 3, 4, 5, 6, 7, 8, 9, INT32_MIN};
        if (hasGeometry) sent.memoryLimit = UINT64_MAX;
        WriteJob(folder.Path().string(), sent);
        const ExportRequest got = ReadJob(folder.Path().string());
        EXPECT_EQ(got.kind, sent.kind);
        EXPECT_EQ(got.frame.width, 3);
        EXPECT_EQ(got.frame.height, 2);
        EXPECT_EQ(got.frame.pixels, sent.frame.pixels);
        EXPECT_EQ(got.output, std::vector<uint16_t>(6, 0));
        EXPECT_EQ(got.profile, sent.profile);
        EXPECT_EQ(got.section, sent.section);
        EXPECT_EQ(got.applyMapping, sent.applyMapping);
        EXPECT_EQ(got.applySpotCorrection, sent.applySpotCorrection);
        EXPECT_EQ(got.bitmapPath, sent.bitmapPath);
        EXPECT_EQ(got.geometry, sent.geometry);
        EXPECT_EQ(got.sensorFolder, sent.sensorFolder);
        EXPECT_EQ(got.sensorMode, sent.sensorMode);
        EXPECT_EQ(got.library, sent.library);
        EXPECT_EQ(got.instructions, sent.instructions);
        EXPECT_EQ(got.memoryLimit, sent.memoryLimit);
    }
}

TEST(WorkerJob, BringsTheResultBack) {
    const TemporaryFolder folder;
    ExportRequest done = MakeRequest();
    done.record.elapsedMs = 12.25;
    done.record.dose = DoseFigures{1, -2, 3, NAN, true};
    WriteJobResult(folder.Path().string(), -5, done);
    ExportRequest waiting = MakeRequest();
    waiting.output.assign(6, 0);
    EXPECT_EQ(ReadJobResult(folder.Path().string(), waiting), -5);
    EXPECT_EQ(waiting.output, done.output);
    EXPECT_EQ(waiting.record.elapsedMs, 12.25);
    ASSERT_TRUE(waiting.record.dose.has_value());
    EXPECT_EQ(waiting.record.dose->objectMedian, 1);
    EXPECT_EQ(waiting.record.dose->objectTotal, -2);
    EXPECT_EQ(waiting.record.dose->lowSignal, 3);
    EXPECT_TRUE(std::isnan(waiting.record.dose->lowRatio));
    EXPECT_TRUE(waiting.record.dose->isLow);

    done.record.dose.reset();
    WriteJobResult(folder.Path().string(), 0, done);
    EXPECT_EQ(ReadJobResult(folder.Path().string(), waiting), 0);
    EXPECT_FALSE(waiting.record.dose.has_value());
}

TEST(WorkerJob, AFolderWithoutAJobIsAnError) {
    const TemporaryFolder folder;
    ExportRequest request = MakeRequest();
    EXPECT_THROW(ReadJob(folder.Path().string()), InputError);
    EXPECT_THROW(ReadJobResult(folder.Path().string(), request), InputError);
    for (const std::string bytes : {"", "\xFF", "\x01", "\xA0", "\xA1\x64kind\x01"}) {
        WriteBytes(folder.Path() / "job", bytes);
        EXPECT_THROW(ReadJob(folder.Path().string()), InputError) << bytes;
    }
}

}  // namespace
}  // namespace vastrelline
