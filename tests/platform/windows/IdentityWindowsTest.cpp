// Who and where this code is, in a program and in a library.
#include "platform/Identity.h"

#include "platform/DynamicLibrary.h"
#include "platform/windows/WideText.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>
#include <filesystem>

namespace tessera::platform {
namespace {

TEST(IdentityWindows, InAProgramTheModuleIsTheProgram) {
    EXPECT_EQ(moduleHandle(), GetModuleHandleW(nullptr));
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    EXPECT_EQ(modulePath(), textOf(path));
    EXPECT_NE(modulePath().find(u"\\platform_service_tests.exe"), std::u16string::npos);
}

// Whatever program has loaded it, and under whatever name.
TEST(IdentityWindows, InALibraryTheModuleIsTheLibrary) {
    const testing_support::ScratchFolder scratch;
    const std::filesystem::path copy = scratch.path() / u8"\u00e4\u65e5 \U0001f3b5.shlb";
    std::filesystem::copy_file(ENDING_LIBRARY, copy);
    const auto library = DynamicLibrary::load(testing_support::utf8OfPath(copy).c_str());
    ASSERT_TRUE(library);
    const auto ownHandle = reinterpret_cast<void* (*)()>(library->symbol("ownHandle"));
    const auto ownPath = reinterpret_cast<const char16_t* (*)()>(library->symbol("ownPath"));
    EXPECT_EQ(ownHandle(), library->handle());
    EXPECT_TRUE(std::u16string_view(ownPath()).ends_with(u"\\\u00e4\u65e5 \U0001f3b5.shlb"));
}

TEST(IdentityWindows, TheUserIsTheOneThatTheSystemHasLoggedIn) {
    const char* user = std::getenv("USERNAME");
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(userName(), user);
    EXPECT_EQ(operatingSystem().family, SystemFamily::windows);
}

} // namespace
} // namespace tessera::platform
