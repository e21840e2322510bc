// The small services that other modules find in the registry by identifier.
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/IAllocator.h"
#include "foundation/object/IHostList.h"
#include "foundation/object/ILibraryLoader.h"
#include "foundation/object/IObjectOrder.h"
#include "foundation/text/IStringResult.h"
#include "support/ForeignObject.h"
#include "support/OrderedNumber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace tessera {
namespace {

using Foreign = test::ForeignObject<>;
using test::OrderedNumber;

template <class Interface>
FRefPtr<Interface> service() {
    return FRefPtr<Interface>::adopt(
        static_cast<Interface*>(ClassFactory::getInstance(true)->createInstance(Interface::iid)));
}

// A path as another module holds it.
class ForeignPath : public test::ForeignObject<IStringResult> {
public:
    explicit ForeignPath(const char* path) : text(path) {}
    void setText8(const char* newText) override { text = newText; }
    void setText16(const char16_t*) override {}
    const char* getText8() override { return text.c_str(); }
    const char16_t* getText16() override { return u""; }
    bool isWide() override { return false; }
    bool isEmpty() override { return text.empty(); }

    std::string text;
};

TEST(FObjectOrder, IsOneStaticObjectThatNoReleaseDestroys) {
    const auto first = service<IObjectOrder>();
    ASSERT_TRUE(first);
    for (int i = 0; i < 5; ++i) {
        first->release();
    }
    EXPECT_TRUE(service<IObjectOrder>() == first);
}

TEST(FObjectOrder, KnowsOneObjectThroughItsInterfaces) {
    const auto order = service<IObjectOrder>();
    const auto list = service<IHostList>();
    const auto identity = queryFor<IBaseUnknown>(list.get());
    EXPECT_EQ(order->isSameObject(list.get(), identity.get()), 0);
}

TEST(FObjectOrder, TellsForeignObjectsAndNullsApart) {
    const auto order = service<IObjectOrder>();
    Foreign a;
    Foreign b;
    CmObject object;
    EXPECT_EQ(order->isSameObject(&a, &a), 0);
    EXPECT_NE(order->isSameObject(&a, &b), 0);
    EXPECT_NE(order->isSameObject(&a, &object), 0);
    EXPECT_NE(order->isSameObject(&a, nullptr), 0);
    EXPECT_NE(order->isSameObject(nullptr, &object), 0);
    EXPECT_EQ(order->isSameObject(nullptr, nullptr), 0);
    EXPECT_EQ(a.references, 1u);
}

TEST(FObjectOrder, ComparesByTheObjectsOwnOrder) {
    const auto order = service<IObjectOrder>();
    OrderedNumber one(1);
    OrderedNumber two(2);
    std::int32_t result = 99;
    EXPECT_EQ(order->compareObjects(&one, &two, &result), kResultOk);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(order->compareObjects(&two, &one, &result), kResultOk);
    EXPECT_EQ(result, 1);
}

TEST(FObjectOrder, WhatCannotBeComparedIsABadArgument) {
    const auto order = service<IObjectOrder>();
    OrderedNumber one(1);
    Foreign foreign;
    std::int32_t result = 99;
    EXPECT_EQ(order->compareObjects(&one, &one, nullptr), kInvalidArgument);
    EXPECT_EQ(order->compareObjects(&one, nullptr, &result), kInvalidArgument);
    EXPECT_EQ(order->compareObjects(&foreign, &one, &result), kInvalidArgument);
    EXPECT_EQ(result, 99);
}

TEST(FAllocator, GivesResizesAndTakesBlocks) {
    const auto allocator = service<IAllocator>();
    ASSERT_TRUE(allocator);
    auto* block = static_cast<char*>(allocator->allocate(8));
    ASSERT_NE(block, nullptr);
    std::strcpy(block, "sound");
    block = static_cast<char*>(allocator->reallocate(block, 4096));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "sound");
    allocator->free(block);
    allocator->free(nullptr);
}

TEST(FLibraryLoader, LoadsOneLibraryAndFindsItsSymbols) {
    const auto loader = service<ILibraryLoader>();
    ASSERT_TRUE(loader);
    EXPECT_EQ(loader->getHandle(), nullptr);
    EXPECT_EQ(loader->getSymbol("tinyLibraryAnswer"), nullptr);
    ForeignPath path(TINY_LIBRARY);
    ASSERT_EQ(loader->load(&path), kResultOk);
    EXPECT_NE(loader->getHandle(), nullptr);
    auto* answer = reinterpret_cast<int (*)()>(loader->getSymbol("tinyLibraryAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(loader->getSymbol("noSuchSymbol"), nullptr);
    EXPECT_EQ(loader->load(&path), kResultFailure);
}

TEST(FLibraryLoader, TakesThePathInTheFrameworksForm) {
    std::string path = TINY_LIBRARY;
    std::replace(path.begin(), path.end(), '/', '\\');
    ForeignPath source(path.c_str());
    const auto loader = service<ILibraryLoader>();
    EXPECT_EQ(loader->load(&source), kResultOk);
}

TEST(FLibraryLoader, RefusesWhatIsNoLibraryOrNoPath) {
    const auto loader = service<ILibraryLoader>();
    ForeignPath missing("/no/such/library.so");
    ForeignPath empty("");
    Foreign noPath;
    EXPECT_EQ(loader->load(&missing), kResultFailure);
    EXPECT_EQ(loader->load(&empty), kResultFailure);
    ForeignPath meaningless("B\xe4r.so");
    EXPECT_EQ(loader->load(&meaningless), kResultFailure);
    EXPECT_EQ(loader->load(&noPath), kResultFailure);
    EXPECT_EQ(loader->load(nullptr), kResultFailure);
    EXPECT_EQ(loader->getHandle(), nullptr);
}

} // namespace
} // namespace tessera
