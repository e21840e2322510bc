// Whatever class is registered in any layer, now or later: a fresh object of it that is saved comes back the same, on a
// stream and as a tree of named values.
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/streams/FMemoryStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera {
namespace {

using testing::UnorderedElementsAre;

std::string bytesOf(const FMemoryStream& stream) {
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

std::string bytesOf(const FAttributes& tree) {
    FMemoryStream stream;
    EXPECT_TRUE(tree.write(stream));
    return bytesOf(stream);
}

// Calls check with the name of each class that is created by it, and not under an alias, and an object of it.
template <class Check>
void sweep(Check check) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    for (const FMetaClass* record : registry.getRecords()) {
        const auto object = FRefPtr<CmObject>::adopt(registry.createObject(record->getName()));
        if (object && object->getMetaClass() == record) {
            SCOPED_TRACE(record->getName());
            check(record->getName(), *object);
        }
    }
}

FRefPtr<CmObject> anotherOf(const char* name) {
    return FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject(name));
}

TEST(ClassSweep, AFreshObjectOfEachClassIsWrittenAndReadBackTheSame) {
    std::vector<std::string> withoutForm;
    sweep([&](const char* name, const CmObject& object) {
        FMemoryStream first;
        if (!object.write(first)) {
            withoutForm.emplace_back(name);
            return;
        }
        first.rewind();
        const auto again = anotherOf(name);
        EXPECT_TRUE(again->read(first));
        EXPECT_EQ(first.tell(), first.getSize()) << "all of the form is read";
        FMemoryStream second;
        EXPECT_TRUE(again->write(second));
        EXPECT_EQ(bytesOf(second), bytesOf(first));
    });
    // These hold nothing when they are fresh, and nothing has no stream form.
    EXPECT_THAT(withoutForm, UnorderedElementsAre("CmDelegatingUnknown", "FAttributeValue", "FIntIDAttribute",
                                                  "FStringIDAttribute"));
}

TEST(ClassSweep, AFreshObjectOfEachClassWithNamedValuesIsStoredAndRestoredTheSame) {
    std::vector<std::string> withForm;
    sweep([&](const char* name, const CmObject& object) {
        FAttributes first;
        if (!object.storeAttributes(first)) {
            return;
        }
        withForm.emplace_back(name);
        const std::string stored = bytesOf(first);
        const auto again = anotherOf(name);
        EXPECT_TRUE(again->restoreAttributes(first));
        FAttributes second;
        EXPECT_TRUE(again->storeAttributes(second));
        EXPECT_EQ(bytesOf(second), stored);
    });
    EXPECT_THAT(withForm, UnorderedElementsAre("CmString", "CmUID", "CmLinkedList", "CmQueue", "CmStack", "CmArray",
                                               "CmOrderedArray", "CmBTree", "CmBTreeDictionary", "CmHashTable",
                                               "CmTime", "CmDate", "UIntValue", "FFileType", "FPath", "FNPath", "FUrl",
                                               "FAttributes", "FRegistryBackup", "FRegistryEntry", "FMemoryStream"));
}

} // namespace
} // namespace tessera
