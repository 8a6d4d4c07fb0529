#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/HeldCancellation.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// Asks its own thread to end, and tells how far it came.
void* HoldAndEnd(void* steps) {
    int& count = *static_cast<int*>(steps);
    pthread_cancel(pthread_self());
    {
        const HeldCancellation held;
        const HeldCancellation inner;
        pthread_testcancel();
        ++count;
    }
    pthread_testcancel();
    ++count;  // not reached
    return nullptr;
}

TEST(HeldCancellation, TheThreadEndsBehindIt) {
    int steps = 0;
    pthread_t thread{};
    void* result = nullptr;
    ASSERT_EQ(pthread_create(&thread, nullptr, HoldAndEnd, &steps), 0);
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(steps, 1);
    EXPECT_EQ(result, PTHREAD_CANCELED);
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
