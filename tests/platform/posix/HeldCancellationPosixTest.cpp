// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/HeldCancellation.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

int CancellationState() {
    int state = -1;
    int set = -1;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    pthread_setcancelstate(state, &set);
    return state;
}

// A thread that really ends would leave a sanitizer's marks of its functions behind.
TEST(HeldCancellation, HoldsWithinAndGivesBackWhatWasThere) {
    ASSERT_EQ(CancellationState(), PTHREAD_CANCEL_ENABLE);
    {
        const HeldCancellation held;
        EXPECT_EQ(CancellationState(), PTHREAD_CANCEL_DISABLE);
        {
            const HeldCancellation inner;
            EXPECT_EQ(CancellationState(), PTHREAD_CANCEL_DISABLE);
        }
        EXPECT_EQ(CancellationState(), PTHREAD_CANCEL_DISABLE);
    }
    EXPECT_EQ(CancellationState(), PTHREAD_CANCEL_ENABLE);
}

// The files that a call opens are where a thread would end.
void* CallAndEnd(void* code) {
    const ProfileFolder folder;
    ProfileFolder::PlainSection().WriteTo(folder.At("profile.ini"));
    Frame input = Flat(4, 3, 100);
    Frame output = Flat(4, 3, 0);
    const std::string profile = folder.Profile();
    int before = 0;
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &before);
    pthread_cancel(pthread_self());
    *static_cast<int32_t*>(code) =
        ImageProcessing(input.Data(), output.Data(), 4, 3, profile.c_str(), "General", 0, 0);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
    return nullptr;
}

TEST(HeldCancellation, ACallEndsBeforeItsThreadDoes) {
    int32_t code = -1;
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, nullptr, CallAndEnd, &code), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    EXPECT_EQ(code, VASTRELLINE_OK);
}

}  // namespace
}  // namespace vastrelline
