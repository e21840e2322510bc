// The stream forms of the containers, byte by byte, and what becomes of broken ones.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmBTreeDictionary.h"
#include "foundation/containers/CmBuffer.h"
#include "foundation/containers/CmHashTable.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/containers/CmQueue.h"
#include "foundation/containers/CmStack.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FMemoryStream.h"
#include "tests/foundation/containers/TestNumber.h"

#include <fstream>
#include <string>

namespace tessera::test {
namespace {

using namespace std::string_literals;

// "TestNumber" with its count and its NUL, then the value.
std::string number(char value) {
    return "\x0b\0\0\0TestNumber\0"s + value + "\0\0\0"s;
}

std::string bytesOf(const FMemoryStream& stream) {
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

std::string written(const CmObject& object) {
    FMemoryStream stream;
    EXPECT_TRUE(object.write(stream));
    return bytesOf(stream);
}

bool readFrom(CmObject& object, const std::string& bytes) {
    std::string copy = bytes;
    FMemoryStream stream(copy.data(), static_cast<std::int32_t>(copy.size()));
    return object.read(stream);
}

using ContainerStreams = ContainerTest;

TEST_F(ContainerStreams, AListIsOwnershipCountAndElements) {
    CmLinkedList list;
    list.setOwnership(CmOwnership::owner);
    addNew(list, {7, 3});
    const std::string bytes = "\x01\0"s + "\x02\0\0\0"s + number(7) + number(3);
    EXPECT_EQ(written(list), bytes);

    CmLinkedList copy;
    EXPECT_TRUE(readFrom(copy, bytes));
    EXPECT_EQ(contents(copy), "7 3");
    EXPECT_EQ(copy.getOwnership(), CmOwnership::owner);
}

TEST_F(ContainerStreams, AnArrayPutsItsGrowthFirst) {
    CmArray array(0, 5);
    array.setOwnership(CmOwnership::owner);
    addNew(array, {1});
    EXPECT_EQ(written(array), "\x05\0\0\0"s + "\x01\0"s + "\x01\0\0\0"s + number(1));
    array.setGrowth(CmArray::kDoubling);
    EXPECT_EQ(written(array).substr(0, 4), "\x0a\0\0\0"s) << "a negative growth is written as 10";
    array.setGrowth(-7);
    EXPECT_EQ(written(array).substr(0, 4), "\x0a\0\0\0"s);
}

TEST_F(ContainerStreams, AFixedArrayComesBackFixedAndFull) {
    CmOrderedArray array;
    EXPECT_TRUE(readFrom(array, "\0\0\0\0"s + "\x01\0"s + "\x03\0\0\0"s + number(3) + number(1) + number(2)));
    EXPECT_EQ(contents(array), "1 2 3");
    EXPECT_EQ(array.getGrowth(), 0);
}

TEST_F(ContainerStreams, AHugeGrowthTakesNoMemoryWhileReading) {
    CmArray array;
    EXPECT_TRUE(readFrom(array, "\xff\xff\xff\x7f"s + "\x01\0"s + "\x01\0\0\0"s + number(1)));
    EXPECT_EQ(contents(array), "1");
    EXPECT_EQ(array.getGrowth(), 0x7fffffff);
    EXPECT_LE(array.getCapacity(), 10);
}

TEST_F(ContainerStreams, AHashTablePutsItsSizeFirst) {
    CmHashTable table(3);
    table.setOwnership(CmOwnership::owner);
    addNew(table, {1, 3});
    const std::string bytes = "\x03\0\0\0"s + "\x01\0"s + "\x02\0\0\0"s + number(3) + number(1);
    EXPECT_EQ(written(table), bytes);
    CmHashTable copy;
    EXPECT_TRUE(readFrom(copy, bytes));
    EXPECT_EQ(copy.getCapacity(), 3);
    EXPECT_EQ(contents(copy), "3 1");
}

TEST_F(ContainerStreams, AHashTableOfNoSizeGetsTenBuckets) {
    for (const std::string& size : {"\0\0\0\0"s, "\xff\xff\xff\xff"s}) {
        CmHashTable table(5);
        EXPECT_TRUE(readFrom(table, size + "\0\0"s + "\0\0\0\0"s));
        EXPECT_EQ(table.getCapacity(), 10);
    }
}

TEST_F(ContainerStreams, AHashTableAboveTheLargestIsRefused) {
    CmHashTable table;
    EXPECT_FALSE(readFrom(table, "\x01\0\x10\0"s + "\0\0"s + "\0\0\0\0"s));
    EXPECT_FALSE(readFrom(table, "\xff\xff\xff\x7f"s + "\0\0"s + "\0\0\0\0"s));
    EXPECT_EQ(table.getCapacity(), 10);
}

// In pages; 0 where the system doesn't tell.
long residentPages() {
    long all = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident;
}

TEST_F(ContainerStreams, HashTablesOfTheLargestSizeTakeNoMemoryForEmptyBuckets) {
    if (residentPages() == 0) {
        GTEST_SKIP() << "the system doesn't tell how much memory is in use";
    }
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the thread sanitizer touches all memory that is taken";
#endif
    constexpr char kTables = 40;
    std::string bytes = "\x01\0"s + std::string(1, kTables) + "\0\0\0"s;
    for (int i = 0; i < kTables; ++i) {
        bytes +=
            "\x0c\0\0\0"s + "CmHashTable\0"s + "\0\0\x10\0"s + "\x01\0"s + "\x01\0\0\0"s + number(static_cast<char>(i));
    }
    const long before = residentPages();
    CmLinkedList tables;
    ASSERT_TRUE(readFrom(tables, bytes));
    ASSERT_EQ(tables.getCount(), kTables);
    EXPECT_EQ(static_cast<CmHashTable*>(tables.at(0))->getCapacity(), CmHashTable::kMaximumSize);
    // A million buckets each would be a gigabyte together.
    EXPECT_LT(residentPages() - before, 25000);
}

template <class Container>
void expectRoundTrip(const char* expected) {
    Container container;
    container.setOwnership(CmOwnership::owner);
    addNew(container, {5, 2, 9, 2});
    Container copy;
    EXPECT_TRUE(readFrom(copy, written(container))) << container.getClassName();
    EXPECT_EQ(contents(copy), expected) << container.getClassName();
    EXPECT_EQ(copy.getOwnership(), CmOwnership::owner);
}

TEST_F(ContainerStreams, EveryFormComesBackAsItWas) {
    expectRoundTrip<CmLinkedList>("5 2 9 2");
    expectRoundTrip<CmQueue>("5 2 9 2");
    expectRoundTrip<CmStack>("5 2 9 2");
    expectRoundTrip<CmArray>("5 2 9 2");
    expectRoundTrip<CmOrderedArray>("2 2 5 9");
    expectRoundTrip<CmBTree>("2 2 5 9");
    expectRoundTrip<CmHashTable>("2 2 5 9");
}

TEST_F(ContainerStreams, ASharedOneHoldsTheOnlyReferenceAfterwards) {
    CmLinkedList list;
    EXPECT_TRUE(readFrom(list, "\x02\0"s + "\x01\0\0\0"s + number(1)));
    EXPECT_EQ(list.getOwnership(), CmOwnership::shared);
    EXPECT_EQ(list.at(0)->getReferenceCount(), 1u);
}

TEST_F(ContainerStreams, ADictionaryComesBackWithKeysAndValues) {
    CmBTreeDictionary dictionary;
    dictionary.setOwnership(CmOwnership::owner);
    dictionary.set(new TestNumber(1), new TestNumber(10));
    dictionary.set(new TestNumber(2), nullptr);
    const std::string bytes = "\x01\0"s + "\x02\0\0\0"s + "\x0e\0\0\0CmAssociation\0"s + number(1) + number(10) +
                              "\x0e\0\0\0CmAssociation\0"s + number(2) + "\0\0\0\0"s;
    EXPECT_EQ(written(dictionary), bytes);

    CmBTreeDictionary copy;
    EXPECT_TRUE(readFrom(copy, bytes));
    const TestNumber one(1);
    EXPECT_EQ(static_cast<TestNumber*>(copy.get(&one))->value, 10);
    EXPECT_EQ(copy.getCount(), 2);
    EXPECT_EQ(TestNumber::alive, 7);
}

TEST_F(ContainerStreams, ADictionaryRefusesADoubleKeyAndKeepsNothing) {
    const std::string association = "\x0e\0\0\0CmAssociation\0"s + number(1) + number(10);
    CmBTreeDictionary dictionary;
    EXPECT_FALSE(readFrom(dictionary, "\x01\0"s + "\x02\0\0\0"s + association + association));
    EXPECT_EQ(TestNumber::alive, 0);
    EXPECT_TRUE(dictionary.isEmpty());
}

TEST_F(ContainerStreams, ReadingAddsToWhatIsThere) {
    CmArray array;
    array.setOwnership(CmOwnership::owner);
    addNew(array, {4});
    EXPECT_TRUE(readFrom(array, "\x0a\0\0\0"s + "\x01\0"s + "\x01\0\0\0"s + number(1)));
    EXPECT_EQ(contents(array), "4 1");
}

// Each prefix of a good stream fails, and leaves the container with what it had.
TEST_F(ContainerStreams, AStreamCutAnywhereChangesNothing) {
    const std::string whole = "\x0a\0\0\0"s + "\x01\0"s + "\x02\0\0\0"s + number(1) + number(2);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        // In front of the array, which gives its reference back at the end.
        TestNumber present(1, 'p');
        CmOrderedArray array;
        array.setOwnership(CmOwnership::shared);
        array.add(&present);
        EXPECT_FALSE(readFrom(array, whole.substr(0, length))) << length;
        EXPECT_EQ(contents(array), "1p") << length;
        EXPECT_EQ(array.getOwnership(), CmOwnership::shared) << length;
        EXPECT_EQ(TestNumber::alive, 1) << length;
    }
}

TEST_F(ContainerStreams, CountsBeyondReasonFail) {
    CmLinkedList list;
    EXPECT_FALSE(readFrom(list, "\0\0"s + "\xff\xff\xff\x7f"s + number(1)));
    EXPECT_FALSE(readFrom(list, "\0\0"s + "\xff\xff\xff\xff"s));
    EXPECT_TRUE(list.isEmpty());
}

TEST_F(ContainerStreams, ANullElementFails) {
    CmLinkedList list;
    EXPECT_FALSE(readFrom(list, "\0\0"s + "\x01\0\0\0"s + "\0\0\0\0"s));
}

class ReportedErrors {
public:
    ReportedErrors() : before_(persistenceHooks.report) {
        persistenceHooks.report = [](std::int32_t code, const FStringRef& text) {
            last = std::to_string(code) + " " + FString(text).text8();
        };
        last.clear();
    }
    ReportedErrors(const ReportedErrors&) = delete;
    ReportedErrors& operator=(const ReportedErrors&) = delete;
    ~ReportedErrors() { persistenceHooks.report = before_; }

    static inline std::string last;

private:
    void (*before_)(std::int32_t, const FStringRef&);
};

TEST_F(ContainerStreams, AnUnknownClassIsReportedWithItsName) {
    const ReportedErrors errors;
    CmLinkedList list;
    EXPECT_FALSE(readFrom(list, "\x01\0"s + "\x02\0\0\0"s + number(1) + "\x08\0\0\0Unknown\0"s));
    EXPECT_EQ(ReportedErrors::last, "-98 Unknown");
    EXPECT_EQ(list.getOwnership(), CmOwnership::none);
}

TEST_F(ContainerStreams, AnAbstractClassIsReported) {
    const ReportedErrors errors;
    CmLinkedList list;
    EXPECT_FALSE(readFrom(list, "\x01\0"s + "\x01\0\0\0"s + "\x0c\0\0\0CmContainer\0"s));
    EXPECT_EQ(ReportedErrors::last, "-98 CmContainer");
}

TEST_F(ContainerStreams, AClassOtherThanAskedForIsReported) {
    const ReportedErrors errors;
    std::string bytes = number(1);
    FMemoryStream stream(bytes.data(), static_cast<std::int32_t>(bytes.size()));
    CmObject* object = nullptr;
    EXPECT_FALSE(readObject(stream, "CmContainer", object));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(ReportedErrors::last, "-98 TestNumber");
}

TEST_F(ContainerStreams, ANullObjectIsTheEmptyName) {
    FMemoryStream stream;
    EXPECT_TRUE(writeObject(stream, nullptr));
    EXPECT_EQ(bytesOf(stream), "\0\0\0\0"s);
    stream.rewind();
    TestNumber other;
    CmObject* object = &other;
    EXPECT_TRUE(readObject(stream, "CmObject", object));
    EXPECT_EQ(object, nullptr);
}

// So many lists, each the only element of the one around it, inside an outermost one.
std::string nestedLists(int count) {
    std::string bytes = "\x01\0"s + "\0\0\0\0"s;
    for (int level = 0; level < count; ++level) {
        bytes = "\x01\0"s + "\x01\0\0\0"s + "\x0d\0\0\0CmLinkedList\0"s + bytes;
    }
    return bytes;
}

TEST_F(ContainerStreams, NestingBelow256LevelsIsRead) {
    CmLinkedList list;
    EXPECT_TRUE(readFrom(list, nestedLists(256)));
    EXPECT_EQ(list.getCount(), 1);
}

TEST_F(ContainerStreams, DeeperNestingIsRefused) {
    CmLinkedList list;
    EXPECT_FALSE(readFrom(list, nestedLists(257)));
    EXPECT_TRUE(list.isEmpty());
    EXPECT_TRUE(readFrom(list, nestedLists(3))) << "a refusal leaves nothing behind";
}

TEST(BufferStreams, ABufferIsSizeFillAndBytes) {
    CmBuffer buffer(8);
    buffer.append("abc", 3);
    const std::string bytes = "\x08\0\0\0"s + "\x03\0\0\0"s + "abc\0\0\0\0\0"s;
    EXPECT_EQ(written(buffer), bytes);
    CmBuffer copy;
    EXPECT_TRUE(readFrom(copy, bytes));
    EXPECT_TRUE(copy.isEqual(&buffer));
    EXPECT_EQ(copy.getSize(), 8);
    EXPECT_EQ(copy.getFill(), 3);
}

TEST(BufferStreams, WhatLiesBehindTheUsedPartStaysInTheProcess) {
    CmBuffer buffer(8);
    buffer.append("password", 8);
    buffer.setFill(2);
    EXPECT_EQ(written(buffer), "\x08\0\0\0"s + "\x02\0\0\0"s + "pa\0\0\0\0\0\0"s);
    EXPECT_EQ(buffer.getData()[3], 's') << "the buffer itself isn't touched";
}

TEST(BufferStreams, AnEmptyBufferIsTwoCounts) {
    EXPECT_EQ(written(CmBuffer()), "\0\0\0\0"s + "\0\0\0\0"s);
    CmBuffer copy;
    copy.append("x", 1);
    EXPECT_TRUE(readFrom(copy, "\0\0\0\0"s + "\0\0\0\0"s));
    EXPECT_EQ(copy.getSize(), 0);
}

TEST(BufferStreams, ALongBufferComesBack) {
    CmBuffer buffer;
    for (int block = 0; block < 50; ++block) {
        const std::string text(4000, static_cast<char>('a' + block % 26));
        buffer.append(text.data(), 4000);
    }
    CmBuffer copy;
    EXPECT_TRUE(readFrom(copy, written(buffer)));
    EXPECT_TRUE(copy.isEqual(&buffer));
}

struct BrokenBuffer {
    const char* name;
    std::string bytes;
};

class EveryBrokenBuffer : public testing::TestWithParam<BrokenBuffer> {};
INSTANTIATE_TEST_SUITE_P(Broken, EveryBrokenBuffer,
                         testing::Values(BrokenBuffer{"Nothing", ""s}, BrokenBuffer{"NoFill", "\x03\0\0\0"s},
                                         BrokenBuffer{"ShortBytes", "\x03\0\0\0\x03\0\0\0ab"s},
                                         BrokenBuffer{"HugeSize", "\xff\xff\xff\x7f\x03\0\0\0abc"s},
                                         BrokenBuffer{"NegativeSize", "\xff\xff\xff\xff\0\0\0\0"s},
                                         BrokenBuffer{"NegativeFill", "\x03\0\0\0\xff\xff\xff\xff"s + "abc"},
                                         BrokenBuffer{"FillAboveSize", "\x03\0\0\0\x04\0\0\0abc"s}),
                         [](const auto& row) { return row.param.name; });

TEST_P(EveryBrokenBuffer, LeavesAnEmptyBuffer) {
    CmBuffer buffer;
    buffer.append("old", 3);
    EXPECT_FALSE(readFrom(buffer, GetParam().bytes));
    EXPECT_EQ(buffer.getSize(), 0);
    EXPECT_EQ(buffer.getFill(), 0);
}

} // namespace
} // namespace tessera::test
