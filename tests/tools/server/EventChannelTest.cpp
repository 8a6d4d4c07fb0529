// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "server/EventChannel.h"

namespace vastrelline {
namespace {

TEST(EventChannel, BringsEventsToAllListenersInTheirOrder) {
    EventChannel channel;
    int woken = 0;
    const auto one = channel.Listen([&] { ++woken; });
    channel.Publish("a", "1");
    const auto other = channel.Listen([&] { ++woken; });
    channel.Publish("b", "2");
    EXPECT_EQ(woken, 3);
    EXPECT_EQ(one->Take(), "1");
    EXPECT_EQ(one->Take(), "2");
    EXPECT_EQ(one->Take(), std::nullopt);
    EXPECT_EQ(other->Take(), "2");
    EXPECT_EQ(other->Take(), std::nullopt);
}

TEST(EventChannel, KeepsTheNewestOfATopicOnly) {
    EventChannel channel;
    const auto listener = channel.Listen([] {});
    channel.Publish("a", "1");
    channel.Publish("b", "2");
    channel.Publish("a", "3");
    EXPECT_EQ(listener->Take(), "2");
    EXPECT_EQ(listener->Take(), "3");
    EXPECT_EQ(listener->Take(), std::nullopt);
}

TEST(EventChannel, BeginsWithWhatLasts) {
    EventChannel channel;
    channel.Publish("state", "1", true);
    channel.Publish("state", "2", true);
    channel.Publish("run", "3");
    const auto listener = channel.Listen([] {});
    EXPECT_EQ(listener->Take(), "2");
    EXPECT_EQ(listener->Take(), std::nullopt);
}

TEST(EventChannel, WakesNobodyWhoHasGone) {
    EventChannel channel;
    int woken = 0;
    channel.Listen([&] { ++woken; }).reset();
    channel.Publish("a", "1");
    EXPECT_EQ(woken, 0);
}

}  // namespace
}  // namespace vastrelline
