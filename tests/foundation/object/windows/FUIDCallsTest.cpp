// What an identifier prints for whoever watches with a debugger.
#include "foundation/object/FUID.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing_support::SystemCalls;

TEST(FUIDCalls, WithoutABufferAFormGoesToTheDebuggerWithALineFeedBehindIt) {
    const FUID uid("{00112233-4455-6677-8899-AABBCCDDEEFF}"_uid);
    SystemCalls calls;
    uid.print(FUID::PrintFormat::constructor, nullptr);
    EXPECT_THAT(calls.take({"OutputDebugStringA"}),
                ElementsAre("OutputDebugStringA(\"FUID (0x00112233, 0x44556677, 0x8899AABB, 0xCCDDEEFF)\")",
                            "OutputDebugStringA(\"\n\")"));
}

} // namespace
} // namespace tessera
