#include "platform/DynamicLibrary.h"

#include <gtest/gtest.h>

#include <utility>

namespace tessera::platform {
namespace {

TEST(DynamicLibrary, FindsTheSymbolsOfALibraryByItsPath) {
    const auto library = DynamicLibrary::load(TINY_LIBRARY);
    ASSERT_TRUE(library);
    EXPECT_NE(library->handle(), nullptr);
    auto* answer = reinterpret_cast<int (*)()>(library->symbol("tinyLibraryAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(library->symbol("noSuchSymbol"), nullptr);
}

TEST(DynamicLibrary, SaysWhyThereIsNone) {
    for (const char* path : {"/no/such/library.so", "", "/dev/null"}) {
        std::string error;
        EXPECT_FALSE(DynamicLibrary::load(path, &error)) << path;
        EXPECT_NE(error, "") << path;
    }
    EXPECT_FALSE(DynamicLibrary::load("/no/such/library.so"));
}

TEST(DynamicLibrary, MovesWithItsHandle) {
    auto library = DynamicLibrary::load(TINY_LIBRARY);
    ASSERT_TRUE(library);
    void* handle = library->handle();
    DynamicLibrary moved(std::move(*library));
    EXPECT_EQ(moved.handle(), handle);
    EXPECT_NE(moved.symbol("tinyLibraryAnswer"), nullptr);
}

} // namespace
} // namespace tessera::platform
