#include <gtest/gtest.h>

#include "platform/MessageDialog.h"

namespace vastrelline {
namespace {

TEST(ShowMessagePosix, GoesToStandardErrorAsUtf8) {
    testing::internal::CaptureStderr();
    ShowMessage(L"overexposed \u00E9", MessageIcon::Error);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "overexposed \xC3\xA9\n");
}

}  // namespace
}  // namespace vastrelline
