// The stream form of an identifier, in bytes.
#include "foundation/object/CmUID.h"
#include "persistence/streams/FMemoryStream.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

constexpr FUIDBytes kSample = "{01234567-89AB-CDEF-1032-547698BADCFE}"_uid;
constexpr char kWritten[] = "\x21\0\0\0"
                            "67452301AB89EFCD1032547698BADCFE";

TEST(CmUIDStream, IsAStringOfTheBytesInMemoryOrder) {
    FMemoryStream stream;
    ASSERT_TRUE(CmUID(kSample).write(stream));
    ASSERT_EQ(stream.getSize(), static_cast<std::int32_t>(sizeof kWritten));
    EXPECT_EQ(std::memcmp(stream.getData(), kWritten, sizeof kWritten), 0);
}

TEST(CmUIDStream, DiffersFromTheAttributeFormInTheFirstWords) {
    char text[FUID::kTextSize];
    CmUID(kSample).toString(text);
    EXPECT_STREQ(text, "0123456789ABCDEF1032547698BADCFE");
}

TEST(CmUIDStream, ReadsBackWhatWasWritten) {
    FMemoryStream stream(static_cast<const void*>(kWritten), sizeof kWritten);
    CmUID uid;
    ASSERT_TRUE(uid.read(stream));
    EXPECT_TRUE(uid.bytes() == kSample);
}

TEST(CmUIDStream, AShortStreamFails) {
    for (const std::int32_t size : {0, 3, 4, 20}) {
        FMemoryStream stream(static_cast<const void*>(kWritten), size);
        CmUID uid(kSample);
        EXPECT_FALSE(uid.read(stream)) << size;
        EXPECT_TRUE(uid.bytes() == kSample) << size;
    }
}

} // namespace
} // namespace tessera
