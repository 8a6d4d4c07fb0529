// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "workbench/Job.h"

namespace vastrelline {
namespace {

TEST(Job, TellsHowFarItIs) {
    EXPECT_EQ(JobToJson({3, JobKind::Compare, 1, 2, JobState::Running, {}}).dump(),
              R"({"id":3,"kind":"compare","done":1,"total":2,"state":"running","error":null})");
    const nlohmann::ordered_json failed = JobToJson(
        {4, JobKind::Sheet, 2, 2, JobState::Failed, InputError("a.raw", "is a folder", "name a file")});
    EXPECT_EQ(failed["state"], "failed");
    EXPECT_EQ(failed["error"]["what"], "is a folder");
}

TEST(Job, IsToldToThePagesByTheNewestEventOfItsNumber) {
    EventChannel events;
    const auto listener = events.Listen([] {});
    PublishJob(events, {3, JobKind::Sheet, 1, 2, JobState::Running, {}});
    PublishJob(events, {3, JobKind::Sheet, 2, 2, JobState::Cancelled, {}});
    const std::optional<std::string> event = listener->Take();
    ASSERT_TRUE(event);
    EXPECT_EQ(
        *event,
        R"({"type":"job","job":{"id":3,"kind":"sheet","done":2,"total":2,"state":"cancelled","error":null}})");
    EXPECT_FALSE(listener->Take());
}

}  // namespace
}  // namespace vastrelline
