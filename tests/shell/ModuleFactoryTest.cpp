#include "shell/ModuleFactory.h"

#include "shell/ModuleClasses.h"
#include "shell/ModuleGlobals.h"
#include "support/host/FakeObject.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera {
namespace {

constexpr FUIDBytes kClass = "{11111111-2222-3333-4444-555555555555}"_uid;
constexpr FUIDBytes kUnknown = "{99999999-2222-3333-4444-555555555555}"_uid;

struct ISample : IBaseUnknown {
    static constexpr FUIDBytes iid = "{AAAAAAAA-2222-3333-4444-555555555555}"_uid;

protected:
    ~ISample() = default;
};

class Sample final : public test::FakeObject<ISample> {};

std::uintptr_t seenContext = 0;

IBaseUnknown* createSample(std::uintptr_t context) {
    seenContext = context;
    return new Sample;
}

IBaseUnknown* createNothing(std::uintptr_t) {
    return nullptr;
}

ClassInfoEx sampleInfo() {
    ClassInfoEx info;
    info.classId = kClass;
    info.cardinality = 7;
    std::strcpy(info.category, "Sample");
    std::strcpy(info.name, "A sample \xC4");
    info.classFlags = 3;
    std::strcpy(info.subcategories, "Sub");
    std::strcpy(info.vendor, "Vendor");
    std::strcpy(info.version, "1.2");
    std::strcpy(info.sdkVersion, "SDK");
    return info;
}

class ModuleFactoryTest : public testing::Test {
protected:
    ModuleFactoryTest() {
        FactoryInfo info;
        std::strcpy(info.vendor, "Somebody");
        factory_ = FRefPtr<ModuleFactory>::adopt(new ModuleFactory(info));
    }

    FRefPtr<ModuleFactory> factory_;
    ClassInfoEx info_ = sampleInfo();
};

TEST_F(ModuleFactoryTest, AnswersFourIdentifiersWithOneTable) {
    for (const FUIDBytes& uid : {IModuleFactory::iid, IModuleFactory2::iid, IModuleFactory3::iid, IBaseUnknown::iid}) {
        void* out = nullptr;
        EXPECT_EQ(factory_->queryInterface(uid, &out), kResultOk);
        EXPECT_EQ(out, static_cast<IModuleFactory3*>(factory_.get()));
        factory_->release();
    }
    void* out = this;
    EXPECT_EQ(factory_->queryInterface(kUnknown, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
}

TEST_F(ModuleFactoryTest, CountsItsReferences) {
    EXPECT_EQ(factory_->addRef(), 2u);
    EXPECT_EQ(factory_->release(), 1u);
}

TEST_F(ModuleFactoryTest, DescribesItselfAndPassesOverNull) {
    FactoryInfo info;
    EXPECT_EQ(factory_->describeFactory(&info), kResultOk);
    EXPECT_STREQ(info.vendor, "Somebody");
    EXPECT_EQ(factory_->describeFactory(nullptr), kResultOk);
}

TEST_F(ModuleFactoryTest, IndexesOutOfRangeAndNullAreInvalid) {
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
    ClassInfo info;
    ClassInfoEx longer;
    ClassInfoWide wide;
    for (const std::int32_t index : {-1, 1, 1000}) {
        EXPECT_EQ(factory_->describeClass(index, &info), kInvalidArgument) << index;
        EXPECT_EQ(factory_->describeClassEx(index, &longer), kInvalidArgument) << index;
        EXPECT_EQ(factory_->describeClassWide(index, &wide), kInvalidArgument) << index;
    }
    EXPECT_EQ(factory_->describeClass(0, nullptr), kInvalidArgument);
    EXPECT_EQ(factory_->describeClassEx(0, nullptr), kInvalidArgument);
    EXPECT_EQ(factory_->describeClassWide(0, nullptr), kInvalidArgument);
}

TEST_F(ModuleFactoryTest, DescribesAClassInThreeForms) {
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
    EXPECT_EQ(factory_->classCount(), 1);
    ClassInfo info;
    EXPECT_EQ(factory_->describeClass(0, &info), kResultOk);
    EXPECT_EQ(std::memcmp(&info, &info_, 116), 0);
    ClassInfoEx longer;
    EXPECT_EQ(factory_->describeClassEx(0, &longer), kResultOk);
    EXPECT_EQ(std::memcmp(&longer, &info_, 440), 0);
    ClassInfoWide wide;
    EXPECT_EQ(factory_->describeClassWide(0, &wide), kResultOk);
    EXPECT_TRUE(wide.classId == kClass);
    EXPECT_EQ(wide.cardinality, 7);
    EXPECT_STREQ(wide.category, "Sample");
    // Bytes are sign-extended, one by one.
    EXPECT_EQ(std::u16string(wide.name), std::u16string(u"A sample ") + char16_t{0xFFC4});
    EXPECT_EQ(wide.classFlags, 3u);
    EXPECT_STREQ(wide.subcategories, "Sub");
    EXPECT_EQ(std::u16string(wide.vendor), u"Vendor");
    EXPECT_EQ(std::u16string(wide.version), u"1.2");
    EXPECT_EQ(std::u16string(wide.sdkVersion), u"SDK");
}

TEST_F(ModuleFactoryTest, ATextThatFillsItsFieldIsWidenedWhole) {
    std::memset(info_.name, 'n', sizeof info_.name);
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
    ClassInfoWide wide;
    factory_->describeClassWide(0, &wide);
    EXPECT_EQ(std::u16string(wide.name, 64), std::u16string(64, u'n'));
}

TEST_F(ModuleFactoryTest, AShortRecordIsWidenedWithAnEmptyRest) {
    ClassInfo info;
    info.classId = kClass;
    std::strcpy(info.name, "Short");
    ASSERT_TRUE(factory_->addClass(&info, createSample, 0));
    ClassInfoEx longer;
    EXPECT_EQ(factory_->describeClassEx(0, &longer), kResultOk);
    EXPECT_STREQ(longer.name, "Short");
    EXPECT_STREQ(longer.vendor, "");
}

TEST_F(ModuleFactoryTest, AWideClassHasNo8BitRecord) {
    ClassInfoWide wide;
    wide.classId = kClass;
    wide.name[0] = u'\u6771';
    ASSERT_TRUE(factory_->addClass(&wide, createSample, 0));
    ClassInfo info;
    std::memset(static_cast<void*>(&info), 0x55, sizeof info);
    EXPECT_EQ(factory_->describeClass(0, &info), kResultFalse);
    EXPECT_TRUE(info.classId == FUIDBytes());
    EXPECT_STREQ(info.name, "");
    ClassInfoEx longer;
    std::memset(static_cast<void*>(&longer), 0x55, sizeof longer);
    EXPECT_EQ(factory_->describeClassEx(0, &longer), kResultFalse);
    EXPECT_STREQ(longer.sdkVersion, "");
    ClassInfoWide again;
    EXPECT_EQ(factory_->describeClassWide(0, &again), kResultOk);
    EXPECT_EQ(again.name[0], u'\u6771');
    void* out = nullptr;
    EXPECT_EQ(factory_->createObject(kClass, ISample::iid, &out), kResultOk);
    static_cast<ISample*>(out)->release();
}

TEST_F(ModuleFactoryTest, RefusesAClassWithoutRecordOrCreateFunction) {
    EXPECT_FALSE(factory_->addClass(static_cast<ClassInfoEx*>(nullptr), createSample, 0));
    EXPECT_FALSE(factory_->addClass(static_cast<ClassInfo*>(nullptr), createSample, 0));
    EXPECT_FALSE(factory_->addClass(static_cast<ClassInfoWide*>(nullptr), createSample, 0));
    EXPECT_FALSE(factory_->addClass(&info_, nullptr, 0));
    EXPECT_EQ(factory_->classCount(), 0);
    EXPECT_EQ(factory_->capacity(), 0);
}

TEST_F(ModuleFactoryTest, TheEleventhClassGrowsTheArrayFrom10To20) {
    for (int i = 0; i < 10; ++i) {
        info_.cardinality = i;
        ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
        EXPECT_EQ(factory_->capacity(), 10);
    }
    info_.cardinality = 10;
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
    EXPECT_EQ(factory_->capacity(), 20);
    for (int i = 0; i <= 10; ++i) {
        ClassInfo info;
        factory_->describeClass(i, &info);
        EXPECT_EQ(info.cardinality, i);
    }
}

TEST_F(ModuleFactoryTest, CreatesAnObjectWithTheOneReferenceOfTheQuery) {
    const int live = test::liveDoubles;
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 42));
    void* out = nullptr;
    EXPECT_EQ(factory_->createObject(kClass, ISample::iid, &out), kResultOk);
    EXPECT_EQ(seenContext, 42u);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(static_cast<Sample*>(static_cast<ISample*>(out))->references(), 1u);
    static_cast<ISample*>(out)->release();
    EXPECT_EQ(test::liveDoubles, live);
}

TEST_F(ModuleFactoryTest, WhatCannotBeCreatedIsNoInterface) {
    const int live = test::liveDoubles;
    ASSERT_TRUE(factory_->addClass(&info_, createSample, 0));
    info_.classId = kUnknown;
    ASSERT_TRUE(factory_->addClass(&info_, createNothing, 0));
    const std::pair<FUIDBytes, FUIDBytes> requests[] = {
        {ISample::iid, ISample::iid}, {kClass, kUnknown}, {kUnknown, ISample::iid}};
    for (const auto& [classId, interfaceId] : requests) {
        void* out = this;
        EXPECT_EQ(factory_->createObject(classId, interfaceId, &out), kNoInterface);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(test::liveDoubles, live);
    EXPECT_EQ(factory_->createObject(kClass, ISample::iid, nullptr), kInvalidArgument);
}

class ModuleClassesTest : public testing::Test {
protected:
    IModuleFactory3* factory_ = static_cast<IModuleFactory3*>(getModuleFactory());
    ~ModuleClassesTest() override { factory_->release(); }
};

TEST_F(ModuleClassesTest, ASecondCallGivesTheSameFactoryWithOneMoreReference) {
    EXPECT_EQ(getModuleFactory(), factory_);
    EXPECT_EQ(factory_->addRef(), 3u);
    factory_->release();
    factory_->release();
}

TEST_F(ModuleClassesTest, TheLastReleaseMakesRoomForANewFactory) {
    EXPECT_EQ(factory_->release(), 0u);
    EXPECT_EQ(moduleGlobals().factory, nullptr);
    factory_ = static_cast<IModuleFactory3*>(getModuleFactory());
    EXPECT_EQ(factory_->classCount(), 1);
}

TEST_F(ModuleClassesTest, NamesItsVendor) {
    FactoryInfo info;
    factory_->describeFactory(&info);
    EXPECT_STREQ(info.vendor, "Marlgrove Audio Works GmbH");
    EXPECT_TRUE(std::string(info.email).starts_with("mailto:"));
    EXPECT_EQ(info.flags, 0x10);
}

TEST_F(ModuleClassesTest, OffersOneClassBeforeAndAfterAttachHost) {
    EXPECT_EQ(factory_->classCount(), 1);
    EXPECT_EQ(factory_->attachHost(nullptr), kResultOk);
    EXPECT_EQ(factory_->classCount(), 1);
}

TEST_F(ModuleClassesTest, DescribesTheServiceToTheByte) {
    const std::uint8_t id[16] = {0x73, 0x37, 0x3C, 0x97, 0x41, 0xAC, 0x93, 0x45,
                                 0xBD, 0xF4, 0x89, 0xC7, 0x68, 0xF4, 0xBF, 0x5A};
    ClassInfoEx info;
    ASSERT_EQ(factory_->describeClassEx(0, &info), kResultOk);
    EXPECT_EQ(std::memcmp(info.classId.bytes, id, 16), 0);
    EXPECT_EQ(info.cardinality, 1);
    EXPECT_STREQ(info.category, "Service");
    EXPECT_STREQ(info.name, "Tessera Exchange");
    EXPECT_EQ(info.classFlags, 0u);
    EXPECT_STREQ(info.subcategories, "");
    EXPECT_STREQ(info.vendor, "");
    EXPECT_STREQ(info.version, "1.5.10.6");
    EXPECT_STREQ(info.sdkVersion, "");
    ClassInfoWide wide;
    ASSERT_EQ(factory_->describeClassWide(0, &wide), kResultOk);
    EXPECT_EQ(std::u16string(wide.name), u"Tessera Exchange");
    EXPECT_EQ(std::u16string(wide.version), u"1.5.10.6");
}

TEST(ModuleGlobals, FolderIsCutAtTheLastBackslash) {
    EXPECT_EQ(folderOfModule(u"\\opt\\tessera\\TesseraExchange.shlb"), u"\\opt\\tessera");
    EXPECT_EQ(folderOfModule(u"TesseraExchange.shlb"), u"");
    EXPECT_EQ(folderOfModule(u""), u"");
    EXPECT_EQ(folderOfModule(u"\\a"), u"");
    const std::u16string longest = u"\\" + std::u16string(257, u'f') + u"\\m";
    EXPECT_EQ(folderOfModule(longest), longest.substr(0, 258));
    EXPECT_EQ(folderOfModule(longest + u"m"), u"");
}

} // namespace
} // namespace tessera
