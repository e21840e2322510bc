#include "foundation/text/FString.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [strings]
FString fileNameOf(const FStringRef& title, std::int32_t take) {
    FString name(title); // 8-bit or 16-bit, as it comes
    name.trim();
    name.replaceChars("/\\:", '-');
    FString number;
    number.printf("_%02d.wav", static_cast<int>(take));
    name.append(number); // where the widths differ the text becomes 16-bit
    return name;
}
// [strings]

// [next version]
bool nextTake(FString& name) {
    return name.incrementVersion(2, '_', 1, false);
}
// [next version]

TEST(StringsExample, ATitleBecomesAFileName) {
    EXPECT_TRUE(fileNameOf(u" Größe 1/2 ", 7) == u"Größe 1-2_07.wav");
    EXPECT_TRUE(fileNameOf(u"Größe", 1).isWide());
    EXPECT_FALSE(fileNameOf("Rain", 1).isWide());
    EXPECT_TRUE(fileNameOf("Rain", 1) == u"Rain_01.wav");
}

TEST(StringsExample, ANameIsCountedOn) {
    FString name("Take_07");
    EXPECT_TRUE(nextTake(name));
    EXPECT_TRUE(name == "Take_08");
    name = "Take";
    EXPECT_TRUE(nextTake(name));
    EXPECT_TRUE(name == "Take_01");
}

} // namespace
} // namespace tessera::test
