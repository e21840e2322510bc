#include "discovery/events/LocalThread.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <string>

namespace tessera {
namespace {

TEST(LocalThreadLinux, IsNamedForDebuggersBeforeItsFunctionBegins) {
    std::string name;
    LocalThread thread("com.marlgrove.worker", [&] {
        char text[16];
        pthread_getname_np(pthread_self(), text, sizeof text);
        name = text;
    });
    thread.start();
    thread.join();
    EXPECT_EQ(name, "com.marlgrove.w") << "as much of it as the system keeps";
}

} // namespace
} // namespace tessera
