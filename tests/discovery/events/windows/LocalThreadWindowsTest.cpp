#include "discovery/events/LocalThread.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace tessera {
namespace {

constexpr DWORD kThreadNameException = 0x406d1388;
constexpr ULONG_PTR kThreadNameRecord = 0x1000;

std::string toldName;

// In the place of a debugger, the first to hear of an exception.
LONG CALLBACK noteName(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != kThreadNameException) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    // The record's first word tells its kind, the second its name.
    if ((record.ExceptionInformation[0] & 0xffffffff) == kThreadNameRecord) {
        toldName = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    }
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(LocalThreadWindows, IsNamedForDebuggersBeforeItsFunctionBegins) {
    void* handler = AddVectoredExceptionHandler(1, noteName);
    std::string name;
    LocalThread thread("com.marlgrove.worker", [&] { name = toldName; });
    thread.start();
    thread.join();
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(name, "com.marlgrove.worker");
}

} // namespace
} // namespace tessera
