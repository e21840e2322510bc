// The records of all layers together: the whole tree of classes. Whoever adds a class with a record adds its row.
#include "support/ClassRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tessera {
namespace {

using testing::UnorderedElementsAreArray;

enum class Made { byName, notByName };

struct TreeRow {
    const char* name;
    const char* parent; // null for none
    Made made;
    const char* persistentName = nullptr; // null where it is the name
};

constexpr TreeRow kTree[] = {
    {"CmObject", nullptr, Made::byName},
    {"UHostList", "CmObject", Made::byName},
    {"FMessage", "CmObject", Made::byName},
    {"CmString", "CmObject", Made::byName},
    {"FAttributeValue", "CmObject", Made::byName},
    {"CmBuffer", "CmObject", Made::byName},
    {"CmDelegatingUnknown", "CmObject", Made::byName},
    {"CmUID", "CmObject", Made::byName},
    {"CmAssociation", "CmObject", Made::byName},
    {"FModuleBase", "CmObject", Made::byName},
    {"CmTime", "CmObject", Made::byName},
    {"CmDate", "CmObject", Made::byName},
    {"UValue", "CmObject", Made::byName, "Binding::Value"},
    {"FFileType", "CmObject", Made::byName},
    {"FPath", "CmObject", Made::byName},
    {"FAttributes", "CmObject", Made::byName, "Attributes"},
    {"FRegistryBackup", "CmObject", Made::byName},
    {"FRegistryEntry", "CmObject", Made::byName},
    {"CmContainer", "CmObject", Made::notByName},
    {"FFileSystem", "CmObject", Made::notByName},
    {"FStream", "CmObject", Made::notByName},
    {"CmLinkedList", "CmContainer", Made::byName},
    {"CmOrderedArray", "CmContainer", Made::byName},
    {"CmBTree", "CmContainer", Made::byName},
    {"CmArray", "CmContainer", Made::byName},
    {"CmHashTable", "CmContainer", Made::byName},
    {"CmQueue", "CmLinkedList", Made::byName},
    {"CmStack", "CmLinkedList", Made::byName},
    {"CmBTreeDictionary", "CmBTree", Made::byName},
    {"FIntIDAttribute", "FAttributeValue", Made::byName},
    {"FStringIDAttribute", "FAttributeValue", Made::byName},
    {"FModule", "FModuleBase", Made::byName},
    {"UIntValue", "UValue", Made::byName, "Binding::IntValue"},
    {"FNPath", "FPath", Made::byName},
    {"FUrl", "FPath", Made::byName},
    {"FMemoryStream", "FStream", Made::byName},
    {"FFileStream", "FStream", Made::byName},

    // A second name for a class above: made like it, without a place in the tree.
    {"Attributes", nullptr, Made::byName},
    {"Binding::Value", nullptr, Made::byName},
    {"Binding::IntValue", nullptr, Made::byName},

    // Known by name alone.
    {"FPostedMessage", "CmObject", Made::notByName},
    {"FMessenger", "CmObject", Made::notByName},
    {"UIntDefValue", "UIntValue", Made::notByName, "Binding::IntDefValue"},
    {"UPlugTarget", "CmObject", Made::notByName},
    {"UFormatedValue", "UValue", Made::notByName},
    {"FBufferStream", "FStream", Made::notByName},
    {"FIBStream", "FStream", Made::notByName},
    {"FNFileSystem", "FFileSystem", Made::notByName},
    {"FRemovableFileSystem", "FFileSystem", Made::notByName},
    {"FFileIterator", "CmObject", Made::notByName},
    {"FNFileIterator", "FFileIterator", Made::notByName},
    {"FPluginFileIterator", "FFileIterator", Made::notByName},
    {"FFileIteratorUrlWrapper", "FFileIterator", Made::notByName},
    {"FileChangeHub", "CmObject", Made::notByName},
    {"FAttrBuffer", "CmObject", Made::notByName},
    {"FAttrList", "CmObject", Made::notByName},
    {"FIntList", "FAttrList", Made::notByName},
    {"FFloatList", "FAttrList", Made::notByName},
    {"FStringList", "FAttrList", Made::notByName},
    {"FObjectList", "FAttrList", Made::notByName},
    {"FSubList", "FAttrList", Made::notByName},
    {"FXmlObject", "CmObject", Made::notByName},
    {"FXmlInstance", "FXmlObject", Made::notByName},
    {"FXmlReference", "FXmlObject", Made::notByName},
    {"FXmlAttribute", "CmObject", Made::notByName},
    {"FXmlWriter", "CmObject", Made::notByName},
    {"FUrlHandler", "CmObject", Made::notByName},
    {"FUrlFileHandler", "FUrlHandler", Made::notByName},
    {"UrlMetaHandler", "FUrlHandler", Made::notByName},
    {"FArchiveManager", "CmObject", Made::notByName},
    {"ArchiveEntry", "CmObject", Made::notByName},
    {"FDefaults", "CmObject", Made::notByName},
    {"FDefaultPool", "CmObject", Made::notByName},
    {"FGlobalDefaultPool", "FDefaultPool", Made::notByName},
    {"FModuleManager", "CmObject", Made::notByName},
    {"FComponentRegistry", "FModuleManager", Made::notByName},
    {"FComponentDescription", "CmObject", Made::notByName},
    {"FPluginComponent", "FComponentDescription", Made::notByName},
    {"FCompiledInComponentDescription", "FComponentDescription", Made::notByName},
    {"FPluginWrapper", "CmObject", Made::notByName},
    {"FServiceManager", "CmObject", Made::notByName},

    // Made by name as by its identifier: what comes back is its interface.
    {"WinIPCSemaphore", nullptr, Made::byName},
};

// Services that have no name.
constexpr const char* kServices[] = {
    "{0407EB04-3713-4E28-9A82-34AB4877B109}", "{306627A6-94D0-4879-828E-0215647EA9A3}",
    "{77A13DE6-5D2A-4653-9C0E-58C1E1102A6A}", "{8E8562D8-67F5-4576-8175-61CFC2B134E3}",
    "{F5246D56-8654-4D60-B026-AFB57B697B37}", "{BA8586DE-FC4A-4737-9BAD-0542C8E6B953}",
    "{9B3554AA-04E9-4449-9034-D05B61F454F0}", "{C3BB1A7E-4A00-42AB-9514-3F8E6042499D}",
    "{DA76D0E4-50CA-4F1F-B5CF-917FC146583D}", "{E72A95FB-CBBC-460E-B8DE-DE5382F79F25}",
    "{7EA3DDA1-0790-4977-97A4-8588C1B71185}", "{69367430-9297-465D-A953-F7CA4DC8BAD1}",
};

std::string describe(const char* name, const char* parent, bool made, const char* persistentName) {
    return std::string(name) + " of " + (parent != nullptr ? parent : "nothing") + ", " +
           (made ? "made by name" : "not made by name") + ", written as " + persistentName;
}

TEST(ClassRecords, OfAllLayersCreateTheirObjectsAndEndInTheRoot) {
    EXPECT_EQ(test::expectSoundRecords(), static_cast<int>(std::size(kTree)));
}

TEST(ClassRecords, AreTheTreeOfAllLayersAndNothingElse) {
    std::vector<std::string> expected;
    for (const TreeRow& row : kTree) {
        expected.push_back(describe(row.name, row.parent, row.made == Made::byName,
                                    row.persistentName != nullptr ? row.persistentName : row.name));
    }
    std::vector<std::string> registered;
    for (const FMetaClass* record : ClassFactory::getInstance(true)->getRecords()) {
        if (record->getName() != nullptr) {
            const FMetaClass* parent = record->getParent();
            registered.push_back(describe(record->getName(), parent != nullptr ? parent->getName() : nullptr,
                                          record->getFactory() != nullptr, record->getPersistentName()));
        }
    }
    EXPECT_THAT(registered, UnorderedElementsAreArray(expected));
}

TEST(ClassRecords, WithoutANameAreTheServicesOfAllLayers) {
    std::vector<std::string> registered;
    for (const FMetaClass* record : ClassFactory::getInstance(true)->getRecords()) {
        if (record->getName() == nullptr) {
            char text[FUID::kRegistryTextSize];
            record->getClassUID().toRegistryString(text);
            registered.emplace_back(text);
        }
    }
    EXPECT_THAT(registered, UnorderedElementsAreArray(std::begin(kServices), std::end(kServices)));
}

} // namespace
} // namespace tessera
