// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "workbench/BenchFixture.h"
#include "workbench/DeskEdits.h"
#include "workbench/SheetJobs.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class SheetJobsTest : public BenchFixture {
protected:
    SheetJobs::InputMaker Inputs() {
        return [this](const DeskState& desk) {
            DeskRunInput input{folder_.Narrow("p.ini"), nullptr, {}};
            const std::shared_ptr<const LoadedFrame> loaded = frames_.Load(desk.frame);
            input.frame = std::shared_ptr<const Frame>(loaded, &loaded->frame);
            return input;
        };
    }

    static SheetOrder Ratio(const std::string& value, size_t frame = 0) {
        return {"RATIO=" + value,
                {SetKey("p.ini", kProfile, "A", "00_POST_GAMMA_RATIO", value), "A", frame, {}}};
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    FrameShelf frames_{
        {folder_.Narrow("a_2x2.raw"), folder_.Narrow("b_2x2.raw"), folder_.Narrow("none_2x2.raw")}, {}};
};

TEST_F(SheetJobsTest, ShowOneFrameByManyValues) {
    SheetJobs sheets(Inputs(), TimesRatio, events_);
    sheets.Begin(5, {Ratio("10"), Ratio("20"), Ratio("10")});
    const auto sheet = AwaitEnd(sheets, 5);
    ASSERT_EQ(sheet->cells.size(), 3U);
    EXPECT_EQ(sheet->job.state, JobState::Done);
    EXPECT_EQ(sheet->job.done, 3U);
    EXPECT_EQ(sheet->cells[1].label, "RATIO=20");
    EXPECT_EQ(sheet->cells[1].before->picture.frame.pixels, (std::vector<uint16_t>{0, 1, 2, 3}));
    EXPECT_EQ(sheet->cells[1].after->picture.frame.pixels, (std::vector<uint16_t>{0, 20, 40, 60}));
    EXPECT_EQ(sheet->cells[1].after->median, 20);  // half of the pixels are not above it
    // Three of the four pixels are others than those of the first cell.
    EXPECT_EQ(sheet->cells[0].changedFromFirst, 0.0);
    EXPECT_EQ(sheet->cells[1].changedFromFirst, 0.75);
    EXPECT_EQ(sheet->cells[2].changedFromFirst, 0.0);
    EXPECT_EQ(sheet->cells[0].before, sheet->cells[2].before);
    EXPECT_EQ(SheetToJson(*sheet)["cells"][1].dump(),
              R"({"cell":1,"label":"RATIO=20","state":"done","width":2,"height":2,"step":1,)"
              R"("before":{"median":1,"noise":null},"after":{"median":20,"noise":null},)"
              R"("changedFromFirst":0.75,"error":null})");
}

TEST_F(SheetJobsTest, MeasureNoiseWhereThereIsRoomForIt) {
    // A chessboard of 16 x 16 pixels, 10 around 100. The plane that is taken out of a block costs 3 of its
    // 256 degrees of freedom, and the median of variances of 253 of them is lower than their mean by (1 - 2 /
    // (9 * 253))^3: 10 * sqrt(256 / 253 / 0.997367) = 10.0724.
    std::vector<uint16_t> levels;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) levels.push_back((x + y) % 2 == 0 ? 90 : 110);
    WriteBytes(folder_.Path() / "a_2x2.raw", Bytes(levels));
    FrameShelf shelf({folder_.Narrow("a_2x2.raw")}, {FrameSize{16, 16}, std::nullopt});
    SheetJobs sheets(
        [&](const DeskState&) {
            const std::shared_ptr<const LoadedFrame> loaded = shelf.Load(0);
            return DeskRunInput{"p.ini", std::shared_ptr<const Frame>(loaded, &loaded->frame), {}};
        },
        TimesRatio, events_);
    sheets.Begin(1, {Ratio("2")});
    const auto sheet = AwaitEnd(sheets, 1);
    ASSERT_EQ(sheet->job.state, JobState::Done);
    EXPECT_NEAR(sheet->cells[0].before->noise.value_or(0), 10.07, 0.03);
    EXPECT_NEAR(sheet->cells[0].after->noise.value_or(0), 20.14, 0.06);
}

TEST_F(SheetJobsTest, CompareNoFrameWithAnother) {
    SheetJobs sheets(Inputs(), TimesRatio, events_);
    sheets.Begin(1, {Ratio("10", 0), Ratio("10", 1), Ratio("20", 0)});
    const auto sheet = AwaitEnd(sheets, 1);
    EXPECT_EQ(sheet->cells[0].changedFromFirst, 0.0);
    EXPECT_FALSE(sheet->cells[1].changedFromFirst);
    EXPECT_EQ(sheet->cells[2].changedFromFirst, 0.75);
}

TEST_F(SheetJobsTest, GoOnBehindACellThatFails) {
    SheetJobs sheets(Inputs(), TimesRatio, events_);
    sheets.Begin(1, {Ratio("10", 2), Ratio("10", 1)});
    const auto sheet = AwaitEnd(sheets, 1);
    EXPECT_EQ(sheet->job.state, JobState::Done);
    EXPECT_EQ(sheet->cells[0].state, CellState::Failed);
    EXPECT_THAT(sheet->cells[0].error->What(), HasSubstr("does not exist"));
    EXPECT_EQ(sheet->cells[1].state, CellState::Done);
    EXPECT_FALSE(sheet->cells[1].changedFromFirst);
    EXPECT_EQ(sheet->cells[1].after->picture.frame.pixels.back(), 300);
}

TEST_F(SheetJobsTest, FailWhereNothingComesOfThem) {
    SheetJobs sheets(
        Inputs(), [](ExportRequest&) { return -1; }, events_);
    sheets.Begin(1, {Ratio("10"), Ratio("20")});
    const auto sheet = AwaitEnd(sheets, 1);
    EXPECT_EQ(sheet->job.state, JobState::Failed);
    ASSERT_TRUE(sheet->job.error);
    EXPECT_THAT(sheet->job.error->What(), HasSubstr("returned -1"));
    EXPECT_EQ(sheet->cells[1].before->picture.width, 2);  // the frame could be read
}

TEST_F(SheetJobsTest, EndForANewerOneAndWhenTheyAreCancelled) {
    std::atomic<int> isAtWork{0};
    const ExportCaller stuck = [&](ExportRequest& request) {
        ++isAtWork;
        for (;;) request.onWait();
        return 0;
    };
    SheetJobs sheets(Inputs(), stuck, events_);
    const auto listener = events_.Listen([] {});
    const auto awaitWork = [&](int count) {
        for (int i = 0; i < 3000 && isAtWork < count; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    };
    sheets.Begin(1, {Ratio("10")});
    awaitWork(1);
    sheets.Begin(2, {Ratio("10"), Ratio("20")});
    EXPECT_EQ(sheets.Find(1), nullptr);
    EXPECT_THAT(listener->Take().value_or(""),
                HasSubstr(R"("id":1,"kind":"sheet","done":0,"total":1,"state":"cancelled")"));
    awaitWork(2);
    sheets.Cancel(1);
    EXPECT_EQ(sheets.Find(2)->job.state, JobState::Running);
    sheets.Cancel(2);
    EXPECT_EQ(sheets.Find(2)->job.state, JobState::Cancelled);
    sheets.End();
    EXPECT_EQ(sheets.Find(2)->cells[0].state, CellState::Waiting);
    EXPECT_EQ(isAtWork, 2);
}

}  // namespace
}  // namespace vastrelline
