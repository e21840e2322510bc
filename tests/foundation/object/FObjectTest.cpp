#include "foundation/object/FObject.h"

#include "foundation/object/FRefPtr.h"
#include "foundation/object/IUpdateRegistry.h"
#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

// Tells what happens to it, and takes and gives back a reference while it is being destroyed.
class Witness : public FObject {
public:
    explicit Witness(std::vector<std::string>& log) : log_(log) {}
    ~Witness() override {
        addRef();
        release();
        log_.push_back("destroyed at " + std::to_string(static_cast<std::int32_t>(getReferenceCount())));
    }
    void updateDone(std::int32_t message) override { log_.push_back("done " + std::to_string(message)); }

private:
    std::vector<std::string>& log_;
};

// Stands in for the update handler and writes down what is forwarded to it.
class RecordingRegistry : public test::ForeignObject<IUpdateRegistry> {
public:
    RecordingRegistry() : before_(FObject::getUpdateHandler()) { FObject::setUpdateHandler(this); }
    ~RecordingRegistry() override { FObject::setUpdateHandler(before_); }

    FResult addDependent(IBaseUnknown* object, IUpdateTarget* dependent) override {
        return note("add", object, dependent);
    }
    FResult removeDependent(IBaseUnknown* object, IUpdateTarget* dependent) override {
        return note("remove", object, dependent);
    }
    FResult triggerUpdates(IBaseUnknown* object, std::int32_t message, bool keepDone) override {
        calls.push_back("trigger " + std::to_string(message) + (keepDone ? " keep" : ""));
        lastObject = object;
        return kResultOk;
    }
    FResult deferUpdates(IBaseUnknown* object, std::int32_t message) override {
        calls.push_back("defer " + std::to_string(message));
        lastObject = object;
        return kResultOk;
    }

    std::vector<std::string> calls;
    IBaseUnknown* lastObject = nullptr;
    IUpdateTarget* lastDependent = nullptr;

private:
    FResult note(const char* call, IBaseUnknown* object, IUpdateTarget* dependent) {
        calls.push_back(call);
        lastObject = object;
        lastDependent = dependent;
        return kResultOk;
    }

    IUpdateRegistry* before_;
};

class WithoutHandler : public testing::Test {
protected:
    WithoutHandler() : before_(FObject::getUpdateHandler()) { FObject::setUpdateHandler(nullptr); }
    ~WithoutHandler() override { FObject::setUpdateHandler(before_); }

    std::vector<std::string> log_;

private:
    IUpdateRegistry* before_;
};

using FObjectWithoutHandler = WithoutHandler;

TEST(FObject, IsBornWithOneReference) {
    FObject object;
    EXPECT_EQ(object.getReferenceCount(), 1u);
    EXPECT_EQ(object.addRef(), 2u);
    EXPECT_EQ(object.release(), 1u);
}

TEST(FObject, TheLastReleaseDestroysItOnceAtMinusThousand) {
    std::vector<std::string> log;
    auto* object = new Witness(log);
    EXPECT_EQ(object->release(), 0u);
    EXPECT_EQ(log, std::vector<std::string>{"destroyed at -1000"});
}

TEST(FObject, ACopyHasACountOfItsOwn) {
    FObject object;
    object.addRef();
    const FObject copy(object);
    EXPECT_EQ(copy.getReferenceCount(), 1u);
    object.release();
}

TEST(FObject, ReferencesFromManyThreadsBalance) {
    FObject object;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 10000; ++round) {
                object.addRef();
                object.release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(object.getReferenceCount(), 1u);
}

TEST(FObject, AnswersItsThreeIdentifiersWithAReferenceEach) {
    FObject object;
    for (const FUIDBytes& uid : {IBaseUnknown::iid, IUpdateTarget::iid, FObject::privateUID()}) {
        void* out = nullptr;
        EXPECT_EQ(object.queryInterface(uid, &out), kResultOk);
        EXPECT_EQ(out, &object);
    }
    EXPECT_EQ(object.getReferenceCount(), 4u);
}

TEST(FObject, AnyOtherIdentifierGivesNullAndNoInterface) {
    FObject object;
    void* out = &object;
    EXPECT_EQ(object.queryInterface("{01234567-89AB-CDEF-0123-456789ABCDEF}"_uid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(object.getReferenceCount(), 1u);
}

TEST(FObject, ThePrivateIdentifierIsARandomOne) {
    const FUIDBytes& uid = FObject::privateUID();
    EXPECT_EQ(uid.bytes[7] >> 4, 4);
    EXPECT_EQ(uid.bytes[8] >> 6, 2);
}

TEST(FObject, ClassQuestionsAreAnsweredByName) {
    const FObject object;
    EXPECT_STREQ(object.getClassName(), "FObject");
    EXPECT_TRUE(object.isA("FObject"));
    EXPECT_TRUE(object.isTypeOf("FObject", false));
    EXPECT_FALSE(object.isTypeOf("CmObject", true));
    EXPECT_FALSE(object.isTypeOf(nullptr, true));
    EXPECT_FALSE(object.isTypeOf(nullptr, false));
}

TEST(FObject, SameInstanceIsPointerEquality) {
    const FObject a;
    const FObject b;
    EXPECT_TRUE(a.isSameInstance(&a));
    EXPECT_FALSE(a.isSameInstance(&b));
    EXPECT_FALSE(a.isSameInstance(nullptr));
}

TEST_F(FObjectWithoutHandler, AChangeIsDoneAtOnce) {
    const auto object = FRefPtr<Witness>::adopt(new Witness(log_));
    object->changed(7);
    object->deferChanged(8);
    EXPECT_EQ(log_, (std::vector<std::string>{"done 7", "done 8"}));
}

TEST_F(FObjectWithoutHandler, DependentsAreIgnored) {
    FObject object;
    FObject dependent;
    object.addDependent(&dependent);
    object.removeDependent(&dependent);
    EXPECT_EQ(dependent.getReferenceCount(), 1u);
}

TEST(FObject, DependentsAndChangesAreForwardedToTheHandler) {
    RecordingRegistry registry;
    FObject object;
    FObject dependent;
    object.addDependent(&dependent);
    EXPECT_EQ(registry.lastObject, &object);
    EXPECT_EQ(registry.lastDependent, &dependent);
    object.changed(5);
    object.deferChanged(6);
    object.removeDependent(&dependent);
    EXPECT_EQ(registry.calls, (std::vector<std::string>{"add", "trigger 5", "defer 6", "remove"}));
}

} // namespace
} // namespace tessera
