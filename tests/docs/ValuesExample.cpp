#include "foundation/values/UIntValue.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [values]
class Channel : public CmClass<Channel, CmObject> {
public:
    static FMetaClass metaClass;
    enum Tag : std::uint32_t { kVolume = 1, kPan = 2 };

    Channel() {
        volume.setTarget(this, kVolume, false); // lent: the value doesn't outlive its target
        pan.setTarget(this, kPan, false);
    }

    void updateFrom(CmObject* changed, std::int32_t message) override {
        const auto* value = cmCast<UValue>(changed);
        if (value != nullptr && message == UValue::kNotified) {
            lastTag = value->getTag();
            gain = volume.getValue() / 100.0;
        }
    }

    UIntValue volume{100, 0, 127};
    UIntValue pan{0, -64, 63};
    std::uint32_t lastTag = 0;
    double gain = 1;
};

FMetaClass Channel::metaClass("Channel", &CmObject::metaClass, nullptr);

// What a fader does.
void drag(UValue& value, std::int32_t to) {
    value.beginEdit(true);
    value.setValue(to); // cut to the range
    value.endEdit(true);
}
// [values]

TEST(ValuesExample, TheTargetHearsOfAChange) {
    Channel channel;
    channel.volume.setValue(50);
    EXPECT_EQ(channel.lastTag, Channel::kVolume);
    EXPECT_EQ(channel.gain, 0.5);
    channel.pan.setValue(10);
    EXPECT_EQ(channel.lastTag, Channel::kPan);
}

TEST(ValuesExample, AValueStaysInItsRangeAndReadsText) {
    Channel channel;
    drag(channel.volume, 1000);
    EXPECT_EQ(channel.volume.getValue(), 127);
    EXPECT_TRUE(channel.volume.setString("2/"));
    EXPECT_EQ(channel.volume.getValue(), 63);
    EXPECT_FALSE(channel.volume.setString("loud"));
    channel.volume.setEnabled(false);
    EXPECT_FALSE(channel.volume.isEnabled());
}

} // namespace
} // namespace tessera::test
