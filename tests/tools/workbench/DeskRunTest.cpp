// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "workbench/BenchFixture.h"
#include "workbench/DeskRun.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class DeskRunTest : public BenchFixture {
protected:
    // The states that are published, in their order.
    std::vector<KeptRun> Run(DeskState desk, const ExportCaller& callExport,
                             const std::stop_token& stop = {}) const {
        const auto makeInput = [this](const DeskState&) {
            return DeskRunInput{folder_.Narrow("p.ini"), frame_, {}};
        };
        return RunWith(makeInput, std::move(desk), callExport, stop);
    }

    static std::vector<KeptRun> RunWith(const DeskInputMaker& makeInput, DeskState desk,
                                        const ExportCaller& callExport, const std::stop_token& stop = {}) {
        KeptRun run;
        run.id = 7;
        run.desk = std::move(desk);
        std::vector<KeptRun> published;
        RunDesk(std::move(run), makeInput, callExport, stop,
                [&](KeptRun next) { published.push_back(std::move(next)); });
        return published;
    }

    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): every test is a class derived from it
    std::shared_ptr<const Frame> frame_ = std::make_shared<Frame>(Frame{2, 2, {0, 1, 2, 3}});
};

std::vector<std::string> Titles(const KeptRun& run) {
    std::vector<std::string> titles;
    for (const auto& point : run.points) titles.push_back(point->point.title);
    return titles;
}

// Such as the memory for a frame.
TEST_F(DeskRunTest, TellsWhatItsInputLacks) {
    const std::vector<KeptRun> runs = RunWith(
        [](const DeskState&) -> DeskRunInput { throw std::bad_alloc(); }, {kProfile, "A", 0, {}}, TimesRatio);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].state, RunState::Failed);
    EXPECT_EQ(runs[0].error->What(), "there is not enough memory");
}

TEST_F(DeskRunTest, GivesThePictureFirstAndTheStagesBehindIt) {
    const std::vector<KeptRun> runs = Run({kProfile, "A", 0, {}}, TimesRatio);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].state, RunState::Picture);
    EXPECT_THAT(Titles(runs[0]), ElementsAre("frame", "result"));
    EXPECT_EQ(runs[0].points[1]->point.frame->pixels, (std::vector<uint16_t>{0, 10, 20, 30}));
    EXPECT_EQ(runs[1].state, RunState::Complete);
    EXPECT_THAT(Titles(runs[1]), ElementsAre("input", "Gamma curve", "result"));
    EXPECT_EQ(runs[1].points[1]->curve.size(), 2U);
    EXPECT_EQ(runs[1].points[1]->point.changed, 0.75);
    EXPECT_EQ(FindPoint(runs[1], "frame"), runs[1].points[0]);
    EXPECT_EQ(FindPoint(runs[1], "1"), runs[1].points[1]);
    EXPECT_EQ(FindPoint(runs[1], "result"), runs[1].points[2]);
    for (const char* const name : {"3", "-1", "", "1x", "99999999999999999999"})
        EXPECT_EQ(FindPoint(runs[1], name), nullptr) << name;
}

TEST_F(DeskRunTest, RunsWithoutPlacesThatAreOff) {
    const std::vector<KeptRun> runs = Run({kProfile, "A", 0, {"00_Function_Number"}}, TimesRatio);
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[1].points.back()->point.frame->pixels, (std::vector<uint16_t>{0, 1, 2, 3}));
    EXPECT_THAT(Titles(runs[1]), ElementsAre("input", "result"));
    // The place is there, with its keys, and passed over.
    EXPECT_EQ(runs[1].basis->plan.places.back().role, PlaceRole::PassedOver);
}

TEST_F(DeskRunTest, TellsWhyThereIsNone) {
    const auto what = [&](const DeskState& desk, const ExportCaller& callExport) {
        const std::vector<KeptRun> runs = Run(desk, callExport);
        EXPECT_EQ(runs.size(), 1U);
        EXPECT_EQ(runs.back().state, RunState::Failed);
        return runs.back().error->What();
    };
    EXPECT_THAT(what({kProfile, "Missing", 0, {}}, TimesRatio), HasSubstr("has no section 'Missing'"));
    EXPECT_THAT(what({"", "A", 0, {}}, TimesRatio), HasSubstr("holds no section with settings"));
    EXPECT_EQ(what({kProfile, "A", 0, {}}, [](ExportRequest&) { return -3; }).substr(0, 28),
              "ImageProcessing returned -3 ");
    EXPECT_EQ(
        what({kProfile, "A", 0, {}},
             [](ExportRequest&) -> int32_t { throw ProcessingError({}, "the run was ended by signal 11"); }),
        "the run was ended by signal 11");
    EXPECT_EQ(what({kProfile, "A", 0, {}}, [](ExportRequest&) -> int32_t { throw std::bad_alloc(); }),
              "there is not enough memory");
    EXPECT_EQ(
        what({kProfile, "A", 0, {}}, [](ExportRequest&) -> int32_t { throw std::runtime_error("odd"); }),
        "odd");
}

TEST_F(DeskRunTest, FailsBehindThePictureWhereDumpsGiveAnotherOne) {
    int calls = 0;
    const std::vector<KeptRun> runs = Run({kProfile, "A", 0, {}}, [&](ExportRequest& request) {
        request.output = {0, 0, 0, static_cast<uint16_t>(++calls)};
        return 0;
    });
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].state, RunState::Picture);
    EXPECT_EQ(runs[1].state, RunState::Failed);
    EXPECT_THAT(runs[1].error->What(), HasSubstr("two runs on the frame gave different results"));
}

TEST_F(DeskRunTest, EndsWhenItIsAskedTo) {
    std::stop_source stop;
    const std::vector<KeptRun> runs = Run(
        {kProfile, "A", 0, {}},
        [&](ExportRequest& request) {
            request.onWait();
            stop.request_stop();
            request.onWait();
            ADD_FAILURE() << "went on";
            return 0;
        },
        stop.get_token());
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].state, RunState::Ended);
}

}  // namespace
}  // namespace vastrelline
