#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [an interface]
struct IGain : IBaseUnknown {
    static constexpr FUIDBytes iid = "{3B1E0A52-6C0D-4E57-9C3A-8D6A2F4B7E10}"_uid;

    virtual double apply(double sample) = 0;

protected:
    ~IGain() = default;
};

class HalfGain : public FImplements<FObject, IGain> {
public:
    static FMetaClass metaClass;

    double apply(double sample) override { return sample / 2; }
};

FMetaClass HalfGain::metaClass("HalfGain", nullptr, &createInterface<HalfGain, IGain>, IGain::iid);
// [an interface]

// [by identifier]
double quieter(double sample) {
    void* const made = ClassFactory::getInstance(true)->createInstance(IGain::iid);
    const auto gain = FRefPtr<IGain>::adopt(static_cast<IGain*>(made));
    return gain ? gain->apply(sample) : sample;
}
// [by identifier]

// [asking for an interface]
bool offersGain(IBaseUnknown* anything) {
    return bool(queryFor<IGain>(anything));
}
// [asking for an interface]

TEST(InterfacesExample, AClassIsFoundByTheIdentifierOfItsInterface) {
    EXPECT_EQ(quieter(0.5), 0.25);
}

TEST(InterfacesExample, AnObjectIsAskedForAnInterface) {
    HalfGain gain;
    EXPECT_TRUE(offersGain(static_cast<IGain*>(&gain)));
    EXPECT_EQ(gain.getReferenceCount(), 1u);
    CmObject other;
    EXPECT_FALSE(offersGain(&other));
    EXPECT_FALSE(offersGain(nullptr));
}

} // namespace
} // namespace tessera::test
