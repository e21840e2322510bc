// TestNumber: an element for the container tests: equal and ordered by its value, told apart by its mark, counted while
// alive. It knows how often it was cloned.
#pragma once

#include "foundation/containers/CmContainer.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/streams/FStream.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace tessera::test {

class TestNumber : public CmClass<TestNumber, CmObject> {
public:
    static inline FMetaClass metaClass{"TestNumber", &CmObject::metaClass, &createCmObject<TestNumber>};
    static inline std::atomic<int> alive = 0;

    explicit TestNumber(int number = 0, char itsMark = ' ') : value(number), mark(itsMark) { ++alive; }
    TestNumber(const TestNumber& other) : CmClass(other), value(other.value), mark(other.mark) { ++alive; }
    TestNumber& operator=(const TestNumber&) = delete;
    ~TestNumber() override { --alive; }

    bool isEqual(const CmObject* other) const override {
        const auto* partner = cmCast<TestNumber>(other);
        return partner != nullptr && partner->value == value;
    }
    int compare(const CmObject* other) const override {
        const auto* partner = cmCast<TestNumber>(other);
        return partner == nullptr || value < partner->value ? -1 : value > partner->value ? 1 : 0;
    }
    std::uint32_t hash(std::uint32_t tableSize) const override {
        return tableSize == 0 ? 0 : static_cast<std::uint32_t>(value) % tableSize;
    }
    bool read(FStream& stream) override { return stream.readInt32(value); }
    bool write(FStream& stream) const override { return stream.writeInt32(value); }
    TestNumber* clone() const override { return new TestNumber(*this); }

    std::int32_t value;
    char mark;
};

// The values, front to back, with the marks that aren't blank behind them: "1 2a 2b".
inline std::string contents(const CmContainer& container) {
    std::string text;
    container.forEach([&text](CmObject* element) {
        const auto* number = static_cast<TestNumber*>(element);
        text += (text.empty() ? "" : " ") + std::to_string(number->value);
        if (number->mark != ' ') {
            text += number->mark;
        }
        return true;
    });
    return text;
}

// The same, walked from the back.
inline std::string backwards(const CmContainer& container) {
    std::string text;
    const auto iterator = container.newIterator();
    iterator->last();
    while (const CmObject* element = iterator->previous()) {
        text += (text.empty() ? "" : " ") + std::to_string(static_cast<const TestNumber*>(element)->value);
    }
    return text;
}

inline void addNew(CmContainer& container, std::initializer_list<int> values) {
    for (const int value : values) {
        auto* element = new TestNumber(value);
        if (!container.add(element)) {
            ADD_FAILURE() << "cannot add " << value;
            element->release();
        }
    }
}

// Fails the test that leaves an element behind.
class ContainerTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(TestNumber::alive, 0); }
    void TearDown() override { EXPECT_EQ(TestNumber::alive, 0) << "an element was never released"; }
};

} // namespace tessera::test
