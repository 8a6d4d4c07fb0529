// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/BrowserOpen.h"
#include "support/SetVariable.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

TEST(BrowserOpen, HandsTheAddressToTheDesktop) {
    const TemporaryFolder folder;
    const fs::path opener = folder.Path() / "xdg-open";
    WriteBytes(opener,
               "#!/bin/sh\nprintf '%s|' \"$@\" >\"${0%/*}/draft\"\nmv \"${0%/*}/draft\" \"${0%/*}/seen\"\n");
    fs::permissions(opener, fs::perms::owner_all);
    const SetVariable path("PATH", folder.Narrow("") + ":/usr/bin:/bin");
    EXPECT_TRUE(OpenInBrowser("http://127.0.0.1:1/a b'\"$(x)/"));
    for (int i = 0; i < 1000 && !fs::exists(folder.Path() / "seen"); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(ReadBytes(folder.Path() / "seen"), "http://127.0.0.1:1/a b'\"$(x)/|");
}

TEST(BrowserOpen, TellsThatThereIsNone) {
    const TemporaryFolder folder;
    const SetVariable path("PATH", folder.Narrow(""));
    EXPECT_FALSE(OpenInBrowser("http://127.0.0.1:1/"));
}

}  // namespace
}  // namespace vastrelline
