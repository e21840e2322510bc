// The stream forms of values and messages, in bytes.
#include "foundation/containers/CmString.h"
#include "foundation/messages/FIntIDAttribute.h"
#include "foundation/messages/FMessage.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tessera {
namespace {

using namespace std::string_view_literals;

std::vector<std::int32_t> reported;

// Writes down what the streams report while a test runs.
class StreamForms : public testing::Test {
protected:
    StreamForms() : before_(persistenceHooks.report) {
        reported.clear();
        persistenceHooks.report = [](std::int32_t code, const FStringRef&) { reported.push_back(code); };
    }
    ~StreamForms() override { persistenceHooks.report = before_; }

    template <class T>
    std::string written(const T& object) {
        FMemoryStream stream;
        EXPECT_TRUE(object.write(stream));
        return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
    }
    template <class T>
    bool readInto(T& object, std::string_view bytes) {
        FMemoryStream stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
        return object.read(stream);
    }

private:
    void (*before_)(std::int32_t, const FStringRef&);
};

using FAttributeValueStream = StreamForms;
using FMessageStream = StreamForms;

constexpr std::string_view kInteger = "\x01\0\xfe\xff\xff\xff\xff\xff\xff\xff"sv;
constexpr std::string_view kFloat = "\x04\0\0\0\0\0\0\0\xf8\x3f"sv;
constexpr std::string_view kText = "\x08\0\x05\0\0\0take\0"sv;
constexpr std::string_view kRawText = "\x18\0\x05\0\0\0take\0"sv;
// A name of six bytes with its NUL, the string of the identifier.
constexpr std::string_view kObject = "\x12\0\x06\0\0\0CmUID\0\x21\0\0\0"
                                     "67452301AB89EFCD1032547698BADCFE\0"sv;

TEST_F(FAttributeValueStream, IsTheTypeAndTheValue) {
    CmUID uid("{01234567-89AB-CDEF-1032-547698BADCFE}"_uid);
    FAttributeValue value;
    value.setInt(-2);
    EXPECT_EQ(written(value), kInteger);
    value.setFloat(1.5);
    EXPECT_EQ(written(value), kFloat);
    value.setString8("take");
    EXPECT_EQ(written(value), kText);
    value.setString8("take", FAttributeValue::TextHolding::byReference);
    EXPECT_EQ(written(value), kRawText);
    value.setObject(&uid, AttributeBits::kByReference);
    EXPECT_EQ(written(value), kObject);
}

TEST_F(FAttributeValueStream, ReadsNumbers) {
    FAttributeValue value;
    ASSERT_TRUE(readInto(value, kInteger));
    EXPECT_EQ(value.getInt(), -2);
    EXPECT_EQ(value.getType(), 0x0001);
    ASSERT_TRUE(readInto(value, kFloat));
    EXPECT_EQ(value.getFloat(), 1.5);
    EXPECT_EQ(value.getType(), 0x0004);
}

TEST_F(FAttributeValueStream, EveryTextComesBackAsItsOwn) {
    for (const std::string_view bytes : {kText, kRawText}) {
        FAttributeValue value;
        ASSERT_TRUE(readInto(value, bytes));
        EXPECT_EQ(value.getType(), 0x0008);
        EXPECT_STREQ(value.getString8(), "take");
    }
}

TEST_F(FAttributeValueStream, WideTextsTravelAsUtf8) {
    FAttributeValue value;
    value.setString16(u"\u00e4", FAttributeValue::TextHolding::byReference);
    const std::string bytes = written(value);
    EXPECT_EQ(bytes, "\x18\x04\x06\0\0\0\xc3\xa4\0\xef\xbb\xbf"sv);
    FAttributeValue read;
    ASSERT_TRUE(readInto(read, bytes));
    EXPECT_EQ(read.getType(), 0x0008);
    EXPECT_EQ(std::u16string(read.getString16()), u"\u00e4");
}

TEST_F(FAttributeValueStream, AnObjectComesBackHeldByAReference) {
    FAttributeValue value;
    ASSERT_TRUE(readInto(value, kObject));
    EXPECT_EQ(value.getType(), 0x0012);
    const auto* uid = cmCast<CmUID>(value.getObject());
    ASSERT_NE(uid, nullptr);
    EXPECT_EQ(uid->getReferenceCount(), 1u);
    EXPECT_TRUE(uid->bytes() == "{01234567-89AB-CDEF-1032-547698BADCFE}"_uid);
}

TEST_F(FAttributeValueStream, MarksComeBack) {
    FAttributeValue value(10);
    value.setInt(1);
    FAttributeValue read;
    ASSERT_TRUE(readInto(read, written(value)));
    EXPECT_EQ(read.getType(), 0x0881);
}

TEST_F(FAttributeValueStream, WhatHasNoFormIsNotWritten) {
    // A foreign object that can't save itself.
    test::ForeignObject<> foreign;
    FMemoryStream stream;
    FAttributeValue value;
    EXPECT_FALSE(value.write(stream));
    int target = 0;
    value.setPointer(&target);
    EXPECT_FALSE(value.write(stream));
    value.setForeign(&foreign, AttributeBits::kByReference);
    EXPECT_FALSE(value.write(stream));
}

TEST_F(FAttributeValueStream, AFailureIsReportedAndLeavesNoValue) {
    for (const std::string_view whole : {kInteger, kFloat, kText, kObject}) {
        for (std::size_t size = 0; size + 1 < whole.size(); size += 3) {
            reported.clear();
            FAttributeValue value;
            value.setString8("before");
            EXPECT_FALSE(readInto(value, whole.substr(0, size)));
            EXPECT_EQ(reported, std::vector<std::int32_t>{-97}) << whole.size() << " cut to " << size;
            EXPECT_EQ(value.getInt(), 0);
            EXPECT_EQ(value.getObject(), nullptr);
        }
    }
    FAttributeValue value;
    reported.clear();
    EXPECT_FALSE(readInto(value, "\0\x02\0\0\0\0\0\0\0\0"sv));
    EXPECT_EQ(reported, std::vector<std::int32_t>{-97});
}

TEST_F(FAttributeValueStream, KeysComeFirst) {
    FIntIDAttribute byNumber(0x01020304);
    byNumber.setInt(-2);
    EXPECT_EQ(written(byNumber), std::string("\x04\x03\x02\x01").append(kInteger));
    FStringIDAttribute byText(FStringRef("gain"), KeyHolding::constant);
    byText.setInt(-2);
    const std::string bytes = written(byText);
    EXPECT_EQ(bytes, std::string("\x05\0\0\0gain\0"sv).append(kInteger));
    FIntIDAttribute number;
    ASSERT_TRUE(readInto(number, written(byNumber)));
    EXPECT_EQ(number.getId(), 0x01020304u);
    EXPECT_EQ(number.getInt(), -2);
    FStringIDAttribute text(FStringRef("other"), KeyHolding::constant);
    ASSERT_TRUE(readInto(text, bytes));
    EXPECT_TRUE(text.getKey() == FStringRef("gain"));
}

constexpr std::string_view kMessage = "\x05\0\0\0Name\0\x02\0\0\0"
                                      "\x02\0\0\0a\0\x01\0\x07\0\0\0\0\0\0\0"
                                      "\x02\0\0\0b\0\x08\0\x03\0\0\0xy\0"sv;

TEST_F(FMessageStream, IsTheNameTheCountAndTheAttributesByKey) {
    FMessage message(FStringRef("Name"));
    message.setString("b", "xy");
    message.setInt("a", 7);
    EXPECT_EQ(written(message), kMessage);
}

TEST_F(FMessageStream, TransientValuesAndPointersStayBehind) {
    FMessage message(FStringRef("Name"));
    int target = 0;
    message.setString("b", "xy");
    message.setInt("a", 7);
    message.setPointer("pointer", &target);
    message.obtain(FStringRef("transient"), KeyHolding::copied, 1)->setInt(1);
    EXPECT_EQ(written(message), kMessage);
}

TEST_F(FMessageStream, ReplacesWhatTheMessageHeld) {
    FMessage message(FStringRef("Before"));
    message.setInt("before", 1);
    ASSERT_TRUE(readInto(message, kMessage));
    EXPECT_TRUE(message.isMessage("Name"));
    EXPECT_EQ(message.getAttributeCount(), 2);
    EXPECT_EQ(message.getInt(FStringRef("a")), 7);
    EXPECT_STREQ(message.getString(FStringRef("b")), "xy");
}

TEST_F(FMessageStream, ACountThatTheStreamDoesNotKeepFails) {
    for (std::string_view bytes : {"\x05\0\0\0Name\0\xff\xff\xff\x7f"sv, "\x05\0\0\0Name\0\xff\xff\xff\xff"sv,
                                   kMessage.substr(0, kMessage.size() - 1), kMessage.substr(0, 20), ""sv}) {
        FMessage message;
        EXPECT_FALSE(readInto(message, bytes));
    }
}

TEST_F(FMessageStream, WhatWasReadIsWrittenTheSame) {
    FMessage message;
    ASSERT_TRUE(readInto(message, kMessage));
    EXPECT_EQ(written(message), kMessage);
}

} // namespace
} // namespace tessera
