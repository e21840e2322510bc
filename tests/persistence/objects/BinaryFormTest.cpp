// The binary form of trees and documents, byte by byte, and what becomes of broken ones.
#include "persistence/objects/BinaryForm.h"

#include "foundation/containers/CmBuffer.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/streams/FMemoryStream.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace tessera {
namespace {

using namespace std::string_literals;

using test::newNode;
using test::ReportedErrors;
using test::StoredNode;

std::string word(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}
std::string u16(std::uint64_t value) {
    return word(value, 2);
}
std::string u32(std::uint64_t value) {
    return word(value, 4);
}
std::string u64(std::uint64_t value) {
    return word(value, 8);
}
std::string text(std::string_view characters) {
    return characters.empty() ? u32(0) : u32(characters.size() + 1) + std::string(characters) + '\0';
}
// What a node with this number stores, and nothing else.
std::string nodeTree(std::int64_t number) {
    return u32(1) + text("number") + u16(1) + u64(static_cast<std::uint64_t>(number));
}
std::string nodeRecord(std::uint64_t id, std::int64_t number) {
    return text("StoredNode") + u64(id) + nodeTree(number);
}
// A tree with one record.
std::string treeWith(const std::string& name, std::uint64_t type, const std::string& value) {
    return u32(1) + text(name) + u16(type) + value;
}
std::string treeWithTag(std::uint64_t tag, const std::string& value) {
    return treeWith("a", 2, u16(tag) + value);
}
std::uint64_t idOf(const CmObject& object) {
    return reinterpret_cast<std::uintptr_t>(&object);
}

std::string bytesOf(const FMemoryStream& stream) {
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}
std::string written(const FAttributes& tree) {
    FMemoryStream stream;
    EXPECT_TRUE(tree.write(stream));
    return bytesOf(stream);
}
bool readInto(FAttributes& tree, const std::string& bytes) {
    std::string copy = bytes;
    FMemoryStream stream(copy.data(), static_cast<std::int32_t>(copy.size()));
    return tree.read(stream);
}
std::string writtenDocument(const FAttributes& objects, const FAttributes& trees) {
    FMemoryStream stream;
    EXPECT_TRUE(saveBinary(stream, objects, trees));
    return bytesOf(stream);
}
bool readDocument(const std::string& bytes, FAttributes& objects, FAttributes& trees) {
    std::string copy = bytes;
    FMemoryStream stream(copy.data(), static_cast<std::int32_t>(copy.size()));
    return loadBinary(stream, objects, trees);
}

template <class T>
T* valueOf(const FAttributes& tree, const char* name) {
    const FStringIDAttribute* record = tree.find(name);
    return record != nullptr ? cmCast<T>(record->getObject()) : nullptr;
}

TEST(BinaryTree, AnEmptyOneIsACount) {
    const FAttributes tree;
    EXPECT_EQ(written(tree), u32(0));
}

TEST(BinaryTree, PlainValuesStandBehindTheirNameAndType) {
    FAttributes tree;
    tree.setInt("int", -2);
    tree.setFloat("float", 1.5);
    tree.setString("narrow", "take");
    tree.setString("wide", u"\u00e4");
    tree.setString("empty", "");
    EXPECT_EQ(written(tree), u32(5) + text("int") + u16(1) + u64(~std::uint64_t(1)) + text("float") + u16(4) +
                                 u64(0x3ff8000000000000) + text("narrow") + u16(8) + text("take") + text("wide") +
                                 u16(8) + u32(6) + "\xc3\xa4\0\xef\xbb\xbf"s + text("empty") + u16(8) + u32(0));
}

TEST(BinaryTree, MarksAndHoldingAreNotWritten) {
    FAttributes tree;
    tree.setInt("a", 1, AttributeFlags::kTransient | AttributeFlags::kHidden);
    EXPECT_EQ(written(tree), treeWith("a", 1, u64(1)));
    tree.find("a")->setString8("x", FAttributeValue::TextHolding::byReference);
    EXPECT_EQ(written(tree), treeWith("a", 8, text("x")));
}

TEST(BinaryTree, WhatHasNoValueIsNeitherWrittenNorCounted) {
    FAttributes tree;
    tree.setInt("pointer", 1);
    tree.find("pointer")->setPointer(&tree);
    tree.setObject("null", nullptr);
    const auto node = newNode(1);
    tree.setInt("foreign", 1);
    tree.find("foreign")->setForeign(static_cast<CmObject*>(node.get()), AttributeBits::kByReference);
    tree.setInt("a", 1);
    EXPECT_EQ(written(tree), treeWith("a", 1, u64(1)));
}

TEST(BinaryTree, ListsStandBehindTheirTagAndCount) {
    FAttributes ints;
    ints.appendInt("a", 1);
    ints.appendInt("a", -1);
    EXPECT_EQ(written(ints), treeWithTag(2, u32(2) + u64(1) + u64(~std::uint64_t(0))));
    FAttributes floats;
    floats.appendFloat("a", 1.5);
    EXPECT_EQ(written(floats), treeWithTag(3, u32(1) + u64(0x3ff8000000000000)));
    FAttributes narrow;
    narrow.appendString("a", "x", FAttributes::TextHolding::byReference);
    EXPECT_EQ(written(narrow), treeWithTag(4, u32(1) + text("x")));
    FAttributes wide;
    wide.appendString("a", "x");
    EXPECT_EQ(written(wide), treeWithTag(41, u32(1) + u32(5) + "x\0\xef\xbb\xbf"s));
    FAttributes trees;
    auto* sub = new FAttributes;
    sub->setInt("b", 2);
    trees.appendSub("a", sub);
    EXPECT_EQ(written(trees), treeWithTag(5, u32(1) + treeWith("b", 1, u64(2))));
}

TEST(BinaryTree, TreesAndBytesStandBehindTheirTag) {
    FAttributes tree;
    auto* sub = new FAttributes;
    sub->setInt("b", 2);
    tree.setObject("a", sub, AttributeHolding::owned);
    EXPECT_EQ(written(tree), treeWithTag(6, treeWith("b", 1, u64(2))));
    tree.setBinary("a", "take", 4, BinaryHolding::copied);
    EXPECT_EQ(written(tree), treeWithTag(7, u32(4) + "take"));
    tree.setBinary("a", "take", 4, BinaryHolding::byReference);
    EXPECT_EQ(written(tree), treeWithTag(7, u32(4) + "take"));
    const auto stream = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
    stream->write("take", 4);
    tree.setObject("a", stream.get());
    EXPECT_EQ(written(tree), treeWithTag(7, u32(4) + "take"));
    tree.setBinary("a", nullptr, 0, BinaryHolding::copied);
    EXPECT_EQ(written(tree), treeWithTag(7, u32(0)));
}

TEST(BinaryTree, AnObjectStandsWhereItIsMetFirst) {
    const auto node = newNode(5);
    FAttributes tree;
    tree.setObject("a", node.get());
    tree.setObject("b", node.get());
    EXPECT_EQ(written(tree), u32(2) + text("a") + u16(2) + u16(20) + nodeRecord(idOf(*node), 5) + text("b") + u16(2) +
                                 u16(21) + u64(idOf(*node)));
    FAttributes list;
    list.appendObject("a", node.get());
    list.appendObject("a", node.get());
    EXPECT_EQ(written(list),
              treeWithTag(201, u32(2) + u16(20) + nodeRecord(idOf(*node), 5) + u16(21) + u64(idOf(*node))));
}

TEST(BinaryTree, ValuesOfEveryKindComeBack) {
    FAttributes tree;
    tree.setInt("int", -2);
    tree.setFloat("float", 1.5);
    tree.setString("narrow", "take");
    tree.setString("wide", u"\u00e4");
    tree.setBinary("bytes", "take", 4, BinaryHolding::copied);
    tree.appendInt("ints", 1);
    tree.appendFloat("floats", 0.25);
    tree.appendString("texts", u"b");
    auto* sub = new FAttributes;
    sub->setInt("b", 2);
    tree.appendSub("subs", sub);
    tree.setAttributes("tree", *newNode(4));
    tree.setInt("int", 3, AttributeFlags::kAppend);
    const std::string bytes = written(tree);
    FAttributes read;
    read.setInt("before", 1);
    ASSERT_TRUE(readInto(read, bytes));
    EXPECT_EQ(read.getCount(), 11);
    EXPECT_EQ(written(read), bytes);
    EXPECT_TRUE(read.getObject("bytes")->isA("FMemoryStream"));
    EXPECT_EQ(read.getBinarySize("bytes"), 4);
    FString narrow;
    ASSERT_TRUE(read.getString("narrow", narrow));
    EXPECT_FALSE(narrow.isWide());
}

TEST(BinaryTree, EmptyListsComeBack) {
    const std::string bytes = treeWithTag(2, u32(0));
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, bytes));
    EXPECT_NE(tree.getList("a"), nullptr);
    EXPECT_EQ(written(tree), bytes);
}

TEST(BinaryTree, NarrowTextsOfAListBecomeWide) {
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, treeWithTag(4, u32(2) + text("x") + text(""))));
    FStringRef read;
    ASSERT_TRUE(tree.nextString("a", read));
    EXPECT_TRUE(read.isWide());
    EXPECT_TRUE(read == FStringRef(u"x"));
    ASSERT_TRUE(tree.nextString("a", read));
    EXPECT_TRUE(read.isEmpty());
}

TEST(BinaryTree, GoesInTheByteOrderOfItsStream) {
    FAttributes tree;
    tree.setInt("a", 1);
    FMemoryStream stream;
    stream.setSwap(1);
    ASSERT_TRUE(tree.write(stream));
    EXPECT_EQ(bytesOf(stream), "\0\0\0\1\0\0\0\2a\0\0\1\0\0\0\0\0\0\0\1"s);
    stream.rewind();
    FAttributes read;
    ASSERT_TRUE(read.read(stream));
    EXPECT_EQ(written(read), written(tree));
}

TEST(BinaryTree, TwoThatHoldAThirdGetTheSameOne) {
    const auto shared = newNode(3);
    const auto a = newNode(1);
    const auto b = newNode(2);
    a->next = shared;
    b->next = shared;
    FAttributes tree;
    tree.setObject("a", a.get());
    tree.setObject("b", b.get());
    FAttributes read;
    ASSERT_TRUE(readInto(read, written(tree)));
    auto* reference = valueOf<FXmlReference>(*valueOf<FXmlInstance>(read, "b")->getAttributes(), "next");
    auto* instance = valueOf<FXmlInstance>(*valueOf<FXmlInstance>(read, "a")->getAttributes(), "next");
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(reference->getTarget(), instance);
    const auto* first = static_cast<StoredNode*>(read.getObject("a"));
    const auto* second = static_cast<StoredNode*>(read.getObject("b"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->next, second->next);
    EXPECT_EQ(first->next->number, 3);
}

TEST(BinaryTree, ACircleOfObjectsIsWrittenAndRead) {
    const auto a = newNode(1);
    a->next = newNode(2);
    a->next->next = a;
    FAttributes tree;
    tree.setObject("a", a.get());
    const std::string bytes = written(tree);
    a->next->next.reset();
    FAttributes read;
    ASSERT_TRUE(readInto(read, bytes));
    auto* again = static_cast<StoredNode*>(read.getObject("a"));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->next->next, again);
    again->next->next.reset();
}

TEST(BinaryTree, WhatIsntBuiltKeepsItsID) {
    const std::string bytes =
        u32(2) + text("a") + u16(2) + u16(20) + nodeRecord(77, 5) + text("b") + u16(2) + u16(21) + u64(77);
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, bytes));
    EXPECT_EQ(written(tree), bytes);
}

TEST(BinaryTree, WhatIsBuiltIsTheLiveObject) {
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, u32(2) + text("a") + u16(2) + u16(20) + nodeRecord(77, 5) + text("b") + u16(2) +
                                   u16(21) + u64(77)));
    auto* node = static_cast<StoredNode*>(tree.getObject("b"));
    node->number = 6;
    EXPECT_EQ(written(tree), u32(2) + text("a") + u16(2) + u16(20) + nodeRecord(idOf(*node), 6) + text("b") + u16(2) +
                                 u16(21) + u64(idOf(*node)));
}

TEST(BinaryTree, AReferenceThatLedNowhereVanishes) {
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, treeWithTag(21, u64(99))));
    EXPECT_EQ(tree.getCount(), 1);
    EXPECT_EQ(tree.getObject("a"), nullptr);
    const std::string bytes = written(tree);
    EXPECT_EQ(bytes, treeWithTag(21, u64(0)));
    FAttributes read;
    ASSERT_TRUE(readInto(read, bytes));
    EXPECT_EQ(read.getCount(), 0);
    FAttributes list;
    ASSERT_TRUE(readInto(list, treeWithTag(201, u32(2) + u16(21) + u64(0) + u16(20) + nodeRecord(1, 5))));
    EXPECT_EQ(list.listCount("a"), 1);
}

TEST(BinaryTree, TheFirstOfAnIDIsMeant) {
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, u32(3) + text("a") + u16(2) + u16(20) + nodeRecord(7, 1) + text("b") + u16(2) + u16(20) +
                                   nodeRecord(7, 2) + text("c") + u16(2) + u16(21) + u64(7)));
    EXPECT_EQ(static_cast<StoredNode*>(tree.getObject("b"))->number, 2);
    EXPECT_EQ(static_cast<StoredNode*>(tree.getObject("c"))->number, 1);
}

TEST(BinaryTree, AnUnknownClassIsReportedAndLeftOut) {
    const ReportedErrors reported;
    const std::string unknown = text("NoSuchClass") + u64(5) + nodeTree(1);
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, u32(3) + text("a") + u16(2) + u16(20) + unknown + text("b") + u16(2) + u16(21) + u64(5) +
                                   text("c") + u16(2) + u16(201) + u32(2) + u16(20) + unknown + u16(20) +
                                   nodeRecord(6, 1)));
    EXPECT_EQ(tree.find("a"), nullptr);
    EXPECT_EQ(tree.getObject("b"), nullptr);
    EXPECT_EQ(tree.listCount("c"), 1);
    ASSERT_EQ(reported.errors().size(), 2u);
    EXPECT_EQ(reported.errors()[0], ReportedErrors::Error(-98, "NoSuchClass"));
    // One that is known and can't be created is no better.
    FAttributes other;
    ASSERT_TRUE(readInto(other, treeWithTag(20, text("CmContainer") + u64(5) + nodeTree(1))));
    EXPECT_EQ(other.getCount(), 0);
}

TEST(BinaryTree, ObjectsOfOlderProgramsHaveNoID) {
    FAttributes tree;
    ASSERT_TRUE(readInto(tree, treeWithTag(108, text("StoredNode") + nodeTree(5))));
    ASSERT_NE(tree.getObject("a"), nullptr);
    EXPECT_EQ(static_cast<StoredNode*>(tree.getObject("a"))->number, 5);
    FAttributes list;
    const ReportedErrors reported;
    ASSERT_TRUE(readInto(list, treeWithTag(101, u32(3) + text("StoredNode") + nodeTree(5) + text("NoSuchClass") +
                                                    nodeTree(6) + text("StoredNode") + nodeTree(7))));
    EXPECT_EQ(list.listCount("a"), 2);
    CmObject* object = nullptr;
    ASSERT_TRUE(list.nextObject("a", object) && list.nextObject("a", object));
    EXPECT_EQ(static_cast<StoredNode*>(object)->number, 7);
}

TEST(BinaryTree, WhatCantBeReadFails) {
    const struct {
        const char* what;
        std::string bytes;
    } rows[] = {
        {"a chained list", treeWithTag(1, u32(0))},
        {"a chained object", treeWithTag(8, u32(0))},
        {"an unknown tag", treeWithTag(9, u32(0))},
        {"tag 0", treeWithTag(0, u32(0))},
        {"an unknown type", treeWith("a", 16, u64(0))},
        {"no type", treeWith("a", 0, u64(0))},
        {"two types", treeWith("a", 9, u64(0))},
        {"a negative count", u32(0xffffffff)},
        {"a negative count of integers", treeWithTag(2, u32(0x80000000))},
        {"a negative size", treeWithTag(7, u32(0xffffffff))},
        {"a tree in a list of objects", treeWithTag(201, u32(1) + u16(6) + u32(0))},
        {"a text in place of an object", treeWithTag(201, u32(1) + u16(108) + text("StoredNode") + nodeTree(1))},
        {"more records than there are", u32(0x7fffffff) + text("a") + u16(1) + u64(0)},
        {"more integers than there are", treeWithTag(2, u32(0x7fffffff) + u64(1))},
        {"more floats than there are", treeWithTag(3, u32(0x7fffffff) + u64(1))},
        {"more texts than there are", treeWithTag(41, u32(0x7fffffff) + text("x"))},
        {"more trees than there are", treeWithTag(5, u32(0x7fffffff) + u32(0))},
        {"more bytes than there are", treeWithTag(7, u32(0x7fffffff) + "take")},
        {"more objects than there are", treeWithTag(201, u32(0x7fffffff) + u16(21) + u64(5))},
    };
    for (const auto& row : rows) {
        FAttributes tree;
        EXPECT_FALSE(readInto(tree, row.bytes)) << row.what;
    }
}

TEST(BinaryTree, AnyPieceOfOneFails) {
    FAttributes tree;
    tree.setInt("int", 1);
    tree.setString("text", u"take");
    tree.setBinary("bytes", "take", 4, BinaryHolding::copied);
    tree.appendInt("ints", 1);
    tree.appendString("texts", "x");
    tree.setAttributes("tree", *newNode(4));
    tree.setObject("node", newNode(4).get());
    tree.appendObject("nodes", newNode(4).get());
    const std::string whole = written(tree);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        FAttributes read;
        EXPECT_FALSE(readInto(read, whole.substr(0, size))) << size;
    }
}

TEST(BinaryTree, ATextCanBeLongerThanWhatCanBeRead) {
    for (const bool fits : {true, false}) {
        FAttributes tree;
        tree.setString("a", std::string(fits ? 49999 : 50000, 'x').c_str());
        FAttributes read;
        EXPECT_EQ(readInto(read, written(tree)), fits);
        FAttributes named;
        named.setInt(std::string(fits ? 49999 : 50000, 'x').c_str(), 1);
        EXPECT_EQ(readInto(read, written(named)), fits);
    }
}

// So many trees in each other, as values and list elements by turns.
FRefPtr<FAttributes> nestedTrees(int depth) {
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    for (int i = 1; i < depth; ++i) {
        auto outer = FRefPtr<FAttributes>::adopt(new FAttributes);
        if (i % 2 == 0) {
            outer->setObject("a", tree.detach(), AttributeHolding::owned);
        } else {
            outer->appendSub("a", tree.detach());
        }
        tree = outer;
    }
    return tree;
}

TEST(BinaryTree, NestingEndsAtTheDeepest) {
    const auto deepest = nestedTrees(FAttributes::kDeepest);
    const std::string bytes = written(*deepest);
    FAttributes read;
    EXPECT_TRUE(readInto(read, bytes));
    EXPECT_EQ(written(read), bytes);
    const auto tooDeep = nestedTrees(FAttributes::kDeepest + 1);
    FMemoryStream stream;
    EXPECT_FALSE(tooDeep->write(stream));
    EXPECT_FALSE(readInto(read, treeWithTag(6, bytes)));
}

// How far apart the frames lie on the stack from which it is read.
class FrameMeasure : public FMemoryStream {
public:
    using FMemoryStream::FMemoryStream;
    using FMemoryStream::read;
    std::int32_t read(void* buffer, std::int32_t size) override {
        const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        lowest_ = std::min(lowest_, frame);
        highest_ = std::max(highest_, frame);
        return FMemoryStream::read(buffer, size);
    }
    std::uintptr_t span() const { return highest_ - lowest_; }

private:
    std::uintptr_t lowest_ = std::numeric_limits<std::uintptr_t>::max();
    std::uintptr_t highest_ = 0;
};

TEST(BinaryTree, DepthCostsNoStack) {
    const std::string starts[] = {
        u32(1) + text("a") + u16(2) + u16(6),
        u32(1) + text("a") + u16(2) + u16(5) + u32(1),
        u32(1) + text("a") + u16(2) + u16(20) + text("StoredNode") + u64(5),
        u32(1) + text("a") + u16(2) + u16(201) + u32(1) + u16(20) + text("StoredNode") + u64(5),
        u32(1) + text("a") + u16(2) + u16(101) + u32(1) + text("StoredNode"),
    };
    for (const std::string& start : starts) {
        std::string bytes;
        for (int i = 1; i < FAttributes::kDeepest; ++i) {
            bytes += start;
        }
        bytes += u32(0);
        FrameMeasure stream(static_cast<const void*>(bytes.data()), static_cast<std::int32_t>(bytes.size()));
        FAttributes tree;
        EXPECT_TRUE(tree.read(stream));
        // As much as the ways to the different values differ by.
        EXPECT_LT(stream.span(), 8192u);
    }
}

TEST(BinaryTree, ADocumentOfAHundredThousandLevelsIsRefused) {
    std::string bytes;
    for (int i = 0; i < 100000; ++i) {
        bytes += u32(1) + text("a") + u16(2) + u16(i % 2 == 0 ? 6 : 5);
        if (i % 2 != 0) {
            bytes += u32(1);
        }
    }
    FAttributes tree;
    EXPECT_FALSE(readInto(tree, bytes + u32(0)));
}

TEST(BinaryTree, ObjectsBeyondTheDeepestAreNotWritten) {
    FRefPtr<StoredNode> first = newNode(0);
    for (int i = 1; i < FAttributes::kDeepest; ++i) {
        const auto node = newNode(i);
        node->next = first;
        first = node;
    }
    FAttributes tree;
    tree.setObject("a", first.get());
    FMemoryStream stream;
    EXPECT_FALSE(tree.write(stream));
    tree.setObject("a", first->next.get());
    EXPECT_TRUE(tree.write(stream));
}

TEST(BinaryTree, AnObjectThatRefusesFailsTheWholeWrite) {
    const auto node = newNode(1);
    node->refusesStoring = true;
    FAttributes tree;
    tree.appendObject("a", newNode(2).get());
    tree.appendObject("a", node.get());
    FMemoryStream stream;
    EXPECT_FALSE(tree.write(stream));
}

TEST(BinaryTree, AFullStreamFailsTheWrite) {
    FAttributes tree;
    tree.setInt("int", 1);
    tree.setString("text", u"take");
    tree.setString("long", std::string(300, 'x').c_str());
    tree.setBinary("bytes", "take", 4, BinaryHolding::copied);
    tree.appendInt("ints", 1);
    tree.appendFloat("floats", 1);
    tree.appendString("texts", "x");
    tree.setObject("node", newNode(4).get());
    const std::string whole = written(tree);
    std::string room(whole.size(), '\0');
    for (std::size_t size = 0; size < whole.size(); ++size) {
        FMemoryStream stream(room.data(), static_cast<std::int32_t>(size));
        EXPECT_FALSE(tree.write(stream)) << size;
    }
}

// Makes objects for its tree that nobody else holds.
class Maker : public CmClass<Maker, CmObject> {
public:
    static inline FMetaClass metaClass{"Maker", &CmObject::metaClass, &createCmObject<Maker>};

    bool storeAttributes(FAttributes& attributes) const override {
        return attributes.setObject("made", new StoredNode(1), AttributeHolding::owned);
    }
};

TEST(BinaryTree, ObjectsMadeForATreeAreToldApart) {
    constexpr int kMakers = 50;
    FAttributes tree;
    for (int i = 0; i < kMakers; ++i) {
        tree.appendObject("makers", new Maker, AttributeHolding::owned);
    }
    FAttributes read;
    ASSERT_TRUE(readInto(read, written(tree)));
    const auto* makers = cmCast<FObjectList>(read.getList("makers"));
    ASSERT_EQ(makers->count(), kMakers);
    for (int i = 0; i < kMakers; ++i) {
        EXPECT_NE(valueOf<FXmlInstance>(*static_cast<FXmlInstance*>(makers->at(i))->getAttributes(), "made"), nullptr);
    }
}

TEST(BinaryDocument, NamesItsObjectsAndTrees) {
    const auto a = newNode(1);
    const auto b = newNode(2);
    FAttributes objects;
    objects.setObject("first", a.get());
    objects.setObject("again", a.get());
    objects.setObject("second", b.get());
    FAttributes trees;
    trees.setObject("stores itself", b.get());
    auto* view = new FAttributes;
    view->setInt("zoom", 3);
    trees.setObject("view", view, AttributeHolding::owned);
    const std::string bytes = u32(3) + text("first") + u64(idOf(*a)) + nodeRecord(idOf(*a), 1) + text("again") +
                              u64(idOf(*a)) + text("second") + u64(idOf(*b)) + nodeRecord(idOf(*b), 2) + u32(2) +
                              text("stores itself") + nodeTree(2) + text("view") + treeWith("zoom", 1, u64(3));
    EXPECT_EQ(writtenDocument(objects, trees), bytes);

    FAttributes readObjects;
    FAttributes readTrees;
    ASSERT_TRUE(readDocument(bytes, readObjects, readTrees));
    EXPECT_EQ(writtenDocument(readObjects, readTrees), bytes) << "nothing was built, so the IDs stay";
    EXPECT_EQ(readObjects.getObject("first"), readObjects.getObject("again"));
    EXPECT_EQ(static_cast<StoredNode*>(readObjects.getObject("second"))->number, 2);
    std::int64_t zoom = 0;
    EXPECT_TRUE(readTrees.getTree("view")->getInt("zoom", zoom));
    EXPECT_EQ(zoom, 3);
}

TEST(BinaryDocument, ARootThatCameInAnotherHasNoRecordOfItsOwn) {
    const auto outer = newNode(1);
    const auto inner = newNode(2);
    outer->next = inner;
    FAttributes objects;
    objects.setObject("outer", outer.get());
    objects.setObject("inner", inner.get());
    const std::string bytes = writtenDocument(objects, FAttributes());
    EXPECT_TRUE(bytes.ends_with(text("inner") + u64(idOf(*inner)) + u32(0)));
    FAttributes readObjects;
    FAttributes readTrees;
    ASSERT_TRUE(readDocument(bytes, readObjects, readTrees));
    const auto* read = static_cast<StoredNode*>(readObjects.getObject("outer"));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->next, static_cast<StoredNode*>(readObjects.getObject("inner")));
}

TEST(BinaryDocument, ARootOfAnUnknownClassHasNoObject) {
    const ReportedErrors reported;
    const std::string unknown = text("NoSuchClass") + u64(5) + nodeTree(1);
    FAttributes objects;
    FAttributes trees;
    ASSERT_TRUE(readDocument(u32(3) + text("a") + u64(5) + unknown + text("again") + u64(5) + text("b") + u64(6) +
                                 nodeRecord(6, 2) + u32(0),
                             objects, trees));
    EXPECT_EQ(objects.getObject("a"), nullptr);
    EXPECT_EQ(objects.getObject("again"), nullptr);
    EXPECT_NE(objects.getObject("b"), nullptr);
    EXPECT_EQ(reported.errors().size(), 1u);
}

TEST(BinaryDocument, RootsOfOneIDMeanTheFirstObject) {
    const auto instance = [](std::int64_t number) {
        auto* tree = new FAttributes;
        tree->setInt("number", number);
        return FRefPtr<FXmlInstance>::adopt(new FXmlInstance(7, "StoredNode", tree));
    };
    const auto first = instance(1);
    const auto second = instance(2);
    FAttributes objects;
    objects.setObject("a", first.get());
    objects.setObject("b", second.get());
    auto* holder = new FAttributes;
    holder->setObject("c", second.get());
    FAttributes trees;
    trees.setObject("tree", holder, AttributeHolding::owned);
    const std::string bytes = writtenDocument(objects, trees);
    EXPECT_EQ(bytes, u32(2) + text("a") + u64(7) + nodeRecord(7, 1) + text("b") + u64(7) + u32(1) + text("tree") +
                         treeWith("c", 2, u16(20) + nodeRecord(7, 2)));
    FAttributes readObjects;
    FAttributes readTrees;
    ASSERT_TRUE(readDocument(bytes, readObjects, readTrees));
    EXPECT_EQ(static_cast<StoredNode*>(readObjects.getObject("b"))->number, 1);
    EXPECT_EQ(readObjects.getObject("a"), readObjects.getObject("b"));
    EXPECT_EQ(static_cast<StoredNode*>(readTrees.getTree("tree")->getObject("c"))->number, 2)
        << "within a tree it stands for itself";
}

TEST(BinaryDocument, RootsWithoutAnObjectAreNotWritten) {
    FAttributes objects;
    objects.setObject("null", nullptr);
    objects.setObject("lost", new FXmlReference(5), AttributeHolding::owned);
    FAttributes trees;
    trees.setObject("null", nullptr);
    EXPECT_EQ(writtenDocument(objects, trees), u32(0) + u32(0));
}

TEST(BinaryDocument, AnyPieceOfOneFails) {
    const auto node = newNode(1);
    FAttributes objects;
    objects.setObject("a", node.get());
    FAttributes trees;
    trees.setObject("b", node.get());
    const std::string whole = writtenDocument(objects, trees);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        FAttributes readObjects;
        FAttributes readTrees;
        EXPECT_FALSE(readDocument(whole.substr(0, size), readObjects, readTrees)) << size;
    }
    std::string room(whole.size(), '\0');
    for (std::size_t size = 0; size < whole.size(); ++size) {
        FMemoryStream stream(room.data(), static_cast<std::int32_t>(size));
        EXPECT_FALSE(saveBinary(stream, objects, trees)) << size;
    }
}

} // namespace
} // namespace tessera
