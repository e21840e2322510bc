#include "persistence/paths/FileTypeRegistry.h"

#include "persistence/paths/FFileType.h"
#include "persistence/streams/FMemoryStream.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

// What is registered stays to the end of the process.
const FFileType& registeredOnce(FFileType& type) {
    registerFileType(type);
    return type;
}

TEST(FileTypeRegistry, FindsByExtensionSecondExtensionAndMimeTypeInOrder) {
    static FFileType firstType("First", "regone", 0u, "regtwo", "reg/three");
    static FFileType secondType("Second", "regone", 0u, "regfour");
    static const FFileType& first = registeredOnce(firstType);
    static const FFileType& second = registeredOnce(secondType);
    EXPECT_EQ(findFileType("RegOne"), &first);
    EXPECT_EQ(findFileType("regtwo"), &first);
    EXPECT_EQ(findFileType("REG/three"), &first);
    EXPECT_EQ(findFileType("regfour"), &second);
    EXPECT_EQ(findFileType("regfive"), nullptr);
    EXPECT_EQ(findFileType(""), nullptr);
}

std::int32_t seenLength = 0;
std::uint8_t seenLast = 0xff;
FFileType* const detected = new FFileType("Detected", "det");

const FFileType* detectNothing(const std::uint8_t*, std::int32_t length) {
    seenLength = length;
    return nullptr;
}

const FFileType* detectMagic(const std::uint8_t* buffer, std::int32_t length) {
    seenLast = buffer[1023];
    return length >= 4 && std::memcmp(buffer, "TYPE", 4) == 0 ? detected : nullptr;
}

TEST(FileTypeRegistry, DetectorsSeeTheFirstBytesAndTheStreamStaysWhereItWas) {
    registerFileTypeDetector(detectNothing);
    registerFileTypeDetector(detectMagic);
    FMemoryStream stream;
    stream.write("TYPE", 4);
    stream.setSize(3000);
    stream.seek(17, SeekMode::fromStart);
    EXPECT_EQ(detectFileType(stream), detected);
    EXPECT_EQ(seenLength, 1024);
    EXPECT_EQ(stream.tell(), 17);

    FMemoryStream other;
    other.write("OTHER", 5);
    EXPECT_EQ(detectFileType(other), nullptr);
    EXPECT_EQ(seenLength, 5);
    EXPECT_EQ(seenLast, 0);

    seenLength = -1;
    FMemoryStream empty;
    EXPECT_EQ(detectFileType(empty), nullptr);
    EXPECT_EQ(seenLength, -1);
}

TEST(FileTypeRegistry, TextFileTypeIsShared) {
    const FFileType& type = textFileType();
    EXPECT_EQ(&type, &textFileType());
    EXPECT_EQ(text(type.getName()), u"Text File");
    EXPECT_EQ(type.getMacType(), 0x54455854u);
    EXPECT_EQ(text(type.getDosType()), u"txt");
    EXPECT_EQ(text(type.getUnixType()), u"txt");
    EXPECT_EQ(text(type.getMimeType()), u"text/plain");
}

} // namespace
} // namespace tessera
