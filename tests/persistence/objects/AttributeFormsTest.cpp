// How the classes of the framework store themselves into a tree of named values.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmBTree.h"
#include "foundation/containers/CmBTreeDictionary.h"
#include "foundation/containers/CmHashTable.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/containers/CmQueue.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/IComponentSource.h"
#include "foundation/object/IPersistentObject.h"
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FXmlObject.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/ForeignObject.h"
#include "tests/persistence/attributes/StoredNode.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace tessera {
namespace {

using test::newNode;
using test::StoredNode;

constexpr FUIDBytes kSample = "{01234567-89AB-CDEF-1032-547698BADCFE}"_uid;
constexpr char kSampleText[] = "0123456789ABCDEF1032547698BADCFE";

std::string textAt(const FAttributes& tree, const char* name) {
    FString text;
    return tree.getString(name, text) ? text.text8() : "(none)";
}

// The tree as it comes out of a stream.
void sendThroughStream(const FAttributes& tree, FAttributes& read) {
    FMemoryStream stream;
    ASSERT_TRUE(tree.write(stream));
    stream.rewind();
    ASSERT_TRUE(read.read(stream));
}

TEST(CmUIDAttributes, IsTheTextOfTheWords) {
    FAttributes tree;
    ASSERT_TRUE(CmUID(kSample).storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 1);
    EXPECT_EQ(textAt(tree, "GUID"), kSampleText);
    CmUID read;
    ASSERT_TRUE(read.restoreAttributes(tree));
    EXPECT_TRUE(read.bytes() == kSample);
}

TEST(CmUIDAttributes, WithoutTheTextItStaysAsItWas) {
    FAttributes tree;
    CmUID uid(kSample);
    EXPECT_FALSE(uid.restoreAttributes(tree));
    tree.setString("GUID", "0123");
    EXPECT_FALSE(uid.restoreAttributes(tree));
    tree.setInt("GUID", 1);
    EXPECT_FALSE(uid.restoreAttributes(tree));
    EXPECT_TRUE(uid.bytes() == kSample);
}

TEST(CmStringAttributes, IsTheTextInItsWidth) {
    for (const bool wide : {false, true}) {
        FAttributes tree;
        ASSERT_TRUE((wide ? CmString(u"t\u00e4ke") : CmString("take")).storeAttributes(tree));
        EXPECT_EQ(tree.getCount(), 1);
        CmString read("before");
        ASSERT_TRUE(read.restoreAttributes(tree));
        EXPECT_EQ(read.string().isWide(), wide);
        EXPECT_TRUE(read.string() == (wide ? FStringRef(u"t\u00e4ke") : FStringRef("take")));
    }
    CmString text("before");
    FAttributes empty;
    EXPECT_FALSE(text.restoreAttributes(empty));
    EXPECT_STREQ(text.getText8(), "before");
    ASSERT_TRUE(CmString().storeAttributes(empty));
    ASSERT_TRUE(text.restoreAttributes(empty));
    EXPECT_TRUE(text.isEmpty());
}

TEST(FStringAttributes, TakesTextsAlone) {
    FAttributes tree;
    tree.setInt("number", 5);
    tree.setString("text", u"take");
    FString text("before");
    EXPECT_FALSE(text.getAttribute(tree, "number"));
    EXPECT_FALSE(text.getAttribute(tree, "missing"));
    EXPECT_STREQ(text.text8(), "before");
    EXPECT_TRUE(text.getAttribute(tree, "text"));
    EXPECT_TRUE(text == FStringRef("take"));
    EXPECT_TRUE(FString("other").setAttribute(tree, "text"));
    EXPECT_EQ(textAt(tree, "text"), "other");
    EXPECT_EQ(tree.getCount(), 2);
}

TEST(FMemoryStreamAttributes, IsItsBytes) {
    FMemoryStream stream;
    stream.writeString8("take", false);
    FAttributes tree;
    ASSERT_TRUE(stream.storeAttributes(tree));
    EXPECT_EQ(tree.getBinarySize("Data"), 4);
    char foreign[] = "before";
    FMemoryStream read(foreign, 6);
    read.seek(3, SeekMode::fromStart);
    ASSERT_TRUE(read.restoreAttributes(tree));
    EXPECT_TRUE(read.ownsMemory());
    EXPECT_FALSE(read.isReadOnly());
    EXPECT_EQ(read.tell(), 0);
    ASSERT_EQ(read.getSize(), 4);
    EXPECT_EQ(std::memcmp(read.getData(), "take", 4), 0);
    EXPECT_STREQ(foreign, "before");
}

TEST(FMemoryStreamAttributes, EmptyOnesComeBackAndMissingOnesFail) {
    FAttributes tree;
    FMemoryStream read;
    read.writeString8("before", false);
    EXPECT_FALSE(read.restoreAttributes(tree));
    EXPECT_EQ(read.getSize(), 6);
    ASSERT_TRUE(FMemoryStream().storeAttributes(tree));
    ASSERT_TRUE(read.restoreAttributes(tree));
    EXPECT_EQ(read.getSize(), 0);
}

template <class Container>
class ContainerAttributes : public testing::Test {};

using Containers = testing::Types<CmArray, CmOrderedArray, CmLinkedList, CmQueue, CmBTree, CmHashTable>;
TYPED_TEST_SUITE(ContainerAttributes, Containers);

TYPED_TEST(ContainerAttributes, AreTheOwnershipAndAListOfTheElements) {
    TypeParam container;
    container.setOwnership(CmOwnership::owner);
    for (const char* text : {"b", "a", "c"}) {
        container.add(new CmString(text));
    }
    FAttributes tree;
    ASSERT_TRUE(container.storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 2);
    std::int64_t ownership = 0;
    EXPECT_TRUE(tree.getInt("ownership", ownership));
    EXPECT_EQ(ownership, 1);
    EXPECT_EQ(tree.listCount("obj"), 3);

    FAttributes read;
    sendThroughStream(tree, read);
    TypeParam copy;
    ASSERT_TRUE(copy.restoreAttributes(read));
    read.removeAll();
    EXPECT_EQ(copy.getOwnership(), CmOwnership::owner);
    ASSERT_EQ(copy.getCount(), 3);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(copy.at(i)->isEqual(container.at(i))) << i;
        EXPECT_EQ(copy.at(i)->getReferenceCount(), 1u);
    }
}

TEST(CmContainerAttributes, WithoutOwnershipTheListStandsAlone) {
    const auto node = newNode(1);
    CmArray array;
    array.add(node.get());
    FAttributes tree;
    ASSERT_TRUE(array.storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 1);
    EXPECT_STREQ(tree.getName(0), "obj");
    FAttributes empty;
    ASSERT_TRUE(CmArray().storeAttributes(empty));
    EXPECT_EQ(empty.getCount(), 0);
    ASSERT_TRUE(array.restoreAttributes(empty));
    EXPECT_EQ(array.getCount(), 1) << "elements come to those that are there";
}

TEST(CmContainerAttributes, AddsToWhatIsThere) {
    CmArray source;
    source.setOwnership(CmOwnership::shared);
    const auto a = newNode(1);
    const auto b = newNode(2);
    source.add(a.get());
    FAttributes tree;
    ASSERT_TRUE(source.storeAttributes(tree));
    {
        CmArray target;
        target.setOwnership(CmOwnership::shared);
        target.add(b.get());
        ASSERT_TRUE(target.restoreAttributes(tree));
        EXPECT_EQ(target.at(0), b.get());
        EXPECT_EQ(target.at(1), a.get());
        EXPECT_EQ(target.getOwnership(), CmOwnership::shared);
    }
    tree.removeAll();
    source.removeAll();
    EXPECT_EQ(a->getReferenceCount(), 1u);
    EXPECT_EQ(b->getReferenceCount(), 1u);
}

TEST(CmContainerAttributes, AnElementThatCantBeHadIsPassedOver) {
    const test::ReportedErrors reported;
    FAttributes tree;
    tree.setInt("ownership", 1);
    tree.appendObject("obj", newNode(1).get());
    tree.appendObject("obj", new FXmlObject(5), AttributeHolding::owned);
    tree.appendObject("obj", newNode(2).get());
    CmArray array;
    ASSERT_TRUE(array.restoreAttributes(tree));
    EXPECT_EQ(array.getCount(), 2);
}

TEST(CmContainerAttributes, AnElementThatRefusesFailsTheWrite) {
    const auto node = newNode(1);
    node->refusesStoring = true;
    CmArray array;
    array.add(node.get());
    FAttributes tree;
    FMemoryStream stream;
    EXPECT_TRUE(array.storeAttributes(tree));
    EXPECT_FALSE(tree.write(stream));
}

TEST(CmContainerAttributes, WhatDoesntFitLeavesTheContainerAsItWas) {
    CmArray source;
    source.setOwnership(CmOwnership::owner);
    source.add(new StoredNode(1));
    source.add(new StoredNode(2));
    FAttributes tree;
    ASSERT_TRUE(source.storeAttributes(tree));
    CmArray full(1, CmArray::kFixed);
    EXPECT_FALSE(full.restoreAttributes(tree));
    EXPECT_EQ(full.getCount(), 0);
    EXPECT_EQ(full.getOwnership(), CmOwnership::none);
    tree.removeAll();
    EXPECT_EQ(source.at(0)->getReferenceCount(), 1u);
    EXPECT_EQ(source.at(1)->getReferenceCount(), 1u);
}

// An object of another module: a class, and one number.
class ForeignNode : public test::ForeignObject<IPersistentObject> {
public:
    FResult getClassUID(FUIDBytes& uid) override {
        uid = kSample;
        return classAnswer;
    }
    FResult saveAttributes(IAttributes* attributes) override {
        FVariant value(number);
        return attributes->set("number", value) == kResultOk ? saveAnswer : kResultFailure;
    }
    FResult loadAttributes(IAttributes* attributes) override {
        FVariant value;
        if (attributes->get("number", value) != kResultOk) {
            return kResultFailure;
        }
        number = value.integer();
        return kResultOk;
    }

    std::int64_t number = 0;
    FResult classAnswer = kResultOk;
    FResult saveAnswer = kResultOk;
};

// Gives the one object that it was told.
class OneComponent : public test::ForeignObject<IComponentSource> {
public:
    IBaseUnknown* createByIdentifier(const FUIDBytes& uid) override {
        if (component == nullptr || !(uid == kSample)) {
            return nullptr;
        }
        component->addRef();
        return component;
    }
    std::int32_t count(const char*) override { return 0; }
    IBaseUnknown* createAt(const char*, std::int32_t) override { return nullptr; }
    void releaseInstance(IBaseUnknown* instance) override { instance->release(); }

    IBaseUnknown* component = nullptr;
};

OneComponent* presentSource = nullptr;

void* shareSource() {
    if (presentSource == nullptr) {
        return nullptr;
    }
    presentSource->addRef();
    return static_cast<IComponentSource*>(presentSource);
}

const FMetaClass sourceRecord(nullptr, nullptr, &shareSource, IComponentSource::iid);

class ForeignForms : public testing::Test {
protected:
    ForeignForms() : delegate(&saved) {
        saved.number = 42;
        source.component = &loaded;
        presentSource = &source;
    }
    ~ForeignForms() override {
        presentSource = nullptr;
        EXPECT_EQ(source.references, 1u);
    }

    bool restores(FAttributes& tree) {
        CmDelegatingUnknown read;
        return read.restoreAttributes(tree);
    }

    ForeignNode saved;
    ForeignNode loaded;
    OneComponent source;
    CmDelegatingUnknown delegate;
};

TEST_F(ForeignForms, AreTheClassAndWhatTheObjectSaved) {
    FAttributes tree;
    ASSERT_TRUE(delegate.storeAttributes(tree));
    EXPECT_EQ(tree.getCount(), 2);
    EXPECT_EQ(textAt(tree, "GUID"), kSampleText);
    ASSERT_NE(tree.getTree("ObjData"), nullptr);
    std::int64_t number = 0;
    EXPECT_TRUE(tree.getTree("ObjData")->getInt("number", number));
    EXPECT_EQ(number, 42);

    test::ForeignObject<> before;
    CmDelegatingUnknown read(&before);
    ASSERT_TRUE(read.restoreAttributes(tree));
    EXPECT_EQ(read.getObject(), &loaded);
    EXPECT_EQ(loaded.number, 42);
    EXPECT_EQ(before.references, 1u);
    EXPECT_EQ(loaded.references, 2u);
}

TEST_F(ForeignForms, OnAStreamTheIdentifierIsThatOfTheMemory) {
    FMemoryStream stream;
    ASSERT_TRUE(delegate.write(stream));
    const char bytes[] = "\x21\0\0\0"
                         "67452301AB89EFCD1032547698BADCFE\0"
                         "\x01\0\0\0\x07\0\0\0number\0\x01\0\x2a\0\0\0\0\0\0";
    ASSERT_EQ(stream.getSize(), static_cast<std::int32_t>(sizeof bytes));
    EXPECT_EQ(std::memcmp(stream.getData(), bytes, sizeof bytes), 0);
    stream.rewind();
    CmDelegatingUnknown read;
    ASSERT_TRUE(read.read(stream));
    EXPECT_EQ(read.getObject(), &loaded);
    EXPECT_EQ(loaded.number, 42);
}

TEST_F(ForeignForms, AValueOfAMessageIsWrittenInTheWrapper) {
    FAttributeValue value;
    value.setForeign(&saved, AttributeBits::kByReference);
    FMemoryStream stream;
    ASSERT_TRUE(value.write(stream));
    stream.rewind();
    FAttributeValue read;
    ASSERT_TRUE(read.read(stream));
    EXPECT_EQ(read.getForeign(), &loaded);
}

TEST_F(ForeignForms, AnObjectThatCantSaveItselfFails) {
    FAttributes tree;
    FMemoryStream stream;
    test::ForeignObject<> mute;
    EXPECT_FALSE(CmDelegatingUnknown(&mute).storeAttributes(tree));
    EXPECT_FALSE(CmDelegatingUnknown().write(stream));
    saved.classAnswer = kResultFalse;
    EXPECT_FALSE(delegate.storeAttributes(tree));
    saved.classAnswer = kResultOk;
    saved.saveAnswer = kResultFailure;
    EXPECT_FALSE(delegate.write(stream));
    EXPECT_EQ(tree.getCount(), 0);
    EXPECT_EQ(stream.getSize(), 0);
}

TEST_F(ForeignForms, WithoutASourceOrTheClassThereIsNoObject) {
    FAttributes tree;
    ASSERT_TRUE(delegate.storeAttributes(tree));
    source.component = nullptr;
    EXPECT_FALSE(restores(tree));
    presentSource = nullptr;
    EXPECT_FALSE(restores(tree));
    presentSource = &source;
    test::ForeignObject<> mute;
    source.component = &mute;
    EXPECT_FALSE(restores(tree));
    EXPECT_EQ(mute.references, 1u);
}

TEST_F(ForeignForms, ATreeThatLacksAPartFails) {
    for (const char* part : {"GUID", "ObjData"}) {
        FAttributes tree;
        ASSERT_TRUE(delegate.storeAttributes(tree));
        ASSERT_TRUE(tree.remove(part));
        EXPECT_FALSE(restores(tree)) << part;
    }
    FAttributes tree;
    ASSERT_TRUE(delegate.storeAttributes(tree));
    tree.getTree("ObjData")->removeAll();
    EXPECT_FALSE(restores(tree));
}

TEST_F(ForeignForms, ADocumentCarriesWhatAnotherModuleSaved) {
    FAttributes tree;
    FVariant value(&saved);
    ASSERT_EQ(tree.set("foreign", value), kResultOk);
    FAttributes read;
    sendThroughStream(tree, read);
    ASSERT_EQ(read.get("foreign", value), kResultOk);
    EXPECT_EQ(value.object(), &loaded);
}

} // namespace
} // namespace tessera
