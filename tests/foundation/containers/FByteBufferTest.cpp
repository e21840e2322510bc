#include "foundation/containers/FByteBuffer.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tessera::test {
namespace {

std::string used(const FByteBuffer& buffer) {
    return buffer.getFill() == 0 ? std::string()
                                 : std::string(reinterpret_cast<const char*>(buffer.getData()),
                                               static_cast<std::size_t>(buffer.getFill()));
}

TEST(FByteBuffer, IsEmptyWithAStepOf4096AtFirst) {
    const FByteBuffer buffer;
    EXPECT_EQ(buffer.getSize(), 0);
    EXPECT_EQ(buffer.getFill(), 0);
    EXPECT_EQ(buffer.getDelta(), 4096);
    EXPECT_EQ(buffer.getData(), nullptr);
}

TEST(FByteBuffer, AppendGrowsInSteps) {
    FByteBuffer buffer;
    EXPECT_TRUE(buffer.append("abc", 3));
    EXPECT_EQ(buffer.getSize(), 4096);
    EXPECT_EQ(buffer.getFill(), 3);
    EXPECT_TRUE(buffer.append(std::string(4094, 'x').data(), 4094));
    EXPECT_EQ(buffer.getSize(), 8192);
    EXPECT_EQ(used(buffer), "abc" + std::string(4094, 'x'));
}

TEST(FByteBuffer, AppendRefusesNonsense) {
    FByteBuffer buffer;
    EXPECT_FALSE(buffer.append("a", -1));
    EXPECT_FALSE(buffer.append(nullptr, 1));
    EXPECT_TRUE(buffer.append("", 0));
    buffer.append("a", 1);
    EXPECT_FALSE(buffer.append("a", std::numeric_limits<std::int32_t>::max()));
    EXPECT_EQ(used(buffer), "a");
}

TEST(FByteBuffer, AppendsAPieceOfItself) {
    FByteBuffer buffer(4);
    buffer.append("abcd", 4);
    EXPECT_TRUE(buffer.append(buffer.getData() + 1, 3));
    EXPECT_EQ(used(buffer), "abcdbcd");
}

TEST(FByteBuffer, WithoutAStepItGrowsExactly) {
    FByteBuffer buffer(0);
    buffer.append("abc", 3);
    EXPECT_EQ(buffer.getSize(), 3);
}

TEST(FByteBuffer, SetSizeIsExactAndNewBytesAreZero) {
    FByteBuffer buffer;
    EXPECT_TRUE(buffer.setSize(10));
    EXPECT_EQ(buffer.getSize(), 10);
    for (int index = 0; index < 10; ++index) {
        EXPECT_EQ(buffer.getData()[index], 0);
    }
    EXPECT_EQ(buffer.getFill(), 0);
}

TEST(FByteBuffer, ASmallerSizeCutsTheUsedPart) {
    FByteBuffer buffer;
    buffer.append("abcdef", 6);
    EXPECT_TRUE(buffer.setSize(4));
    EXPECT_EQ(used(buffer), "abcd");
    EXPECT_FALSE(buffer.setSize(-1));
    EXPECT_EQ(buffer.getSize(), 4);
    EXPECT_TRUE(buffer.setSize(0));
    EXPECT_EQ(buffer.getFill(), 0);
    EXPECT_EQ(buffer.getData(), nullptr);
}

TEST(FByteBuffer, SetFillStaysInside) {
    FByteBuffer buffer;
    buffer.setSize(4);
    EXPECT_TRUE(buffer.setFill(4));
    EXPECT_FALSE(buffer.setFill(5));
    EXPECT_FALSE(buffer.setFill(-1));
    EXPECT_EQ(buffer.getFill(), 4);
}

TEST(FByteBuffer, ClearFreesTheBlock) {
    FByteBuffer buffer;
    buffer.append("a", 1);
    buffer.clear();
    EXPECT_EQ(buffer.getSize(), 0);
    EXPECT_EQ(buffer.getFill(), 0);
    EXPECT_TRUE(buffer.append("b", 1));
    EXPECT_EQ(used(buffer), "b");
}

TEST(FByteBuffer, CopiesItsBytes) {
    FByteBuffer buffer(16);
    buffer.append("abc", 3);
    FByteBuffer copy(buffer);
    EXPECT_EQ(used(copy), "abc");
    EXPECT_EQ(copy.getSize(), 16);
    EXPECT_EQ(copy.getDelta(), 16);
    EXPECT_NE(copy.getData(), buffer.getData());
    copy = FByteBuffer();
    EXPECT_EQ(used(copy), "");
    EXPECT_EQ(used(buffer), "abc");
}

} // namespace
} // namespace tessera::test
